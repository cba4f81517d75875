#pragma once

#include <string_view>

// Comparisons that take ASCII letters of either case as equal.

char toLowerCase(char character);
bool equalsIgnoringCase(std::string_view left, std::string_view right);
bool startsWithIgnoringCase(std::string_view text, std::string_view prefix);
