#include "tool/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "files/descriptor.h"

extern char** environ;

namespace Tool {

namespace {

struct Pipe {
    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) return;
        readEnd = Files::Descriptor(ends[0]);
        writeEnd = Files::Descriptor(ends[1]);
    }
    Files::Descriptor readEnd;
    Files::Descriptor writeEnd;
};

// What is there to be read; false at the end.
bool readSome(int descriptor, std::string& text) {
    std::array<char, 1 << 16> block;
    const ssize_t size = ::read(descriptor, block.data(), block.size());
    if (size > 0) text.append(block.data(), static_cast<std::size_t>(size));
    return size > 0 || (size < 0 && errno == EINTR);
}

// Both at once, so that neither fills up.
void readBoth(const Pipe& output, const Pipe& errors, ChildResult& result) {
    std::array<pollfd, 2> streams = {pollfd{output.readEnd.get(), POLLIN, 0}, pollfd{errors.readEnd.get(), POLLIN, 0}};
    const std::array<std::string*, 2> texts = {&result.output, &result.errors};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        if (::poll(streams.data(), streams.size(), -1) < 0 && errno != EINTR) return;
        for (std::size_t i = 0; i < streams.size(); ++i) {
            if (streams[i].revents != 0 && !readSome(streams[i].fd, *texts[i])) streams[i].fd = -1;
        }
    }
}

}  // namespace

ChildResult runChild(std::vector<std::string> arguments) {
    Pipe output;
    Pipe errors;
    std::vector<char*> words;
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output.writeEnd.get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, errors.writeEnd.get(), STDERR_FILENO);
    pid_t child = 0;
    const int error = ::posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ChildResult result;
    if (error) {
        result.errors = arguments[0] + ": " + Files::errorText(error);
        return result;
    }
    output.writeEnd.close();
    errors.writeEnd.close();
    readBoth(output, errors, result);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    return result;
}

}  // namespace Tool
