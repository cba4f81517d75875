#include "fuzz_scheme.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "scheme/known_keys.h"
#include "support/format_text.h"

namespace Fuzz {

namespace {

// One byte gives the values of a few keys: enough for every value to meet every other, and few enough for a
// mutation of the source to leave the scheme alone.
constexpr std::size_t kSchemeBytes = 24;

// The bytes in front of that, and of the source.
constexpr std::size_t kHeadBytes = 2;

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

Tessel::PropertySet drawScheme(Draw draw) {
    Tessel::PropertySet scheme("drawn");
    for (const std::string_view key : Tessel::Keys::ALL) {
        if (draw.next() % 4 == 0) continue;
        switch (Tessel::Keys::typeOf(key)) {
            case Tessel::PropertyType::Boolean:
                scheme.setBool(key, draw.next() % 2 == 0);
                break;
            case Tessel::PropertyType::Integer:
                scheme.setInt(key, kNumbers[draw.next() % std::size(kNumbers)]);
                break;
            default:
                scheme.setString(key, kTexts[draw.next() % std::size(kTexts)]);
        }
    }
    return scheme;
}

std::vector<Tessel::PropertySet> readShippedSchemes() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(VANTREL_SHIPPED_SCHEMES)) {
        names.push_back(entry.path().stem().string());
    }
    std::ranges::sort(names);
    std::vector<Tessel::PropertySet> schemes;
    std::ranges::transform(names, std::back_inserter(schemes), TestSupport::shippedScheme);
    return schemes;
}

}  // namespace

Input readInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<Tessel::PropertySet> shipped = readShippedSchemes();
    constexpr std::size_t firstBytes = 16;
    Input input;
    std::size_t head = std::min(size, kHeadBytes);
    const std::size_t choice = size == 0 ? 0 : data[0] % firstBytes;
    if (choice < shipped.size()) {
        input.scheme = shipped[choice];
        input.origin = Origin::Shipped;
    } else {
        const std::size_t drawn = std::min(size - head, kSchemeBytes);
        input.scheme = drawScheme({data + head, drawn});
        head += drawn;
    }
    input.source = {reinterpret_cast<const char*>(data) + head, size - head};
    return input;
}

}  // namespace Fuzz
