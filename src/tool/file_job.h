#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "edits/line_set.h"
#include "engine/format_options.h"
#include "tool/file_result.h"

namespace Tool {

// What is to be done with one source.
struct FileJob {
    std::string name;
    const Tessel::FormatOptions* options = nullptr;  // borrowed
    std::optional<Edits::LineSet> lines;             // all of them, where there is none
    std::vector<std::pair<std::size_t, std::size_t>> bytes = {};  // more of them: offset and length
};

// Both may run in several threads at once, and report every failure in their result. A long text takes so many itself.
FileResult formatFile(const FileJob& job, std::size_t threads);
FileResult formatSource(const FileJob& job, std::string source, std::size_t threads);

}  // namespace Tool
