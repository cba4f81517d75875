#include "engine/text_stretches.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "cpp/directive_text.h"
#include "cpp/token_kind.h"
#include "engine/gap.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

// In characters. What a stretch takes while it is laid out fits into the cache of a processor. A text of less than two
// is not cut.
constexpr std::size_t kStretch = std::size_t{64} << 10;

// Towards the end of the text, stretches are a part of what is left, so that all threads come to their ends at about
// the same time; but none is so short that what is read of its frame would count.
constexpr std::size_t kPartsOfRest = 8;
constexpr std::size_t kLeastStretch = std::size_t{16} << 10;

std::size_t leastStretchOf(std::size_t rest) { return std::clamp(rest / kPartsOfRest, kLeastStretch, kStretch); }

bool closesConditionalGroups(const ParsedText& text) {
    int open = 0;
    for (const Cpp::OpaqueToken& token : text.opaque) {
        if (token.kind != Cpp::Directive) continue;
        open += Cpp::conditionalStep(text.text.text().substr(token.offset, token.length));
        if (open < 0) return false;
    }
    return open == 0;
}

// Whether a branch of the group had to be chosen, for brackets that do not match in all of them.
bool isChosenFrom(std::string_view group, const Cpp::TakenConditions& conditions) {
    const std::string condition = Cpp::testedCondition(group);
    return conditions.contains(condition.substr(condition.starts_with('!') ? 1 : 0));
}

// The items that a namespace, or what stands in its place, has around it; null where the item is none.
const Cpp::InteriorNode* itemsOf(const Cpp::SyntaxNode& item) {
    if (const auto* space = Cpp::as<Cpp::NamespaceDeclNode>(&item)) return space->body();
    if (const auto* linkage = Cpp::as<Cpp::LinkageBlockNode>(&item)) return linkage->body();
    return nullptr;
}

// The item that ends at the offset; null where there is none.
const Cpp::SyntaxNode* itemEndingAt(const ParsedText& text, std::size_t offset) {
    for (const Cpp::InteriorNode* items = &text.root; items;) {
        const auto& children = items->children();
        items = nullptr;
        for (auto item = children.rbegin(); item != children.rend() && !items; ++item) {
            const std::size_t end = offsetOf(text.text, (*item)->end());
            if (end == offset) return item->get();
            if (end < offset) return nullptr;
            items = itemsOf(**item);
        }
    }
    return nullptr;
}

// What follows a class may still belong to it, unless it has its semicolon.
bool isOver(const Cpp::SyntaxNode& item, char last) {
    return last == ';' || Cpp::as<Cpp::FunctionDeclNode>(&item) || itemsOf(item);
}

}  // namespace

std::optional<Stretch> StretchCutter::next() {
    if (start_ == text_.size()) return std::nullopt;
    const std::size_t start = start_;
    std::vector<std::string_view> groups = scopes_.groups();
    const bool isCut = goToCut();
    start_ = isCut ? scopes_.place() : text_.size();
    Stretch stretch{text_.substr(start, start_ - start), std::exchange(ahead_, {}), {}, std::move(groups),
                    stretches_++, !isCut};
    if (isCut) {
        std::ranges::copy(scopes_.groups(), std::back_inserter(stretch.groups));
        stretch.behind = scopes_.closing();
        ahead_ = scopes_.opening().append(scopes_.emptyItem());
    }
    return stretch;
}

bool StretchCutter::goToCut() {
    if (text_.size() < 2 * kStretch) return false;
    const std::size_t first = start_ + leastStretchOf(text_.size() - start_);
    while (scopes_.goToEndOfItem()) {
        if (scopes_.place() + kLeastStretch > text_.size()) return false;
        if (scopes_.place() >= first && mayCut()) return true;
    }
    return false;
}

bool StretchCutter::mayCut() const {
    return (cuts_.behindTypes || !scopes_.isBehindType()) && (cuts_.inNamespaces || !scopes_.isInNamespace());
}

std::size_t StretchCutter::mostStretches() const { return text_.size() / kLeastStretch + 1; }

bool standsInFrame(const ParsedText& framed, const Stretch& stretch) {
    // How far that goes which is not recognised may depend on what surrounds it.
    if (framed.hasOpenRegion || framed.hasUnrecognized || !closesConditionalGroups(framed)) return false;
    const auto isChosen = [&](std::string_view group) { return isChosenFrom(group, framed.conditions); };
    if (std::ranges::any_of(stretch.groups, isChosen)) return false;
    if (stretch.isLast) return true;
    const std::size_t end = stretch.ahead.size() + trimRight(stretch.text).size();
    const Cpp::SyntaxNode* last = itemEndingAt(framed, end);
    return last && isOver(*last, framed.text.text()[end - 1]);
}

std::string_view withoutFrame(std::string_view result, const Stretch& stretch) {
    std::size_t start = 0;
    for (std::size_t count = charactersIn(stretch.ahead); count > 0; ++start) {
        if (!isWhitespace(result[start])) --count;
    }
    std::size_t end = result.size();
    for (std::size_t count = charactersIn(stretch.behind); count > 0; --end) {
        if (!isWhitespace(result[end - 1])) --count;
    }
    return result.substr(start, end - start);
}

}  // namespace Tessel
