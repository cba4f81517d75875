#pragma once

#include <string_view>

// Texts by their lines.
namespace Tessel {

inline bool holdsLineEnd(std::string_view text) { return text.find('\n') != std::string_view::npos; }
inline std::string_view firstLine(std::string_view text) { return text.substr(0, text.find('\n')); }
inline std::string_view lastLine(std::string_view text) { return text.substr(text.rfind('\n') + 1); }
inline int lengthOf(std::string_view text) { return static_cast<int>(text.size()); }

}  // namespace Tessel
