#include "cpp/token_text.h"

#include <algorithm>

#include "cpp/characters.h"

namespace Cpp {

namespace {

constexpr std::string_view kBlank = " ";

}  // namespace

void TokenText::add(const Trn::Token& token) {
    extend(token);
    ++size_;
    if (token.text.empty()) return;
    if (empty() && token.isAsInSource()) {
        stretch_ = token.text;
        offset_ = token.offset;
    } else if (goesOnAt(token)) {
        const bool isApart = stretch_.data() + stretch_.size() + 1 == token.text.data() && token.text.data()[-1] == ' ';
        if (!isApart) form_ = std::max(form_, LeafText::Form::Joined);
        widenTo(token);
    } else {
        leaveStretch();
        if (!own_.empty()) own_ += kBlank;
        own_ += token.text;
    }
}

void TokenText::widen(const Trn::Token& last, std::size_t count, LeafText::Form form) {
    end_ = last.end;
    size_ += count;
    form_ = std::max(form_, form);
    widenTo(last);
}

void TokenText::addEnd(const Trn::Token& semicolon) {
    if (!goesOnAt(semicolon)) {
        leaveStretch();
        own_ += semicolon.text;
    } else {
        const bool isBehind = stretch_.data() + stretch_.size() == semicolon.text.data();
        if (form_ != LeafText::Form::AsWritten || !isBehind) form_ = LeafText::Form::JoinedStatement;
        widenTo(semicolon);
    }
    extend(semicolon);
    ++size_;
}

void TokenText::leaveOut(const Trn::Token& token) {
    extend(token);
    if (!isStretch()) return;
    if (!goesOnAt(token)) return leaveStretch();
    form_ = LeafText::Form::JoinedStatement;
    widenTo(token);
}

// Whether nothing but white space stands between the stretch and the token.
bool TokenText::goesOnAt(const Trn::Token& token) const {
    if (!isStretch() || !token.isAsInSource()) return false;
    if (token.text.data() != stretch_.data() + (token.offset - offset_)) return false;
    return std::all_of(stretch_.data() + stretch_.size(), token.text.data(), isSpace);
}

void TokenText::widenTo(const Trn::Token& token) {
    stretch_ = {stretch_.data(), token.offset - offset_ + token.text.size()};
}

void TokenText::leaveStretch() {
    if (!isStretch()) return;
    own_ = LeafText::borrowed(stretch_, form_).view();
    stretch_ = {};
}

}  // namespace Cpp
