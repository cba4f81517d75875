#include "engine/settled_text.h"

#include <cstdint>

#include "cpp/characters.h"
#include "cpp/keyword_table.h"
#include "cpp/operator_table.h"
#include "cpp/token_kind.h"
#include "cpp/words.h"
#include "engine/optional_text.h"
#include "textstream/char_set.h"

namespace Tessel {

namespace {

bool leavesNothing(const OptionalText& wanted) { return wanted.text.empty(); }

bool isOneBlank(const OptionalText& wanted) { return wanted.present && wanted.text == " "; }

// Those of operators that stand neither at the name of what is declared nor in front of what may be a type.
constexpr Zelmor::CharSet kOperatorCharacters("=!<>+-/%^|");
constexpr Zelmor::CharSet kSigns("!~-*&");

// Whether nothing but an operator between two operands stands there.
bool isInfix(std::string_view symbol, bool followsBracket) {
    const Cpp::Operator found = Cpp::matchOperator(symbol);
    if (found.length != symbol.size()) return false;
    switch (found.kind) {
        case Cpp::Exclamation:
        case Cpp::Increment:
        case Cpp::Decrement:
        case Cpp::Arrow:
        case Cpp::Less: return false;
        case Cpp::Plus:
        case Cpp::Minus: return !followsBracket;
        default: return true;
    }
}

}  // namespace

// Reads operands and what stands between them, one after the other.
class SettledText::Reader {
public:
    Reader(const SettledText& wanted, std::string_view text) : wanted_(wanted), text_(text) {}

    bool readExpression() {
        while (readOperand()) {
            if (place_ == text_.size() || text_.substr(place_) == ";") return open_ == kNoneOpen;
            if (!readSeparator()) return false;
        }
        return false;
    }

    // name[2][SIZE]
    bool readArrays() {
        if (kSigns.holds(next())) return false;
        while (readOperand()) {
            if (open_ == kNoneOpen) return place_ == text_.size() && text_.back() == ']';
            if (!readSeparator()) return false;
        }
        return false;
    }

private:
    // The kinds of the brackets that are open, a bit for each behind a first one: set for parentheses.
    using Brackets = std::uint64_t;
    static constexpr Brackets kNoneOpen = 1;
    static constexpr Brackets kMostOpen = ~Brackets{0} >> 1;

    char next(std::size_t ahead = 0) const {
        return place_ + ahead < text_.size() ? text_[place_ + ahead] : '\0';
    }
    bool isInParentheses() const { return open_ != kNoneOpen && (open_ & 1) != 0; }

    bool open(bool isParenthesis) {
        if (open_ > kMostOpen || !(isParenthesis ? wanted_.calls_ : wanted_.subscripts_)) return false;
        open_ = open_ << 1 | (isParenthesis ? 1 : 0);
        ++place_;
        return true;
    }
    bool close(char bracket) {
        if (open_ == kNoneOpen || (bracket == ')') != isInParentheses()) return false;
        open_ >>= 1;
        ++place_;
        return true;
    }

    // A name or number, with the signs and brackets in front of it, and the calls, subscripts and ends behind.
    bool readOperand() {
        do {
            if (!readOpening() || !readName() || !readBehindName()) return false;
        } while (hasOpened_);
        return true;
    }

    bool readOpening() {
        if (kSigns.holds(next())) ++place_;
        while (next() == '(') {
            if (!open(true)) return false;
            if (kSigns.holds(next())) ++place_;
        }
        return true;
    }

    bool readName() {
        const std::size_t start = place_;
        while (Cpp::isNamePart(next())) ++place_;
        const std::string_view word = text_.substr(start, place_ - start);
        return !word.empty() && Cpp::keywordKind(word) == Cpp::Identifier && !Cpp::isOperatorWord(word);
    }

    // Up to a separator, or to the first operand of a call or subscript.
    bool readBehindName() {
        hasOpened_ = false;
        for (bool isName = true;;) {
            const char c = next();
            if (c == '(' || c == '[') {
                if ((c == '(' && !isName) || !open(c == '(')) return false;
                hasOpened_ = next() != ')' && next() != ']';
                if (hasOpened_) return true;
                isName = false;
            } else if (c == ')' || c == ']') {
                if (!close(c)) return false;
                isName = false;
            } else if (c == '.' || (c == '-' && next(1) == '>') || (c == ':' && next(1) == ':')) {
                place_ += c == '.' ? 1 : 2;
                if (!isName || !readName()) return false;
            } else {
                return true;
            }
        }
    }

    // A comma or an operator, with the blanks around it.
    bool readSeparator() {
        if (next() == ',') {
            if (!wanted_.lists_ || !isInParentheses() || next(1) != ' ') return false;
            place_ += 2;
            return true;
        }
        if (!wanted_.operators_ || next() != ' ') return false;
        const std::size_t start = place_ + 1;
        place_ = kOperatorCharacters.skipIn(text_, start);
        const std::string_view symbol = text_.substr(start, place_ - start);
        // `(a) - b` may be a cast.
        return !symbol.empty() && isInfix(symbol, !Cpp::isNamePart(text_[start - 2])) && next() == ' ' && ++place_;
    }

    const SettledText& wanted_;
    std::string_view text_;
    std::size_t place_ = 0;
    Brackets open_ = kNoneOpen;
    bool hasOpened_ = false;  // a bracket, with the operand that comes next
};

SettledText::SettledText(const ExprSettings& settings)
    : calls_(leavesNothing(settings.afterCallName) && leavesNothing(settings.afterShortCallName) &&
             leavesNothing(settings.afterOpenParen) && leavesNothing(settings.beforeCloseParen)),
      subscripts_(leavesNothing(settings.afterOpenBracket) && leavesNothing(settings.beforeCloseBracket)),
      lists_(leavesNothing(settings.commas.callArguments.before) && isOneBlank(settings.commas.callArguments.behind)),
      operators_(isOneBlank(settings.beforeOperator) && isOneBlank(settings.afterOperator)) {}

bool SettledText::isOne(std::string_view text, ExprMode mode) const {
    switch (mode) {
        case ExprMode::Expression: return Reader(*this, text).readExpression();
        case ExprMode::Declarators: return Reader(*this, text).readArrays();
        default: return false;
    }
}

}  // namespace Tessel
