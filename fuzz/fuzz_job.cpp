// The whole job with a scheme drawn from the input's first bytes. The job proves its own result; what it made of
// an accepted source has to be accepted again.
#include <cstdio>
#include <cstdlib>

#include "format_text.h"
#include "fuzz_scheme.h"
#include "scheme/property_keys.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Input input = Fuzz::readInput(data, size);
    input.scheme.erase(Tessel::Keys::LINE_WRAP);
    const auto once = Fuzz::formatText(input.scheme, input.source);
    if (once && !Fuzz::formatText(input.scheme, *once)) {
        std::fprintf(stderr, "Refused its own result:\n%s\n", once->c_str());
        std::abort();
    }
    return 0;
}
