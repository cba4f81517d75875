#include "tree_compare.h"

#include "cpp/parse_text.h"
#include "textstream/text_document.h"
#include "visible_diff.h"

namespace TestSupport {

namespace {

std::string shapeOf(std::string_view text, Cpp::Unrecognized unrecognized) {
    using CppTest::TreeDump;
    const Zelmor::TextDocument document{std::string(text)};
    Cpp::RootNode root;
    const CppTest::Messages messages = CppTest::parse(document.text(), root, unrecognized);
    if (!messages.empty()) return CppTest::shown(messages);
    return TreeDump::of(root, TreeDump::Positions::Hidden, TreeDump::Texts::Squeezed);
}

}  // namespace

std::string treeDifference(std::string_view before, std::string_view after, Cpp::Unrecognized unrecognized) {
    const std::string expected = shapeOf(before, unrecognized);
    const std::string got = shapeOf(after, unrecognized);
    return expected == got ? std::string() : visibleDiff(expected, got);
}

}  // namespace TestSupport
