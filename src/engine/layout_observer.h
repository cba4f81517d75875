#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "scheme/key_id.h"

namespace Zelmor {
class TextDocument;
}

// Telling which key decided what, while a text is formatted.
//
// Offsets are those of the source as the job sees it: without a byte-order mark, every line end one line feed. The
// document handed to `begin` is that text; its positionOf() makes lines and columns of them. Where columns are told,
// tabs count as the scheme's TAB_SIZE says.
namespace Tessel {

// White space, of which a rule has looked up what the scheme wants there. It may be empty. What is written there lives
// for the call alone.
struct DecidedGap {
    // What decided, or would if the scheme had a value. None where nothing of the scheme did: the proof that two tokens
    // stay apart, or a line end that a comment needs.
    KeyId key;
    std::size_t offset = 0;  // of the white space that was found; what follows it stands at its end
    std::string_view found;  // a view of the source
    // What the rule asks for there. The indentation of the line that it begins is put behind it by others. As found
    // where the scheme has no value.
    std::string_view written;
    bool hasValue = false;  // the scheme has one for the key, or there is one by default
    KeyId indentKey;        // of the indentation of the line that what is written begins; none elsewhere
    // The construct around the gap stands on one line in the source, so that it may stay there whatever the scheme has
    // for this gap: an empty body, `{ return; }`, `if (a) b();`.
    bool isOnOneLine = false;
    // The column in the source from which the scheme's value would count, should it begin a line: where the construct
    // around the gap begins its first line; among the contents of a body, where the first of these begins one.
    int baseColumn = 0;

    std::size_t end() const { return offset + found.size(); }
};

// What the source does where a key is not about one gap: an indentation, the side of a mark, a switch.
struct Measured {
    KeyId key;
    std::size_t offset = 0;  // of the token that was looked at
    // A text for keys of texts, the white space of an indentation relative to what it is indented from, that of
    // continuation lines and rows in blanks; else a number, 0 and 1 for switches.
    std::variant<int, std::string> value;
};

// Hears of every place at which a rule looks at a key, those keys too that the scheme has no value for.
//
// Rules may try one layout, and then another: of several reports of gaps that end at one place, the last counts.
// Reports come roughly in the order of the text, but not strictly.
class LayoutObserver {
public:
    virtual ~LayoutObserver() = default;

    // The source lives as long as the job.
    virtual void begin(const Zelmor::TextDocument& source) = 0;
    virtual void decided(const DecidedGap& gap) = 0;
    virtual void measured(const Measured& measure) = 0;
};

// The value that a scheme would have for a gap to be as it was found: line feeds, and behind the last of them what
// stands further to the right than the base column. Without line feeds, what was found.
std::string valueFound(const DecidedGap& gap, int tabSize);

}  // namespace Tessel
