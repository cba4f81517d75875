#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scheme/property_set.h"

namespace Bench {

enum class Fault { Refused, OtherTokens, OtherTree, SecondRunDiffers, Crashed, Hung, KeptUnread };

// One thing that is wrong with a file.
struct Finding {
    Fault fault = Fault::Refused;
    std::string place;  // "line:column", "line", or empty; in the file, or in its result for a second run
    std::string message;
    std::string excerpt;  // the line at the place
};

// A number that files are asked for, and that is added up.
struct Count {
    std::string name;
    long value = 0;
};

// What one file gave.
struct FileReport {
    double seconds = 0;  // of the first run
    std::vector<Count> counts;
    std::vector<Finding> findings;

    // The report in one text, and read from it.
    std::string packed() const;
    static FileReport unpacked(std::string_view text);
};

// Formats the file, and checks that nothing but white space changed and that a second run changes nothing.
FileReport checkFile(const Tessel::PropertySet& scheme, const std::string& path);

}  // namespace Bench
