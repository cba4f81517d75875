#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "tool/file_result.h"
#include "tool/options.h"
#include "tool/output.h"

namespace Tool {

// Tells a user, or a machine, what became of files.
class Reporter {
public:
    virtual ~Reporter() = default;

    // The messages of a file and, where nothing is written, what would change.
    virtual void report(const FileResult& result) = 0;
    // Something about another file than those that are formatted.
    virtual void note(const std::string& file, const Message& message) = 0;
    // All files are done.
    virtual void finish() = 0;
};

struct ReportPlace {
    Output& output;
    std::ostream& errors;
    bool isColored = false;  // what goes to `errors`
};

std::unique_ptr<Reporter> makeReporter(const Options& options, const ReportPlace& place);

// A message as compilers write it, with the line of the source and a caret, should it have a place there.
//
//     main.cpp:3:5: error: The statement cannot be parsed.
//         3 |     a b c
//           |     ^
std::string messageText(const std::string& file, const Message& message, std::string_view source, bool isColored);

}  // namespace Tool
