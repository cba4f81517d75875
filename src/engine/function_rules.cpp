// int*f( int a ,int b )const{ … }
//
// int *f(int a, int b) const
// {
//     …
// }
#include <algorithm>
#include <iterator>
#include <utility>

#include "cpp/characters.h"
#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/declarator_text.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/head_words.h"
#include "engine/one_line_rules.h"
#include "engine/type_text.h"

namespace Tessel {

namespace {

// `void SYMBOL(f)(int a)`, `METHOD(T *, f)(int a)`, as opposed to `BOOL(*f)(int a)`: what stands in front of the "("
// makes the name.
bool isNamedByMacro(std::string_view type, std::string_view opening) {
    if (!Cpp::isUpperCase(type.substr(type.rfind(' ') + 1)) || !trimLeft(opening).starts_with('(')) return false;
    if (trimRight(opening).ends_with(',')) return true;
    const std::size_t front = std::min(type.rfind(' '), type.size());
    const bool isApart = isSpecifiers(type.substr(0, front)) && !opening.starts_with('(');
    return !isApart && opening.find_first_of("*&^") == std::string_view::npos;
}

// `(WINAPI *f)`, as opposed to `(A::*f)`.
bool startsWithConvention(std::string_view declarator) {
    const std::string_view inside = declarator.starts_with('(') ? trimLeft(declarator.substr(1)) : std::string_view();
    return !inside.empty() && Cpp::isNameStart(inside.front()) && inside.find(':') == inside.npos;
}

// `(A::*f)`
bool endsWithMemberMark(std::string_view opening) {
    const std::string_view name = opening.substr(0, opening.find_last_not_of("*&^ \t") + 1);
    return name.size() < trimRight(opening).size() && name.ends_with("::");
}

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

// `BENCHMARK(f)->Arg(1)`: as opposed to `A(T) -> A<T>`.
bool callsMember(const Cpp::FunctionHeadNode& head, std::string_view tail) {
    const std::size_t last = tail.find_last_not_of("; \t\n");
    return !head.returnType() && tail.starts_with("->") && tail[last] == ')';
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
void CppFormatter::formatBodyOf(Cpp::FunctionDeclNode& declaration, const OptionalText& beforeOpen, std::size_t start) {
    Cpp::BracketedNode* body = declaration.body();
    if (!body) return;
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
        const OptionalText& afterAny = settings_.afterFunctionName;
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
        const OptionalText& wanted =
            declaration.body() ? settings_.afterDefinitionReturnType : settings_.afterDeclarationReturnType;
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
            settings_.keepsUnrecognized && type.ends_with(')') && head.name()->text().starts_with("::");
        const OptionalText& between = isKept || isSpecifier ? decidedByBreak : staysOnLine ? kAsInInput : wanted;
        writeType(type, isPartOfName ? kAsInInput : between, !settings_.keepsFunctions);
    }
    return column;
}

// The line ends between the type and the name, and what the name hangs by.
std::string_view CppFormatter::breakBehindType(const Cpp::FunctionHeadNode& head, std::string_view type) {
    std::string lines = withBlankLines("\n", trailingBlanks(type));
    if (lines.size() == 1 && hangsFurther(*head.name(), *head.returnType(), trimRight(type))) {
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
}

// With FORMAT_TYPE_ARGUMENTS the declarator in parentheses is laid out too.
void CppFormatter::visit(Cpp::FunctionPtrDeclNode* declaration) {
    applyPendingWhitespace(*declaration);
    const std::optional<int> templateColumn = takeTemplateColumn();
    const int column = copyUpToConstruct(*declaration);
    BaseColumnScope base(*this, templateColumn.value_or(column), declaration);
    const Cpp::TypeNode* type = declaration->returnType();
    const std::string_view typeText = type ? writer_.readThrough(type->end()) : std::string_view();
    if (isNamedByCall(*declaration, typeText)) {
        writeNamingCall(*declaration, typeText);
    } else if (declaration->name()) {
        writeDeclaratorOpening(typeText, writer_.readGap(declaration->name()->start()));
        copyThrough(*declaration->name());
    } else {
        writer_.write(typeText);
    }
    if (declaration->parameters()) {
        const std::string_view closing = writer_.readGap(declaration->parameters()->start());
        const std::string_view bounds = trimRight(closing);
        if (bounds.empty()) {
            writeGapBehindDeclarator(closing);
        } else if (settings_.formatsTypeArguments && bounds.ends_with(')') && !writer_.holdsOpaque(closing)) {
            const std::string_view inside = bounds.substr(0, bounds.size() - 1);
            writer_.write(trimRight(inside));
            writer_.replace(trailingBlanks(inside), kNothing);
            out().write(")");
            writeGapBehindDeclarator(trailingBlanks(closing));
        } else {
            writer_.write(closing);
        }
        formatParenList(*declaration->parameters());
    }
    if (settings_.formatsTypeArguments && keepsLines()) writePointerValue(*declaration);
    copyThrough(*declaration);
}

void CppFormatter::writeGapBehindDeclarator(std::string_view blanks) {
    if (keepsBreak(blanks, settings_.afterFunctionName)) {
        writeKeptBreakAt(blanks, baseColumn());
    } else {
        writer_.writeMerged(blanks, settings_.afterFunctionName);
    }
}

// `METHOD(int, f)(int a);`: whether a macro makes the name, and is laid out as a call.
bool CppFormatter::isNamedByCall(const Cpp::FunctionPtrDeclNode& declaration, std::string_view type) {
    const bool areLaidOut = settings_.keepsUnrecognized && settings_.formatsMacroCalls &&
                            settings_.formatsTypeArguments && exprFormatter_.settings().afterCallName.text.empty();
    if (!areLaidOut || type.empty() || !declaration.name() || !declaration.parameters()) return false;
    return !TypeText(type).hasMarks() && isNamedByMacro(type, gapBefore(*declaration.name())) &&
           !writer_.holdsOpaque(gapBefore(*declaration.parameters()));
}

// The type has been read.
void CppFormatter::writeNamingCall(const Cpp::FunctionPtrDeclNode& declaration, std::string_view type) {
    const std::size_t size = trimRight(gapBefore(*declaration.parameters())).size();
    writer_.in().moveTo(writer_.in().offset() + size);
    exprFormatter_.formatTypeText({type.data(), type.size() + size}, out(), kAsInInput);
}

// `int (*f[])(int) = { a, b };`: its lines stand as those of other data do.
void CppFormatter::writePointerValue(const Cpp::FunctionPtrDeclNode& declaration) {
    const std::string_view rest = writer_.readThrough(declaration.end());
    const std::size_t assign = placeOfValue(rest);
    if (assign == rest.size() || holdsStatements(rest) || writer_.holdsOpaque(rest.substr(0, assign))) {
        return writer_.write(rest);
    }
    const std::string_view blanks = trailingBlanks(rest.substr(0, assign));
    writer_.write(rest.substr(0, assign - blanks.size()));
    if (keepsBreak(blanks, kAsInInput)) {
        writeKeptBreak(blanks);
    } else {
        writer_.writeMerged(blanks, asOutputStands(settings_.beforeOperator));
    }
    writeDeclarators(rest.substr(assign), {}, HangingLines::Text::Declarators);
}

// "(", a calling convention and marks, up to the name.
void CppFormatter::writeDeclarator(std::string_view declarator) {
    const bool isFormatted =
        settings_.formatsTypeArguments && declarator.starts_with('(') && !writer_.holdsOpaque(declarator);
    const std::string_view bracketed = isFormatted ? declarator.substr(1) : std::string_view();
    const std::string_view inside = trimLeft(bracketed);
    const bool holdsMarks = !inside.empty() && trimRight(inside).find_first_not_of("*&^") == inside.npos;
    const bool holdsConvention =
        startsWithConvention(declarator) && trimRight(inside).find_first_of("\n/<([,") == inside.npos;
    if (!isFormatted || !(holdsMarks || holdsConvention || endsWithMemberMark(inside))) {
        writer_.write(declarator);
        return;
    }
    out().write("(");
    writer_.replace(leadingBlanks(bracketed), kNothing);
    if (holdsConvention) {
        exprFormatter_.formatTypeText(inside, out(), kBlank);
        return;
    }
    out().write(trimRight(inside));
    writer_.replace(trailingBlanks(inside), kNothing);
}

// The return type of a pointer to function, and what stands between it and the name: white space, "(" and marks.
void CppFormatter::writeDeclaratorOpening(std::string_view type, std::string_view opening) {
    const std::string_view blanks = leadingBlanks(opening);
    const std::string_view declarator = trimLeft(opening);
    const OptionalText& afterType = settings_.afterDeclarationReturnType;
    const bool hasConvention = startsWithConvention(declarator);
    const OptionalText& wanted =
        hasConvention ? firstPresent(settings_.beforeConvention, afterType) : afterType;
    const bool followsType = !type.empty() && declarator.starts_with('(');
    const bool isNamed = settings_.keepsUnrecognized && followsType && isNamedByMacro(type, opening);
    const bool hasMarks = TypeText(type).hasMarks();
    const bool formatsMarks = followsType && hasMarks && settings_.formatsTypeArguments && !writer_.holdsOpaque(type);
    if (formatsMarks && hasConvention && settings_.beforeConvention.present) {
        exprFormatter_.formatDeclarationText(type, out(), wanted);
        writer_.replace(blanks, wanted);
        writeDeclarator(declarator);
    } else if (formatsMarks) {
        writeType({type.data(), type.size() + blanks.size()}, wanted, true);
        writeDeclarator(declarator);
    } else if (followsType && !hasMarks && wanted.present && !isNamed) {
        writer_.write(type);
        writer_.replace(blanks, wanted);
        writeDeclarator(declarator);
    } else {
        // With a blank a name that a macro makes may be read as something else.
        const OptionalText& afterCallName = exprFormatter_.settings().afterCallName;
        const bool isCall = isNamed && settings_.formatsMacroCalls && afterCallName.text.empty();
        const bool takesConvention = followsType && hasConvention && !isNamed;
        const OptionalText& apart = isCall            ? afterCallName
                                    : takesConvention ? settings_.beforeConvention
                                                      : kAsInInput;
        writer_.write(type);
        writer_.writeMerged(blanks, apart);
        writeDeclarator(declarator);
    }
}

}  // namespace Tessel
