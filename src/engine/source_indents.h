#pragma once

#include <string>
#include <string_view>

namespace Tessel {

// The result, which is the source with other white space, with the tabs and blanks that the source has in front of its
// lines, wherever they are as wide:
//
//     →g();        a line at column 8 keeps its tab,
//     ........h();  the other one its blanks
std::string withIndentsOfSource(std::string_view source, std::string_view result, int tabSize);

}  // namespace Tessel
