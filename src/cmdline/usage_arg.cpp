#include "cmdline/usage_arg.h"

#include <iostream>

#include "cmdline/cmd_line.h"

namespace {

constexpr int usageStatus = 1;

}  // namespace

int CmdArgDummy::compile(const char*&, CmdLine&) {
    return 0;
}

CmdArgUsage::CmdArgUsage(char optionCharacter, const char* keyword, const char* description,
                         std::ostream* out)
    : CmdArg(optionCharacter, keyword, description, SYNTAX_OPTIONAL), out_(out ? out : &std::cout) {}

int CmdArgUsage::compile(const char*&, CmdLine& commandLine) {
    commandLine.printUsage(*out_, CmdLine::VERBOSE_USAGE);
    out_->flush();
    commandLine.quit(usageStatus);
    return 0;
}
