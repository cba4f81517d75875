#include "scheme/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace TesselUI {

namespace {

constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t PERMISSIONS = 07777;

// A file that is removed again unless it is renamed to its final place.
class TemporaryFile {
public:
    // Stands in `directory`, under a name that no other process uses.
    explicit TemporaryFile(const std::filesystem::path& directory) {
        const std::string stem = ".vantrel-" + std::to_string(::getpid()) + '-';
        for (int attempt = 0; attempt < 100 && descriptor_ < 0; ++attempt) {
            path_ = directory / (stem + std::to_string(attempt) + ".tmp");
            descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (descriptor_ < 0 && errno != EEXIST) return;
        }
        exists_ = descriptor_ >= 0;
    }

    ~TemporaryFile() {
        if (descriptor_ >= 0) ::close(descriptor_);
        if (exists_) ::unlink(path_.c_str());
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Without the right to give files away the owner stays this process's; that is no reason not to write.
    bool takeOwnerAndPermissions(const struct stat& original) {
        if (::fchown(descriptor_, original.st_uid, original.st_gid) != 0 && errno != EPERM) return false;
        return ::fchmod(descriptor_, original.st_mode & PERMISSIONS) == 0;
    }

    bool write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = ::write(descriptor_, content.data(), content.size());
            if (written < 0 && errno != EINTR) return false;
            if (written > 0) content.remove_prefix(static_cast<std::size_t>(written));
        }
        return ::fsync(descriptor_) == 0;
    }

    bool renameTo(const std::filesystem::path& target) {
        const bool closed = ::close(descriptor_) == 0;
        descriptor_ = -1;
        if (!closed || std::rename(path_.c_str(), target.c_str()) != 0) return false;
        exists_ = false;
        return true;
    }

    bool isOpen() const { return descriptor_ >= 0; }

private:
    std::filesystem::path path_;
    int descriptor_ = -1;
    bool exists_ = false;
};

}  // namespace

bool isReadOnlyFile(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) == 0 && (status.st_mode & ANY_WRITE) == 0) return true;
    return ::access(path.c_str(), W_OK) != 0;
}

bool replaceFile(const std::string& path, std::string_view content) {
    std::error_code noSuchFile;
    std::filesystem::path target = std::filesystem::canonical(path, noSuchFile);
    if (noSuchFile) target = path;

    TemporaryFile file(target.parent_path());
    if (!file.isOpen()) return false;
    struct stat original;
    if (::stat(target.c_str(), &original) == 0 && !file.takeOwnerAndPermissions(original)) return false;
    return file.write(content) && file.renameTo(target);
}

}  // namespace TesselUI
