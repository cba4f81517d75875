// What the text is: tokens with the gaps between them, the lines that they stand in, and lists whose elements keep
// their distance from the bracket.
#include "layout/wrap_text.h"

#include <algorithm>
#include <cstdint>

#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/holds_any_of.h"
#include "engine/opaque_text.h"
#include "engine/operator_kinds.h"
#include "layout/line_text.h"

namespace Tessel {

namespace {

bool isEvenText(std::string_view text) {
    return !holdsAnyOf<'\t', '\n'>(text);
}

// Whether nothing stands between two tokens that come to stand on one line.
bool isJoinedTightly(const ExprToken& first, const ExprToken& second) {
    switch (first.role) {
        case ExprRole::GroupOpen:
        case ExprRole::TemplateOpen:
        case ExprRole::UnaryOperator:
            return true;
        default:
            break;
    }
    if (Cpp::isMemberAccess(first.kind) || Cpp::isMemberAccess(second.kind)) return true;
    return second.role == ExprRole::GroupClose || second.role == ExprRole::TemplateClose ||
           second.role == ExprRole::Separator;
}

// Or ends with it.
bool startsOperator(const ExprToken& token) {
    switch (token.role) {
        case ExprRole::BinaryOperator:
        case ExprRole::Separator:
        case ExprRole::GroupClose:
        case ExprRole::TemplateClose: return true;
        default: return false;
    }
}

// a and b: breaks as a && b does.
void readInfixWords(ExprTokens& tokens) {
    for (std::size_t place = 1; place + 1 < tokens.size(); ++place) {
        ExprToken& token = tokens[place];
        if (token.kind != Cpp::Identifier || token.role != ExprRole::Operand) continue;
        const int kind = Cpp::infixKind(token.text());
        if (kind == Trn::kEndKind || startsOperator(tokens[place + 1])) continue;
        token.kind = static_cast<std::int8_t>(kind);
        token.role = ExprRole::BinaryOperator;
    }
}

}  // namespace

void WrapText::read(std::string_view text, ExprMode mode, int trailingWidth, const SourceColumns& source,
                    std::span<const TextExtent> blocks, LambdaParameters parameters) {
    text_ = text;
    mode_ = mode;
    trailingWidth_ = trailingWidth;
    readExprTokens(text, mode, tokens_, blocks, nullptr, parameters);
    if (parameters == LambdaParameters::Declared) readInfixWords(tokens_);
    gaps_.clear();
    offsets_.clear();
    holdsUnknownText_ = false;
    std::size_t end = 0;
    int offset = 0;
    for (const ExprToken& token : tokens_) {
        const std::string_view gap = text.substr(end, token.offset - end);
        gaps_.push_back(gap);
        holdsUnknownText_ |= !isAllWhitespace(gap);
        offset += lengthOf(gap);
        offsets_.push_back(offset);
        offset += widthOf(token.text());
        end = token.end();
    }
    gaps_.push_back(text.substr(end));
    holdsUnknownText_ |= !isAllWhitespace(gaps_.back());
    starts_.assign(tokens_.size(), {kNone, false, 0});
    started_.clear();
    parted_.clear();
    splits_.clear();
    joined_.assign(tokens_.size(), false);
    startsLine_ = source.startsLine(text);
    readTraits();
    readComments(source);
    tailWidths_.clear();
    readElements(source);
}

void WrapText::readTraits() {
    traits_.assign(tokens_.size(), 0);
    nextUneven_.assign(tokens_.size() + 1, tokens_.size());
    for (std::size_t place = tokens_.size(); place-- > 0;) {
        unsigned traits = 0;
        const bool followsLineEnd = place > 0 && tokenText(place - 1).ends_with('\n');
        if (!isEvenText(tokenText(place))) traits |= UnevenText;
        if (followsLineEnd || !isEvenText(gaps_[place])) traits |= UnevenGap;
        const bool isParted = place > 0 && kindAt(place) == Cpp::Directive && !followsComments(place);
        if (isParted || followsLineEnd || holdsLineEnd(gaps_[place])) traits |= OwnLine;
        const bool areLiterals =
            place > 0 && kindAt(place) == Cpp::StringLiteral && kindAt(place - 1) == Cpp::StringLiteral;
        // A prefix directly behind a literal, as in "a"U"b", means something else apart.
        const bool isJoined = gaps_[place].empty() && !tokenText(place).starts_with('"');
        if (areLiterals && !isJoined) traits |= ContinuesLiteral;
        traits_[place] = static_cast<unsigned char>(traits);
        nextUneven_[place] = traits != 0 ? place : nextUneven_[place + 1];
    }
}

bool WrapText::followsComments(std::size_t place) const {
    while (place > 0 && !holdsLineEnd(gaps_[place])) {
        --place;
        if (kindAt(place) != Cpp::BlockComment) return false;
        const bool startsLine = place > 0 ? tokenText(place - 1).ends_with('\n') : startsLine_;
        if (startsLine || lineStart(place) || holdsLineEnd(gaps_[place])) return true;
    }
    return false;
}

// The lines of a comment keep their place below its first one.
void WrapText::readComments(const SourceColumns& source) {
    lastLines_.clear();
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const std::string_view text = tokenText(place);
        if (kindAt(place) != Cpp::BlockComment || !holdsLineEnd(text)) continue;
        lastLines_.emplace_back(place, columnsBehindStart(lastLine(text), source.columnOf(text), tabSize_));
    }
}

void WrapText::readElements(const SourceColumns& source) {
    elements_.clear();
    // Finding the column costs a walk over the line in front, which only the last text on the line may cause.
    if (!holdsLineEnd(text_)) return;
    bracketColumns_.assign(tokens_.size(), kNone);
    int column = source.columnOf(text_);
    std::vector<std::pair<std::size_t, int>> brackets;  // around the token, with their columns
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        column = columnOf(place, column);
        while (!brackets.empty() && tokens_[brackets.back().first].partner < place) brackets.pop_back();
        if (!brackets.empty() && place > 0 && startsOwnLine(place)) {
            const auto [bracket, bracketColumn] = brackets.back();
            const int offset = column - bracketColumn;
            if (kindAt(bracket) == Cpp::OpenParen && offset > 0) {
                elements_.push_back({place, bracket, column, offset});
            }
        }
        if (opensBracket(tokens_, place)) brackets.emplace_back(place, column);
        column = columnBehind(place, column);
    }
}

const WrapText::Element* WrapText::elementAt(std::size_t place) const {
    const auto element = std::ranges::lower_bound(elements_, place, {}, &Element::place);
    return element != elements_.end() && element->place == place ? &*element : nullptr;
}

void WrapText::placeBracket(std::size_t place, int column) {
    if (!elements_.empty()) bracketColumns_[place] = column;
}

bool WrapText::hasMoved(std::size_t place) const {
    const Element* element = elementAt(place);
    return element && columnOf(place, 0) != element->column;
}

int WrapText::kindAt(std::size_t place) const {
    return place < tokens_.size() ? tokens_[place].kind : Trn::kEndKind;
}

std::string_view WrapText::tokenText(std::size_t place) const {
    return tokens_[place].text();
}

void WrapText::respaceCommas(std::string_view before) {
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        const ExprToken& token = tokens_[place];
        if (opensBracket(tokens_, place)) {
            place = token.partner;
        } else if (token.role == ExprRole::Separator && token.kind == Cpp::Comma) {
            const bool isAmongTokens = place > 0 && place + 1 < tokens_.size();
            if (isAmongTokens && !startsOwnLine(place)) gaps_[place] = before;
            if (isAmongTokens && !startsOwnLine(place + 1)) gaps_[place + 1] = " ";
        }
    }
    measureGaps();
}

// Statements among the arguments of a macro stay in their lines.
void WrapText::joinLines() {
    int depth = 0;
    for (std::size_t place = 1; place < tokens_.size(); ++place) {
        const ExprToken& before = tokens_[place - 1];
        depth += before.kind == Cpp::OpenParen ? 1 : before.kind == Cpp::CloseParen ? -1 : 0;
        if (before.kind == Cpp::Semicolon && depth > 0) continue;
        if (before.kind == Cpp::OpenBrace && before.partner != kNoToken && before.partner >= place) {
            place = before.partner;
            continue;
        }
        joinAt(place);
    }
    endJoining();
}

void WrapText::joinLinesAndRows(int column) {
    joinRows(column);
    endJoining();
}

void WrapText::endJoining() {
    measureGaps();
    std::erase_if(elements_, [this](const Element& element) { return !startsOwnLine(element.place); });
}

void WrapText::pad(std::size_t place, int blanks) {
    constexpr std::string_view many = "                                ";
    gaps_[place] = many.substr(0, static_cast<std::size_t>(blanks));
}

void WrapText::joinAt(std::size_t place) {
    const ExprToken& before = tokens_[place - 1];
    const bool isApart = tokens_[place].role == ExprRole::Trivia || before.role == ExprRole::Trivia;
    if (isApart || !holdsLineEnd(gaps_[place])) return;
    if (mode_ == ExprMode::Expression && startsMacro(place)) return;
    const bool isTight = isJoinedTightly(before, tokens_[place]) &&
                         !Cpp::wouldJoin(tokenText(place - 1), tokenText(place));
    gaps_[place] = isTight ? "" : " ";
    joined_[place] = true;
}

// Behind the call of a macro that brings what separates the two:
//
//     ENTRY(first)
//     ENTRY(second)
bool WrapText::startsMacro(std::size_t place) const {
    const ExprToken& before = tokens_[place - 1];
    const bool isCall = before.role == ExprRole::GroupClose && before.partner > 0 &&
                        kindAt(before.partner - 1) == Cpp::Identifier;
    return isCall && kindAt(place) == Cpp::Identifier && tokens_[place].role == ExprRole::Operand;
}

bool WrapText::beganLine(std::size_t place) const {
    if (joined_[place]) return true;
    if (place == 0 || !joined_[place - 1]) return false;
    const ExprRole role = tokens_[place - 1].role;
    return role == ExprRole::BinaryOperator || role == ExprRole::Separator;
}

void WrapText::measureGaps() {
    int offset = 0;
    for (std::size_t place = 0; place < tokens_.size(); ++place) {
        offsets_[place] = offset + lengthOf(gaps_[place]);
        offset = offsets_[place] + widthOf(tokenText(place));
    }
    readTraits();
}

}  // namespace Tessel
