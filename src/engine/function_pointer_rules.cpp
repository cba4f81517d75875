// int( *f )( int a ,int b );
//
// int (*f)(int a, int b);
#include <algorithm>

#include "cpp/characters.h"
#include "cpp/words.h"
#include "engine/cpp_formatter.h"
#include "engine/declarator_text.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/head_words.h"
#include "engine/type_text.h"

namespace Tessel {

namespace {

// `void SYMBOL(f)(int a)`, `METHOD(T *, f)(int a)`, as opposed to `BOOL(*f)(int a)`: what stands in front of the "("
// makes the name.
bool isNamedByMacro(std::string_view type, std::string_view opening) {
    const std::string words = onOneLine(type);
    const std::size_t front = std::min(words.rfind(' '), words.size());
    const bool isMacro = Cpp::isUpperCase(std::string_view(words).substr(words.rfind(' ') + 1));
    if (!isMacro || !trimLeft(opening).starts_with('(')) return false;
    if (trimRight(opening).ends_with(',')) return true;
    const bool isApart = isSpecifiers(words.substr(0, front)) && !opening.starts_with('(');
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

}  // namespace

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
    const bool hasName = trimRight(declarator) == "(";
    const OptionalText& own = hasConvention ? settings_.beforeConvention
                              : hasName     ? settings_.beforeBracketedName
                                            : kAsInInput;
    const OptionalText& wanted = firstPresent(own, afterType);
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
        const OptionalText& apart = isCall ? afterCallName : followsType && !isNamed ? own : kAsInInput;
        writer_.write(type);
        writer_.writeMerged(blanks, apart);
        writeDeclarator(declarator);
    }
}

}  // namespace Tessel
