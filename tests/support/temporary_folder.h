#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

// A folder for one test, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string path = ::testing::TempDir() + "vantrel-test-XXXXXX";
        if (!::mkdtemp(path.data())) std::abort();
        path_ = path;
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& name = "") const { return name.empty() ? path_ : path_ + '/' + name; }

    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    void makeReadOnly(const std::string& name) const { ::chmod(path(name).c_str(), 0444); }

    bool has(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(path(name)));
    }

    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            result.insert(entry.path().filename().string());
        }
        return result;
    }

    struct stat status(const std::string& name) const {
        struct stat result {};
        ::stat(path(name).c_str(), &result);
        return result;
    }

private:
    std::string path_;
};
