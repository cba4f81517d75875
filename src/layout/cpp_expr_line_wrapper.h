#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/cpp_expr_formatter_base.h"
#include "layout/break_weights.h"
#include "layout/wrap_settings.h"
#include "layout/wrap_text.h"

namespace Tessel {

// What the wrapper has to know of a text besides the state of the output.
struct WrapContext {
    ExprMode mode = ExprMode::Expression;
    int trailingWidth = 0;         // of what follows the text and has to stay on its last line
    int commentWidth = 0;          // of a comment behind that
    bool endsLine = false;         // what follows the text, and the bracket around it, is put in another line
    bool contentIndented = false;  // the state's indentation is that of the content already
    bool keepsLines = false;       // the formatter lets lines begin between the elements, at the indentation
    bool isParted = false;         // one element to a line, once they are broken
    bool isInParentheses = false;  // the text is all that stands in them
    WeighedText weighed = WeighedText::Statement;
    std::size_t nameOffset = std::string_view::npos;  // in the text, of what is declared
    bool keepsName = false;  // on its line: what stands in front is no type
    std::span<const TextExtent> blocks;  // that somebody else breaks
    bool respacesCommas = false;   // the scheme says nothing about white space at the commas
    std::optional<int> declaratorColumn;  // of the first of the declarators that the text may go on with
};

// A part of a text that ends in front of a block that somebody else breaks, or with the text.
struct WrappedPiece {
    static constexpr std::size_t kNoBlock = static_cast<std::size_t>(-1);

    std::string text;
    std::size_t block = kNoBlock;  // which one of the context
};

// Breaks expressions and lists that are too long, where ExprLayout says. Takes the text as the formatter
// wrote it and the state of the output at which it will stand; what comes back has line breaks and
// continuation indentation in it and is to be written as it is (see writeRendered).
//
// Nothing but white space between tokens changes, and of that nothing but what stands at a line break. Once a
// text is wrapped, adjacent string literals stand below each other, whether or not the text was too long.
class CppExprLineWrapper : public CppExprFormatterBase {
public:
    // `source`, when given, is borrowed: the document that the texts are views of.
    explicit CppExprLineWrapper(const PropertySet& scheme, const Zelmor::TextDocument* source = nullptr);

    // An expression, condition or initializer. "return" stays on the first line, and so does what an
    // assignment assigns to.
    std::string wrap(std::string_view text, const Zelmor::IndentState& state,
                     const WrapContext& context = {});
    // The inside of a list in brackets, by LIST_WRAP_STRATEGY.
    std::string wrapList(std::string_view text, const Zelmor::IndentState& state,
                         const WrapContext& context = {});
    // The clauses of a "for" head. Lines begin just inside the "(".
    std::string wrapForClauses(std::string_view text, const Zelmor::IndentState& state,
                               const WrapContext& context = {});

    // Any text, where WRAP_BY_WEIGHT is at work: what stands between its blocks that have several lines, or are to
    // have them. Nothing where it is to be broken in another way.
    std::vector<WrappedPiece> wrapByWeight(std::string_view text, const Zelmor::IndentState& state,
                                           const WrapContext& context);

    const WrapSettings& settings() const { return settings_; }

private:
    bool read(std::string_view text, const WrapContext& context);
    int firstColumn(const Zelmor::IndentState& state) const;
    int columnOfOperand(std::size_t first, int column) const;
    TokenRange wholeText() const { return {0, text_.size()}; }
    TokenRange withoutPrefixes() const;
    bool weigh(const Zelmor::IndentState& state, const WrapContext& context);
    std::string render(const Zelmor::IndentState& state);
    std::vector<WrappedPiece> renderPieces(const Zelmor::IndentState& state);
    void endLine(std::size_t place, Zelmor::OIndentBuf& out) const;
    std::string whitespaceTo(const LineStart& start, const Zelmor::OIndentBuf& indented) const;
    void writeDirectiveAt(std::size_t place, const Zelmor::IndentState& state, Zelmor::OIndentBuf& out);
    void writeToken(std::size_t place, Zelmor::OIndentBuf& out);

    WrapSettings settings_;
    WrapText text_;
};

}  // namespace Tessel
