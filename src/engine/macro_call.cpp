#include "engine/macro_call.h"

#include "cpp/characters.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/operator_kinds.h"

namespace Tessel {

namespace {

// Brackets that are open in a block among a call's arguments.
constexpr int kDepthInBlock = 2;

// Of a declaration as much as of an expression, or of neither, unless it marks a type.
constexpr bool isDoubtful(int kind) {
    switch (kind) {
        case Cpp::Unknown:
        case Cpp::Directive:
        case Cpp::LineComment:
        case Cpp::BlockComment:
        case Cpp::Semicolon:
        case Cpp::OpenBrace:
        case Cpp::CloseBrace:
        case Cpp::Asterisk:
        case Cpp::Ampersand:
        case Cpp::LogicalAnd: return true;
        default: return false;
    }
}

constexpr bool endsLine(int kind) {
    return kind == Cpp::Directive || kind == Cpp::LineComment || kind == Cpp::UnreadBlock;
}

constexpr int depthBehind(int kind, int depth) {
    if (kind == Cpp::OpenParen || kind == Cpp::OpenBrace) return depth + 1;
    return kind == Cpp::CloseParen || kind == Cpp::CloseBrace ? depth - 1 : depth;
}

// What stands in the parentheses of a call, read behind the "(" token by token.
class CallArguments {
public:
    explicit CallArguments(bool isOnLine) : isOnLine_(isOnLine) {}

    bool areOver() const { return depth_ == 0; }
    // Says false where none but the macro knows what it is given.
    bool take(const Trn::Token& token) {
        const int kind = token.kind;
        // Comments and directives stand between lines that are kept; either branch may be all that there is of a word.
        if (!isOnLine_ && Cpp::isTrivia(kind) && kind != Cpp::UnreadBlock) {
            followsWord_ = followsWord_ && kind != Cpp::Directive;
            return true;
        }
        const bool isWord = kind != Trn::kEndKind && Cpp::isNamePart(token.text.front());
        if (isOfMacro(kind, isWord)) return false;
        followsMark_ = marksType(kind);
        holdsLess_ |= kind == Cpp::Less;
        followsAngles_ = holdsLess_ && (kind == Cpp::Greater || kind == Cpp::ShiftRight);
        followsWord_ = isWord;
        followsType_ = Cpp::isBuiltinTypeWord(kind);
        if (kind == Cpp::OpenParen) ++depth_;
        if (kind == Cpp::CloseParen) --depth_;
        return true;
    }

private:
    // `EXPORT(char*)`: with nothing behind it, what stands in front of it is a type.
    bool marksType(int kind) const { return isAnyMark(kind) && (followsWord_ || followsMark_ || followsAngles_); }

    bool isOfMacro(int kind, bool isWord) const {
        if (kind == Trn::kEndKind || (isDoubtful(kind) && !marksType(kind))) return true;
        if (followsMark_ && !marksType(kind) && kind != Cpp::Comma && kind != Cpp::CloseParen) return true;
        // Words that follow each other and go on in further lines, but for `unsigned int`. `FIELD(List<int> names)`
        // declares, or compares.
        const bool isOfType = followsType_ && Cpp::isBuiltinTypeWord(kind);
        return isWord && (followsAngles_ || (!isOnLine_ && followsWord_ && !isOfType));
    }

    bool isOnLine_;
    int depth_ = 1;
    bool followsWord_ = false;
    bool followsType_ = false;
    bool followsMark_ = false;
    bool followsAngles_ = false;
    bool holdsLess_ = false;
};

}  // namespace

bool isMacroCall(const Cpp::KeptNode& item, bool keepsLines) {
    const bool isOnLine = item.start().line == item.end().line;
    if (!isOnLine && !keepsLines) return false;
    Cpp::Lexer lexer{item.text()};
    if (lexer.nextToken().kind != Cpp::Identifier || lexer.nextToken().kind != Cpp::OpenParen) return false;
    CallArguments arguments(isOnLine);
    while (!arguments.areOver()) {
        if (!arguments.take(lexer.nextToken())) return false;
    }
    const int following = lexer.nextToken().kind;
    return following == Trn::kEndKind || (following == Cpp::Comma && lexer.nextToken().kind == Trn::kEndKind);
}

std::optional<CallOfStatements> callOfStatements(std::string_view item) {
    if (item.find('\n') != std::string_view::npos) return std::nullopt;
    Cpp::Lexer lexer{item};
    const Trn::Token name = lexer.nextToken();
    const Trn::Token open = lexer.nextToken();
    if (name.kind != Cpp::Identifier || open.kind != Cpp::OpenParen) return std::nullopt;
    Trn::Token front = open;
    Trn::Token first = lexer.nextToken();
    Trn::Token last = open;
    Trn::Token token = first;
    for (int depth = depthBehind(token.kind, 1); depth > 0; depth = depthBehind(token.kind, depth)) {
        if (token.kind == Trn::kEndKind || endsLine(token.kind)) return std::nullopt;
        const bool opensBlock = token.kind == Cpp::OpenBrace && last.kind == Cpp::Comma && depth == kDepthInBlock;
        if (opensBlock) {
            front = last;
            first = token;
        }
        last = token;
        token = lexer.nextToken();
    }
    const bool endsStatement = last.kind == Cpp::Semicolon || last.kind == Cpp::CloseBrace;
    if (!endsStatement || token.kind != Cpp::CloseParen || lexer.nextToken().kind != Trn::kEndKind) return std::nullopt;
    const auto startOf = [item](std::string_view part) { return static_cast<std::size_t>(part.data() - item.data()); };
    const auto endOf = [&](std::string_view part) { return startOf(part) + part.size(); };
    return CallOfStatements{endOf(name.text),    startOf(open.text), endOf(front.text),
                            startOf(first.text), endOf(last.text),   startOf(token.text)};
}

}  // namespace Tessel
