#include "promises.h"

#include <cstdio>
#include <cstdlib>

#include "support/format_text.h"
#include "support/token_compare.h"
#include "support/tree_compare.h"
#include "support/visible_diff.h"
#include "textstream/text_document.h"

namespace Fuzz {

namespace {

[[noreturn]] void fail(const char* promise, const std::string& details) {
    std::fprintf(stderr, "%s\n%s\n", promise, details.c_str());
    std::abort();
}

std::optional<std::string> formatText(const Tessel::PropertySet& scheme, std::string_view source) {
    TestSupport::Formatted result = TestSupport::formatText(scheme, std::string(source));
    if (result.accepted()) return std::move(result.text);
    if (result.hasFailed) failUnlessTolerant("The job failed.", result.refusal);
    if (!result.text.empty()) fail("A refusal with a result.", result.text);
    return std::nullopt;
}

}  // namespace

void failUnlessTolerant(const char* promise, const std::string& details) {
    if (!std::getenv("FUZZ_TOLERANT")) fail(promise, details);
}

std::optional<std::string> formatChecked(const Tessel::PropertySet& scheme, std::string_view source,
                                         Origin origin, Again again) {
    auto once = formatText(scheme, source);
    if (!once) return std::nullopt;
    const Zelmor::TextDocument document{std::string(source)};
    const std::string difference = TestSupport::tokenDifference(document.text(), *once);
    if (!difference.empty()) fail("The tokens changed.", difference);
    const Cpp::Unrecognized unrecognized = TestSupport::unrecognizedIn(scheme);
    const bool findsMacros = unrecognized == Cpp::Unrecognized::Kept;
    if (origin == Origin::Shipped || !findsMacros) {
        const std::string otherTree = TestSupport::treeDifference(source, *once, unrecognized);
        if (!otherTree.empty()) failUnlessTolerant("The tree changed.", otherTree);
    }
    const auto twice = formatText(scheme, *once);
    if (!twice) {
        failUnlessTolerant("The result was refused.", *once);
        return once;
    }
    if (again == Again::Accepted || *twice == *once) return once;
    const auto thrice = formatText(scheme, *twice);
    if (!thrice) {
        failUnlessTolerant("The second result was refused.", *twice);
        return once;
    }
    if (*thrice != *twice)
        failUnlessTolerant("A third run changed the result.", TestSupport::visibleDiff(*twice, *thrice));
    return once;
}

}  // namespace Fuzz
