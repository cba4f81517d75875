#pragma once

// What the program says about itself.

namespace Cli {

inline constexpr const char* PRODUCT_NAME = "Vantrel C++";

// Printed with the whole usage. %s is the version.
inline constexpr const char* BANNER =
    "Vantrel C++ %s\r\n"
    "Lays out C and C++ sources the way your team likes to read them.\r\n"
    "\r\n"
    "Website: https://vantrel.example\r\n"
    "Support: support@vantrel.example\r\n";

// The file name that stands for standard input or standard output.
inline constexpr const char* STANDARD_STREAM_NAME = "-";

}  // namespace Cli
