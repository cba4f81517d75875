// The same with line wrapping on, at narrow margins.
#include <cstdio>
#include <cstdlib>

#include "format_text.h"
#include "fuzz_scheme.h"
#include "scheme/property_keys.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int widestMargin = 64;
    Fuzz::Input input = Fuzz::readInput(data, size);
    auto unwrapped = input.scheme;
    unwrapped.erase(Tessel::Keys::LINE_WRAP);
    input.scheme.erase(Tessel::Keys::LINE_WRAP);
    input.scheme.setBool(Tessel::Keys::LINE_WRAP, true);
    input.scheme.setInt(Tessel::Keys::RIGHT_MARGIN, size == 0 ? 1 : 1 + data[0] % widestMargin);
    const bool isAccepted = Fuzz::formatText(unwrapped, input.source).has_value();
    const auto wrapped = Fuzz::formatText(input.scheme, input.source);
    if (isAccepted && (!wrapped || !Fuzz::formatText(input.scheme, *wrapped))) {
        std::fprintf(stderr, "Refused its own result:\n%s\n", wrapped ? wrapped->c_str() : "(the formatted text)");
        std::abort();
    }
    return 0;
}
