#include "run/side_threads.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

#include "files/ending_signals.h"
#include "run/process.h"

namespace Run {

namespace {

// The ending signals are for the main thread, which knows what to clean up. The parts are small: they do as well with
// small pages, of which fewer bytes are left over.
template <typename Work>
void startThreads(std::vector<std::jthread>& threads, std::size_t count, const Work& work) {
    const Files::HoldEndingSignals inTheThreads;
    prepareThreads();
    try {
        while (threads.size() < count) {
            threads.emplace_back([&work] { work(); });
        }
    } catch (const std::system_error&) {
        // There are no more to be had.
    }
}

}  // namespace

void SideThreads::run(std::size_t count, const Task& task) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t part = next++; part < count; part = next++) task(part);
    };
    std::vector<std::jthread> threads;
    if (threads_ > 1) startThreads(threads, std::min(threads_, count) - 1, work);
    work();
}

std::size_t threadsOfMachine() { return std::max(std::thread::hardware_concurrency(), 1U); }

}  // namespace Run
