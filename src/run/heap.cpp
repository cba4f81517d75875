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
// What is asked for at once: not all that may be, so that it is taken from the heap for certain.
constexpr std::size_t blockSize = largestHeapBlock - hugePage;
// How far jobs on a few megabytes reach; the heap of a thread's own is smaller.
constexpr int mainReach = 128 << 20;

struct Free {
    void operator()(void* block) const { std::free(block); }
};

// Without the allocator's fast bins, what is small is merged as it goes, which takes a tenth less time in all. What has
// been given back, by the tokens for one, is to hold what comes next.
void tuneAllocator() {
    ::mallopt(M_MXFAST, 0);
    ::mallopt(M_MMAP_THRESHOLD, largestHeapBlock);
    ::mallopt(M_TRIM_THRESHOLD, keptAtHeapEnd);
}

// A page that is new costs as much as formatting a hundred characters, whether it is small or huge: the heap is to go
// on in huge ones, as far as `reach` behind its start. What lies in front of the first is for small files, which need
// less than one. The block lies at the end of the heap, which has it when it is given back: what is allocated next
// takes it. The allocator writes behind the block, and what it has written to stays a small page: so it is a large one.
void growInHugePages(std::size_t reach) {
    const std::unique_ptr<void, Free> block(std::malloc(blockSize));
    if (!block) return;
    const auto address = reinterpret_cast<std::uintptr_t>(block.get());
    const std::uintptr_t first = (address + hugePage - 1) / hugePage * hugePage;
    ::madvise(reinterpret_cast<void*>(first), reach, MADV_HUGEPAGE);
}

// The heap grows by what is asked for and the pad.
void growMainHeap() {
    ::mallopt(M_TOP_PAD, mainReach - static_cast<int>(blockSize));
    growInHugePages(mainReach - hugePage);
    ::mallopt(M_TOP_PAD, heapStep);
}

#endif

}  // namespace

void prepareHeap(Thread thread) {
#ifdef M_MXFAST
    if (thread == Thread::Main) {
        tuneAllocator();
        growMainHeap();
    } else {
        growInHugePages(blockSize - hugePage);
    }
#endif
}

}  // namespace Run
