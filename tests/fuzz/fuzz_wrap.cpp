// The same with line wrapping on, at a margin that the second byte draws. Wrapping refuses nothing but tokens
// that do not stand every white space.
#include <algorithm>
#include <string>

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "fuzz_scheme.h"
#include "promises.h"
#include "scheme/property_keys.h"
#include "textstream/text_document.h"

namespace {

// A literal that does not end, or a backslash that splices lines of code.
bool holdsFragileToken(std::string_view source) {
    const Zelmor::TextDocument document{std::string(source)};
    return std::ranges::any_of(Cpp::opaqueTokensOf(document.text()),
                               [text = document.text()](const Cpp::OpaqueToken& token) {
                                   return token.kind == Cpp::Unknown || text[token.offset] == '\\';
                               });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int widestMargin = 64;
    if (size < 2) return 0;
    Fuzz::Input input = Fuzz::readInput(data, size);
    input.scheme.setBool(Tessel::Keys::LINE_WRAP, true);
    input.scheme.setInt(Tessel::Keys::RIGHT_MARGIN, 1 + data[1] % widestMargin);
    auto unwrapped = input.scheme;
    unwrapped.setBool(Tessel::Keys::LINE_WRAP, false);
    const auto isAcceptedWith = [&input](const Tessel::PropertySet& scheme) {
        return Fuzz::formatChecked(scheme, input.source, input.origin, Fuzz::Again::Accepted).has_value();
    };
    const bool isAccepted = isAcceptedWith(unwrapped);
    const bool isWrapped = isAcceptedWith(input.scheme);
    if (isAccepted && !isWrapped && !holdsFragileToken(input.source)) {
        Fuzz::failUnlessTolerant("Refused with wrapping, and not without.", {});
    }
    return 0;
}
