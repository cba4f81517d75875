// The whole job, under a scheme of the program or one drawn from the input's first bytes, without wrapping.
#include "fuzz_scheme.h"
#include "promises.h"
#include "scheme/property_keys.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Input input = Fuzz::readInput(data, size);
    input.scheme.erase(Tessel::Keys::LINE_WRAP);
    Fuzz::formatChecked(input.scheme, input.source, input.origin,
                        input.origin == Fuzz::Origin::Shipped ? Fuzz::Again::Settled : Fuzz::Again::Accepted);
    return 0;
}
