#pragma once

#include <utility>

#include "cpp/parser.h"

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
    const Index end = endOfKept(tokens, guard.start());
    if (end == guard.start()) return;
    guard.takeBack(list);
    list.add(makeKeptNode(tokens, guard.start(), end, false));
}

}  // namespace Cpp
