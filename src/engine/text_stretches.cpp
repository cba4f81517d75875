#include "engine/text_stretches.h"

#include <cstddef>

#include "cpp/directive_text.h"
#include "cpp/token_kind.h"
#include "engine/gap.h"
#include "engine/open_scopes.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

// In characters. What a stretch takes while it is laid out fits into the cache of a processor.
constexpr std::size_t kLeastStretch = std::size_t{64} << 10;

constexpr std::string_view kBodyInFront = "void f() {\n}\n";

bool closesConditionalGroups(const ParsedText& text) {
    int open = 0;
    for (const Cpp::OpaqueToken& token : text.opaque) {
        if (token.kind != Cpp::Directive) continue;
        open += Cpp::conditionalStep(text.text.text().substr(token.offset, token.length));
        if (open < 0) return false;
    }
    return open == 0;
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

// What follows a class may still belong to it.
bool isOver(const Cpp::SyntaxNode& item) { return Cpp::as<Cpp::FunctionDeclNode>(&item) || itemsOf(item); }

}  // namespace

std::vector<Stretch> cutIntoStretches(std::string_view text) {
    std::vector<Stretch> stretches(1);
    OpenScopes scopes(text);
    std::size_t start = 0;
    while (start + 2 * kLeastStretch <= text.size() && scopes.goToEndOfBody()) {
        const std::size_t end = scopes.place();
        if (end - start < kLeastStretch || text.size() - end < kLeastStretch) continue;
        stretches.back().text = text.substr(start, end - start);
        stretches.back().behind = scopes.closing();
        stretches.push_back({{}, scopes.opening().append(kBodyInFront), {}});
        start = end;
    }
    stretches.back().text = text.substr(start);
    return stretches;
}

bool standsInFrame(const ParsedText& framed, const Stretch& stretch, bool isLast) {
    if (framed.hasOpenRegion || !closesConditionalGroups(framed)) return false;
    if (isLast) return true;
    const std::size_t end = stretch.ahead.size() + trimRight(stretch.text).size();
    const Cpp::SyntaxNode* last = itemEndingAt(framed, end);
    return last && isOver(*last);
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
