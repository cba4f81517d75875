#include "engine/text_lines.h"

#include <algorithm>

#include "engine/gap.h"

namespace Tessel {

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(trimRight(text.substr(start, end - start)));
        start = end + 1;
    }
    return lines;
}

}  // namespace Tessel
