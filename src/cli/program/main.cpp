#include <unistd.h>

#include <iostream>

#include "cli/driver.h"
#include "run/process.h"

int main(int argumentCount, char** arguments) {
    Run::prepareProcess();
    return Cli::run(argumentCount, arguments, {STDIN_FILENO, STDOUT_FILENO, std::cerr});
}
