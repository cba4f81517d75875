#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>

#include "cmd_line_fixture.h"
#include "cmdline/bool_arg.h"
#include "cmdline/int_arg.h"
#include "cmdline/string_arg.h"

namespace {

using ::testing::HasSubstr;

TEST_F(ThreeArguments, OptionsEndAtTheFirstPositionalValueAndAtTwoDashes) {
    EXPECT_EQ(run.parse("-s x in -x"), CmdLine::STATUS_OK);
    EXPECT_STREQ(output, "-x");
    EXPECT_EQ(run.parse("-s x -- -a --b"), CmdLine::STATUS_OK);
    EXPECT_STREQ(input, "-a");
    EXPECT_STREQ(output, "--b");

    commandLine.clearFlags(CmdLine::FLAG_OPTIONS_FIRST);
    EXPECT_EQ(run.parse("in -s x out"), CmdLine::STATUS_OK);
    EXPECT_STREQ(scheme, "x");
}

TEST_F(ThreeArguments, UnknownOptionsAndKeywords) {
    EXPECT_EQ(run.parse("-q -s x in out"), CmdLine::STATUS_BAD_OPTION);
    EXPECT_EQ(run.messages(), "format: unknown option \"-q\".\n");
    EXPECT_EQ(run.parse("--nothing=1 -s x in out"), CmdLine::STATUS_BAD_KEYWORD);
    EXPECT_EQ(run.messages(), "format: unknown option \"--nothing=1\".\n");

    commandLine.setFlags(CmdLine::FLAG_QUIET | CmdLine::FLAG_NO_ABORT);
    EXPECT_EQ(run.parse("-q -s x in out"), CmdLine::STATUS_BAD_OPTION);
    EXPECT_EQ(run.errors(), "");
    EXPECT_FALSE(run.quitStatus());
}

TEST_F(ThreeArguments, AnUnknownFormIsTriedAsTheOther) {
    EXPECT_EQ(run.parse("--sfoo in out"), CmdLine::STATUS_OK);
    EXPECT_STREQ(scheme, "foo");

    CmdArgStr folder(0, "folder", "name", "");
    commandLine.append(folder);
    EXPECT_EQ(run.parse("-folder=src -s x in out"), CmdLine::STATUS_OK);
    EXPECT_STREQ(folder, "src");

    commandLine.setFlags(CmdLine::FLAG_NO_GUESSING);
    EXPECT_EQ(run.parse("--sfoo -s x in out"), CmdLine::STATUS_BAD_KEYWORD);
    EXPECT_EQ(run.parse("-fo -s x in out"), CmdLine::STATUS_BAD_OPTION);
    EXPECT_THAT(run.messages(), HasSubstr("unknown option \"-o\"."));
}

TEST_F(ThreeArguments, PromptsForWhatIsMissingWhenAsked) {
    commandLine.setFlags(CmdLine::FLAG_PROMPT_USER);
    std::istringstream answers("linux\nin.cpp\n");
    std::streambuf* const original = std::cin.rdbuf(answers.rdbuf());
    EXPECT_EQ(run.parse(""), CmdLine::STATUS_ARG_MISSING);
    std::cin.rdbuf(original);
    std::cin.clear();
    EXPECT_STREQ(scheme, "linux");
    EXPECT_STREQ(input, "in.cpp");
    EXPECT_THAT(run.messages(), HasSubstr("outfile required."));
    EXPECT_EQ(run.quitStatus(), 2);
}

// Options of every shape.
class ManyOptions : public ::testing::Test {
protected:
    CmdArgBool verbose{'v', "verbose", "talk"};
    CmdArgBool version{'V', "version", "tell the version"};
    CmdArgInt sticky{'n', "number", "count", "", CmdArg::SYNTAX_VALUE_REQUIRED | CmdArg::SYNTAX_VALUE_STICKY};
    CmdArgInt separate{'m', "maximum", "count", "", CmdArg::SYNTAX_VALUE_REQUIRED | CmdArg::SYNTAX_VALUE_SEPARATE};
    CmdArgInt level{'l', "level", "number", "", CmdArg::SYNTAX_VALUE_OPTIONAL};
    CmdArgStrList files{"file", "", CmdArg::SYNTAX_POSITIONAL | CmdArg::SYNTAX_VALUE_OPTIONAL | CmdArg::SYNTAX_LIST};
    CmdLine commandLine{"format", &verbose, &version, &sticky, &separate, &level, &files, nullptr};
    CommandLineRun run{commandLine};
};

TEST_F(ManyOptions, GroupsAndCase) {
    EXPECT_EQ(run.parse("-vVn12 one two three"), CmdLine::STATUS_OK);
    EXPECT_TRUE(verbose);
    EXPECT_TRUE(version);
    EXPECT_EQ(sticky, 12);
    EXPECT_EQ(files.values().size(), 3u);
    EXPECT_LT(verbose.sequence(), sticky.sequence());

    verbose = false;
    version = false;
    commandLine.setFlags(CmdLine::FLAG_ANY_CASE_OPTIONS);
    EXPECT_EQ(run.parse("-V"), CmdLine::STATUS_OK);
    EXPECT_TRUE(verbose);
    EXPECT_FALSE(version);
}

TEST_F(ManyOptions, AnOptionalValueEndsBeforeTheNextOption) {
    level = 7;
    EXPECT_EQ(run.parse("-l -v"), CmdLine::STATUS_OK);
    EXPECT_EQ(level, 7);
    EXPECT_TRUE(verbose);
    EXPECT_FALSE(level.hasValueGiven());
    EXPECT_EQ(run.parse("-l"), CmdLine::STATUS_OK);
    EXPECT_EQ(run.parse("-l 3"), CmdLine::STATUS_OK);
    EXPECT_EQ(level, 3);
}

TEST_F(ManyOptions, AmbiguousAndExactKeywords) {
    EXPECT_EQ(run.parse("--ver"), CmdLine::STATUS_KEYWORD_AMBIGUOUS);
    EXPECT_EQ(run.messages(), "format: ambiguous option \"--ver\".\n");

    EXPECT_EQ(run.parse("--v"), CmdLine::STATUS_OK) << "a single character is also an option";
    EXPECT_TRUE(verbose);

    CmdArgBool shorter(0, "vers", "");
    commandLine.append(shorter);
    EXPECT_EQ(run.parse("--vers"), CmdLine::STATUS_OK);
    EXPECT_TRUE(shorter);
}

}  // namespace
