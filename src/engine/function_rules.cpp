// int*f( int a ,int b )const{ … }
//
// int *f(int a, int b) const
// {
//     …
// }
#include <algorithm>
#include <utility>

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/declarator_text.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/head_words.h"
#include "engine/one_line_rules.h"

namespace Tessel {

namespace {

// What stands behind parameters begins with a word, or with the type that is returned.
bool startsWithQualifier(std::string_view tail) {
    return tail.starts_with("->") || (!tail.empty() && (Cpp::isNameStart(tail.front()) || tail.front() == '&'));
}

// The place of the line end behind which the rest of a head is "try" alone, which stands in the function's column; the
// size of the rest where it is not.
std::size_t breakBeforeTry(std::string_view rest) {
    constexpr std::string_view keyword = "try";
    const std::string_view front = rest.substr(0, rest.size() - (rest.ends_with(keyword) ? keyword.size() : 0));
    const std::string_view code = trimRight(front);
    const bool isApart = isLineBreak(front.substr(code.size())) && !endsWithLineEndToken(code);
    return isApart ? code.size() : rest.size();
}

// `{};`, where the ";" is one of its own.
bool isEmptyAndEnded(std::string_view body) {
    const std::string_view close = trimLeft(body.substr(1));
    return close.starts_with('}') && trimLeft(close.substr(1)).starts_with(';');
}

// `void f() const`: what can be no name.
bool endsWithQualifier(std::string_view head) {
    return head.ends_with(" const") || head.ends_with(" volatile") || head.ends_with(" noexcept");
}

// `void f [[noreturn]] ()`: as opposed to `operator new[]`.
bool endsWithAttribute(std::string_view name) {
    return name.ends_with(']') && trimRight(name.substr(0, name.size() - 1)).ends_with(']');
}

// `BENCHMARK(f)->Arg(1)`: as opposed to `A(T) -> A<T>`.
bool callsMember(const Cpp::FunctionHeadNode& head, std::string_view tail) {
    const std::size_t last = tail.find_last_not_of("; \t\n");
    return !head.returnType() && tail.starts_with("->") && tail[last] == ')';
}

// `((int a))`, as opposed to `((a) == (b))`.
bool isParenthesisedTwice(std::string_view text) {
    if (!text.starts_with("((")) return false;
    Cpp::Lexer lexer(text.substr(2));
    for (int depth = 1; depth > 0;) {
        const int kind = lexer.nextToken().kind;
        if (kind == Trn::kEndKind) return false;
        depth += kind == Cpp::OpenParen ? 1 : kind == Cpp::CloseParen ? -1 : 0;
    }
    return lexer.nextToken().kind == Cpp::CloseParen;
}

}  // namespace

void CppFormatter::visit(Cpp::FunctionDeclNode* declaration) {
    if (copySettled(*declaration)) return;
    BaseColumnScope base(*this, formatFunctionHead(*declaration), declaration);
    const std::size_t start = headStart_;
    // Old-style declarations in front of the body have lines of their own.
    const bool hasOldParameters = declaration->head() && declaration->head()->oldParameters();
    const OptionalText& beforeOpen = settings_.functions.beforeOpen;
    formatBodyOf(*declaration, hasOldParameters && beforeOpen.present ? kLineFeed : beforeOpen, start);
}

void CppFormatter::visit(Cpp::CtorDeclNode* declaration) {
    if (copySettled(*declaration)) return;
    BaseColumnScope base(*this, formatFunctionHead(*declaration), declaration);
    const std::size_t start = headStart_;
    Cpp::InitializerListNode* initializers = declaration->initializers();
    if (initializers) formatInitializers(*initializers);
    if (initializers && declaration->body()) copyPackDots(gapBefore(*declaration->body()));
    formatBodyOf(*declaration,
                 initializers ? settings_.afterInitializerList : settings_.functions.beforeOpen, start);
}

// Says false where the declaration has to be formatted.
bool CppFormatter::copySettled(Cpp::FunctionDeclNode& declaration) {
    if (!isSettled(declaration)) return false;
    applyPendingWhitespace(declaration);
    writer_.copyGap(declaration.start());
    if (!copySettledNode(declaration)) return false;
    takeTemplateColumn();
    return true;
}

// Without a setting of its own the ":" of the initializers is placed as an opening brace would be.
void CppFormatter::formatInitializers(Cpp::InitializerListNode& list) {
    const auto format = [&] {
        pend(settings_.beforeInitializerList.present || !settings_.functions.beforeOpen.present
                 ? settings_.beforeInitializerList
                 : settings_.functions.beforeOpen);
        list.accept(*this);
    };
    const bool standsOnLine = gapBefore(list).find('\n') == std::string_view::npos;
    writer_.measure(settings_.keepsOneLineInits.key, writer_.ahead(), standsOnLine);
    const bool isKept = settings_.keepsOneLineInits && standsOnLine;
    if (!isKept || !tryOnOneLine(list, settings_.keepsOneLineInits.key, format)) format();
}

// Those behind the last initializer are no node.
void CppFormatter::copyPackDots(std::string_view gap) {
    constexpr std::string_view dots = "...";
    if (!gap.starts_with(dots)) return;
    writer_.write(gap.substr(0, dots.size()));
    writer_.in().moveTo(writer_.in().offset() + dots.size());
}

// Not through the block's own visit, for the settings of functions count here. What has been written of the declaration
// begins at `start`.
void CppFormatter::formatBodyOf(Cpp::FunctionDeclNode& declaration, const OptionalText& beforeAny, std::size_t start) {
    Cpp::BracketedNode* body = declaration.body();
    if (!body) return;
    const bool isEnded = body->size() == 0 && isEmptyAndEnded(sourceFrom(*body));
    const bool standsClose = isEnded && !endsWithQualifier(out().text());
    const OptionalText& beforeOpen = standsClose ? firstPresent(settings_.beforeEndedBody, beforeAny) : beforeAny;
    if (joinsFunction(*body) && tryJoined(*body, beforeOpen, start)) return;
    formatBody(*body, beforeOpen, keepsFunction(*body), [&] {
        ValueScope<bool> outsideClass(inClassBody_, false);
        const bool isFrame = frameIndent_ && declaration.start().line == 1;
        formatBlock(*body, settings_.functions,
                    isFrame ? OptionalText{true, *frameIndent_, {}} : settings_.functions.indent);
    });
}

// Says whether the body fits on the line of its head, or, empty, on the last one, and has been written there.
bool CppFormatter::tryJoined(Cpp::BracketedNode& body, const OptionalText& beforeOpen, std::size_t start) {
    const OptionalText blank{true, " ", settings_.joinedFunctions.key};
    const std::string_view written = out().text();
    const bool isOneLine = trimLeft(written.substr(std::min(start, written.size()))).find('\n') == written.npos;
    return (isOneLine || body.size() == 0) && tryLine(joiningMargin(body.end()), blank.key, [&] {
        BraceSettings braces = settings_.functions;
        braces.afterOpen = braces.beforeClose = blank;
        braces.keepsBlankLines = false;
        pend(firstPresent(beforeOpen, blank));
        formatBlock(body, braces);
    });
}

void CppFormatter::visit(Cpp::InitializerListNode* list) {
    const OptionalText before = takePending();
    if (list->size() == 0) return;
    writeColon(writer_.readGap(list->start()), before, settings_.beforeInitializers);
    formatHangingList(*list, settings_.commas.initializers);
}

void CppFormatter::visit(Cpp::InitializerNode* initializer) {
    writeExpression(writer_.readThrough(initializer->end()), initializer->bodies());
}

// Returns the column from which the contents of the body are indented.
int CppFormatter::formatFunctionHead(Cpp::FunctionDeclNode& declaration) {
    applyPendingWhitespace(declaration);
    writer_.copyGap(declaration.start());
    headStart_ = templateColumn_ ? templateStart_ : out().text().size();
    const std::optional<int> templateColumn = takeTemplateColumn();
    Cpp::FunctionHeadNode* head = declaration.head();
    if (!head) return templateColumn.value_or(baseColumn());

    int base = templateColumn.value_or(baseColumn());
    if (head->name()) {
        const int column = formatReturnType(declaration);
        if (!templateColumn) base = column;
        writeName(*head->name());
    }
    BaseColumnScope scope(*this, base, &declaration);
    if (head->parameters()) {
        const std::string_view gap = writer_.readGap(head->parameters()->start());
        // A comment or directive on a line of its own stays there.
        const bool startsLine = isLineBreak(leadingBlanks(gap)) && startsWithLineEndToken(gap);
        const std::string_view name = head->name()->text();
        const bool isSymbol = Cpp::operatorSymbol(name) < name.size();
        const bool endsInAttribute = endsWithAttribute(name);
        const OptionalText& afterAny = endsInAttribute ? kAsInInput : settings_.afterFunctionName;
        const WantedText afterName = isSymbol ? firstPresent(settings_.afterOperatorName, afterAny) : afterAny;
        if (afterName.present && !startsLine) {
            writer_.replace(leadingBlanks(gap), afterName);
            writer_.write(strippedGap(afterName.text().empty() ? gap : trimLeft(gap)));
        } else {
            writer_.writeMerged(gap, afterName.present ? kAsInInput : afterName);
        }
        formatParametersOf(*head);
    }
    Cpp::KeptNode* oldParameters = head->oldParameters();
    std::string_view rest = oldParameters ? std::string_view() : writer_.readThrough(head->end());
    if (const std::string_view blanks = leadingBlanks(rest); keepsBreak(blanks, kAsInInput)) {
        writeKeptBreak(blanks);
        rest.remove_prefix(blanks.size());
    }
    const HeadRest ending = writeGapBehindParameters(*head, rest);
    rest = ending.text;
    const std::size_t lineOfTry = keepsLines() ? breakBeforeTry(rest) : rest.size();
    const std::string_view tail = rest.substr(0, lineOfTry);
    if (ending.startsLine) {
        const Zelmor::IndentScope lineOfType(out(), indentToColumn(out(), out().column()));
        exprFormatter_.formatReturnedType(tail, out());
    } else if (ending.isReturnedType) {
        exprFormatter_.formatReturnedType(tail, out());
    } else if (!tail.empty()) {
        exprFormatter_.formatExpression(tail, out());
    }
    if (lineOfTry < rest.size()) {
        const std::string_view blanks = leadingBlanks(rest.substr(lineOfTry));
        writeKeptBreakAt(blanks, base);
        out().write(rest.substr(lineOfTry + blanks.size()));
    }
    if (oldParameters) writeOldParameters(*oldParameters);
    return base;
}

// A::
//     name(
//         int a);    where lines begin within a name, those of its parameters hang from its last one
void CppFormatter::formatParametersOf(const Cpp::FunctionHeadNode& head) {
    const bool hasLines = head.name() && head.name()->start().line < head.name()->end().line;
    const bool hang = hasLines && keepsLines() && !exprFormatter_.keptIndent().isWanted();
    if (!hang) return formatParenList(*head.parameters());
    const Zelmor::IndentScope lineOfName(out(), indentToColumn(out(), out().textColumn()));
    formatParenList(*head.parameters());
}

// Where a word, or the type that is returned, follows the ")" that the rest of a head begins with. Returns what is left
// to be written.
CppFormatter::HeadRest CppFormatter::writeGapBehindParameters(const Cpp::FunctionHeadNode& head,
                                                              std::string_view rest) {
    if (!rest.starts_with(')')) return {rest};
    const OptionalText& wanted = settings_.beforeFunctionQualifier;
    const std::string_view blanks = leadingBlanks(rest.substr(1));
    std::string_view tail = rest.substr(1 + blanks.size());
    if (callsMember(head, tail)) {
        out().write(")");
        if (!keepsBreak(blanks, kAsInInput)) return {rest.substr(1)};
        writeKeptBreak(blanks);
        return {tail};
    }
    if (!startsWithQualifier(tail) || isLineBreak(blanks)) return {rest};
    if (!wanted.present) {
        writer_.leave(blanks, wanted);
        return {rest};
    }
    out().write(")");
    writer_.replace(blanks, wanted);
    if (tail.starts_with('&')) {
        const std::size_t length = tail.starts_with("&&") ? 2 : 1;
        out().write(tail.substr(0, length));
        const std::string_view more = tail.substr(length);
        const std::string_view apart = leadingBlanks(more);
        const std::string_view next = trimLeft(more);
        const bool isApart = next.starts_with('=') || startsWithQualifier(next);
        if (!isApart || isLineBreak(apart)) return {more};
        writer_.replace(apart, wanted);
        tail = next;
    }
    if (!tail.starts_with("->")) return {tail};
    out().write("->");
    const std::string_view type = tail.substr(2);
    const std::string_view behindArrow = leadingBlanks(type);
    const OptionalText& apart = exprFormatter_.settings().afterOperator;
    if (keepsBreak(behindArrow, kAsInInput)) {
        writeKeptBreak(behindArrow);
        return {trimLeft(type), true, true};
    }
    if (!apart.present || isLineBreak(behindArrow)) return {type, true};
    writer_.replace(behindArrow, apart);
    return {trimLeft(type), true};
}

// Those whose bodies are written close stand like declarations: `void f(){};`.
bool CppFormatter::standsAsDefinition(const Cpp::FunctionDeclNode& declaration) const {
    const Cpp::BracketedNode* body = declaration.body();
    const bool mayBeEnded = body && settings_.beforeEndedBody.present && body->size() == 0;
    return body && !(mayBeEnded && isEmptyAndEnded(sourceFrom(*body)));
}

// Writes what stands in front of the name. Returns the column of the head's first character.
int CppFormatter::formatReturnType(const Cpp::FunctionDeclNode& declaration) {
    const Cpp::FunctionHeadNode& head = *declaration.head();
    if (!head.returnType()) {
        const int column = copyUpToConstruct(*head.name());
        if (!alignsName(declaration, {})) return column;
        pad({}, nameAlignment(), columns_.functionNames.at(&declaration), {});
        return out().column() > 0 ? writer_.nextColumn() : column;
    }
    const int column = copyUpToConstruct(*head.returnType());
    const std::string_view type = writer_.readGap(head.name()->start());
    if (alignsName(declaration, type)) {
        writeAlignedType(type, nameAlignment(), columns_.functionNames.at(&declaration));
    } else {
        const std::string_view words = head.returnType()->text();
        const bool isMacro = settings_.keepsUnrecognized && isItemByItself(words, head.name()->text());
        const bool startsLine = isLineBreak(trailingBlanks(type));
        const OptionalText& wanted = standsAsDefinition(declaration) ? settings_.afterDefinitionReturnType
                                                                     : settings_.afterDeclarationReturnType;
        // What an empty line parts from the name is no type, but a macro.
        const bool isParted = withBlankLines("\n", trailingBlanks(type)).size() > 1;
        const bool isKept = settings_.keepsReturnTypeBreak && startsLine && (isParted || !wanted.hasLineFeed());
        // With KEEP_FN_RETURN_TYPE_BREAK, "explicit" and its kin are no type that a line would be for.
        const bool isSpecifier =
            settings_.keepsReturnTypeBreak && !startsLine && wanted.hasLineFeed() && isSpecifiers(words);
        const bool staysOnLine = isMacro && wanted.hasLineFeed();
        const KeyId breakKey = settings_.keepsReturnTypeBreak.key;
        writer_.measure(breakKey, type, startsLine);
        const OptionalText decidedByBreak{true, isKept ? breakBehindType(head, type) : " ", breakKey};
        // `void FIXTURE(a)::f()`: what a macro makes is part of the name.
        const bool isPartOfName =
            settings_.keepsUnrecognized && type.ends_with(')') && head.name()->startsWith(':');
        const OptionalText& between = isKept || isSpecifier ? decidedByBreak : staysOnLine ? kAsInInput : wanted;
        writeType(type, isPartOfName ? kAsInInput : between, !settings_.keepsFunctions);
    }
    return column;
}

// The line ends between the type and the name, and what the name hangs by.
std::string_view CppFormatter::breakBehindType(const Cpp::FunctionHeadNode& head, std::string_view type) {
    std::string lines = withBlankLines("\n", trailingBlanks(type));
    // `extern int f\n    PARAMS((int a));`: the macro is not what the declaration names.
    const bool namesMacro = head.parameters() && isParenthesisedTwice(sourceFrom(*head.parameters()));
    if (lines.size() == 1 && (namesMacro || hangsFurther(*head.name(), *head.returnType(), trimRight(type)))) {
        lines += exprFormatter_.settings().hanging.wrap.text;
    }
    return madeTexts_.keep(std::move(lines));
}

// Whether the name goes on with a type of several lines that hangs behind its first one.
bool CppFormatter::hangsFurther(const Cpp::SyntaxNode& name, const Cpp::SyntaxNode& type,
                                std::string_view text) const {
    const bool hasLines = keepsLines() && text.find('\n') != text.npos;
    return hasLines && exprFormatter_.settings().operandIndent.present && sourceColumnOf(name) > sourceColumnOf(type);
}

// What puts the names of declarations into columns here.
KeyId CppFormatter::nameAlignment() const {
    return settings_.alignsFunctionNames ? settings_.alignsFunctionNames.key : settings_.alignsMemberNames.key;
}

bool CppFormatter::alignsName(const Cpp::FunctionDeclNode& declaration, std::string_view type) const {
    const bool isWanted = settings_.alignsFunctionNames || (settings_.alignsMemberNames && inClassBody_);
    return isWanted && !declaration.body() && columns_.functionNames.contains(&declaration) &&
           !writer_.holdsOpaque(type) && !writer_.followsJoinedLiteral();
}

void CppFormatter::visit(Cpp::ParameterNode* parameter) {
    const std::string_view text = writer_.readThrough(parameter->end());
    const auto hanging = isAmongElements_ ? HangingLines::Text::Element : HangingLines::Text::List;
    exprFormatter_.formatDeclarationText(text, out(), settings_.afterParameterType, hanging);
    // f(char */* key */): the blank that has stood in front of the marks
    const bool meetsComment = writer_.peek() == '/' && (text.ends_with('*') || text.ends_with('&'));
    if (settings_.formatsOtherGaps && meetsComment && exprFormatter_.settings().asterisk.anchor == kAnchoredToType) {
        writer_.replace(writer_.ahead().substr(0, 0), WantedText(" ", settings_.formatsOtherGaps.key));
    }
}

}  // namespace Tessel
