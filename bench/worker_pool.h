#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace Bench {

// What became of one piece of work.
struct Answer {
    enum class End { Returned, Crashed, Hung };

    End end = End::Returned;
    std::string text;  // what the work returned, or the signal that ended it
};

struct PoolLimits {
    std::size_t processes = 2;
    std::chrono::seconds longestWork{10};  // what takes longer hangs
};

// Runs in a worker. A result longer than LONGEST_RESULT is cut.
using Work = std::function<std::string(std::size_t number)>;
// Is told what became of each piece, in no certain order.
using Take = std::function<void(std::size_t number, const Answer& answer)>;

inline constexpr std::size_t LONGEST_RESULT = 64 * 1024;

// Does pieces of work, numbered from 0, in processes of their own: one that crashes or hangs costs that piece
// alone. Throws std::system_error when there are no processes to be had.
void runInWorkers(std::size_t count, const PoolLimits& limits, const Work& work, const Take& take);

}  // namespace Bench
