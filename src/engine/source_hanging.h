#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "engine/hanging_lines.h"

namespace Tessel {

// Where lines would hang in the source itself, by the columns that its author gave to what they continue. Goes forward
// over the tokens of a text, as far as it is asked.
class SourceHanging {
public:
    struct Start {
        int indentColumn = 0;  // as for HangingLines
        int column = 0;        // of the first token
    };

    // All are borrowed; the text begins with its first token, or with white space.
    SourceHanging(std::string_view text, const ExprTokens& tokens, HangingLines::Text kind, Start start,
                  const HangingIndents& indents, int tabSize)
        : text_(text),
          tokens_(tokens),
          hanging_(tokens, kind, start.indentColumn, indents, tabSize),
          tabSize_(tabSize),
          column_(start.column) {}

    // For the token that begins a line there; to be asked in the order of the tokens.
    int columnFor(std::size_t place);

private:
    void pass();

    std::string_view text_;
    const ExprTokens& tokens_;
    HangingLines hanging_;
    int tabSize_;
    std::size_t place_ = 0;  // the next token,
    int column_;             // and where it stands
    bool startsLine_ = false;
};

}  // namespace Tessel
