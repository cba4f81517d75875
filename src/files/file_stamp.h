#pragma once

#include <sys/stat.h>

namespace Files {

// Which file something was read from, and in which state the file was.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified{};

    static FileStamp of(const struct stat& status) {
        return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
    }

    bool isSameFile(const struct stat& status) const {
        return device == status.st_dev && inode == status.st_ino;
    }

    bool isUnchanged(const struct stat& status) const {
        return isSameFile(status) && size == status.st_size && modified.tv_sec == status.st_mtim.tv_sec &&
               modified.tv_nsec == status.st_mtim.tv_nsec;
    }
};

}  // namespace Files
