#pragma once

#include <string>

// Backslash escapes, as scheme files and C++ literals write them, and printf-style text of any length.

namespace Zelmor {

// Replaces tab, line feed, vertical tab, carriage return, both quotes and the backslash by their
// two-character escapes: a<tab>b becomes a\tb. Every other character stays as it is.
void escape(std::string& text);

// The inverse of escape: \\ \n \r \t \v become their characters, any other backslash is dropped.
void unescape(std::string& text);

// The text that printf would write for the format and its arguments. Empty when formatting fails.
[[gnu::format(printf, 1, 2)]] std::string formatString(const char* format, ...);

}  // namespace Zelmor
