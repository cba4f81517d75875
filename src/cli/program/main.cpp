#include <unistd.h>

#include <iostream>

#include "cli/driver.h"
#include "cli/process.h"

int main(int argumentCount, char** arguments) {
    Cli::prepareProcess();
    return Cli::run(argumentCount, arguments, {STDIN_FILENO, STDOUT_FILENO, std::cerr});
}
