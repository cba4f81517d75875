#pragma once

#include <string_view>

namespace Tessel {

// What columnAfter tells, as people see it: characters count, not the bytes that they take in UTF-8, and wide ones
// twice. What is no UTF-8 counts as bytes.
int shownColumnAfter(std::string_view text, int column, int tabSize);

// By how many columns what is shown of the text's last line is less than columnAfter tells.
int hiddenColumns(std::string_view text, int tabSize);

}  // namespace Tessel
