#pragma once

#include <utility>

#include "cmdline/cmd_arg.h"

// A switch. Without a value it does its own action; with one (declare it with a value name for that) it goes
// by the value: + or 1, - or 0, and ! ^ ~ to invert; behind a keyword also yes, true, on, no, false, off.
class CmdArgBoolCompiler : public CmdArg {
public:
    using CmdArg::CmdArg;
    int compile(const char*& text, CmdLine& commandLine) override;

    // The bool that the switch acts on.
    virtual bool& target() = 0;

protected:
    virtual void act() = 0;

private:
    bool compileSign(char sign);
    bool compileWord(const char* text);
};

class CmdArgBool : public CmdArgBoolCompiler {
public:
    using CmdArgBoolCompiler::CmdArgBoolCompiler;
    CmdArgBool& operator=(bool value) { return value_ = value, *this; }
    operator bool() const { return value_; }
    bool& target() override { return value_; }

protected:
    void act() override { value_ = true; }

private:
    bool value_ = false;
};

class CmdArgClear : public CmdArgBool {
public:
    using CmdArgBool::CmdArgBool;
    using CmdArgBool::operator=;

protected:
    void act() override { target() = false; }
};

class CmdArgToggle : public CmdArgBool {
public:
    using CmdArgBool::CmdArgBool;
    using CmdArgBool::operator=;

protected:
    void act() override { target() = !target(); }
};

// Acts on the bool of another switch, which it borrows.
class CmdArgBoolRef : public CmdArgBoolCompiler {
public:
    template <typename... Syntax>
    explicit CmdArgBoolRef(CmdArgBoolCompiler& other, Syntax&&... syntax)
        : CmdArgBoolCompiler(std::forward<Syntax>(syntax)...), other_(other) {}

    bool& target() override { return other_.target(); }

protected:
    void act() override { target() = true; }

private:
    CmdArgBoolCompiler& other_;
};

class CmdArgClearRef : public CmdArgBoolRef {
public:
    using CmdArgBoolRef::CmdArgBoolRef;

protected:
    void act() override { target() = false; }
};

class CmdArgToggleRef : public CmdArgBoolRef {
public:
    using CmdArgBoolRef::CmdArgBoolRef;

protected:
    void act() override { target() = !target(); }
};
