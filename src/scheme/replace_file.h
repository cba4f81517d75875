#pragma once

#include <string>
#include <string_view>

namespace TesselUI {

// A file that the process may not write, or whose owner has taken every write permission from it: the latter
// protects a file from the superuser too, and from being replaced by renaming.
bool isReadOnlyFile(const std::string& path);

// Gives a file a new content so that, whatever happens, it holds either all of the old one or all of the new
// one: the content is written to a file beside it that then takes its place. Owner and permissions stay, and
// a link keeps pointing at the file. False, with the file as it was, when that cannot be done.
bool replaceFile(const std::string& path, std::string_view content);

}  // namespace TesselUI
