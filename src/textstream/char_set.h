#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Zelmor {

// Characters that are looked for in texts which are short, or hold one soon. The library's searches for one of several
// call a function for each character of the text.
class CharSet {
public:
    constexpr explicit CharSet(std::string_view characters) {
        for (const char c : characters) holds_[static_cast<unsigned char>(c)] = true;
    }

    constexpr bool holds(char c) const { return holds_[static_cast<unsigned char>(c)]; }

    // The place of the first one from `from` on, and that of the first other character; the end of the text where
    // there is none.
    constexpr std::size_t findIn(std::string_view text, std::size_t from = 0) const {
        while (from < text.size() && !holds(text[from])) ++from;
        return from;
    }
    constexpr std::size_t skipIn(std::string_view text, std::size_t from = 0) const {
        while (from < text.size() && holds(text[from])) ++from;
        return from;
    }
    // The place behind the last one, and that behind the last other character; 0 where there is none.
    constexpr std::size_t findBackIn(std::string_view text) const {
        std::size_t end = text.size();
        while (end > 0 && !holds(text[end - 1])) --end;
        return end;
    }
    constexpr std::size_t skipBackIn(std::string_view text) const {
        std::size_t end = text.size();
        while (end > 0 && holds(text[end - 1])) --end;
        return end;
    }

private:
    std::array<bool, 256> holds_{};
};

}  // namespace Zelmor
