// A property set that can be read is the same after writing and reading it again.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "scheme/property_set.h"

namespace {

std::string written(const Tessel::PropertySet& set) {
    std::ostringstream out;
    set.write(out);
    return std::move(out).str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    Tessel::PropertySet set;
    set.read(in);
    const std::string once = written(set);
    std::istringstream again(once);
    Tessel::PropertySet copy;
    copy.read(again);
    if (written(copy) != once) std::abort();
    return 0;
}
