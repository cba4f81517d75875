#pragma once

#include "trn/token_buffer.h"

namespace Cpp {

// How deep constructs may stand inside each other. Each level costs the parser and every pass a few frames of
// the stack, so the bound keeps hostile input from overflowing it; no code that people write comes near.
inline constexpr int kMaximumNesting = 2000;

// How many "else if" parts may follow each other, as each stands inside the one before. They cost the parser
// nothing, but every pass a few frames, as other constructs do.
inline constexpr int kMaximumChain = 6000;

// Thrown to end a parse early, with the last message of it.
struct ParseEnded {
    Trn::Position position;
    const char* reason;
};

inline constexpr const char* kNestedTooDeeply = "The source is nested too deeply here.";

// Counts one level of nesting for as long as it lives.
class NestingScope {
public:
    NestingScope(int& depth, Trn::TokenBuffer& tokens) : depth_(depth) {
        if (depth_ >= kMaximumNesting) throw ParseEnded{tokens.current().start, kNestedTooDeeply};
        ++depth_;
    }
    ~NestingScope() { --depth_; }
    NestingScope(const NestingScope&) = delete;
    NestingScope& operator=(const NestingScope&) = delete;

private:
    int& depth_;
};

// Gives a chain's parts back when it ends.
class ChainScope {
public:
    explicit ChainScope(int& depth) : depth_(depth), before_(depth) {}
    ~ChainScope() { depth_ = before_; }
    ChainScope(const ChainScope&) = delete;
    ChainScope& operator=(const ChainScope&) = delete;

    // The chain has one more part, which begins here.
    void extend(Trn::TokenBuffer& tokens) {
        if (depth_ >= kMaximumChain) throw ParseEnded{tokens.current().start, kNestedTooDeeply};
        ++depth_;
    }

private:
    int& depth_;
    const int before_;
};

}  // namespace Cpp
