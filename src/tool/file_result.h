#pragma once

#include <optional>
#include <string>
#include <vector>

#include "edits/replacement.h"
#include "files/file_stamp.h"

namespace Tool {

// What a user is told of a place in a file.
struct Message {
    enum class Severity { Note, Warning, Error };
    Severity severity = Severity::Error;
    std::size_t line = 0;    // 0: of the file as a whole
    std::size_t column = 0;  // from 1, in bytes
    std::string text;
};

enum class Outcome {
    Unchanged,
    Changed,
    Refused,  // the source cannot be formatted
    Failed,   // it cannot be read or written
};

// What became of one file.
struct FileResult {
    std::string name;
    Outcome outcome = Outcome::Unchanged;
    std::string source = {};                     // as it is in the file
    std::string changed = {};                    // what is to become of it, with an outcome Changed
    std::vector<Message> messages = {};
    std::optional<Files::FileStamp> stamp = {};  // none for standard input

    const std::string& formatted() const { return outcome == Outcome::Changed ? changed : source; }
    Edits::Replacements replacements() const { return Edits::replacementsBetween(source, formatted()); }
    std::size_t heldBytes() const { return source.size() + changed.size(); }
};

}  // namespace Tool
