#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace Cpp {

// The memory of the nodes that a thread makes. They are many, of few sizes, and go all at once: each is cut from a
// large chunk, or takes the place of one that is gone, and the last to go gives all chunks back. A node is destroyed
// in the thread that made it.
class NodePool {
public:
    // That of this thread.
    static NodePool& ofThread();

    void* allocate(std::size_t size);
    // A block of that size, which `allocate` gave.
    void release(void* block, std::size_t size) noexcept;

private:
    // Blocks are whole units, so that all of them are aligned.
    static constexpr std::size_t kUnit = alignof(void*);
    static constexpr std::size_t kLargestInUnits = 32;
    static constexpr std::size_t kChunkInUnits = 4096;

    struct alignas(kUnit) Unit {
        Unit* next;  // of the blocks of one size that are free
    };

    static std::size_t unitsOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }
    Unit* cut(std::size_t units);

    std::vector<std::unique_ptr<Unit[]>> chunks_;
    std::size_t free_ = 0;  // units at the end of the last chunk
    std::size_t count_ = 0;  // of blocks in use
    std::array<Unit*, kLargestInUnits + 1> released_{};
};

}  // namespace Cpp
