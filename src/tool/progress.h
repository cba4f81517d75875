#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>

namespace Tool {

// How far a run is, on one line of a terminal, which is wiped before anything else is written there.
class Progress {
public:
    // `total` is 0 where nobody knows; `unit` says what is counted, and lives as long.
    Progress(std::ostream& errors, bool isShown, std::size_t total, const char* unit = "files");
    ~Progress() { wipe(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void countOne();
    void wipe();
    double seconds() const;

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& errors_;
    bool isShown_;
    std::size_t total_;
    const char* unit_;
    std::size_t done_ = 0;
    Clock::time_point start_ = Clock::now();
    Clock::time_point shownAt_ = start_;
    std::size_t doneWhenShown_ = 0;
    bool isOnLine_ = false;
};

}  // namespace Tool
