#include "cpp/operator_table.h"

namespace Cpp {

Operator matchOperator(std::string_view text) {
    const char second = text.size() > 1 ? text[1] : '\0';
    const char third = text.size() > 2 ? text[2] : '\0';
    const auto one = [](int kind) { return Operator{kind, 1}; };
    const auto two = [](int kind) { return Operator{kind, 2}; };
    const auto three = [](int kind) { return Operator{kind, 3}; };
    switch (text.front()) {
        case ';':
            return one(Semicolon);
        case ':':
            return one(Colon);
        case ',':
            return one(Comma);
        case '(':
            return one(OpenParen);
        case ')':
            return one(CloseParen);
        case '{':
            return one(OpenBrace);
        case '}':
            return one(CloseBrace);
        case '[':
            return one(OpenBracket);
        case ']':
            return one(CloseBracket);
        case '?':
            return one(Question);
        case '~':
            return one(Tilde);
        case '!':
            return second == '=' ? two(NotEqual) : one(Exclamation);
        case '%':
            return second == '=' ? two(PercentAssign) : one(Percent);
        case '*':
            return second == '=' ? two(AsteriskAssign) : one(Asterisk);
        case '/':
            return second == '=' ? two(SlashAssign) : one(Slash);
        case '=':
            return second == '=' ? two(Equal) : one(Assign);
        case '^':
            return second == '=' ? two(CaretAssign) : one(Caret);
        case '.':
            return second == '*' ? two(DotAsterisk) : one(Dot);
        case '&':
            if (second == '&') return two(LogicalAnd);
            return second == '=' ? two(AmpersandAssign) : one(Ampersand);
        case '|':
            if (second == '|') return two(LogicalOr);
            return second == '=' ? two(BarAssign) : one(Bar);
        case '+':
            if (second == '+') return two(Increment);
            return second == '=' ? two(PlusAssign) : one(Plus);
        case '-':
            if (second == '-') return two(Decrement);
            if (second == '=') return two(MinusAssign);
            if (second == '>') return third == '*' ? three(ArrowAsterisk) : two(Arrow);
            return one(Minus);
        case '<':
            if (second == '<') return third == '=' ? three(ShiftLeftAssign) : two(ShiftLeft);
            if (second == '=' && third == '>') return three(LessEqual);
            return second == '=' ? two(LessEqual) : one(Less);
        case '>':
            if (second == '>') return third == '=' ? three(ShiftRightAssign) : two(ShiftRight);
            return second == '=' ? two(GreaterEqual) : one(Greater);
        default:
            return {};
    }
}

}  // namespace Cpp
