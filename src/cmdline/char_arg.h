#pragma once

#include "cmdline/cmd_arg.h"

// Reads one character. Behind its option character, and there only, more text may follow: -cx leaves x to the
// argument and what comes after it to the options.
class CmdArgCharCompiler : public CmdArg {
public:
    using CmdArg::CmdArg;
    int compile(const char*& text, CmdLine& commandLine) override;

protected:
    virtual void take(char value) = 0;
};

class CmdArgChar : public CmdArgCharCompiler {
public:
    using CmdArgCharCompiler::CmdArgCharCompiler;
    CmdArgChar& operator=(char value) { return value_ = value, *this; }
    operator char() const { return value_; }

protected:
    void take(char value) override { value_ = value; }

private:
    char value_ = 0;
};
