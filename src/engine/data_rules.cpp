// char*p=0,*q;        char *p = 0, *q;
// int  a [4]={1,2};   int a[4] = {1, 2};
#include <algorithm>
#include <vector>

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/declarator_text.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/source_copy.h"
#include "engine/type_text.h"
#include "textstream/char_set.h"

namespace Tessel {

namespace {

constexpr Zelmor::CharSet kPointerMarks("*&");

// Whether a tail holds an initializer: "= 1", "(1)" or "{1}", as opposed to the width of a bit field.
bool isInitializer(const Cpp::ExprNode& tail) {
    return !tail.startsWith(':');
}

// Where the name begins whose last part, "::b" of `A<T>::b`, follows the text: at the "A".
std::size_t qualifiedNameStart(std::string_view type) {
    ExprTokens tokens;
    readExprTokens(type, ExprMode::Declaration, tokens);
    std::size_t place = tokens.size();
    std::size_t start = type.size();
    while (place > 0) {
        const ExprToken& token = tokens[--place];
        if (token.role == ExprRole::TemplateClose && token.partner > 0) {
            place = token.partner;
        } else if (token.kind == Cpp::Identifier) {
            start = token.offset;
            if (!token.text().starts_with("::")) break;
        } else {
            break;
        }
    }
    // A literal that the name is joined to means something else apart.
    const bool isJoined = start > 0 && Cpp::wouldJoin(type.substr(start - 1, 1), type.substr(start));
    return isJoined ? 0 : start;
}

// Where the "(" stands that the name follows in `void *(*name)(int)`; the text's size where there is none.
std::size_t declaratorParen(std::string_view type) {
    if (type.find('(') == std::string_view::npos) return type.size();
    ExprTokens tokens;
    readExprTokens(type, ExprMode::Declaration, tokens);
    const auto isOpen = [](const ExprToken& token) {
        return token.kind == Cpp::OpenParen && token.partner == kNoToken;
    };
    const auto paren = std::ranges::find_if(tokens, isOpen);
    return paren == tokens.end() ? type.size() : paren->offset;
}

}  // namespace

// Declarators behind a class body, in the same declaration, are not aligned.
void CppFormatter::visit(Cpp::DataDeclNode* declaration) {
    const bool followsClassBody = previousSibling_ && previousSibling_ == lastClosedClass_;
    const bool mayMove = settings_.alignsDataNames || settings_.alignsMemberNames || settings_.alignsDataInitializers;
    if (!mayMove && copySettledStatement(*declaration)) {
        takeTemplateColumn();
        return;
    }
    applyPendingWhitespace(*declaration);
    const std::optional<int> templateColumn = takeTemplateColumn();
    if (followsClassBody || Cpp::as<Cpp::EnumDeclNode>(previousSibling_)) writeGapBehindBody(*declaration);
    const int column = copyUpToConstruct(*declaration);
    const int base = templateColumn.value_or(column);
    BaseColumnScope scope(*this, base, declaration);
    bool isAligned = false;
    bool startsLine = false;
    if (declaration->type() && declaration->name()) {
        const std::string_view type = writer_.readGap(declaration->name()->start());
        const bool isQualified = declaration->name()->startsWith(':');
        isAligned = !followsClassBody && !isQualified && alignsName(*declaration, type);
        if (isAligned) {
            const Keyed<bool>& alignment =
                settings_.alignsDataNames ? settings_.alignsDataNames : settings_.alignsMemberNames;
            writeAlignedType(type, alignment.key, columns_.dataNames.at(declaration));
        } else if (settings_.keepsData) {
            writer_.write(type);
            writer_.leave(trailingBlanks(type), WantedText(trailingBlanks(type), settings_.keepsData.key));
        } else if (exprFormatter_.settings().asterisk.anchor >= 0 && trim(type).find_first_not_of('*') == type.npos) {
            writer_.write(trim(type));  // struct { … } *p;
        } else if (settings_.formatsOtherGaps && trimRight(type).ends_with('(')) {
            writer_.write(type);  // char *(names[])
        } else {
            // The first part of a qualified name counts to the type in the tree.
            const std::size_t end = isQualified ? qualifiedNameStart(type) : declaratorParen(type);
            if (end > 0) {
                const std::string_view front = type.substr(0, end);
                OptionalText wanted = settings_.afterDataType;
                if (settings_.alignsDataInitializers && wanted.hasLineFeed()) {
                    wanted.text = madeTexts_.keep(onOneLine(wanted.text));
                }
                const bool isKept = keepsBreak(front, wanted) && !isLineBreak(front);
                // int FIXTURE(a)::b: what a macro makes is part of the name.
                const bool isPartOfName = settings_.keepsUnrecognized && isQualified && front.ends_with(')');
                const OptionalText& between = isPartOfName ? kAsInInput : isKept ? keptBreak(front) : wanted;
                writeType(front, between, true, lastMarksOf(*declaration, front));
            }
            startsLine = !out().lineHasText();
            const std::string_view qualifier = type.substr(end);
            // In a run that is aligned, the text is what has been measured.
            if (formatsArgumentsOf(qualifier) && !columns_.dataNames.contains(declaration)) {
                exprFormatter_.formatTypeText(qualifier, out(), kAsInInput);
            } else {
                writer_.write(qualifier);
            }
        }
        startsLine = startsLine || !out().lineHasText() || startsLineWithMarks(type);
    } else if (declaration->type()) {
        copyThrough(*declaration->type());
    }
    formatDeclarators(*declaration, isAligned,
                      startsLine ? HangingLines::Text::DeclaratorsInLine : HangingLines::Text::Declarators);
}

// Whether nothing but the marks of the type stands on the line.
bool CppFormatter::startsLineWithMarks(std::string_view type) {
    const std::size_t lineFeed = type.rfind('\n');
    const auto isMark = [](char c) { return c == '*' || c == '&' || isWhitespace(c); };
    if (lineFeed == type.npos || !std::ranges::all_of(type.substr(lineFeed), isMark)) return false;
    const auto marks = std::ranges::count_if(type.substr(lineFeed), [](char c) { return !isWhitespace(c); });
    return out().column() - out().textColumn() <= marks;
}

// The marks of several names stand against each, also in front of the first.
LastMarks CppFormatter::lastMarksOf(const Cpp::DataDeclNode& declaration, std::string_view type) const {
    if (!exprFormatter_.settings().betweenDeclarators.present || !endsWithMarks(type)) return LastMarks::ByAnchor;
    const std::size_t length = offsetOf(source_, declaration.end()) - offsetOf(source_, declaration.name()->start());
    const std::string_view declarators = sourceFrom(*declaration.name()).substr(0, length);
    return hasMarkBehindComma(declarators) ? LastMarks::AgainstName : LastMarks::ByAnchor;
}

// `struct { int a; }  b;`, `enum { A }b;`
void CppFormatter::writeGapBehindBody(const Cpp::DataDeclNode& declaration) {
    const std::string_view gap = gapBefore(declaration);
    const bool isColumn = exprFormatter_.keepsColumns() && isColumnGap(gap);
    if (!settings_.formatsOtherGaps || !isAllWhitespace(gap) || isLineBreak(gap) || isColumn) return;
    writer_.replace(writer_.readGap(declaration.start()), WantedText(" ", settings_.formatsOtherGaps.key));
}

bool CppFormatter::alignsName(const Cpp::DataDeclNode& declaration, std::string_view type) const {
    const bool isWanted = settings_.alignsDataNames || (settings_.alignsMemberNames && inClassBody_);
    return isWanted && !settings_.keepsData && columns_.dataNames.contains(&declaration) &&
           !writer_.holdsOpaque(type) && !writer_.followsJoinedLiteral();
}

char CppFormatter::lastCharacterOf(const Cpp::SyntaxNode& node) const {
    return source_.text()[offsetOf(source_, node.end()) - 1];
}

// The names with what belongs to them, and the initializer or width.
void CppFormatter::formatDeclarators(const Cpp::DataDeclNode& declaration, bool isAligned,
                                     HangingLines::Text hanging) {
    const MarkColumns marks = columnsOfMarks(declaration);
    const Cpp::ExprNode* tail = declaration.tail();
    if (!tail) {
        writeLoneNames(declaration, isAligned, marks);
        copyThrough(declaration);
        return;
    }
    const std::string_view name = writer_.readGap(tail->start());
    const std::size_t end = lineEndBehind(name);
    std::optional<int> nameColumn;
    if (hangsFromName(declaration, name)) nameColumn = out().column();
    writeDataName(name.substr(0, end), isAligned, true, marks);
    // A value behind a comment or a directive that ends its line hangs from the declaration; lists go by their line.
    const bool isValue = tail->startsWith('=') && !trimLeft(tail->text().substr(1)).starts_with('{');
    const bool startsLine = isValue && end > 0 && name[end - 1] == '\n';
    if (startsLine && hangsLines()) {
        writeKeptBreakAt(name.substr(end), columnAfter(exprFormatter_.settings().hanging.wrap.text, baseColumn(),
                                                       out().tabSize()));
    } else {
        writeTailGap(declaration, trimRight(name), name.substr(end), isAligned);
    }
    writeDeclarators(writer_.readThrough(tail->end()), tail->bodies(), hanging, {nameColumn, marks});
}

// Up to the ";". What an access label ends, as a macro in front of it, has no white space of its own behind it.
void CppFormatter::writeLoneNames(const Cpp::DataDeclNode& declaration, bool isAligned, MarkColumns marks) {
    if (lastCharacterOf(declaration) != ';') return;
    const std::string_view name = writer_.readGap(declaration.end());
    const std::string_view blanks = trailingBlanks(name);
    const bool staysApart = blanks.empty() || isLineBreak(blanks) || endsWithLineEndToken(name);
    if (!settings_.formatsOtherGaps || staysApart) return writeDataName(name, isAligned, false, marks);
    writeDataName(trimRight(name), isAligned, false, marks);
    writer_.replace(blanks, WantedText("", settings_.formatsOtherGaps.key));
}

// `int a = 1,` and names below: whether these stand below the name. Behind a mark, they would stand below that. Where
// operands hang, declarators behind one that is constructed, `A a(1)`, do from their statement.
bool CppFormatter::hangsFromName(const Cpp::DataDeclNode& declaration, std::string_view name) const {
    const bool hasMarks = declaration.type() && endsWithMarks(declaration.type()->text());
    const std::string_view written = trimRight(name);
    if (written.empty() || !Cpp::isNameStart(written.front()) || hasMarks) return false;
    const Cpp::ExprNode& tail = *declaration.tail();
    return tail.text().starts_with('=') || (!exprFormatter_.settings().hanging.operand.present && isInitializer(tail));
}

// Of the marks that have just been written, against the name.
MarkColumns CppFormatter::columnsOfMarks(const Cpp::DataDeclNode& declaration) {
    if (!hangsLines() || !declaration.type() || !declaration.name()) return {};
    const std::string_view source = source_.text();
    const std::size_t end = source.size() - sourceFrom(*declaration.name()).size();
    const std::string_view type = trimRight(source.substr(0, end));
    const std::size_t marks = kPointerMarks.skipBackIn(type);
    if (marks == type.size()) return {};
    const std::string_view written = out().text();
    const auto width = static_cast<int>(written.size() - kPointerMarks.skipBackIn(written));
    if (width == 0) return {};
    const int column = exprFormatter_.sourceColumnOf(type.substr(marks));
    return {column, out().column() - width};
}

// `name` ends in the white space in front of a ";" unless a tail follows.
void CppFormatter::writeDataName(std::string_view name, bool isAligned, bool hasTail, MarkColumns marks) {
    const DeclaratorPlaces places{.name = {}, .marks = marks};
    // Most names have no gaps, nor is one wanted behind them.
    const bool isSpaced = !isAligned && settings_.afterDataName.present;
    if (!isSpaced && Cpp::isSingleWord(name)) {
        exprFormatter_.formatDeclarators(name, out(), nullptr, HangingLines::Text::Declarators, places);
        if (!isAligned) leaveDeclarator(name, hasTail);
        return;
    }
    Zelmor::OIndentBuf written(state());
    exprFormatter_.formatDeclarators(name, written, nullptr, HangingLines::Text::Declarators, places);
    std::string text = written.takeText();
    if (!isAligned) {
        leaveDeclarator(name, hasTail);
        spaceBrackets(text, settings_.afterDataName, settings_.afterDataBracket);
        if (hasTail && !endsWithLineEndToken(text)) text.erase(trimRight(text).size());
    }
    writeRendered(text);
}

// The white space between the declarator and its initializer or width. `name` is the declarator's text
// without it.
void CppFormatter::writeTailGap(const Cpp::DataDeclNode& declaration, std::string_view name,
                                std::string_view gap, bool isAligned) {
    const Cpp::ExprNode& tail = *declaration.tail();
    const auto column = columns_.initializers.find(&declaration);
    const bool isArray = name.find('[') != std::string_view::npos;
    const bool endsWithBracket = !name.empty() && name.find(']') + 1 == name.size();
    const auto replace = [&](const WantedText& wanted) { writer_.writeMerged(gap, asOutputStands(wanted)); };
    if (isInitializer(tail) && column != columns_.initializers.end()) {
        padInitializer(declaration, gap, column->second, name, isAligned);
    } else if (keepsBreak(gap, kAsInInput)) {
        // Lines of values stand in their braces as statements do.
        const bool endsLine = tail.startsWith('{') && isLineBreak(leadingBlanks(sourceFrom(tail).substr(1)));
        if (endsLine && hangsLines()) return writeKeptBreakAt(gap, baseColumn());
        writeKeptBreak(gap);
    } else if (tail.startsWith(':')) {
        replace(settings_.aroundBitFieldColon);
    } else if (tail.startsWith('(') && settings_.afterCallName.present) {
        writer_.replace(gap, asOutputStands(settings_.afterCallName));
    } else if (tail.startsWith('=') && settings_.beforeOperator.present) {
        replace(settings_.beforeOperator);
    } else if (tail.startsWith('{') && settings_.closesLists() && !isAligned) {
        replace(settings_.inListBraces);
    } else if (!isInitializer(tail) || isAligned || (isArray && !endsWithBracket)) {
        writer_.write(gap);
    } else {
        const OptionalText& wanted = isArray ? settings_.afterDataBracket : settings_.afterDataName;
        if (tail.startsWith('(')) return replace(firstPresent(settings_.afterCallName, wanted));
        replace(tail.startsWith('=') ? firstPresent(settings_.beforeOperator, wanted) : wanted);
    }
}

// An initializer stands as far behind the names as the widest of them asks for, where these are aligned; else
// behind the declaration's first character.
void CppFormatter::padInitializer(const Cpp::DataDeclNode& declaration, std::string_view gap, int offset,
                                  std::string_view name, bool isAligned) {
    if (isAligned) offset += columns_.dataNames.at(&declaration);
    if (settings_.beforeOperator.present) {
        offset = columnAfter(settings_.beforeOperator.text, offset, out().tabSize());
    }
    pad(gap, settings_.alignsDataInitializers.key, offset, name);
}

}  // namespace Tessel
