#include "cmdline/int_arg.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string>

#include "cmdline/cmd_line.h"

int CmdArgIntCompiler::compile(const char*& text, CmdLine& commandLine) {
    if (!text) return 0;
    if (!*text) {
        commandLine.error("empty integer value specified.");
        return -1;
    }
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text, &end, 0);
    const bool fits =
        errno == 0 && value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    if (*end || end == text || !fits) {
        commandLine.error("invalid integer value \"" + std::string(text) + '"');
        return -1;
    }
    text = end;
    take(static_cast<int>(value));
    return 0;
}
