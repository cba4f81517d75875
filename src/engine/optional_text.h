#pragma once

#include <string>

namespace Tessel {

// What reading a string property yields. A text that is not present leaves the input's white space as it is;
// a present and empty one removes it.
struct OptionalText {
    bool present = false;
    std::string text;

    bool hasLineFeed() const { return present && text.find('\n') != std::string::npos; }
};

inline const OptionalText kAsInInput;
inline const OptionalText kNothing{true, ""};
inline const OptionalText kBlank{true, " "};
inline const OptionalText kLineFeed{true, "\n"};

}  // namespace Tessel
