#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "run/heap.h"
#include "run/side_threads.h"

namespace Tool {

// Runs jobs in several threads, and hands their results on in order. Threads go ahead of a long job by many short ones;
// of results that say how large they are, by heldBytes(), no more than two a thread wait once they hold much.
template <typename Result>
class OrderedPool {
public:
    // At most so many threads.
    explicit OrderedPool(std::size_t threads) : threadCount_(threads), slots_(slotsPerThread * threads) {}

    // `job(index)` runs in the threads and throws nothing; `consume(index, result)` runs in the caller's. When that
    // throws, no further job begins.
    template <typename Job, typename Consume>
    void run(std::size_t count, Job job, Consume consume) {
        count_ = count;
        std::vector<std::jthread> threads;
        const StopAtEnd stop{*this};  // gone before the threads are joined
        if (threadCount_ > 1 && count > 1) {
            threads = Run::startThreads(std::min(threadCount_, count), [this, &job] { work(job); });
        }
        for (std::size_t index = 0; index < count; ++index) {
            consume(index, threads.empty() ? job(index) : take(index));
        }
    }

private:
    static constexpr std::size_t slotsPerThread = 32;
    static constexpr std::size_t leastPerThread = 2;
    static constexpr std::size_t mostBytesHeld = std::size_t{16} << 20;

    struct StopAtEnd {
        OrderedPool& pool;
        ~StopAtEnd() {
            const std::lock_guard lock(pool.mutex_);
            pool.isStopped_ = true;
            pool.hasRoom_.notify_all();
        }
    };

    template <typename Job>
    void work(Job& job) {
        Run::prepareHeap(Run::Thread::Other);
        while (const std::optional<std::size_t> index = nextIndex()) {
            Result result = job(*index);
            const std::lock_guard lock(mutex_);
            bytesHeld_ += bytesOf(result);
            slots_[*index % slots_.size()] = std::move(result);
            hasResult_.notify_one();
        }
    }

    std::optional<std::size_t> nextIndex() {
        std::unique_lock lock(mutex_);
        hasRoom_.wait(lock, [this] { return isStopped_ || next_ == count_ || hasRoom(); });
        if (isStopped_ || next_ == count_) return std::nullopt;
        return next_++;
    }

    bool hasRoom() const {
        const std::size_t mostAhead = bytesHeld_ > mostBytesHeld ? leastPerThread * threadCount_ : slots_.size();
        return next_ < taken_ + mostAhead;
    }

    static std::size_t bytesOf(const Result& result) {
        if constexpr (requires { result.heldBytes(); }) return result.heldBytes();
        return 0;
    }

    Result take(std::size_t index) {
        std::unique_lock lock(mutex_);
        std::optional<Result>& slot = slots_[index % slots_.size()];
        hasResult_.wait(lock, [&slot] { return slot.has_value(); });
        Result result = std::move(*slot);
        slot.reset();
        ++taken_;
        bytesHeld_ -= bytesOf(result);
        hasRoom_.notify_one();
        return result;
    }

    std::size_t threadCount_;
    std::mutex mutex_;
    std::condition_variable hasRoom_;
    std::condition_variable hasResult_;
    std::vector<std::optional<Result>> slots_;
    std::size_t count_ = 0;
    std::size_t next_ = 0;
    std::size_t taken_ = 0;
    std::size_t bytesHeld_ = 0;  // by what waits to be taken
    bool isStopped_ = false;
};

}  // namespace Tool
