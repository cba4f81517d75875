#include "cmdline/string_arg.h"

#include <cstring>

#include "cmdline/cmd_line.h"

CmdArgStrCompiler::casc_string CmdArgStrCompiler::casc_string::copyOf(const char* text) {
    casc_string result;
    result.copy_ = text;
    return result;
}

int CmdArgStrCompiler::compile(const char*& text, CmdLine& commandLine) {
    if (!text) return 0;
    take(commandLine.hasTemporaryStrings() ? casc_string::copyOf(text) : casc_string(text));
    text += std::strlen(text);
    return 0;
}
