#pragma once

#include <cstddef>
#include <utility>
#include <vector>

// A growing list that gives its items in the order in which they came.
template <typename Item>
class GenericFifoList {
public:
    void add(Item item) { items_.push_back(std::move(item)); }
    bool isEmpty() const { return items_.empty(); }
    std::size_t size() const { return items_.size(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    template <typename>
    friend class GenericFifoListArray;

    std::vector<Item> items_;
};

// Reads a list by index. Borrows the list and sees what is added to it later.
template <typename Item>
class GenericFifoListArray {
public:
    explicit GenericFifoListArray(const GenericFifoList<Item>& list) : list_(&list) {}

    std::size_t count() const { return list_->items_.size(); }

    // The index must be below the count.
    const Item& operator[](std::size_t index) const { return list_->items_[index]; }

private:
    const GenericFifoList<Item>* list_;
};
