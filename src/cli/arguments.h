#pragma once

#include <iosfwd>
#include <string>

namespace Cli {

struct Arguments {
    std::string scheme;
    std::string inputFile;
    std::string outputFile;
};

// Reads the program's command line. A faulty one is answered with the usage on `errors`, a request for help
// with the usage on standard output; both end with EndOfProgram.
Arguments parseArguments(int count, const char* const* vector, std::ostream& errors);

}  // namespace Cli
