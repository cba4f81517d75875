#pragma once

#include <cstddef>
#include <functional>

namespace Tessel {

// Runs the parts of a job, in threads if it has them. This one does in that of the caller.
class TaskRunner {
public:
    // To be called with the number of a part; throws nothing.
    using Task = std::function<void(std::size_t)>;

    TaskRunner() = default;
    TaskRunner(const TaskRunner&) = delete;
    TaskRunner& operator=(const TaskRunner&) = delete;
    virtual ~TaskRunner() = default;

    // Returns when all parts are done.
    virtual void run(std::size_t count, const Task& task) {
        for (std::size_t part = 0; part < count; ++part) task(part);
    }
};

}  // namespace Tessel
