#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "cpp/leaf_text.h"
#include "trn/token.h"

namespace Cpp {

// The text and extent of a run of tokens: their texts with one blank between neighbours.
class TokenText {
public:
    void add(const Trn::Token& token);
    // Adds the ";" of a statement, without a blank in front.
    void addEnd(const Trn::Token& semicolon);
    // Passes a token that the texts of statements leave out.
    void leaveOut(const Trn::Token& token);
    // Widens the extent by a token without adding its text.
    void extend(const Trn::Token& token) {
        if (!Trn::isSet(start_)) start_ = token.start;
        end_ = token.end;
    }

    // Whether the text stands in the source, but for white space.
    bool isStretch() const { return !stretch_.empty(); }
    // Widens a stretch by what stands behind it: `count` tokens and white space alone.
    void widen(const Trn::Token& last, std::size_t count, LeafText::Form form);

    bool empty() const { return stretch_.empty() && own_.empty(); }
    // The number of tokens that were added.
    std::size_t size() const { return size_; }
    LeafText take() { return own_.empty() ? LeafText::borrowed(stretch_, form_) : LeafText(own_); }
    Trn::Position start() const { return start_; }
    Trn::Position end() const { return end_; }

    // A leaf of the text and its extent; null when no token was taken.
    template <typename Leaf>
    std::unique_ptr<Leaf> makeLeaf() {
        if (!Trn::isSet(start_)) return nullptr;
        return std::make_unique<Leaf>(take(), start_, end_);
    }

private:
    bool goesOnAt(const Trn::Token& token) const;
    void widenTo(const Trn::Token& token);
    void leaveStretch();

    // Of the source, as long as that has the tokens and white space alone; it begins with the first token.
    std::string_view stretch_;
    std::uint32_t offset_ = 0;  // of the stretch
    LeafText::Form form_ = LeafText::Form::AsWritten;
    std::string own_;  // in place of the stretch
    std::size_t size_ = 0;
    Trn::Position start_;
    Trn::Position end_;
};

}  // namespace Cpp
