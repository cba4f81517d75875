// The same with line wrapping on, at a margin that the second byte draws. Wrapping refuses nothing.
#include <cstdio>
#include <cstdlib>

#include "fuzz_scheme.h"
#include "promises.h"
#include "scheme/property_keys.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int widestMargin = 64;
    if (size < 2) return 0;
    Fuzz::Input input = Fuzz::readInput(data, size);
    input.scheme.setBool(Tessel::Keys::LINE_WRAP, true);
    input.scheme.setInt(Tessel::Keys::RIGHT_MARGIN, 1 + data[1] % widestMargin);
    auto unwrapped = input.scheme;
    unwrapped.setBool(Tessel::Keys::LINE_WRAP, false);
    const bool isAccepted = Fuzz::formatChecked(unwrapped, input.source, Fuzz::Again::Accepted).has_value();
    if (isAccepted && !Fuzz::formatChecked(input.scheme, input.source, Fuzz::Again::Accepted)) {
        std::fprintf(stderr, "Refused with wrapping, and not without.\n");
        std::abort();
    }
    return 0;
}
