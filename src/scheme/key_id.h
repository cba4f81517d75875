#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "scheme/extension_keys.h"
#include "scheme/known_keys.h"

namespace Tessel {

// One of the known keys, or none: small enough to go with every value that is read from a scheme.
class KeyId {
public:
    constexpr KeyId() = default;
    // Found when the program is compiled; a name that is no key does not compile.
    consteval KeyId(std::string_view name) : index_(indexOf(name)) {
        if (index_ == kNone) throw "no such key";
    }
    template <PropertyType valueType>
    consteval KeyId(ExtensionKey<valueType> key) : KeyId(key.name) {}

    // None where nothing is called so.
    static constexpr KeyId find(std::string_view name) { return KeyId(Index{indexOf(name)}); }
    // By its place in Keys::ALL.
    static constexpr KeyId at(std::size_t place) { return KeyId(Index{static_cast<std::uint16_t>(place)}); }

    constexpr explicit operator bool() const { return index_ != kNone; }
    // The place in Keys::ALL.
    constexpr std::size_t place() const { return index_; }
    constexpr std::string_view name() const { return *this ? Keys::ALL[index_] : std::string_view(); }
    constexpr PropertyType type() const { return Keys::typeOf(name()); }

    constexpr auto operator<=>(const KeyId&) const = default;

private:
    struct Index {
        std::uint16_t value;
    };
    static constexpr std::uint16_t kNone = Keys::ALL.size();

    constexpr explicit KeyId(Index index) : index_(index.value) {}

    // The places in Keys::ALL, ordered by the names there.
    static constexpr auto kByName = [] {
        std::array<std::uint16_t, kNone> places{};
        for (std::uint16_t place = 0; place < kNone; ++place) places[place] = place;
        std::ranges::sort(places, {}, [](std::uint16_t place) { return Keys::ALL[place]; });
        return places;
    }();

    static constexpr std::uint16_t indexOf(std::string_view name) {
        const auto found =
            std::ranges::lower_bound(kByName, name, {}, [](std::uint16_t place) { return Keys::ALL[place]; });
        return found != kByName.end() && Keys::ALL[*found] == name ? *found : kNone;
    }

    std::uint16_t index_ = kNone;
};

// One whose values have that type.
template <PropertyType valueType>
class TypedKeyId : public KeyId {
public:
    consteval TypedKeyId(ExtensionKey<valueType> key) : KeyId(key) {}
};

}  // namespace Tessel
