#include "fuzz_scheme.h"

#include <iterator>
#include <string>

#include "scheme/property_keys.h"

namespace Fuzz {

namespace {

// One byte gives the values of a few keys: enough for every value to meet every other, and few enough for a
// mutation of the source to leave the scheme alone.
constexpr std::size_t kSchemeBytes = 24;

constexpr std::string_view kTexts[] = {"", " ", "\n", "\n\n", "    ", "\t", "\n  "};
constexpr int kNumbers[] = {-1, 0, 1, 2, 4, 8, 40, 80};

// Values that follow from the bytes, key by key.
class Draw {
public:
    Draw(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    unsigned next() {
        state_ = state_ * 1664525u + 1013904223u + (size_ == 0 ? 0u : data_[place_++ % size_]);
        return state_ >> 16;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t place_ = 0;
    unsigned state_ = 1;
};

}  // namespace

Input readInput(const std::uint8_t* data, std::size_t size) {
    const std::size_t schemeSize = size < kSchemeBytes ? size : kSchemeBytes;
    Draw draw(data, schemeSize);
    Input input;
    input.scheme = Tessel::PropertySet("fuzzed");
    for (const std::string_view key : Tessel::Keys::CATALOGUE) {
        if (draw.next() % 4 == 0) continue;
        switch (Tessel::Keys::typeOf(key)) {
            case Tessel::PropertyType::Boolean: input.scheme.setBool(key, draw.next() % 2 == 0); break;
            case Tessel::PropertyType::Integer:
                input.scheme.setInt(key, kNumbers[draw.next() % std::size(kNumbers)]);
                break;
            default: input.scheme.setString(key, std::string(kTexts[draw.next() % std::size(kTexts)]));
        }
    }
    input.source = {reinterpret_cast<const char*>(data) + schemeSize, size - schemeSize};
    return input;
}

}  // namespace Fuzz
