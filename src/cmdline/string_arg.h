#pragma once

#include <optional>
#include <string>

#include "cmdline/cmd_arg.h"
#include "cmdline/fifo_list.h"

// Takes any text.
class CmdArgStrCompiler : public CmdArg {
public:
    // A C string, borrowed from the argument strings when they outlive the parse and copied when they do not.
    class casc_string {
    public:
        casc_string() = default;
        explicit casc_string(const char* borrowed) : borrowed_(borrowed) {}
        static casc_string copyOf(const char* text);

        // Null when no text was given.
        const char* c_str() const { return copy_ ? copy_->c_str() : borrowed_; }

    private:
        const char* borrowed_ = nullptr;
        std::optional<std::string> copy_;
    };

    using CmdArg::CmdArg;
    int compile(const char*& text, CmdLine& commandLine) override;

protected:
    virtual void take(casc_string value) = 0;
};

class CmdArgStr : public CmdArgStrCompiler {
public:
    using CmdArgStrCompiler::CmdArgStrCompiler;
    CmdArgStr& operator=(const char* borrowed) { return value_ = casc_string(borrowed), *this; }
    bool isNull() const { return value_.c_str() == nullptr; }
    operator const char*() const { return value_.c_str(); }

protected:
    void take(casc_string value) override { value_ = std::move(value); }

private:
    casc_string value_;
};

using StringList = GenericFifoList<CmdArgStrCompiler::casc_string>;
using StringListArray = GenericFifoListArray<CmdArgStrCompiler::casc_string>;

class CmdArgStrList : public CmdArgStrCompiler {
public:
    using CmdArgStrCompiler::CmdArgStrCompiler;
    const StringList& values() const { return values_; }

protected:
    void take(casc_string value) override { values_.add(std::move(value)); }

private:
    StringList values_;
};
