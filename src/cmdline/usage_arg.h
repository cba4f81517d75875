#pragma once

#include <iosfwd>

#include "cmdline/cmd_arg.h"

// Appears in the usage and is never matched: for what the program handles by other means.
class CmdArgDummy : public CmdArg {
public:
    using CmdArg::CmdArg;
    bool isDummy() const override { return true; }
    int compile(const char*& text, CmdLine& commandLine) override;
};

// When matched, prints the whole usage and ends the program with status 1.
class CmdArgUsage : public CmdArg {
public:
    // Prints to standard output when `out` is null, else to `out`, which it borrows.
    CmdArgUsage(char optionCharacter, const char* keyword, const char* description,
                std::ostream* out = nullptr);

    int compile(const char*& text, CmdLine& commandLine) override;

private:
    std::ostream* out_;
};
