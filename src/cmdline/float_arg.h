#pragma once

#include "cmdline/cmd_arg.h"
#include "cmdline/fifo_list.h"

class CmdArgFloatCompiler : public CmdArg {
public:
    using CmdArg::CmdArg;
    int compile(const char*& text, CmdLine& commandLine) override;

protected:
    virtual void take(double value) = 0;
};

class CmdArgFloat : public CmdArgFloatCompiler {
public:
    using CmdArgFloatCompiler::CmdArgFloatCompiler;
    CmdArgFloat& operator=(double value) { return value_ = value, *this; }
    operator double() const { return value_; }

protected:
    void take(double value) override { value_ = value; }

private:
    double value_ = 0;
};

using FloatList = GenericFifoList<double>;
using FloatListArray = GenericFifoListArray<double>;

class CmdArgFloatList : public CmdArgFloatCompiler {
public:
    using CmdArgFloatCompiler::CmdArgFloatCompiler;
    const FloatList& values() const { return values_; }

protected:
    void take(double value) override { values_.add(value); }

private:
    FloatList values_;
};
