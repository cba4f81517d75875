#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TesselUI {

// A line of a scheme file that does not do what it seems to; line 0 is the file as a whole.
struct SchemeFault {
    std::size_t line = 0;
    std::string text;
};

// Keys that nobody knows, types and values that make a line act as absent, a version that is missing, a text that is
// no scheme.
std::vector<SchemeFault> lintScheme(std::string_view text);

}  // namespace TesselUI
