#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scheme/key_id.h"

namespace Tessel {

// The values of one type that keys have in a scheme. Each pass asks for each key that is known, and many change a copy:
// so that the values of these stand in a row, found by the places of their keys.
template <typename Value>
class ValueTable {
public:
    std::size_t size() const { return known_.size() + others_.size(); }

    // Null when the key has none.
    const Value* find(KeyId key) const {
        const std::size_t number = key ? numbers_[key.place()] : kNone;
        return number == kNone ? nullptr : &known_[number - 1].value;
    }
    const Value* find(std::string_view name) const {
        if (const KeyId key = KeyId::find(name)) return find(key);
        const auto found = others_.find(name);
        return found == others_.end() ? nullptr : &found->second;
    }

    void set(std::string name, Value value) {
        const KeyId key = KeyId::find(name);
        if (!key) {
            others_.insert_or_assign(std::move(name), std::move(value));
        } else if (const std::size_t number = numbers_[key.place()]; number != kNone) {
            known_[number - 1].value = std::move(value);
        } else {
            known_.push_back({key, std::move(value)});
            numbers_[key.place()] = static_cast<std::uint16_t>(known_.size());
        }
    }

    // False when the key has none.
    bool erase(std::string_view name) {
        const KeyId key = KeyId::find(name);
        if (!key) {
            const auto found = others_.find(name);
            if (found == others_.end()) return false;
            others_.erase(found);
            return true;
        }
        return erase(key);
    }
    bool erase(KeyId key) {
        const std::uint16_t number = std::exchange(numbers_[key.place()], kNone);
        if (number == kNone) return false;
        if (number < known_.size()) {
            known_[number - 1] = std::move(known_.back());
            numbers_[known_[number - 1].key.place()] = number;
        }
        known_.pop_back();
        return true;
    }

    // In no order: visitor(name, value).
    template <typename Visitor>
    void forEach(const Visitor& visitor) const {
        for (const Known& known : known_) visitor(known.key.name(), known.value);
        for (const auto& [name, value] : others_) visitor(std::string_view(name), value);
    }

    // In no order: editor(name, value) may change the value, and says whether it stays.
    template <typename Editor>
    void edit(const Editor& editor) {
        // The last one takes the place of one that goes.
        for (std::size_t number = known_.size(); number > 0; --number) {
            Known& known = known_[number - 1];
            if (!editor(known.key.name(), known.value)) erase(known.key);
        }
        for (auto other = others_.begin(); other != others_.end();) {
            const bool stays = editor(std::string_view(other->first), other->second);
            other = stays ? std::next(other) : others_.erase(other);
        }
    }

    friend bool operator==(const ValueTable& one, const ValueTable& other) {
        return one.known_.size() == other.known_.size() && one.others_ == other.others_ &&
               std::ranges::all_of(one.known_, [&other](const Known& known) {
                   const Value* const value = other.find(known.key);
                   return value && *value == known.value;
               });
    }

private:
    struct Known {
        KeyId key;
        Value value;
    };
    static constexpr std::uint16_t kNone = 0;

    std::array<std::uint16_t, Keys::ALL.size()> numbers_{};  // of the values of known keys, from 1
    std::vector<Known> known_;
    std::map<std::string, Value, std::less<>> others_;
};

}  // namespace Tessel
