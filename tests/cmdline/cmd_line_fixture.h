#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>

#include "cmdline/cmd_line.h"
#include "cmdline/string_arg.h"

// Parses texts of blank-separated strings, and keeps what was printed and how the parse would have ended the
// program.
class CommandLineRun {
public:
    explicit CommandLineRun(CmdLine& commandLine) : commandLine_(commandLine) {
        ::unsetenv("PROMPT_USER");
        ::unsetenv("USAGE_LEVEL");
        commandLine.setErrorStream(errors_);
        commandLine.setQuitHandler([this](int status) { quitStatus_ = status; });
    }

    unsigned parse(const std::string& text) {
        errors_.str("");
        quitStatus_.reset();
        CmdStrTokIter strings(text.c_str());
        return commandLine_.parse(strings);
    }

    std::string errors() const { return errors_.str(); }
    std::optional<int> quitStatus() const { return quitStatus_; }

    // The messages before the usage.
    std::string messages() const { return errors().substr(0, errors().find("Usage: ")); }

private:
    CmdLine& commandLine_;
    std::ostringstream errors_;
    std::optional<int> quitStatus_;
};

// The program's own arguments.
class ThreeArguments : public ::testing::Test {
protected:
    CmdArgStr scheme{'s', "scheme", "schemename", "scheme to use for formatting",
                     CmdArg::SYNTAX_REQUIRED | CmdArg::SYNTAX_VALUE_REQUIRED};
    CmdArgStr input{"infile", "name of the file to read"};
    CmdArgStr output{"outfile", "name of the file to write (can be the same as infile)"};
    CmdLine commandLine{"/opt/bin/format", &scheme, &input, &output, nullptr};
    CommandLineRun run{commandLine};
};
