#include "files/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace Files {

namespace {

constexpr int mostAttempts = 100;

std::string nameBeside(const std::string& target, int attempt) {
    const std::string folder = target.substr(0, target.rfind('/') + 1);
    return folder + ".vantrel-" + std::to_string(::getpid()) + '-' + std::to_string(attempt) + ".tmp";
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& target, mode_t mode) : target_(target) {
    const HoldEndingSignals untilItIsKnown;
    create(mode);
    if (file_.isOpen()) removeOnSignal_.emplace(path_);
}

void TemporaryFile::create(mode_t mode) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        path_ = nameBeside(target_, attempt);
        file_ = Descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        error_ = file_.isOpen() ? 0 : errno;
        if (error_ != EEXIST) return;
    }
}

TemporaryFile::~TemporaryFile() {
    if (removeOnSignal_) ::unlink(path_.c_str());
}

int TemporaryFile::replaceTarget() {
    if (const int error = file_.close()) return error;
    const HoldEndingSignals untilItIsForgotten;
    if (std::rename(path_.c_str(), target_.c_str()) != 0) return errno;
    removeOnSignal_.reset();
    return 0;
}

}  // namespace Files
