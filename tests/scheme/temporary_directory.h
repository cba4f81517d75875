#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// A directory that lives as long as the test that uses it.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "vantrel-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string path(const std::string& name = "") const { return (path_ / name).string(); }

    void put(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << content;
    }

    std::string get(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        std::ostringstream content;
        content << in.rdbuf();
        return content.str();
    }

    bool has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

    void makeReadOnly(const std::string& name) const {
        using std::filesystem::perms;
        std::filesystem::permissions(path_ / name,
                                     perms::owner_read | perms::group_read | perms::others_read);
    }

private:
    std::filesystem::path path_;
};
