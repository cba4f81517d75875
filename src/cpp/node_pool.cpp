#include "cpp/node_pool.h"

#include <sanitizer/asan_interface.h>

#include <new>

namespace Cpp {

NodePool& NodePool::ofThread() {
    static thread_local NodePool pool;
    return pool;
}

void* NodePool::allocate(std::size_t size) {
    const std::size_t units = unitsOf(size);
    if (units > kLargestInUnits) return ::operator new(size);
    ++count_;
    Unit* const block = released_[units];
    if (!block) return cut(units);
    ASAN_UNPOISON_MEMORY_REGION(block, size);
    released_[units] = block->next;
    return block;
}

NodePool::Unit* NodePool::cut(std::size_t units) {
    if (free_ < units) {
        chunks_.push_back(std::make_unique_for_overwrite<Unit[]>(kChunkInUnits));
        free_ = kChunkInUnits;
    }
    Unit* const block = chunks_.back().get() + (kChunkInUnits - free_);
    free_ -= units;
    return block;
}

void NodePool::release(void* block, std::size_t size) noexcept {
    const std::size_t units = unitsOf(size);
    if (units > kLargestInUnits) return ::operator delete(block);
    released_[units] = new (block) Unit{released_[units]};
    ASAN_POISON_MEMORY_REGION(block, size);
    if (--count_ > 0) return;
    released_ = {};
    chunks_.clear();
    free_ = 0;
}

}  // namespace Cpp
