#pragma once

#include <string>
#include <string_view>

namespace Tool {

// A page that needs nothing beside itself. The title is plain text, the body markup.
std::string htmlPage(std::string_view title, std::string_view style, std::string_view body);

}  // namespace Tool
