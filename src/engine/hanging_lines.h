#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "engine/expr_tokens.h"
#include "engine/operand_chains.h"
#include "engine/optional_text.h"

namespace Tessel {

// How far lines hang that begin where nothing stands to hang under.
struct HangingIndents {
    OptionalText wrap;  // WRAP_INDENT
    OptionalText data;  // INDENT_DD_CONTENT, for those behind a "{"
    OptionalText operand;  // HANGING_OPERAND_INDENT
    OptionalText body;     // INDENT_FN_CONTENT, for those of a lambda that is read as one of several arguments
    bool fromStatement = false;  // HANGING_FROM_STATEMENT
    bool fromLine = false;       // HANGING_FROM_LINE
    bool commas = false;         // HANGING_COMMAS
    bool conditions = false;     // several in a row hang from the first, as WRAP_BY_WEIGHT lays them out
    bool fromCapture = false;    // parameters of lambdas do from their "[": where no line is wrapped
};

// Where the lines hang that the author has begun inside a text, one sweep over its tokens:
//
//     total = first +          under the first operand
//             second;
//     call(first, other(
//                     third),  from the element, by WRAP_INDENT
//          fourth);            under the first element
//     builder.add(1)
//            .add(2);          at the first "." of an operand's chain; the same for "<<", "?:" and literals
//     call(
//         first);              from the line, by WRAP_INDENT
//     return first ||
//            second &&         behind the operand, by HANGING_OPERAND_INDENT, where that is part of another one, or one
//                third;        of several elements, twice in front of "?", or goes on behind the ")" with a "."
//     return first ? second :
//                    third;    under the other choice, by HANGING_OPERAND_INDENT too
class HangingLines {
public:
    enum class Text { Statement, Declarators, DeclaratorsInLine, List, Element, Condition, LoopCondition };
    static bool isInList(Text text) { return text != Text::Statement && !holdsDeclarators(text); }
    static bool holdsDeclarators(Text text) { return text == Text::Declarators || text == Text::DeclaratorsInLine; }

    // An element is one of several of a list. Declarators in a line stand behind a name that begins it. The condition
    // of an `if` is laid out as one; that of a loop, or of a `switch`, as the rest of its line. `indentColumn` is that
    // of the statement, or of the list, that the text is part of. All are borrowed.
    HangingLines(const ExprTokens& tokens, Text text, int indentColumn,
                 const HangingIndents& indents, int tabSize);

    // The text, which nothing has been passed of, is part of a statement in that column, by HANGING_COMMAS.
    void hangCommasFrom(int statementColumn);
    // So are the arguments of the calls that the condition of a loop begins with.
    void hangCallsFrom(int statementColumn);
    // The text goes on with the value of a declarator in that column: those behind it stand below.
    void hangDeclaratorsFrom(int column) { declarators_ = column; }
    // Whether another declarator comes next, and whether it is one of those.
    bool startsDeclarator() const;
    bool startsHangingDeclarator() const { return declarators_ != kNone && startsDeclarator(); }
    // The text may declare names: where the first begins a line behind its type, those behind it stand below.
    void hangNamesFromFirst() { namesInColumn_ = true; }
    // The text, which nothing has been passed of, goes on in a line whose first text stands in that column.
    void startInLineOf(int column);
    bool isOutsideBrackets() const { return levels_.size() == 1; }
    // The column of a token, not passed yet, that begins a line.
    int columnFor(std::size_t place) const;
    // Of the lines that begin behind a "::" inside the name passed last; nothing where they hang by no key.
    std::optional<int> columnWithinName() const;
    // Whether it is the "?" of one of several conditions in a row, which may stand in a column.
    bool isOneOfConditions(std::size_t place) const;
    // From where a block hangs that stands inside the elements of a list, as opposed to being one; nothing for others.
    std::optional<int> columnOfBlock() const;
    // From where the body hangs of a lambda that names what it returns, and begins the line behind an "="; nothing for
    // others.
    std::optional<int> columnOfReturningBody(std::size_t capture) const;
    // What stands in the brackets passed last does from there.
    void hangContentsFrom(int column) { levels_.back().contents = column; }
    // The name passed last goes on in lines that begin at `column`.
    void breakName(std::size_t place, int column);
    // The next token has come to stand at `column`.
    void pass(std::size_t place, int column, bool startsLine);

private:
    static constexpr int kNone = -1;

    // The element of a list, or the statement, that is being read. Columns are kNone until there is one.
    struct Element {
        // From where what goes on with the operand that is being read hangs.
        int columnOfOperand() const { return later != kNone ? later : operand != kNone ? operand : start; }
        // Behind a "=" or a "return".
        void beginOperand() {
            operand = later = chain = memberLine = shift = otherwise = kNone;
            operandStartsLine = false;
            questions.clear();
            choices.clear();
        }

        int start = kNone;
        int line = kNone;            // of the line on which it starts
        int operand = kNone;         // the first behind "=" or "return"
        bool operandStartsLine = false;
        int later = kNone;           // the last operand that stands behind an operator
        int chain = kNone;           // of its first "." or "->"
        int memberLine = kNone;      // of the line, where that begins with a "." or "->"
        int shift = kNone;           // of its first "<<" or ">>"
        int subscript = kNone;       // of the first "[" of the last ones in a row
        std::vector<int> questions;  // of each "?" whose ":" has not come
        std::vector<int> choices;    // of the operands behind these
        int choice = kNone;          // of the one whose ":" has come last, until what follows that has
        int otherwise = kNone;       // of the last ":" of these, where it began a line: those of a chain stand below it
    };

    // What stands between a pair of brackets, or the text itself.
    struct Level {
        enum class Kind { Statement, List, Braces, Body };

        bool isBraced() const { return kind == Kind::Braces || kind == Kind::Body; }

        Kind kind = Kind::Statement;
        std::size_t bracket = kNoToken;
        std::size_t close = kNoToken;
        int base = 0;              // from where lines are indented while there is no element
        int lineColumn = 0;        // of the line with the bracket
        bool startedLine = false;  // its first token did
        int first = kNone;         // of the first element
        Element element;
        int comment = kNone;                  // of those in front of the operand that comes next, on its line
        bool awaitsOperand = false;           // behind "=" or "return"
        bool isReturned = false;              // the operand stands behind "return"
        bool awaitsLater = false;             // behind another operator
        std::size_t operandStart = kNoToken;  // the first token of the operand that is being read
        std::size_t lastOperator = kNoToken;
        std::size_t question = kNoToken;  // the last one
        int call = kNone;                 // from where the arguments hang of calls that the first element begins with
        int contents = kNone;             // where lines hang as long as there is no element
        int behindComma = kNone;          // or what follows a comma operator
        int blocks = kNone;   // from where those hang that stand inside the elements of a list
        int section = kNone;  // of what follows the last ":" that has no "?", as the operands of assembler do
        bool awaitsSection = false;
    };

    // An opening bracket, by what stands around it.
    struct Opening {
        std::size_t place = 0;
        bool isBrace = false;
        bool isBody = false;         // of statements
        bool isInList = false;       // in an element that has begun
        bool isInBraces = false;     // the same, in braces
        bool isOneOfMany = false;    // in one of several elements
        bool isInFirst = false;      // in the first element, which stands alone in the line of its list
        bool isInElements = false;   // of a list, one of several
        bool standsInLines = false;  // a call in a later element, whose arguments have lines of their own
    };

    bool isTrivia(std::size_t place) const { return tokens_[place].role == ExprRole::Trivia; }
    std::size_t skipTrivia(std::size_t place) const;
    bool followsMark() const;
    bool isOperator(std::size_t place) const;
    bool followsMacroCall() const;
    bool endsInComma(std::size_t close) const;
    int columnOfMember(const Level& level) const;
    bool hangsFromOperand(const Level& level) const;
    int columnBehindSign(const Level& level) const;
    int columnBehindOperand(const Level& level) const;
    int columnInChain(std::size_t place) const;
    int indented(int column, int depth) const;
    int columnFromLine(const Level& level) const;
    int columnInLevel(const Level& level) const;
    bool followsPlacement() const;
    int columnBehindPlacement(const Level& level) const;
    int columnOfElement(const Level& level) const;
    int columnOfContents(const Level& level) const;
    int wrapped(int column) const;
    bool continuesLiteral(std::size_t place) const;
    bool followsNameOfLiteral() const;
    void passComment(std::size_t place, int column);
    void passInLevel(std::size_t place, int column, bool startsLine);
    void passSign(std::size_t place, int column, bool startsLine);
    void open(std::size_t place);
    Opening openingAt(std::size_t place) const;
    int blocksIn(const Level& outer, const Opening& opening) const;
    int baseIn(const Level& outer, const Opening& opening) const;
    int lineColumnIn(const Level& outer, const Opening& opening) const;
    void placeContents(Level& level, const Level& outer, const Opening& opening) const;
    void closeLevel(std::size_t place);
    bool opensBody(std::size_t place) const;
    bool isAboveRow(std::size_t open) const;
    bool standsAsBlock(std::size_t open) const;
    bool standsInLines(std::size_t open) const;
    bool goesOnBelow(std::size_t open) const;
    int columnBehindName(std::size_t open) const;
    bool isFirstOfElement(std::size_t place) const;
    bool holdsValueInLine(const Level& level, std::size_t open) const;
    int columnInParentheses(const Level& outer, const Level& level) const;
    int columnInCall(const Level& outer, std::size_t open) const;
    bool standsBelowQuestion(const Level& level, std::size_t colon) const;
    int columnOfQuestion(const Level& level, std::size_t place, int column) const;
    int columnOfCall(const Level& outer) const;

    const ExprTokens& tokens_;
    const HangingIndents& indents_;
    int tabSize_;
    bool isAmongOthers_ = false;  // an element is
    bool namesInLine_ = false;  // declarators behind a name that begins their line
    bool namesInColumn_ = false;
    int declarators_ = kNone;   // the column of those that stand below the first one
    std::vector<Level> levels_;
    std::optional<OperandChains> chains_;  // where they are asked for
    std::vector<int> columns_;             // of the tokens then
    int lineColumn_;
    int literalColumn_ = kNone;        // of the first of the literals that follow each other
    std::size_t templateClose_ = kNoToken;  // the last one
    int templateLineColumn_ = 0;            // of the line on which its template's arguments begin
    std::size_t nameInLines_ = kNoToken;    // the last one that goes on in further lines
    int nameColumn_ = 0;                    // of these
    std::size_t captureClose_ = kNoToken;   // the "]" of the last lambda
    int captureLineColumn_ = 0;             // of the line on which it begins
    std::size_t call_ = kNoToken;      // the first token of the last line in the column of the text
    std::size_t previous_ = kNoToken;  // the last token that is no comment or directive
    // The comments and directives that were skipped last.
    mutable std::size_t triviaStart_ = 1;
    mutable std::size_t triviaEnd_ = 0;
};

}  // namespace Tessel
