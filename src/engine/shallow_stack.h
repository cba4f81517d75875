#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace Tessel {

// A stack that takes no memory of its own while few things are on it, as brackets seldom nest deeply.
template <typename Item>
class ShallowStack {
    static_assert(std::is_trivially_copyable_v<Item>);

public:
    ShallowStack() = default;
    ShallowStack(const ShallowStack&) = delete;
    ShallowStack& operator=(const ShallowStack&) = delete;

    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }
    Item& operator[](std::size_t place) { return items_[place]; }
    const Item& operator[](std::size_t place) const { return items_[place]; }
    Item& back() { return items_[size_ - 1]; }
    const Item& back() const { return items_[size_ - 1]; }

    void push_back(const Item& item) {
        if (size_ == capacity_) grow();
        items_[size_++] = item;
    }
    void pop_back() { --size_; }

private:
    static constexpr std::size_t kShallow = 8;

    void grow() {
        auto larger = std::make_unique<Item[]>(2 * capacity_);
        std::copy_n(items_, size_, larger.get());
        deep_ = std::move(larger);
        items_ = deep_.get();
        capacity_ *= 2;
    }

    std::array<Item, kShallow> shallow_;
    std::unique_ptr<Item[]> deep_;
    Item* items_ = shallow_.data();
    std::size_t size_ = 0;
    std::size_t capacity_ = kShallow;
};

}  // namespace Tessel
