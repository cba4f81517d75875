#pragma once

namespace Run {

enum class Thread { Main, Other };

// Fits the memory of this thread to jobs, which allocate much in a short time and give it back at once. To be called
// when the thread begins.
void prepareHeap(Thread thread);

}  // namespace Run
