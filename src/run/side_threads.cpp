#include "run/side_threads.h"

#include <algorithm>
#include <atomic>
#include <system_error>

#include "files/ending_signals.h"
#include "run/process.h"

namespace Run {

std::vector<std::jthread> startThreads(std::size_t count, const std::function<void()>& work) {
    std::vector<std::jthread> threads;
    const Files::HoldEndingSignals inTheThreads;
    prepareThreads();
    try {
        while (threads.size() < count) threads.emplace_back(work);
    } catch (const std::system_error&) {
        // There are no more to be had.
    }
    return threads;
}

// The parts are small: they do as well with small pages, of which fewer bytes are left over.
void SideThreads::run(std::size_t count, const Task& task) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t part = next++; part < count; part = next++) task(part);
    };
    const std::vector<std::jthread> threads = startThreads(std::min(threads_, count) - 1, work);
    work();
}

std::size_t threadsOfMachine() { return std::max(std::thread::hardware_concurrency(), 1U); }

}  // namespace Run
