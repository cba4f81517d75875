#pragma once

#include "cmdline/cmd_arg.h"
#include "cmdline/fifo_list.h"

// Reads an int: decimal, octal after a 0, hexadecimal after 0x.
class CmdArgIntCompiler : public CmdArg {
public:
    using CmdArg::CmdArg;
    int compile(const char*& text, CmdLine& commandLine) override;

protected:
    virtual void take(int value) = 0;
};

class CmdArgInt : public CmdArgIntCompiler {
public:
    using CmdArgIntCompiler::CmdArgIntCompiler;
    CmdArgInt& operator=(int value) { return value_ = value, *this; }
    operator int() const { return value_; }

protected:
    void take(int value) override { value_ = value; }

private:
    int value_ = 0;
};

using IntList = GenericFifoList<int>;
using IntListArray = GenericFifoListArray<int>;

class CmdArgIntList : public CmdArgIntCompiler {
public:
    using CmdArgIntCompiler::CmdArgIntCompiler;
    const IntList& values() const { return values_; }

protected:
    void take(int value) override { values_.add(value); }

private:
    IntList values_;
};
