#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

#include "engine/task_runner.h"

namespace Run {

// Runs the parts of a job in several threads, that of the caller among them. Where the system gives fewer threads than
// that, these do it all.
class SideThreads : public Tessel::TaskRunner {
public:
    // At least one.
    explicit SideThreads(std::size_t threads) : threads_(threads) {}

    void run(std::size_t count, const Task& task) override;

private:
    std::size_t threads_;
};

// Starts so many threads, as far as the system gives them. The ending signals are for the main thread, which knows what
// to clean up.
std::vector<std::jthread> startThreads(std::size_t count, const std::function<void()>& work);

// As many as there are processors.
std::size_t threadsOfMachine();

}  // namespace Run
