// sort(a,b,[](int x,int y){return x<y;});        sort(a, b, [](int x, int y) { return x < y; });
//
// run([&] {                                      run([&] {
// a();                                               a();
// });                                            });
//
// The blocks in expressions, of lambdas mostly, are laid out as functions are, but for two things: a body of simple
// statements that stands on one line stays there while it fits in the margin, and the "{" stays on the line where it
// stands. What is in it is indented from the first text of the line that the "{" stands on, as people write it, or with
// INDENT_FROM_LINE that the lambda begins on.
#include <algorithm>

#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/formatter_scopes.h"
#include "engine/one_line_rules.h"
#include "engine/opaque_text.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

bool isSimple(const Cpp::SyntaxNode& statement) {
    return Cpp::as<Cpp::ExprNode>(&statement) || Cpp::as<Cpp::DataDeclNode>(&statement);
}

bool mayStayOnLine(const Cpp::BlockNode& body) {
    return body.start().line == body.end().line &&
           std::all_of(body.childBegin(), body.childEnd(), [](const auto& child) { return isSimple(*child); });
}

// Whether a text cannot fit in that many columns however it is laid out.
bool exceeds(int columns, std::string_view text) {
    int count = 0;
    for (const char c : text) {
        if (c != ' ' && c != '\t' && ++count > columns) return true;
    }
    return false;
}

}  // namespace

// What is known of the construct that is being written, set aside for the time that a body in it is.
class CppFormatter::BodyState {
public:
    explicit BodyState(CppFormatter& formatter)
        : pending_(formatter.pendingWhitespace_, {}),
          absentPending_(formatter.absentPending_, {}),
          templateColumn_(formatter.templateColumn_, std::nullopt),
          inClassBody_(formatter.inClassBody_, false),
          previousSibling_(formatter.previousSibling_, nullptr),
          lastClosedClass_(formatter.lastClosedClass_, nullptr),
          lastLabel_(formatter.lastLabel_, nullptr),
          chainingElseIf_(formatter.chainingElseIf_, false) {}

private:
    ValueScope<std::vector<OptionalText>> pending_;
    ValueScope<KeyId> absentPending_;
    ValueScope<std::optional<int>> templateColumn_;
    ValueScope<bool> inClassBody_;
    ValueScope<const Cpp::SyntaxNode*> previousSibling_;
    ValueScope<const Cpp::SyntaxNode*> lastClosedClass_;
    ValueScope<const Cpp::SyntaxNode*> lastLabel_;
    ValueScope<bool> chainingElseIf_;
};

// The bodies of an expression whose text, a view of the source, has been read.
class CppFormatter::BodiesInText : public BlocksInText {
public:
    BodiesInText(CppFormatter& formatter, std::string_view text, const Cpp::ExprBodies& bodies)
        : formatter_(formatter), bodies_(bodies) {
        const auto start = static_cast<std::size_t>(text.data() - formatter.source_.text().data());
        for (const auto& body : bodies.blocks()) {
            const std::size_t first = offsetOf(formatter.source_, body->start()) - 1;
            extents_.push_back({first - start, offsetOf(formatter.source_, body->end()) - first});
        }
    }

    std::span<const TextExtent> extents() const override { return extents_; }
    void write(std::size_t index, Zelmor::OIndentBuf& out, int column, int spare) override {
        formatter_.formatExprBody(*bodies_.blocks()[index], out, column, spare);
    }

private:
    CppFormatter& formatter_;
    const Cpp::ExprBodies& bodies_;
    std::vector<TextExtent> extents_;
};

void CppFormatter::writeExpression(std::string_view text, const Cpp::ExprBodies& bodies,
                                   HangingLines::Text hanging) {
    const std::optional<int> statementColumn =
        hanging == HangingLines::Text::LoopCondition ? std::optional(baseColumn()) : std::nullopt;
    if (bodies.empty()) {
        exprFormatter_.formatExpression(text, out(), nullptr, hanging, statementColumn);
        return;
    }
    BodiesInText blocks(*this, text, bodies);
    exprFormatter_.formatExpression(text, out(), &blocks, hanging, statementColumn);
}

void CppFormatter::writeDeclarators(std::string_view text, const Cpp::ExprBodies& bodies,
                                    HangingLines::Text hanging, DeclaratorPlaces places) {
    if (bodies.empty()) {
        exprFormatter_.formatDeclarators(text, out(), nullptr, hanging, places);
        return;
    }
    BodiesInText blocks(*this, text, bodies);
    exprFormatter_.formatDeclarators(text, out(), &blocks, hanging, places);
}

// Its contents are indented from the column.
void CppFormatter::formatExprBody(Cpp::BlockNode& body, Zelmor::OIndentBuf& target, int column, int spare) {
    SourceWriter::InputScope input(writer_, offsetOf(source_, body.start()) - 1);
    SourceWriter::OutputScope output(writer_, target);
    BodyState saved(*this);
    BaseColumnScope base(*this, column, &body);
    const bool keepsIndent = target.keepLeadingSpace();
    Zelmor::IndentScope indent(target, keepsIndent ? target.indent() : indentToColumn(target, column));
    if (!mayStayOnLine(body) || !formatOnLine(body, target, spare)) formatBlock(body, settings_.functions);
}

// The line wrapper leaves such a body alone, so that it has to fit from the start, or where the wrapper will put it:
// says false where it does not. Inside of another one that one has to.
bool CppFormatter::formatOnLine(Cpp::BlockNode& body, Zelmor::OIndentBuf& target, int spare) {
    static const BraceSettings kOnLine{kAsInInput, kBlank, kAsInInput, kBlank};
    static const BraceSettings kEmpty;
    const BraceSettings& braces = body.size() == 0 ? kEmpty : kOnLine;
    if (isOnOneLine_) {
        formatBlock(body, braces);
        return true;
    }
    const std::size_t start = offsetOf(source_, body.start()) - 1;
    const std::string_view text = source_.text().substr(start, offsetOf(source_, body.end()) - start);
    constexpr int widthBehind = 2;  // ");"
    const int margin = rightMargin_ + std::max(spare - widthBehind, 0);
    if (exceeds(margin - target.column(), text)) return false;
    Place place(*this);
    Zelmor::OIndentBuf line{Zelmor::IndentState(target)};
    {
        SourceWriter::OutputScope scratch(writer_, line);
        ValueScope<bool> oneLine(isOnOneLine_, body.size() > 0);
        formatBlock(body, braces);
    }
    if (line.line() == target.line() && line.column() > margin) {
        place.restore(*this);
        return false;
    }
    Tessel::writeRendered(line.takeText(), target);
    return true;
}

}  // namespace Tessel
