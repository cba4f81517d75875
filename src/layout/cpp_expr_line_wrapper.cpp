#include "layout/cpp_expr_line_wrapper.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/opaque_text.h"
#include "layout/expr_layout.h"
#include "layout/first_wrap_token.h"
#include "layout/line_search.h"
#include "layout/line_text.h"

namespace Tessel {

namespace {

using Zelmor::IndentScope;
using Zelmor::IndentState;
using Zelmor::LeadingSpaceScope;
using Zelmor::OIndentBuf;

int indentColumn(const IndentState& state) {
    return columnAfter(state.indent, 0, state.tabSize);
}

std::ptrdiff_t lineEnds(std::string_view text) {
    return std::count(text.begin(), text.end(), '\n');
}

}  // namespace

CppExprLineWrapper::CppExprLineWrapper(const PropertySet& scheme, const Zelmor::TextDocument* source)
    : CppExprFormatterBase(scheme, source),
      settings_(CppExprFormatterBase::scheme()),
      text_(settings_.tabSize, settings_.rightMargin, settings_.weighsBreaks()) {}

std::string CppExprLineWrapper::wrap(std::string_view text, const IndentState& state,
                                     const WrapContext& context) {
    if (!read(text, context)) return std::string(text);
    ExprLayout layout(text_, settings_, indentColumn(state));
    const int column = firstColumn(state);
    const bool isTooLong = layout.isTooLong(wholeText(), column);
    const bool isCommentBeyond =
        context.commentWidth > 0 &&
        !text_.fits(wholeText(), column, context.trailingWidth + context.commentWidth, Literals::Joined);
    if ((isTooLong || isCommentBeyond) && weigh(state, context)) return render(state);
    if (isTooLong) {
        const bool isDeclaratorList = context.declaratorColumn && layout.holdsElements(wholeText());
        if (isDeclaratorList) layout.setAlignment(*context.declaratorColumn);
        const TokenRange operand = isDeclaratorList ? wholeText() : withoutPrefixes();
        const int prefixEnd = text_.measure({0, operand.first}, column).column;
        const int start = operand.first == 0 ? column : columnOfOperand(operand.first, prefixEnd);
        const bool followsAssignment =
            operand.first > 0 && isIn(TokenClasses::assignmentTokens, text_.kindAt(operand.first - 1));
        layout.breakWithLastResort(operand, start, followsAssignment);
    }
    return render(state);
}

std::string CppExprLineWrapper::wrapList(std::string_view text, const IndentState& state,
                                         const WrapContext& context) {
    if (!read(text, context)) return std::string(text);
    if (context.respacesCommas) text_.respaceCommas(settings_.comma == SeparatorPlace::EndsLine ? "" : " ");
    ExprLayout layout(text_, settings_, indentColumn(state));
    if (context.contentIndented) layout.setContentIndented();
    if (context.keepsLines) layout.setAtIndent();
    const int column = firstColumn(state);
    const bool isTooLong = layout.isTooLong(wholeText(), column);
    if (isTooLong && context.weighed != WeighedText::Statement && weigh(state, context)) return render(state);
    if (settings_.lists != ListStrategy::Keep && isTooLong) {
        if (context.isParted) {
            layout.partList(wholeText(), column);
        } else if (settings_.lists == ListStrategy::Pack) {
            if (context.isInParentheses) {
                layout.packWithLastResort(wholeText(), column);
            } else {
                layout.packList(wholeText(), column);
            }
        } else {
            layout.breakExpression(wholeText(), column);
        }
    }
    return render(state);
}

std::string CppExprLineWrapper::wrapForClauses(std::string_view text, const IndentState& state,
                                               const WrapContext& context) {
    if (!read(text, context)) return std::string(text);
    ExprLayout layout(text_, settings_, indentColumn(state), ExprLayout::Clauses::Separate);
    const int column = firstColumn(state);
    if (layout.isTooLong(wholeText(), column) && weigh(state, context)) return render(state);
    if (layout.isTooLong(wholeText(), column)) layout.breakForClauses(wholeText(), column);
    return render(state);
}

std::vector<WrappedPiece> CppExprLineWrapper::wrapByWeight(std::string_view text, const IndentState& state,
                                                           const WrapContext& context) {
    if (!settings_.weighsWholes() || !read(text, context)) return {};
    const int column = firstColumn(state);
    const int widthBehind = context.trailingWidth + context.commentWidth;
    const bool isWithinMargin = text_.fits(wholeText(), column, widthBehind, Literals::Joined);
    if (!isWithinMargin && !weigh(state, context)) return {};
    return renderPieces(state);
}

// Says false where the lines are put in another way.
bool CppExprLineWrapper::weigh(const IndentState& state, const WrapContext& context) {
    if (!settings_.weighsWholes()) return false;
    const std::vector<ExprToken>& tokens = text_.tokens();
    const auto offsetOf = [](const ExprToken& token) { return std::size_t{token.offset}; };
    const auto name = std::ranges::find(tokens, context.nameOffset, offsetOf);
    const std::size_t namePlace = name == tokens.end() ? kNoToken : static_cast<std::size_t>(name - tokens.begin());
    LineSearch search(text_, settings_, {context.weighed, namePlace, indentColumn(state), context.keepsName});
    return search.lay(firstColumn(state), context.trailingWidth, context.commentWidth);
}

// The column of the first token. What follows a directive stands where the text would begin without it.
int CppExprLineWrapper::firstColumn(const IndentState& state) const {
    return text_.kindAt(0) == Cpp::Directive ? state.column : text_.columnOf(0, state.column);
}

// The column from which an operand is laid out whose first token stands behind `column`. Where it begins a line behind
// directives, the formatter has put it where it belongs.
int CppExprLineWrapper::columnOfOperand(std::size_t first, int column) const {
    const bool followsDirective = settings_.weighsBreaks() && text_.kindAt(first) == Cpp::Directive;
    const std::size_t place = followsDirective ? nextPlace(text_.tokens(), first) : first;
    if (place == first || place >= text_.size()) return text_.columnOf(first, column);
    return columnAfter(lastLine(text_.gap(place)), 0, settings_.tabSize);
}

// Says false for a text that is left as it is: without tokens, or with something else between them.
bool CppExprLineWrapper::read(std::string_view text, const WrapContext& context) {
    if (!settings_.wrapsLines()) return false;
    text_.read(text, context.mode, context.trailingWidth, sourceColumns(), context.blocks, lambdaParameters());
    if (settings_.keepsLineBreaks && !context.keepsLines) {
        if (settings_.weighsWholes() && text_.hasRows(LineSearch::kMostTokens)) {
            text_.joinLinesAndRows(sourceColumns().columnOf(text));
        } else {
            text_.joinLines();
        }
    }
    return text_.size() > 0 && !text_.holdsUnknownText();
}

// What is left of the text behind "return" and behind the operator of an assignment whose left side holds no
// other operators.
TokenRange CppExprLineWrapper::withoutPrefixes() const {
    const std::vector<ExprToken>& tokens = text_.tokens();
    std::size_t first = tokens.size() > 1 && text_.kindAt(0) == Cpp::KeywordReturn ? 1 : 0;
    std::size_t closing = 0;  // of the brackets around the token
    for (std::size_t place = first; place + 1 < tokens.size(); ++place) {
        const ExprToken& token = tokens[place];
        const int kind = token.kind;
        if (token.role == ExprRole::TemplateOpen || token.role == ExprRole::TemplateClose) continue;
        if (settings_.weighsBreaks() && kind == Cpp::OpenBracket && token.partner != kNoToken) {
            place = token.partner;
            continue;
        }
        if (settings_.weighsBreaks() && isIn(TokenClasses::comparisonTokens, kind)) break;
        if (isIn(TokenClasses::binaryTokens, kind) || isIn(TokenClasses::logicalTokens, kind)) break;
        if (token.partner != kNoToken) closing = std::max<std::size_t>(closing, token.partner);
        if (isIn(TokenClasses::assignmentTokens, kind) && place >= closing) {
            first = place + 1;
            break;
        }
    }
    return {first, tokens.size()};
}

std::string CppExprLineWrapper::render(const IndentState& state) { return std::move(renderPieces(state).front().text); }

// The text with its line breaks, in the pieces that stand between blocks that are broken. Whatever does not stand at a
// line break is copied.
std::vector<WrappedPiece> CppExprLineWrapper::renderPieces(const IndentState& state) {
    std::vector<WrappedPiece> pieces;
    std::size_t block = 0;
    const OIndentBuf indented(state);
    OIndentBuf out(state);
    IndentScope noIndent(out, {});
    LeadingSpaceScope keepSpace(out, true);
    int literalColumn = 0;
    int hidden = 0;  // columns of the line that nobody sees
    for (std::size_t place = 0; place < text_.size(); ++place) {
        const LineStart* start = text_.lineStart(place);
        if (text_.kindAt(place) == Cpp::Directive) {
            writeDirectiveAt(place, state, out);
            continue;
        }
        if (start || text_.isStacked(place, literalColumn)) {
            endLine(place, out);
            out.write(start ? whitespaceTo(*start, indented) : indentToColumn(indented, literalColumn));
        } else if (text_.hasMoved(place)) {
            endLine(place, out);
            out.write(indentToColumn(indented, text_.columnOf(place, out.column())));
        } else {
            writeRendered(text_.gap(place), out);
        }
        if (!out.lineHasText()) hidden = 0;
        text_.placeBracket(place, out.column() - hidden);
        if (!text_.continuesLiteral(place)) literalColumn = out.column() - hidden;
        const bool isBlock = text_.tokens()[place].role == ExprRole::Block;
        if (text_.isLongBlock(place) || text_.isParted(place)) {
            pieces.push_back({out.takeText(), block});
        } else {
            writeToken(place, out);
        }
        if (isBlock) ++block;
        if (text_.tokenText(place).find('\n') != std::string_view::npos) hidden = 0;
        hidden += text_.hiddenColumnsOf(place);
    }
    writeRendered(text_.gap(text_.size()), out);
    pieces.push_back({out.takeText()});
    return pieces;
}

// Ends the line in front of a token, unless a comment has done so. Empty lines stay.
void CppExprLineWrapper::endLine(std::size_t place, OIndentBuf& out) const {
    const bool isEnded = out.column() == 0;
    const std::ptrdiff_t wanted = std::max<std::ptrdiff_t>(lineEnds(text_.gap(place)), isEnded ? 0 : 1);
    for (std::ptrdiff_t count = 0; count < wanted; ++count) out.write("\n");
}

std::string CppExprLineWrapper::whitespaceTo(const LineStart& start, const OIndentBuf& indented) const {
    if (!start.takesWrapIndent) return indentToColumn(indented, start.column);
    return indentToColumn(indented, start.indent) + settings_.wrapIndent;
}

void CppExprLineWrapper::writeDirectiveAt(std::size_t place, const IndentState& state, OIndentBuf& out) {
    const std::string_view gap = text_.gap(place);
    if (text_.followsComments(place)) {
        writeDirective(gap, text_.tokenText(place), out);
        return;
    }
    const bool startsLine = out.column() == 0 || gap.find('\n') != std::string_view::npos;
    endLine(place, out);
    IndentScope indent(out, state.indent);
    LeadingSpaceScope dropSpace(out, false);
    const std::string_view indentation = startsLine ? gap.substr(gap.rfind('\n') + 1) : std::string_view();
    writeDirective(indentation, text_.tokenText(place), out);
}

void CppExprLineWrapper::writeToken(std::size_t place, OIndentBuf& out) {
    const std::string_view text = text_.tokenText(place);
    if (text_.kindAt(place) == Cpp::BlockComment && text.find('\n') != std::string_view::npos) {
        writeComment(text, out);
    } else if (const WrapText::Split* split = text_.splitAt(place)) {
        writeRendered(text.substr(0, split->offset), out);
        out.write("\n");
        writeRendered(indentToColumn(out, split->column), out);
        writeRendered(text.substr(split->offset), out);
    } else {
        writeRendered(text, out);
    }
}

}  // namespace Tessel
