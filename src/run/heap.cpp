#include "run/heap.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace Run {

namespace {

#ifdef M_MXFAST

// The largest block that is taken from the heap; more the allocator does not allow.
constexpr int largestHeapBlock = 32 << 20;
// What the heap grows by, and what may lie free at its end.
constexpr int heapStep = 1 << 20;
constexpr int keptAtHeapEnd = 256 << 20;

constexpr std::size_t hugePage = 2 << 20;
constexpr std::size_t blockSize = 16 << 20;

struct Free {
    void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<void, Free>;

Block allocate(std::size_t size) { return Block(std::malloc(size)); }

std::uintptr_t addressOf(const Block& block) { return reinterpret_cast<std::uintptr_t>(block.get()); }

// Without the allocator's fast bins, what is small is merged as it goes, which takes a tenth less time in all. What has
// been given back, by the tokens for one, is to hold what comes next.
void tuneAllocator() {
    ::mallopt(M_MXFAST, 0);
    ::mallopt(M_MMAP_THRESHOLD, largestHeapBlock);
    ::mallopt(M_TOP_PAD, heapStep);
    ::mallopt(M_TRIM_THRESHOLD, keptAtHeapEnd);
}

// The blocks lie at the end of the heap, which has them when they are given back: what is allocated next takes them.
void growInHugePages(int blocks) {
    if (blocks == 0) return;
    const Block block = allocate(blockSize);
    if (!block) return;
    const std::uintptr_t page = addressOf(block) / hugePage * hugePage;
    ::madvise(reinterpret_cast<void*>(page), blockSize, MADV_HUGEPAGE);
    growInHugePages(blocks - 1);
}

// A page that is new costs as much as formatting a hundred characters, whether it is small or huge. Huge ones are
// whole: a filler takes what lies in front of the first.
void takeHugePages(int blocks) {
    static thread_local const Block end = allocate(1);
    static thread_local const Block filler = allocate(hugePage - addressOf(end) % hugePage);
    if (filler) growInHugePages(blocks);
}

#endif

}  // namespace

void prepareHeap(Thread thread) {
#ifdef M_MXFAST
    // What jobs on a few megabytes take; a heap of a thread's own is smaller.
    constexpr int mainBlocks = 8;
    constexpr int otherBlocks = 2;
    if (thread == Thread::Main) tuneAllocator();
    takeHugePages(thread == Thread::Main ? mainBlocks : otherBlocks);
#endif
}

}  // namespace Run
