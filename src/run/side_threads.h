#pragma once

#include <cstddef>

#include "engine/task_runner.h"

namespace Run {

// Runs the parts of a job in several threads, that of the caller among them. Where the system gives fewer threads than
// that, these do it all.
class SideThreads : public Tessel::TaskRunner {
public:
    explicit SideThreads(std::size_t threads) : threads_(threads) {}

    void run(std::size_t count, const Task& task) override;

private:
    std::size_t threads_;
};

// As many as there are processors.
std::size_t threadsOfMachine();

}  // namespace Run
