#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "support/temporary_folder.h"

struct ProgramResult {
    int status = -1;  // -1 when a signal ended the program
    std::string output;
    std::string errors;
};

// How a run differs from one with everything at hand.
struct ProgramSetting {
    std::string program = VANTREL_PROGRAM;
    std::string input = {};           // what standard input holds
    std::string outputPath = {};      // standard output, when it is not captured
    std::vector<int> closed = {};     // descriptors that are not open
    bool outputIsBrokenPipe = false;  // nobody reads standard output
    std::vector<std::pair<std::string, std::string>> environment = {};  // set, or unset when empty
    std::vector<std::pair<__rlimit_resource, rlim_t>> limits = {};
};

// Runs the built program in a process of its own, in the folder `place`.
inline ProgramResult runProgram(const TemporaryFolder& place, const std::vector<std::string>& arguments,
                                const ProgramSetting& setting = {}) {
    const TemporaryFolder capture;
    const std::string input = capture.write("in", setting.input);
    const std::string output = setting.outputPath.empty() ? capture.write("out", "") : setting.outputPath;
    const std::string errors = capture.write("err", "");

    std::vector<char*> vector;
    std::string program = setting.program;
    vector.push_back(program.data());
    std::vector<std::string> copies = arguments;
    for (std::string& argument : copies) vector.push_back(argument.data());
    vector.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open(input.c_str(), O_RDONLY), STDIN_FILENO);
        ::dup2(::open(output.c_str(), O_WRONLY | O_TRUNC), STDOUT_FILENO);
        ::dup2(::open(errors.c_str(), O_WRONLY | O_APPEND), STDERR_FILENO);
        if (setting.outputIsBrokenPipe) {
            int ends[2];
            if (::pipe(ends) != 0) ::_exit(126);
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
        }
        for (const auto& [name, value] : setting.environment) {
            value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
        }
        for (const auto& [resource, value] : setting.limits) {
            const rlimit limit{value, value};
            ::setrlimit(resource, &limit);
        }
        for (const int descriptor : setting.closed) ::close(descriptor);
        if (::chdir(place.path().c_str()) != 0) ::_exit(126);
        ::execv(program.c_str(), vector.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, capture.read("out"), capture.read("err")};
}
