#include "engine/token_proof.h"

#include <algorithm>
#include <array>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/convertible_blanks.h"
#include "engine/directive_proof.h"
#include "engine/equal_text.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"
#include "engine/open_directive.h"
#include "engine/token_boundary.h"

namespace Tessel {

namespace {

// A place in one of the two texts.
struct Cursor {
    std::string_view text;
    std::size_t place = 0;
    bool isApart = false;        // white space stands in front of it
    std::size_t codeStart = 0;   // behind the last opaque token
    std::size_t tokenStart = 0;  // of the last token with white space in front of it in one of the texts
    bool codeStartsLine = true;  // with nothing but comments in front of that on its line

    bool atEnd() const { return place >= text.size(); }
    char current() const { return text[place]; }
    // Returns what has been skipped.
    std::string_view skipWhitespace(std::size_t end) {
        const std::size_t start = place;
        place = kWhitespace.skipIn(text.substr(0, end), place);
        isApart = isApart || place > start;
        return text.substr(start, place - start);
    }
    // Whether nothing but white space and comments stands in front of the place on its line.
    bool startsLine() const {
        for (std::size_t behind = place; behind > codeStart; --behind) {
            if (text[behind - 1] == '\n') return true;
            if (!isWhitespace(text[behind - 1])) return false;
        }
        return codeStartsLine;
    }
    // Moves the start of the code here, behind a token.
    void startCode(bool beginsLine) {
        codeStart = tokenStart = place;
        codeStartsLine = beginsLine;
    }
};

// Where a character stands next in a text.
class NextOf {
public:
    NextOf(char character, std::string_view text) : character_(character), text_(text), next_(text.find(character)) {}

    // At `place` or behind it, as are all that are asked for after it; npos where there is none.
    std::size_t from(std::size_t place) {
        if (next_ < place) next_ = text_.find(character_, place);
        return next_;
    }

private:
    char character_;
    std::string_view text_;
    std::size_t next_;
};

class Comparison {
public:
    Comparison(std::string_view source, std::string_view result)
        : source_{source}, result_{result}, special_{{{'"', source}, {'\'', source}, {'\\', source}}} {}

    std::optional<std::size_t> run(const Cpp::OpaqueTokens& opaque) {
        for (const Cpp::OpaqueToken& token : opaque) {
            if (!compareCode(token.offset) || !compareOpaque(token)) return source_.place;
        }
        if (!compareCode(source_.text.size())) return source_.place;
        result_.skipWhitespace(result_.text.size());
        if (!result_.atEnd()) return source_.place;
        return std::nullopt;
    }

private:
    // Up to the next opaque token: the same characters, and white space between two tokens wherever they need
    // it.
    bool compareCode(std::size_t end) {
        while (true) {
            sourceGapStart_ = source_.place;
            const std::string_view sourceGap = source_.skipWhitespace(end);
            const std::string_view resultGap = result_.skipWhitespace(result_.text.size());
            if (source_.atEnd()) return true;
            if (splicesLines(resultGap) || !endsDirective(sourceGap, resultGap)) return false;
            if (result_.atEnd() || source_.current() != result_.current()) return false;
            // What a splice holds is one or apart by the white space on both of its sides.
            if (source_.place >= end && source_.current() == '\\') return true;
            if (source_.isApart != result_.isApart && !staysTheSame()) return false;
            if (source_.isApart || result_.isApart) startToken();
            if (source_.place >= end) return true;
            if (!compareUnit()) return false;
            skipPlain(end);
        }
    }

    void startToken() {
        source_.isApart = result_.isApart = false;
        source_.tokenStart = source_.place;
        result_.tokenStart = result_.place;
    }

    // What is the same with the same white space in it, and holds no literal, as most of a text is.
    void skipPlain(std::size_t end) {
        if (directive_.isOpen()) return;  // the next white space may end it
        const std::string_view source = source_.text.substr(source_.place);
        std::size_t plain = end;
        for (NextOf& special : special_) plain = std::min(plain, special.from(source_.place));
        std::size_t count =
            equalLength(source, result_.text.substr(result_.place), plain - source_.place);
        // The gap in front of what differs is compared as a whole.
        while (count > 0 && isWhitespace(source[count - 1])) --count;
        source_.place += count;
        result_.place += count;
    }

    bool compareUnit() {
        const std::size_t length = unitLength();
        if (!compareExactly(source_.text.substr(source_.place, length))) return false;
        source_.place += length;
        return true;
    }

    // How many characters stand together here: one, or those of a literal, which is not opaque without white
    // space.
    std::size_t unitLength() {
        const std::size_t place = source_.place;
        if (!Cpp::isQuote(source_.current())) return 1;
        // A prefix, or the digits in front of a separator, tell what the quote is.
        const std::size_t first = std::max(unitEnd_, source_.codeStart);
        std::size_t word = place;
        while (word > first && (isWordPart(source_.text[word - 1]) || source_.text[word - 1] == '\'')) --word;
        Cpp::Lexer lexer(source_.text.substr(word));
        Trn::Token token;
        do {
            token = lexer.nextToken();
            unitEnd_ = word + token.offset + token.length;
        } while (unitEnd_ <= place);
        number_ = token.kind == Cpp::Number ? source_.text.substr(word + token.offset, token.length)
                                            : std::string_view();
        mayBeRaw_ = mayBeRaw_ || endsWithRawPrefix(source_.text.substr(0, place));
        return unitEnd_ - place;
    }

    // Whether a stray backslash has come to end a line. Backslashes that did so before are opaque.
    bool splicesLines(std::string_view resultGap) const {
        const std::size_t gapStart = result_.place - resultGap.size();
        return gapStart != result_.codeStart && result_.text[gapStart - 1] == '\\' && holdsLineEnd(resultGap);
    }

    // Whether a directive that a comment has come behind ends where it did.
    bool endsDirective(std::string_view sourceGap, std::string_view resultGap) {
        return !directive_.passGap(sourceGap) || holdsLineEnd(resultGap);
    }

    static bool holdsLineEnd(std::string_view gap) { return gap.find('\n') != std::string_view::npos; }

    // At two neighbouring characters that white space holds apart in one of the texts only.
    bool staysTheSame() const {
        const Cursor& joined = source_.isApart ? result_ : source_;
        const TokenBoundary boundary{joined.text, joined.place, joined.codeStart, joined.tokenStart, number_,
                                     sourceGapStart_ - unitEnd_};
        return allowsWhitespace(boundary) && !(mayBeRaw_ && splitsRawString(boundary));
    }

    bool compareOpaque(const Cpp::OpaqueToken& token) {
        const std::string_view text = source_.text.substr(token.offset, token.length);
        const bool startsInSource = source_.startsLine();
        const bool startsInResult = result_.startsLine();
        if (token.kind == Cpp::Directive && startsInSource && !startsInResult) return false;
        if (!compareText(token.kind, text)) return false;
        if (isUnended(token.kind, text) && !result_.atEnd() && result_.current() != '\n') return false;
        source_.place = std::size_t{token.offset} + token.length;
        const bool isBlockComment = token.kind == Cpp::BlockComment;
        const bool endsLine = text.ends_with('\n');
        source_.startCode(endsLine || (isBlockComment && startsInSource));
        result_.startCode(endsLine || (isBlockComment && startsInResult));
        directive_.passToken(token.kind, text);
        return true;
    }

    bool compareText(int kind, std::string_view text) {
        if (compareExactly(text)) return true;
        const std::size_t start = result_.place;
        if (mayMoveLines(kind, text) && compareLines(kind, text)) return true;
        result_.place = start;
        return kind == Cpp::Directive && compareDirective(text);
    }

    // What its tokens are parted by may be other blanks, and those at its end may be gone.
    bool compareDirective(std::string_view text) {
        const std::size_t start = result_.place;
        const std::string_view trimmed = trimRight(text);
        const bool endsLine = text.ends_with('\n');
        const bool blanksPart = blanksCount(Cpp::Directive, trimmed, !endsLine);
        const std::string_view line = blanksPart && endsLine ? text : trimmed;
        const auto passesEnd = [&] {
            if (endsLine) return blanksPart || endLine();
            return !blanksPart || (text.size() > trimmed.size()) == standsAtBlank();
        };
        if (compareExactly(line) && passesEnd()) return true;
        result_.place = start;
        if (!continuesLiteral(text) && compareConverted(line) && passesEnd()) return true;
        result_.place = start;
        return compareRespaced(text);
    }

    // A directive whose tokens have been laid out.
    bool compareRespaced(std::string_view text) {
        const std::string_view rest = result_.text.substr(result_.place);
        const Trn::Token found = Cpp::Lexer(rest).nextToken();
        if (found.kind != Cpp::Directive || found.offset > 0) return false;
        result_.place += found.length;
        return holdSameDirective(text, rest.substr(0, found.length));
    }

    // Comments and directives, but for splices.
    static bool mayMoveLines(int kind, std::string_view text) {
        if (kind == Cpp::Directive) return !continuesLiteral(text);
        return Cpp::isTrivia(kind) && !text.starts_with('\\');
    }

    // A literal that goes up to the end of its line, and would go on with whatever came there.
    static bool isUnended(int kind, std::string_view text) {
        constexpr std::string_view empty = "''";
        return kind == Cpp::Unknown && text.substr(text.find_first_of("\"'")) != empty;
    }

    bool compareExactly(std::string_view text) {
        if (result_.text.substr(result_.place, text.size()) != text) return false;
        result_.place += text.size();
        return true;
    }

    // Whether the blanks behind what else a line holds part what is not to join: a backslash and the line end, or a
    // "/" and the comment behind a directive.
    static bool blanksCount(int kind, std::string_view trimmed, bool isLast) {
        return (isLast && kind == Cpp::Directive && trimmed.ends_with('/')) || trimmed.ends_with('\\');
    }

    bool standsAtBlank() const {
        return !result_.atEnd() && result_.current() != '\n' && isWhitespace(result_.current());
    }

    // A comment or directive, line by line.
    bool compareLines(int kind, std::string_view whole) {
        std::string_view text = whole;
        for (bool isFirst = true; !text.empty(); isFirst = false) {
            const std::size_t lineFeed = text.find('\n');
            const std::string_view line = text.substr(0, lineFeed);
            const std::string_view trimmed = trimRight(line);
            const bool isLast = lineFeed == std::string_view::npos;
            const bool blanksPart = blanksCount(kind, trimmed, isLast);
            const std::string_view kept = blanksPart && !isLast ? line : trimmed;
            if (!compareExactly(isFirst ? kept : trimLeft(kept))) return false;
            if (isLast) return !blanksPart || (line.size() > trimmed.size()) == standsAtBlank();
            if (!endLine()) return false;
            text.remove_prefix(lineFeed + 1);
            if (text.empty()) return true;
            if (!startLine(kind, whole, whole.size() - text.size())) return false;
        }
        return true;
    }

    // Passes the white space at the start of a line, which may have come or gone, but not where that joins or parts
    // tokens of a directive.
    bool startLine(int kind, std::string_view text, std::size_t line) {
        const std::size_t start = result_.place;
        skipBlanks();
        const bool staysApart = isWhitespace(text[line]) == (result_.place > start);
        return kind != Cpp::Directive || staysApart || !splicesTokens(text.substr(0, line), text.substr(line));
    }

    // A directive between whose tokens tabs may have become blanks, or blanks tabs.
    bool compareConverted(std::string_view text) {
        ConvertibleBlanks blanks(text);
        std::size_t place = 0;
        while (true) {
            const std::string_view run = blanks.next();
            if (run.empty()) return compareMovedLines(text, place, text.size());
            const auto ahead = static_cast<std::size_t>(run.data() - text.data());
            if (!compareMovedLines(text, place, ahead)) return false;
            place = ahead + run.size();
            const std::size_t start = result_.place;
            if (result_.text[start - 1] == '\n') {
                if (!startLine(Cpp::Directive, text, ahead)) return false;
                continue;
            }
            skipBlanks();
            const std::string_view converted = result_.text.substr(start, result_.place - start);
            if (!endsLine(text, ahead, run) && !isConversion(run, converted)) return false;
            // Often, this is all that differs.
            if (run != converted && compareExactly(text.substr(place))) return true;
        }
    }

    // Whether the blanks end a line of a directive, and hold nothing apart.
    static bool endsLine(std::string_view text, std::size_t ahead, std::string_view blanks) {
        const std::string_view behind = text.substr(ahead + blanks.size());
        const bool isLast = behind.empty();
        if (!isLast && behind.front() != '\n') return false;
        return !blanksCount(Cpp::Directive, trimRight(text.substr(0, ahead)), isLast);
    }

    static bool isConversion(std::string_view before, std::string_view after) {
        const bool hasTabs = before.find('\t') != after.npos || after.find('\t') != after.npos;
        return before == after || (hasTabs && !after.empty());
    }

    // The directive's lines, or parts of them, exactly, but for the white space at the start of further ones.
    bool compareMovedLines(std::string_view text, std::size_t place, std::size_t end) {
        while (place < end) {
            const bool startsLine = place > 0 && text[place - 1] == '\n';
            if (startsLine && !startLine(Cpp::Directive, text, place)) return false;
            if (startsLine) place = std::min(end, kBlanks.skipIn(text, place));
            const std::size_t next = std::min(text.find('\n', place), end - 1) + 1;
            if (!compareExactly(text.substr(place, next - place))) return false;
            place = next;
        }
        return true;
    }

    void skipBlanks() {
        while (standsAtBlank()) ++result_.place;
    }

    bool endLine() {
        skipBlanks();
        if (result_.atEnd()) return true;
        if (result_.current() != '\n') return false;
        ++result_.place;
        return true;
    }

    Cursor source_;
    Cursor result_;
    std::array<NextOf, 3> special_;  // of what begins a literal or a splice
    std::size_t unitEnd_ = 0;     // of the last literal, in the source
    bool mayBeRaw_ = false;       // it would be with a "(" behind it
    std::string_view number_;     // with a separator, that the last literal is in truth
    std::size_t sourceGapStart_ = 0;
    OpenDirective directive_;
};

}  // namespace

std::optional<std::size_t> findLostToken(std::string_view source, const Cpp::OpaqueTokens& opaque,
                                         std::string_view result) {
    return Comparison(source, result).run(opaque);
}

}  // namespace Tessel
