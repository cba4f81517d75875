#pragma once

#include <cstddef>
#include <string_view>

// #define GREETING	"a	tab"	/* a	tab */	"two"
//                ^^^^       ^^^^           ^^^^
namespace Tessel {

// The white space in a comment or directive whose tabs and blanks may become each other: that at the start of
// its further lines, and that between a directive's tokens. Line ends are not part of it.
//
// What the literals, header names and comments of a directive hold is theirs. Where an apostrophe may be one
// of a word or a number, and where a string is raw, all that follows counts as a literal.
class ConvertibleBlanks {
public:
    // Of nothing.
    ConvertibleBlanks() = default;
    // Borrows the text of one comment, or of one directive in which no literal goes on behind a line end.
    explicit ConvertibleBlanks(std::string_view text) : text_(text) {}

    // The next run, a view of the text; empty behind the last.
    std::string_view next();
    // What has not been looked at.
    std::string_view rest() const { return text_.substr(place_); }

private:
    std::string_view takeRun();
    void skipFixedText();
    std::size_t literalEnd() const;
    std::string_view wordBefore(std::size_t place) const;
    bool startsHeaderName() const;
    std::size_t endBehind(std::string_view closing, std::size_t from) const;

    std::string_view text_;
    std::size_t place_ = 0;
    std::size_t commentEnd_ = 0;  // of the comment around the place
};

}  // namespace Tessel
