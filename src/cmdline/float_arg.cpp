#include "cmdline/float_arg.h"

#include <cstdlib>
#include <string>

#include "cmdline/cmd_line.h"

int CmdArgFloatCompiler::compile(const char*& text, CmdLine& commandLine) {
    if (!text) return 0;
    if (!*text) {
        commandLine.error("empty floating-point value specified.");
        return -1;
    }
    char* end = nullptr;
    const double value = std::strtod(text, &end);
    if (*end || end == text) {
        commandLine.error("invalid floating-point value \"" + std::string(text) + '"');
        return -1;
    }
    text = end;
    take(value);
    return 0;
}
