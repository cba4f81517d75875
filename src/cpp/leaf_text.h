#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "trn/token.h"

namespace Cpp {

// How the text of a leaf follows from its stretch of source.
enum class LeafTextForm : std::uint8_t {
    AsWritten,
    Joined,
    JoinedStatement,  // without parentheses, angles and "template", and without a blank in front of its last ";"
};

// How much text there is, and whether it is borrowed.
struct LeafTextExtent {
    std::uint32_t size = 0;
    LeafTextForm form = LeafTextForm::AsWritten;
    bool isOwn = false;

    void operator()(const char* characters) const {
        if (isOwn) delete[] characters;
    }
};

// The text of a leaf: its tokens, with one blank between neighbours. Few texts are ever read beyond their first word:
// what is kept is the stretch of source that holds the tokens, which are joined when the whole text is asked for. The
// source outlives the text.
class LeafText {
public:
    using Form = LeafTextForm;

    LeafText() = default;
    // Copies the text.
    explicit LeafText(std::string_view text);
    explicit LeafText(const Trn::Token& token);
    static LeafText borrowed(std::string_view source, Form form);

    LeafText(const LeafText& other);
    LeafText(LeafText&&) noexcept = default;
    LeafText& operator=(LeafText other) noexcept {
        characters_ = std::move(other.characters_);
        return *this;
    }
    ~LeafText() = default;

    std::string_view view() const {
        if (extent().form != Form::AsWritten) join();
        return stored();
    }
    bool empty() const { return extent().size == 0; }
    // The letters, digits and underscores that the text begins with.
    std::string_view firstWord() const;
    bool startsWith(char first) const { return stored().starts_with(first); }

private:
    using Extent = LeafTextExtent;
    using Characters = std::unique_ptr<const char[], Extent>;

    explicit LeafText(Characters characters) : characters_(std::move(characters)) {}
    static Characters copyOf(std::string_view text);

    const Extent& extent() const { return characters_.get_deleter(); }
    // A stretch of source begins with the first token of its text.
    std::string_view stored() const { return {characters_.get(), extent().size}; }
    void join() const;

    mutable Characters characters_;  // the text is the same before they are joined and after
};

// Tokens that the text of an expression statement leaves out.
bool isLeftOutOfStatements(int kind);

}  // namespace Cpp
