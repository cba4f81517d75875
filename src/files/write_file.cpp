#include "files/write_file.h"

#include <fcntl.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/xattr.h>
#endif

#include <cerrno>
#include <filesystem>
#include <optional>

#include "files/descriptor.h"
#include "files/ending_signals.h"
#include "files/temporary_file.h"

namespace Files {

namespace {

constexpr mode_t newFileMode = 0666;  // less what the process masks out
constexpr mode_t privateMode = 0600;  // until the mode of the target is set
constexpr mode_t permissionBits = 07777;
constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr int mostLinks = 40;

using Reason = WriteFailure::Reason;

[[noreturn]] void failToWrite(int error) {
    throw WriteFailure{Reason::CannotWrite, error};
}

// The name at the end of a chain of symbolic links. It need not exist. There is none when a link stands for
// an open file, like /dev/stdout: others may hold that file open, and a new one in its place would be lost on
// them.
std::optional<std::string> followLinks(const std::string& name) {
    std::filesystem::path path = name;
    std::error_code error;
    for (int count = 0; std::filesystem::is_symlink(path, error); ++count) {
        if (count == mostLinks || path.string().starts_with("/dev/") || path.string().starts_with("/proc/")) {
            return std::nullopt;
        }
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path.string();
}

// Access lists and the like, which only the file itself carries. What the system keeps for its own use does
// not count.
bool hasAttributes(int descriptor) {
#if defined(__linux__)
    char names[1024];
    const ssize_t length = ::flistxattr(descriptor, names, sizeof names);
    if (length < 0) return errno == ERANGE;
    std::string_view rest(names, static_cast<std::size_t>(length));
    while (!rest.empty()) {
        if (!rest.starts_with("security.")) return true;
        rest.remove_prefix(rest.find('\0') + 1);
    }
#else
    static_cast<void>(descriptor);
#endif
    return false;
}

bool keepOwnerAndMode(int descriptor, const struct stat& original) {
    struct stat own {};
    if (::fstat(descriptor, &own) != 0) return false;
    const bool isOwnedAlike = own.st_uid == original.st_uid && own.st_gid == original.st_gid;
    if (!isOwnedAlike && ::fchown(descriptor, original.st_uid, original.st_gid) != 0) return false;
    return ::fchmod(descriptor, original.st_mode & permissionBits) == 0;
}

// ---- a file that exists

class ExistingFile {
public:
    ExistingFile(const std::string& name, std::string_view text) : name_(name), text_(text) {
        file_ = Descriptor(::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (!file_.isOpen() || ::fstat(file_.get(), &status_) != 0) throw WriteFailure{Reason::CannotOpen};
    }

    void checkUnchangedSince(const FileStamp& source) const {
        if (source.isSameFile(status_) && !source.isUnchanged(status_)) {
            throw WriteFailure{Reason::ChangedBefore};
        }
    }

    void write() {
        if (!mayBeReplaced() || !replace()) writeInPlace();
        if (const int error = file_.close()) failToWrite(error);
    }

private:
    bool mayBeReplaced() const {
        return S_ISREG(status_.st_mode) && status_.st_nlink == 1 && !hasAttributes(file_.get());
    }

    // False when the way over a second file is barred and nothing has been done.
    bool replace() const {
        const std::optional<std::string> path = followLinks(name_);
        if (!path) return false;
        TemporaryFile temporary(*path, privateMode);
        if (isBarred(temporary.error())) return false;
        if (temporary.error()) failToWrite(temporary.error());
        if (!keepOwnerAndMode(temporary.descriptor(), status_)) return false;
        if (const int error = writeAll(temporary.descriptor(), text_)) failToWrite(error);
        checkStillUnchanged(*path);
        return temporary.replaceTarget() == 0;
    }

    // Some time may have passed since the file was opened.
    void checkStillUnchanged(const std::string& path) const {
        struct stat now {};
        if (::stat(path.c_str(), &now) == 0 && FileStamp::of(status_).isUnchanged(now)) return;
        throw WriteFailure{Reason::ChangedMeanwhile};
    }

    static bool isBarred(int error) {
        return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
    }

    // Signals wait, so that they do not cut the text in two.
    void writeInPlace() const {
        const bool isRegular = S_ISREG(status_.st_mode);
        if (!isRegular) {
            if (const int error = writeAll(file_.get(), text_)) failToWrite(error);
            return;
        }
        const HoldEndingSignals untilItIsWhole;
        const auto size = static_cast<off_t>(text_.size());
        if (size > status_.st_size) makeRoom(size);
        if (const int error = writeAll(file_.get(), text_)) failToWrite(error);
        if (::ftruncate(file_.get(), size) != 0) failToWrite(errno);
    }

    void makeRoom(off_t size) const {
        const int error = ::posix_fallocate(file_.get(), 0, size);
        if (error != ENOSPC && error != EFBIG && error != EDQUOT) return;
        if (::ftruncate(file_.get(), status_.st_size) != 0) failToWrite(errno);
        failToWrite(error);
    }

    const std::string& name_;
    std::string_view text_;
    Descriptor file_;
    struct stat status_ {};
};

// ---- a file that is to be

void writeNewFile(const std::string& name, std::string_view text) {
    const std::optional<std::string> path = followLinks(name);
    if (!path) throw WriteFailure{Reason::CannotOpen};
    TemporaryFile temporary(*path, newFileMode);
    if (temporary.error()) throw WriteFailure{Reason::CannotOpen};
    int error = writeAll(temporary.descriptor(), text);
    if (!error) error = temporary.replaceTarget();
    if (error) failToWrite(error);
}

}  // namespace

bool isReadOnly(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 && (status.st_mode & anyWrite) == 0) return true;
    return ::access(path.c_str(), W_OK) != 0;
}

void writeFile(const std::string& path, std::string_view text, const FileStamp* source) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        ExistingFile file(path, text);
        if (source) file.checkUnchangedSince(*source);
        file.write();
    } else if (errno == ENOENT && !path.empty()) {
        writeNewFile(path, text);
    } else {
        throw WriteFailure{Reason::CannotOpen};
    }
}

}  // namespace Files
