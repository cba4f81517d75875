#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cpp/token_kind.h"
#include "engine/cpp_expr_formatter.h"
#include "engine/source_hanging.h"

// What the parts of CppExprFormatter share: the state of one sweep. Each part is a file: the sweep itself
// (cpp_expr_formatter.cpp), the white space that is wanted between its tokens (expr_gaps.cpp), brackets with the commas
// in them (expr_groups.cpp), marks (expr_marks.cpp), and lines that are kept or joined (expr_lines.cpp). Directives are
// taken apart for it in expr_directives.cpp.
namespace Tessel {

inline bool isPresent(const OptionalText* setting) { return setting && setting->present; }

// The indentation of the elements of a group that break lines.
struct CppExprFormatter::Group::ElementScope {
    ElementScope(Zelmor::OIndentBuf& out, std::string indent, bool keepLeadingSpace, LayoutLog* log, KeyId indentKey)
        : indentScope(out, std::move(indent)), leadingSpace(out, keepLeadingSpace), told(log, indentKey) {}

    Zelmor::IndentScope indentScope;
    Zelmor::LeadingSpaceScope leadingSpace;
    LayoutLog::IndentKeyScope told;
};

// One sweep over a text.
struct CppExprFormatter::Run {
    Run(std::string_view wholeText, const ExprTokens& tokensOfText, Zelmor::OIndentBuf& output,
        ExprMode textMode, const OptionalText& whitespace, std::optional<LastMarks> marksBeforeName, bool keepsColumns,
        LayoutLog* log)
        : text(wholeText),
          sweep(wholeText, tokensOfText, output, keepsColumns, log),
          tokens(tokensOfText),
          mode(textMode),
          typeWhitespace(whitespace),
          nameFollows(marksBeforeName.has_value()),
          lastMarks(marksBeforeName.value_or(LastMarks::ByAnchor)) {}

    const ExprToken& current() const { return sweep.current(); }
    Zelmor::OIndentBuf& out() const { return sweep.out(); }
    int kindAt(std::size_t place) const { return Tessel::kindAt(tokens, place); }
    // Of the last token in front of `place` that is no comment or directive.
    int kindBefore(std::size_t place) const {
        while (place > 0 && roleAt(place - 1) == ExprRole::Trivia) --place;
        return place > 0 ? kindAt(place - 1) : Trn::kEndKind;
    }
    // The same behind it, or at it.
    int kindFrom(std::size_t place) const {
        while (roleAt(place) == ExprRole::Trivia) ++place;
        return kindAt(place);
    }
    ExprRole roleAt(std::size_t place) const {
        return place < tokens.size() ? tokens[place].role : ExprRole::Operand;
    }
    int previousKind() const { return previous == kNoToken ? Trn::kEndKind : kindAt(previous); }
    ExprRole previousRole() const { return previous == kNoToken ? ExprRole::Operand : tokens[previous].role; }

    std::string_view text;
    TextSweep sweep;
    const ExprTokens& tokens;
    ExprMode mode;
    const OptionalText& typeWhitespace;
    bool nameFollows;
    LastMarks lastMarks;  // in front of that name, or of the first one that a for declares
    MarkColumns declaratorMarks;
    bool keepsLines = false;                // those that begin inside the text, if there are any
    std::optional<HangingLines> hanging;    // of lines that are kept
    HangingLines::Text hangingText = HangingLines::Text::Statement;
    std::size_t firstText = 0;  // the first token that is no directive: these have no part in where lines hang
    FirstLine firstLine;        // the one that it stands in
    std::size_t hangingInBraces = kNoToken;  // begins the last line in braces that goes by these, not by its author
    int hiddenColumns = 0;      // of the line that is being written, as far as it is part of the text
    std::optional<SourceHanging> sourceHanging;  // made when it is asked first
    std::size_t previous = kNoToken;        // the last token that is no comment or directive
    const OptionalText* after = nullptr;    // what it wants behind itself, before any comment
    bool followsText = false;               // on the line that the text begins on
    bool startsAtMargin = false;            // the token that comes next, whatever the indentation
    bool sawMark = false;
    int literalColumn = 0;  // of the first of the literals that follow each other
    std::vector<Group> groups;
    BlocksInText* blocks = nullptr;
    std::size_t capture = kNoToken;  // the last "[", and the column of the first text of its line
    int captureColumn = 0;
    std::size_t blocksWritten = 0;
};

}  // namespace Tessel
