#pragma once

#include <cstddef>
#include <string_view>

#include "engine/equal_text.h"
#include "engine/gap.h"

namespace Tessel {

// A source and what has become of it, side by side: all that differs is white space.
class SideBySide {
public:
    SideBySide(std::string_view source, std::string_view result) : source_(source), result_(result) {}

    // Behind the last character in front of `offset` of the source that is no white space; never back.
    void passUpTo(std::size_t offset) {
        const std::size_t start = resultPlace_;
        while (sourcePlace_ < offset) {
            passEqual(offset);
            sourcePlace_ = kWhitespace.skipIn(source_.substr(0, offset), sourcePlace_);
            if (sourcePlace_ == offset) break;
            ++sourcePlace_;
            passCharacterOfResult();
        }
        while (resultPlace_ > start && isWhitespace(result_[resultPlace_ - 1])) --resultPlace_;
    }
    // Up to the token at `offset` of the source.
    void goTo(std::size_t offset) {
        passUpTo(offset);
        skipWhitespaceOfResult();
    }

    std::size_t sourcePlace() const { return sourcePlace_; }
    std::size_t resultPlace() const { return resultPlace_; }

protected:
    void skipWhitespaceOfResult() {
        resultPlace_ = kWhitespace.skipIn(result_, resultPlace_);
    }

    // What is the same in both, white space too.
    void passEqual(std::size_t offset) {
        const std::size_t length =
            equalLength(source_.substr(sourcePlace_), result_.substr(resultPlace_), offset - sourcePlace_);
        sourcePlace_ += length;
        resultPlace_ += length;
    }

    void passCharacterOfResult() {
        skipWhitespaceOfResult();
        if (resultPlace_ < result_.size()) ++resultPlace_;
    }

    std::string_view source_;
    std::string_view result_;
    std::size_t sourcePlace_ = 0;
    std::size_t resultPlace_ = 0;
};

}  // namespace Tessel
