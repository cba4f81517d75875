#include "worker_pool.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <list>
#include <system_error>
#include <utility>
#include <vector>

namespace Bench {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void failWith(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

// Answers numbers with results, a message each, until the other side has gone.
[[noreturn]] void serve(int socket, const Work& work) noexcept {
    std::size_t number = 0;
    while (recv(socket, &number, sizeof number, 0) == sizeof number) {
        const std::string result = work(number);
        send(socket, result.data(), std::min(result.size(), LONGEST_RESULT), MSG_NOSIGNAL);
    }
    _exit(0);
}

// One process that works; it ends with the object.
class Worker {
public:
    Worker(const std::list<Worker>& others, const Work& work) {
        std::array<int, 2> ends{};
        if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends.data()) != 0) failWith("socketpair");
        socket_ = ends[0];
        process_ = fork();
        if (process_ < 0) failWith("fork");
        if (process_ == 0) {
            // A copy of the other side left open would keep a worker waiting for a parent that has gone.
            for (const Worker& other : others) close(other.socket_);
            close(socket_);
            serve(ends[1], work);
        }
        close(ends[1]);
    }
    ~Worker() {
        close(socket_);
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void begin(std::size_t number, std::chrono::seconds limit) {
        number_ = number;
        deadline_ = Clock::now() + limit;
        send(socket_, &number, sizeof number, MSG_NOSIGNAL);
    }

    std::size_t number() const { return number_; }
    Clock::time_point deadline() const { return deadline_; }
    pollfd newsOf() const { return {socket_, POLLIN, 0}; }

    Answer answer() {
        std::string text(LONGEST_RESULT, '\0');
        const ssize_t length = recv(socket_, text.data(), text.size(), 0);
        if (length <= 0) return {Answer::End::Crashed, lastWords()};
        text.resize(static_cast<std::size_t>(length));
        return {Answer::End::Returned, std::move(text)};
    }

private:
    std::string lastWords() {
        int status = 0;
        waitpid(std::exchange(process_, -1), &status, 0);
        if (WIFSIGNALED(status)) return strsignal(WTERMSIG(status));
        return "exit status " + std::to_string(WEXITSTATUS(status));
    }

    pid_t process_ = -1;
    int socket_ = -1;
    std::size_t number_ = 0;
    Clock::time_point deadline_;
};

// Waits for the first of them to answer or to have had its time; says of each whether it has news.
std::vector<pollfd> awaitNews(const std::list<Worker>& workers) {
    std::vector<pollfd> news;
    Clock::time_point first = Clock::time_point::max();
    for (const Worker& worker : workers) {
        news.push_back(worker.newsOf());
        first = std::min(first, worker.deadline());
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(first - Clock::now()).count();
    const int wait = static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0));
    if (poll(news.data(), news.size(), wait) < 0 && errno != EINTR) failWith("poll");
    return news;
}

}  // namespace

void runInWorkers(std::size_t count, const PoolLimits& limits, const Work& work, const Take& take) {
    std::list<Worker> workers;
    std::size_t next = 0;
    while (next < count || !workers.empty()) {
        while (next < count && workers.size() < limits.processes) {
            workers.emplace_back(workers, work);
            workers.back().begin(next++, limits.longestWork);
        }
        const std::vector<pollfd> news = awaitNews(workers);
        auto worker = workers.begin();
        for (const pollfd& some : news) {
            const auto current = worker++;
            const bool hangs = some.revents == 0 && Clock::now() >= current->deadline();
            if (some.revents == 0 && !hangs) continue;
            const Answer answer = hangs ? Answer{Answer::End::Hung, {}} : current->answer();
            take(current->number(), answer);
            if (answer.end != Answer::End::Returned || next == count) {
                workers.erase(current);
            } else {
                current->begin(next++, limits.longestWork);
            }
        }
    }
}

}  // namespace Bench
