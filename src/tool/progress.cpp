#include "tool/progress.h"

#include <cmath>
#include <ostream>

namespace Tool {

namespace {

constexpr double shownEvery = 0.1;  // seconds

}  // namespace

Progress::Progress(std::ostream& errors, bool isShown, std::size_t total, const char* unit)
    : errors_(errors), isShown_(isShown && total != 1), total_(total), unit_(unit) {}

void Progress::countOne() {
    ++done_;
    if (!isShown_) return;
    const Clock::time_point now = Clock::now();
    const double passed = std::chrono::duration<double>(now - shownAt_).count();
    if (passed < shownEvery) return;
    const double rate = static_cast<double>(done_ - doneWhenShown_) / passed;
    errors_ << "\r\033[K" << done_;
    if (total_ > 0) errors_ << " of " << total_;
    errors_ << ' ' << unit_ << ", " << std::lround(rate) << " a second" << std::flush;
    shownAt_ = now;
    doneWhenShown_ = done_;
    isOnLine_ = true;
}

void Progress::wipe() {
    if (isOnLine_) errors_ << "\r\033[K" << std::flush;
    isOnLine_ = false;
}

double Progress::seconds() const {
    return std::chrono::duration<double>(Clock::now() - start_).count();
}

}  // namespace Tool
