// What the source does where a key is not about one gap, for the log:
//
//     while (a)
//         b();        "    " for INDENT_CS_CONTENT: relative to the column from which the scheme's would count
//     int     a;
//     long    b;      1 for ALIGN_DD_NAMES_LEFT
#include <algorithm>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/declarator_text.h"
#include "engine/formatter_scopes.h"
#include "engine/gap.h"
#include "engine/namespace_indent.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

// What goes by other keys than the contents around it.
bool isIndentedByItself(const Cpp::SyntaxNode& node) {
    return Cpp::as<Cpp::CaseNode>(&node) || Cpp::as<Cpp::AccessSpecNode>(&node) || Cpp::as<Cpp::LabelNode>(&node) ||
           Cpp::isTrivia(node);
}

}  // namespace

// Declarations on lines that follow each other.
class CppFormatter::MeasuredRun {
public:
    explicit MeasuredRun(CppFormatter& formatter) : formatter_(formatter) {}
    ~MeasuredRun() { end(); }
    MeasuredRun(const MeasuredRun&) = delete;
    MeasuredRun& operator=(const MeasuredRun&) = delete;

    void add(const Cpp::SyntaxNode& node) {
        const auto* data = Cpp::as<Cpp::DataDeclNode>(&node);
        const auto* function = Cpp::as<Cpp::FunctionDeclNode>(&node);
        const bool isPrototype = function && function->head() && !function->body();
        if (Cpp::as<Cpp::CommentNode>(&node)) return;
        if (node.start().line != lastLine_ + 1 || (!data && !isPrototype)) end();
        if (data && data->type() && data->name()) {
            addName(names_, *data->type(), *data->name());
            if (data->tail() && data->tail()->startsWith('=')) add(initializers_, *data->tail());
        } else if (isPrototype && function->head()->returnType() && function->head()->name()) {
            addName(functionNames_, *function->head()->returnType(), *function->head()->name());
        }
        if (first_.empty()) first_ = formatter_.sourceFrom(node);
        lastLine_ = node.end().line;
    }
    void addEnumerator(const Cpp::ExprNode& enumerator) {
        if (enumerator.start().line != lastLine_ + 1) end();
        const std::size_t assign = enumerator.text().find('=');
        if (first_.empty()) first_ = formatter_.sourceFrom(enumerator);
        lastLine_ = enumerator.end().line;
        if (assign == std::string::npos || enumerator.start().line != enumerator.end().line) return;
        const std::string_view text = formatter_.sourceFrom(enumerator);
        add(enumerators_, text.substr(text.find('=')), formatter_.lineBefore(enumerator));
    }

private:
    // Where something stands in a line, and where what is in front of it ends.
    struct Stop {
        int column;
        int before;
    };
    enum class InColumn { CannotTell, No, Yes };

    void addName(std::vector<Stop>& stops, const Cpp::SyntaxNode& type, const Cpp::SyntaxNode& name) {
        if (type.start().line != name.start().line) return;
        add(stops, name);
        add(memberNames_, name);
    }
    void add(std::vector<Stop>& stops, const Cpp::SyntaxNode& node) {
        add(stops, formatter_.sourceFrom(node), formatter_.lineBefore(node));
    }
    // Of a piece on the line that starts where `line` does.
    void add(std::vector<Stop>& stops, std::string_view piece, std::string_view line) {
        const int column = formatter_.exprFormatter_.sourceColumnOf(piece);
        if (column < 0) return;
        const std::string_view front(line.data(), static_cast<std::size_t>(piece.data() - line.data()));
        const std::size_t end = front.find_last_not_of(" \t*&") + 1;
        stops.push_back({column, columnAfter(front.substr(0, end), 0, formatter_.out().tabSize())});
    }

    void end() {
        tell(names_, Keys::ALIGN_DD_NAMES_LEFT);
        if (formatter_.inClassBody_) tell(memberNames_, Keys::ALIGN_CLASS_MEMBER_NAMES_LEFT);
        tell(functionNames_, Keys::ALIGN_FN_DECL_NAMES_LEFT);
        tell(initializers_, Keys::ALIGN_DD_INITIALIZERS);
        tell(enumerators_, Keys::ALIGN_ENUM_INITIALIZERS);
        for (std::vector<Stop>* stops : {&names_, &functionNames_, &memberNames_, &initializers_, &enumerators_}) {
            stops->clear();
        }
        first_ = {};
    }
    static InColumn standInColumn(const std::vector<Stop>& stops) {
        if (stops.size() < 2) return InColumn::CannotTell;
        const Stop& first = stops.front();
        const auto differs = [&first](const Stop& stop) { return stop.before != first.before; };
        if (std::none_of(stops.begin(), stops.end(), differs)) return InColumn::CannotTell;
        const auto isInColumn = [&first](const Stop& stop) { return stop.column == first.column; };
        return std::all_of(stops.begin(), stops.end(), isInColumn) ? InColumn::Yes : InColumn::No;
    }
    void tell(const std::vector<Stop>& stops, KeyId key) {
        const InColumn inColumn = standInColumn(stops);
        if (inColumn != InColumn::CannotTell) formatter_.log_->measured(key, first_, inColumn == InColumn::Yes);
    }

    CppFormatter& formatter_;
    std::vector<Stop> names_;
    std::vector<Stop> functionNames_;
    std::vector<Stop> memberNames_;  // of both
    std::vector<Stop> initializers_;
    std::vector<Stop> enumerators_;
    std::string_view first_;  // the source from the first of them on
    std::uint32_t lastLine_ = 0;
};

// Where the node begins a line.
void CppFormatter::measureIndent(const Cpp::SyntaxNode& node, KeyId key) {
    if (!log_) return;
    const std::string_view indent = lineBefore(node);
    if (!key || !isAllWhitespace(indent)) return;
    const std::size_t shared = lengthUpTo(log_->place().baseColumn, indent, out().tabSize());
    log_->measured(key, sourceFrom(node), indent.substr(shared));
}

// The indentation by the first of the contents that tells it, and columns by all of them.
void CppFormatter::measureContent(Cpp::InteriorNode& node, Cpp::InteriorNode::iterator first, KeyId indent) {
    if (!log_) return;
    const auto tells = [](const auto& child) { return !isIndentedByItself(*child); };
    const auto end = node.childEnd();
    if (const auto place = std::find_if(first, end, tells); place != end) {
        measureIndent(**place, indent);
        log_->place().lineColumn = sourceColumnOf(**place);
    }
    MeasuredRun run(*this);
    for (auto child = first; child != end; ++child) run.add(**child);
}

void CppFormatter::measureNamespace(const Cpp::NamespaceBodyNode& body) {
    if (!log_) return;
    const std::optional<bool> inColumn = standsInNamespaceColumn(body, source_, out().tabSize());
    if (inColumn) log_->measured(settings_.keepsNamespaceIndent.key, sourceFrom(body), *inColumn);
}

void CppFormatter::measureEnumerators(const Cpp::EnumBodyNode& body) {
    if (!log_) return;
    const auto isEnumerator = [](const auto& child) { return Cpp::as<Cpp::ExprNode>(child.get()); };
    const auto first = std::find_if(body.childBegin(), body.childEnd(), isEnumerator);
    if (first == body.childEnd()) return;
    measureIndent(**first, settings_.enums.indent.key);
    log_->place().lineColumn = sourceColumnOf(**first);
    MeasuredRun run(*this);
    for (auto child = first; child != body.childEnd(); ++child) {
        if (isEnumerator(*child)) run.addEnumerator(static_cast<const Cpp::ExprNode&>(**child));
    }
}

// The gap behind a "{" that the first node copies.
void CppFormatter::leaveGapBehindOpen(const Cpp::BracketedNode& node, const Cpp::SyntaxNode& first,
                                      const BraceSettings& braces, const OptionalText& indent) {
    if (!log_) return;
    ContentScope content(*this, indent);
    log_->place().lineColumn = sourceColumnOf(first);
    const OptionalText& afterOpen = afterOpenOf(braces);
    WantedText absent = afterOpen.present ? kAsInInput : afterOpen;
    absent.isOnOneLine = standsOnOneLine(node);
    const std::string_view blanks = leadingBlanks(gapBefore(first));
    writer_.leave(blanks, absent);
    measureBlankLines(blanks, braces);
}

// Behind a "{".
void CppFormatter::measureBlankLines(std::string_view blanks, const BraceSettings& braces) {
    const bool isOfStatements =
        &braces == &settings_.global || &braces == &settings_.functions || &braces == &settings_.statements;
    const bool hasBlankLine = std::count(blanks.begin(), blanks.end(), '\n') > 1;
    const int level = isOfStatements ? 2 : 1;
    if (isLineBreak(blanks)) log_->measured(settings_.blankLines.key, blanks, hasBlankLine ? level : 0);
}

// Whether the body stands on the line of its head; of functions, what would have to be set for that.
void CppFormatter::measureOneLine(const Cpp::BracketedNode& body, KeyId key) {
    if (!log_ || !key) return;
    const bool hasHead = body.hasBrackets() || gapBefore(body).find('\n') == std::string_view::npos;
    int level = standsOnOneLine(body) && hasHead ? 1 : 0;
    if (level > 0 && key == settings_.oneLineFunctions.key && body.size() > 0) level = inClassBody_ ? 2 : 3;
    log_->measured(key, writer_.ahead(), level);
}

// In a declarator that is a view of the source. Another rule tells of the gap in front of a tail.
void CppFormatter::leaveDeclarator(std::string_view name, bool hasTail) {
    if (!log_) return;
    const std::string_view afterName = gapBehindName(name);
    const bool isAtEnd = afterName.data() + afterName.size() == name.data() + name.size();
    if (afterName.data() && !(hasTail && isAtEnd)) writer_.leave(afterName, settings_.afterDataName);
    const std::string_view afterBracket = gapBehindBracket(name);
    if (afterBracket.data()) writer_.leave(afterBracket, settings_.afterDataBracket);
}

// Behind each ";" of a for, where the scheme has nothing for it.
void CppFormatter::leaveForClauses(std::string_view inside) {
    if (!log_) return;
    Cpp::Lexer lexer(inside);
    std::size_t end = 0;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (end > 0) {
            const bool isEmpty = token.kind == Cpp::Semicolon;
            writer_.leave(inside.substr(end, token.offset - end),
                          isEmpty ? settings_.betweenEmptyForClauses : settings_.betweenForClauses);
        }
        end = token.kind == Cpp::Semicolon ? std::size_t{token.offset} + 1 : 0;
    }
}

// At a gap that holds a comma of a list, of which a line ends or begins in it.
void CppFormatter::measureListBreak(std::string_view gap, const Cpp::SyntaxNode& first, const Cpp::SyntaxNode& next) {
    const bool endsLine = isLineBreak(trailingBlanks(gap));
    if (!log_ || (!endsLine && !isLineBreak(leadingBlanks(gap)))) return;
    const std::string_view piece = sourceFrom(next);
    log_->measured(settings_.keepsLineBreaks.key, piece, 1);
    exprFormatter_.measureContinuation(piece, sourceFrom(first), !endsLine);
}

}  // namespace Tessel
