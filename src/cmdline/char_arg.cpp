#include "cmdline/char_arg.h"

#include <string>

#include "cmdline/cmd_line.h"

int CmdArgCharCompiler::compile(const char*& text, CmdLine& commandLine) {
    if (!text) return 0;
    const bool mayBeLonger = wasMatchedByOption() && hasValueInSameString();
    if (!*text || (text[1] && !mayBeLonger)) {
        commandLine.error("invalid character value \"" + std::string(text) + '"');
        return -1;
    }
    take(*text++);
    return 0;
}
