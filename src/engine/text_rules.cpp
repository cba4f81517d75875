// What the tree holds as text: items that are kept, expressions, names, and words that stay as they are.
#include <algorithm>

#include "cpp/words.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/macro_call.h"
#include "engine/opaque_text.h"
#include "engine/type_text.h"

namespace Tessel {

namespace {

bool isMarkOfType(char c) { return c == '*' || c == '&'; }

}  // namespace

using Zelmor::IndentScope;

void CppFormatter::visit(Cpp::KeptNode* item) {
    const bool isCall = settings_.formatsMacroCalls && isMacroCall(*item, keepsLines());
    if (writesCallOfStatements(*item)) return;
    const bool isLine = isCall || (settings_.formatsOtherGaps && isAlias(item->text()));
    if (!isLine) return writeAsBlock(*item);
    applyPendingWhitespace(*item);
    writer_.copyGap(item->start());
    writeExpression(writer_.readThrough(item->end()), {});
}

// IF_FEATURE (a=b;)  ->  IF_FEATURE(a = b;)
bool CppFormatter::writesCallOfStatements(const Cpp::KeptNode& item) {
    if (!macroBodies_ || !settings_.formatsMacroCalls || !standsOnOneLine(item)) return false;
    const std::string_view source = sourceFrom(item).substr(0, item.end().column - item.start().column + 1);
    const std::optional<CallOfStatements> call = callOfStatements(source);
    if (!call) return false;
    const auto readTo = [&](std::size_t end) {
        return writer_.readThrough({item.start().line, item.start().column + static_cast<std::uint32_t>(end) - 1});
    };
    const ExprSettings& settings = exprFormatter_.settings();
    applyPendingWhitespace(item);
    writer_.copyGap(item.start());
    writer_.write(readTo(call->nameEnd));
    writer_.writeMerged(readTo(call->open), settings.afterCallName);
    const bool hasArguments = call->argumentsEnd > call->open + 1;
    writer_.write(readTo(call->argumentsEnd));
    writer_.writeMerged(readTo(call->statements), hasArguments ? kAsInInput : settings.afterOpenParen);
    const std::string_view statements = readTo(call->statementsEnd);
    const std::optional<std::string> laidOut = macroBodies_->laidOutLine(statements);
    if (laidOut) {
        writeRendered(*laidOut);
    } else {
        writer_.write(statements);
    }
    writer_.writeMerged(readTo(call->close), settings.beforeCloseParen);
    copyThrough(item);
    return true;
}

void CppFormatter::writeAsBlock(const Cpp::SyntaxNode& node) {
    applyPendingWhitespace(node);
    writer_.copyGap(node.start());
    writeLinesAsBlock(writer_.readThrough(node.end()));
}

// They move as one block, unless a literal's are among them.
void CppFormatter::writeLinesAsBlock(std::string_view text) {
    if (holdsLinesOfLiteral(text)) return writeInPlace(text, InnerBlanks::Keep, out());
    exprFormatter_.writeComment(text, out());
}

// Nothing hangs under a stray ";" in front of a statement: it is no node.
void CppFormatter::copyStray(std::string_view gap) {
    const std::size_t stray = gap.rfind(';');
    if (stray == std::string_view::npos || writer_.holdsOpaque(gap)) return;
    writer_.write(gap.substr(0, stray + 1));
    writer_.in().moveTo(writer_.in().offset() + stray + 1);
}

void CppFormatter::visit(Cpp::ExprNode* expression) {
    if (copySettledStatement(*expression)) return;
    const bool followsTemplate = previousSibling_ && Cpp::as<Cpp::TemplateNode>(previousSibling_);
    if (settings_.formatsOtherGaps && followsTemplate && !givesTypeName(*expression)) {
        return writeRequiresClause(*expression);
    }
    if (givesTypeName(*expression)) {
        if (!settings_.formatsTypeArguments) return writeAsBlock(*expression);
        applyPendingWhitespace(*expression);
        writer_.copyGap(expression->start());
        if (expression->bodies().empty()) return writeTypeName(writer_.readThrough(expression->end()));
    }
    if (keepsLines()) copyStray(gapBefore(*expression));
    writeExpression(writer_.readThrough(expression->end()), expression->bodies());
}

// `using A = T *`: a type stands behind the "=". What it holds hangs from the line that it begins.
void CppFormatter::writeTypeName(std::string_view statement) {
    const std::size_t assignment = statement.find('=');
    const bool isAlias = assignment != std::string_view::npos && !writer_.holdsOpaque(statement);
    if (!isAlias) return writeExpression(statement, {});
    writeExpression(statement.substr(0, assignment + 1), {});
    const std::string_view type = trimLeft(statement.substr(assignment + 1));
    const std::string_view blanks = statement.substr(assignment + 1, statement.size() - assignment - 1 - type.size());
    const OptionalText& apart = exprFormatter_.settings().afterOperator;
    if (!keepsBreak(blanks, apart)) {
        writer_.replace(blanks, apart);
        return exprFormatter_.formatDeclarationText(type, out(), kAsInInput);
    }
    writeKeptBreak(blanks);
    const bool hangsFromLine =
        exprFormatter_.settings().hanging.operand.present && !exprFormatter_.keptIndent().isWanted();
    const int column = hangsFromLine ? out().textColumn() : indentColumn();
    const IndentScope further(out(), indentToColumn(out(), column));
    exprFormatter_.formatDeclarationText(type, out(), kAsInInput);
}

void CppFormatter::visit(Cpp::TextNode* text) { copyThrough(*text); }
void CppFormatter::visit(Cpp::KeywordNode* keyword) { copyThrough(*keyword); }
void CppFormatter::visit(Cpp::TypeNode* type) { copyThrough(*type); }
void CppFormatter::visit(Cpp::IdNode* name) { writeName(*name); }
void CppFormatter::visit(Cpp::NamespaceHeadNode* head) { copyThrough(*head); }
void CppFormatter::visit(Cpp::ClassNameNode* name) { writeName(*name); }

// Whether the name goes on in the next line, behind a "::".
bool CppFormatter::hangsWithinName(std::string_view name) const {
    const std::string_view firstLine = trimRight(name.substr(0, name.find('\n')));
    const bool goesOn = firstLine.size() < name.size() && firstLine.ends_with("::");
    return goesOn && keepsLines() && !exprFormatter_.keptIndent().isWanted() && !writer_.holdsOpaque(name);
}

// Lines of it hang from the statement.
void CppFormatter::writeName(const Cpp::SyntaxNode& name) {
    const std::string_view text = writer_.readThrough(name.end());
    if (!hangsWithinName(text)) return writeNamePart(text);
    const std::string_view firstLine = trimRight(text.substr(0, text.find('\n')));
    const std::string_view rest = trimLeft(text.substr(firstLine.size()));
    const std::string_view wrap = exprFormatter_.settings().hanging.wrap.text;
    const int column = columnAfter(wrap, indentColumn(), out().tabSize());
    writeNamePart(firstLine);
    const IndentScope further(out(), indentToColumn(out(), column));
    writer_.write(text.substr(firstLine.size(), text.size() - firstLine.size() - rest.size()));
    writeNamePart(rest);
}

// A name may have arguments. The "<" of an operator's begins none; with a blank in front of those of a macro, what it
// makes would be read as something else.
void CppFormatter::writeNamePart(std::string_view text) {
    const bool isCall = text.find('(') != text.npos && !exprFormatter_.settings().afterCallName.text.empty();
    const bool hasArguments = !isCall && text.find("operator") == text.npos;
    if (const std::size_t symbol = Cpp::operatorSymbol(text); symbol < text.size()) {
        const std::string_view words = trimRight(text.substr(0, symbol));
        writer_.write(words);
        writer_.replace(text.substr(words.size(), symbol - words.size()), settings_.afterOperatorKeyword);
        writer_.write(text.substr(symbol));
    } else if (hasArguments && formatsArgumentsOf(text)) {
        exprFormatter_.formatTypeText(text, out(), kAsInInput);
    } else if (!hasArguments && settings_.formatsTypeArguments) {
        writeConversion(text);
    } else {
        writer_.write(text);
    }
}

// operator T *  ->  operator T*      by the anchor of the marks, though no name follows them
void CppFormatter::writeConversion(std::string_view text) {
    const TypeText type(text);
    const ExprSettings& settings = exprFormatter_.settings();
    const MarkSettings& marks = text.ends_with('*') ? settings.asterisk : settings.ampersand;
    const bool isAnchored = marks.anchor == kAnchoredToType || marks.anchor == kAnchoredToName;
    const std::string_view gap = leadingBlanks(text.substr(type.head.size()));
    const std::string_view behind = text.substr(type.head.size() + gap.size());
    const bool isOfMember = type.head.ends_with("::");
    const bool standsTogether = !isLineBreak(gap) && std::ranges::all_of(behind, isMarkOfType);
    if (!type.hasMarks() || !isAnchored || isOfMember || !standsTogether) return writer_.write(text);
    writer_.write(type.head);
    writer_.replace(gap, marks.anchor == kAnchoredToType ? marks.against : firstPresent(marks.gap, kBlank));
    writer_.write(behind);
}

}  // namespace Tessel
