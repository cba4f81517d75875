#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cpp/conditional_groups.h"
#include "engine/format_stages.h"
#include "engine/task_runner.h"
#include "engine/text_stretches.h"

namespace Tessel {

// Lays out a long text in stretches, which threads take one after the other.
class StretchedText {
public:
    // All are borrowed; the line ends of the text are line feeds.
    StretchedText(const FormatStages& stages, std::string_view text) : stages_(stages), cutter_(text, stages.cuts()) {}
    StretchedText(const StretchedText&) = delete;
    StretchedText& operator=(const StretchedText&) = delete;

    // What becomes of the text, in parts, some of them empty; nothing where it has to be laid out as a whole.
    std::vector<std::string> layOut(TaskRunner& tasks);

private:
    void layOutNext();
    std::optional<Stretch> take();
    std::optional<std::string> format(const Stretch& stretch);
    bool agrees(const Cpp::TakenConditions& conditions);

    const FormatStages& stages_;
    std::mutex mutex_;  // of what the threads share
    StretchCutter cutter_;
    std::optional<Stretch> first_;  // until it is taken
    Cpp::TakenConditions conditions_;
    std::vector<std::string> results_;
    std::atomic<bool> hasFailed_ = false;
};

}  // namespace Tessel
