#include "engine/token_proof.h"

#include <algorithm>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/token_joining.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/gap.h"
#include "engine/opaque_text.h"

namespace Tessel {

namespace {

constexpr bool isNamePart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || static_cast<unsigned char>(c) > 127;
}

// Of names and numbers.
constexpr bool isWordPart(char c) {
    return isNamePart(c) || c == '.';
}

// Of operators that are more than one character long.
constexpr bool isOperatorPart(char c) {
    return std::string_view("+-*/%&|^<>=!:.~").find(c) != std::string_view::npos;
}

// Whether the same token may hold both, one behind the other: an exponent takes a sign in.
constexpr bool belongTogether(char before, char after) {
    const bool isExponent = std::string_view("eEpP").find(before) != std::string_view::npos;
    return (isWordPart(before) && isWordPart(after)) || (isOperatorPart(before) && isOperatorPart(after)) ||
           (isExponent && (after == '+' || after == '-'));
}

// A place in one of the two texts.
struct Cursor {
    std::string_view text;
    std::size_t place = 0;
    std::size_t codeStart = 0;  // behind the last opaque token

    bool atEnd() const { return place >= text.size(); }
    char current() const { return text[place]; }
    // Says whether there was any.
    bool skipWhitespace(std::size_t end) {
        const std::size_t start = place;
        while (place < end && isWhitespace(text[place])) ++place;
        return place > start;
    }
};

// The kinds and texts of the tokens of a few characters.
std::vector<std::string_view> tokensOf(std::string_view text) {
    std::vector<std::string_view> tokens;
    Cpp::Lexer lexer(text);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        tokens.push_back(token.text);
    }
    return tokens;
}

class Comparison {
public:
    Comparison(std::string_view source, std::string_view result) : source_{source}, result_{result} {}

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
            const std::size_t sourceGap = source_.place;
            const bool apartInSource = source_.skipWhitespace(end);
            const std::size_t gapStart = result_.place;
            const bool apartInResult = result_.skipWhitespace(result_.text.size());
            if (source_.atEnd()) return true;
            if (splicesLines(gapStart) || !endsDirective(sourceGap, gapStart)) return false;
            if (result_.atEnd() || source_.current() != result_.current()) return false;
            if (apartInSource != apartInResult && !staysTheSame(apartInSource)) return false;
            if (source_.place >= end) return true;
            ++source_.place;
            ++result_.place;
        }
    }

    // Whether a stray backslash has come to end a line. Backslashes that did so before are opaque.
    bool splicesLines(std::size_t gapStart) const {
        if (gapStart == result_.codeStart || result_.text[gapStart - 1] != '\\') return false;
        return holdsLineEnd(result_, gapStart);
    }

    // Whether a directive that a comment has come behind ends where it did.
    bool endsDirective(std::size_t sourceGap, std::size_t resultGap) {
        if (!isInDirective_ || !holdsLineEnd(source_, sourceGap)) return true;
        isInDirective_ = false;
        return holdsLineEnd(result_, resultGap);
    }

    static bool holdsLineEnd(const Cursor& cursor, std::size_t start) {
        return cursor.text.substr(start, cursor.place - start).find('\n') != std::string_view::npos;
    }

    // At two neighbouring characters that white space holds apart in one of the texts only.
    bool staysTheSame(bool apartInSource) const {
        const Cursor& joined = apartInSource ? result_ : source_;
        if (joined.place == 0) return true;
        const char before = joined.text[joined.place - 1];
        const char after = joined.current();
        if (joined.place == joined.codeStart) return staysBehindOpaque(joined);
        if (isWordPart(before) && isOperatorPart(after)) return areSameTokens(joined);
        if (isOperatorPart(before) && (isWordPart(after) || isOperatorPart(after)))
            return areSameTokens(joined);
        return !Cpp::wouldJoin({&before, 1}, {&after, 1});
    }

    // A comment holds tokens apart, and a splice does not; with literals it depends.
    static bool staysBehindOpaque(const Cursor& joined) {
        constexpr std::string_view splice = "\\\n";
        std::string_view before = joined.text.substr(0, joined.place);
        if (before.ends_with('/')) return true;
        if (before.ends_with(splice)) before.remove_suffix(splice.size());
        return before.empty() ||
               !Cpp::wouldJoin(before.substr(before.size() - 1), joined.text.substr(joined.place, 1));
    }

    // Lexes the word or the operators on both sides, with white space in between and without.
    bool areSameTokens(const Cursor& joined) const {
        constexpr std::size_t longestWord = 256;
        const std::string_view text = joined.text;
        std::size_t first = joined.place - 1;
        while (first > joined.codeStart && joined.place - first < longestWord &&
               belongTogether(text[first - 1], text[first])) {
            --first;
        }
        std::size_t last = joined.place + 1;
        while (last < text.size() && last - joined.place < longestWord &&
               belongTogether(text[last - 1], text[last])) {
            ++last;
        }
        const std::string_view left = text.substr(first, joined.place - first);
        const std::string_view right = text.substr(joined.place, last - joined.place);
        const std::string together = std::string(left) + std::string(right);
        const std::string apart = std::string(left) + ' ' + std::string(right);
        return tokensOf(together) == tokensOf(apart);
    }

    bool compareOpaque(const Cpp::OpaqueToken& token) {
        const std::string_view text = source_.text.substr(token.offset, token.length);
        if (token.kind == Cpp::Directive && startsLine(source_) && !startsLine(result_)) return false;
        const bool mayMoveLines =
            Cpp::isTrivia(token.kind) && !(token.kind == Cpp::Directive && continuesLiteral(text));
        const bool isSame = mayMoveLines ? compareLines(text) : compareExactly(text);
        if (!isSame || (isUnended(token.kind, text) && !endsItsLine())) return false;
        source_.codeStart = source_.place = std::size_t{token.offset} + token.length;
        result_.codeStart = result_.place;
        if (token.kind != Cpp::BlockComment) {
            isInDirective_ = token.kind == Cpp::Directive && !text.ends_with('\n');
        }
        return true;
    }

    // Whether nothing but white space stands in front of the place on its line.
    static bool startsLine(const Cursor& cursor) {
        std::size_t place = cursor.place;
        while (place > 0 && cursor.text[place - 1] != '\n') {
            if (!isWhitespace(cursor.text[--place])) return false;
        }
        return true;
    }

    // A literal that goes up to the end of its line, and would go on with whatever came there.
    static bool isUnended(int kind, std::string_view text) {
        constexpr std::string_view empty = "''";
        return kind == Cpp::Unknown && text.substr(text.find_first_of("\"'")) != empty;
    }

    bool endsItsLine() const {
        Cursor behind = result_;
        while (!behind.atEnd() && isWhitespace(behind.current())) {
            if (behind.current() == '\n') return true;
            ++behind.place;
        }
        return behind.atEnd();
    }

    bool compareExactly(std::string_view text) {
        if (result_.text.substr(result_.place, text.size()) != text) return false;
        result_.place += text.size();
        return true;
    }

    // A comment or directive, line by line.
    bool compareLines(std::string_view text) {
        for (bool isFirst = true; !text.empty(); isFirst = false) {
            const std::size_t lineFeed = text.find('\n');
            const std::string_view line = text.substr(0, lineFeed);
            if (!compareExactly(isFirst ? trimRight(line) : trim(line))) return false;
            if (lineFeed == std::string_view::npos) return true;
            if (!endLine()) return false;
            text.remove_prefix(lineFeed + 1);
            if (text.empty()) return true;
            skipBlanks();
        }
        return true;
    }

    void skipBlanks() {
        while (!result_.atEnd() && result_.current() != '\n' && isWhitespace(result_.current()))
            ++result_.place;
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
    bool isInDirective_ = false;  // its line has not ended yet
};

}  // namespace

std::optional<std::size_t> findLostToken(std::string_view source, const Cpp::OpaqueTokens& opaque,
                                         std::string_view result) {
    return Comparison(source, result).run(opaque);
}

}  // namespace Tessel
