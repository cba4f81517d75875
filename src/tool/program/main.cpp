#include <unistd.h>

#include <iostream>

#include "run/process.h"
#include "tool/program.h"

int main(int argumentCount, char** arguments) {
    Run::prepareProcess();
    const bool isTerminal = ::isatty(STDERR_FILENO) != 0;
    return Tool::run(argumentCount, arguments, {STDIN_FILENO, STDOUT_FILENO, std::cerr, isTerminal});
}
