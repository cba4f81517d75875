#pragma once

#include <iosfwd>

namespace Cli {

// What a run reads and writes besides files. The descriptors are borrowed.
struct StandardStreams {
    int input;
    int output;
    std::ostream& errors;
};

// The program: formats one file as the command line says. Returns the exit status:
//
//     0       formatted, or there was nothing to format
//     1       an error, which has been printed; or the user asked for help
//     2       a faulty command line
//     1..255  the source cannot be formatted: the number of messages printed
int run(int argumentCount, const char* const* arguments, const StandardStreams& streams);

}  // namespace Cli
