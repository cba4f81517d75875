#pragma once

#include <memory>
#include <string>
#include <utility>

#include "trn/token.h"

namespace Cpp {

// The text and extent of a run of tokens: their texts with one blank between neighbours.
class TokenText {
public:
    void add(const Trn::Token& token) {
        if (!text_.empty() && !token.text.empty()) text_.push_back(' ');
        append(token);
    }
    // Adds without a blank in front.
    void append(const Trn::Token& token) {
        text_ += token.text;
        ++size_;
        extend(token);
    }
    // Widens the extent by a token without adding its text.
    void extend(const Trn::Token& token) {
        if (!Trn::isSet(start_)) start_ = token.start;
        end_ = token.end;
    }

    bool empty() const { return text_.empty(); }
    // The number of tokens that are part of the text.
    int size() const { return size_; }
    std::string take() { return std::move(text_); }
    Trn::Position start() const { return start_; }
    Trn::Position end() const { return end_; }

    // A leaf of the text and its extent, which takes the text over; null when no token was taken.
    template <typename Leaf>
    std::unique_ptr<Leaf> makeLeaf() {
        if (!Trn::isSet(start_)) return nullptr;
        return std::make_unique<Leaf>(std::move(text_), start_, end_);
    }

private:
    std::string text_;
    int size_ = 0;
    Trn::Position start_;
    Trn::Position end_;
};

}  // namespace Cpp
