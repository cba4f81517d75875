#pragma once

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_kind.h"

namespace Cpp {

// A body, whose items answer for themselves: what is reported inside of it is not about the item that has the body.
class Parser::BodyScope {
public:
    explicit BodyScope(Parser& parser) : messages_(parser.itemMessages_), saved_(messages_) {}
    BodyScope(const BodyScope&) = delete;
    BodyScope& operator=(const BodyScope&) = delete;
    ~BodyScope() { messages_ = saved_; }

private:
    int& messages_;
    const int saved_;
};

// What is noted of one item, so that it can be taken back: its messages, its nodes, and what it kept inside.
class Parser::ItemGuard {
public:
    ItemGuard(Parser& parser, const TokenBuffer& tokens, const InteriorNode& list)
        : parser_(parser),
          start_(tokens.place()),
          messages_(parser.diagnostics_.size()),
          children_(list.size()),
          kept_(parser.kept_.size()),
          outerMessages_(std::exchange(parser.itemMessages_, 0)) {}
    ItemGuard(const ItemGuard&) = delete;
    ItemGuard& operator=(const ItemGuard&) = delete;
    ~ItemGuard() { parser_.itemMessages_ = outerMessages_; }

    Index start() const { return start_; }
    // Something was reported of the item, and nothing of what its bodies hold.
    bool hasFailed() const {
        const auto count = static_cast<std::size_t>(parser_.itemMessages_);
        return count > 0 && parser_.diagnostics_.size() == messages_ + count;
    }
    void takeBack(InteriorNode& list) {
        parser_.diagnostics_.resize(messages_);
        parser_.kept_.resize(kept_);
        list.erase(list.childBegin() + static_cast<std::ptrdiff_t>(children_), list.childEnd());
    }

private:
    Parser& parser_;
    Index start_;
    std::size_t messages_;
    std::size_t children_;
    std::size_t kept_;
    int outerMessages_;
};

// Parses an item of the list. One that is not recognised is kept as it is written, when that is wanted.
template <typename Parse>
void Parser::guarded(TokenBuffer& tokens, InteriorNode& list, Parse parse) {
    if (!keepsUnrecognized_) {
        parse();
        return;
    }
    ItemGuard guard(*this, tokens, list);
    parse();
    if (!guard.hasFailed()) return;
    const Index end = endOfFailed(tokens, guard.start());
    if (end == guard.start()) return;
    guard.takeBack(list);
    list.add(makeKeptNode(tokens, guard.start(), end, false));
}

// From a "{" to the "}" that closes it, what a namespace, a class or a linkage block holds. `takeOther` takes what is
// no item of theirs, and says whether it did.
template <typename Body, typename TakeOther, typename ParseItem>
std::unique_ptr<Body> Parser::parseItems(TokenBuffer& tokens, TakeOther takeOther, ParseItem parseItem) {
    BodyScope scope(*this);
    auto body = std::make_unique<Body>();
    body->setStart(tokens.next().start);
    while (true) {
        addTrivia(tokens, *body);
        const Token token = tokens.current();
        switch (token.kind) {
            case CloseBrace:
                tokens.next();
                body->setEnd(token.start);
                return body;
            case Trn::kEndKind:
                report(token.start, UnexpectedEnd);
                return body;
            case Unknown:
            case Semicolon:
                tokens.next();
                break;
            default:
                if (!takeOther(token, *body)) guarded(tokens, *body, [&] { parseItem(*body); });
        }
    }
}

}  // namespace Cpp
