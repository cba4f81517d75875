#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cmd_line_fixture.h"
#include "cmdline/bool_arg.h"
#include "cmdline/char_arg.h"
#include "cmdline/float_arg.h"
#include "cmdline/int_arg.h"
#include "cmdline/string_arg.h"

namespace {

constexpr unsigned optionalSticky = CmdArg::SYNTAX_VALUE_OPTIONAL | CmdArg::SYNTAX_VALUE_STICKY;

TEST(Values, Numbers) {
    CmdArgInt number('n', "number", "count", "");
    CmdArgFloat real('r', "real", "value", "");
    CmdLine commandLine("p", &number, &real, nullptr);
    CommandLineRun run(commandLine);

    run.parse("-n 0x1F -r -2.5e3");
    EXPECT_EQ(number, 31);
    EXPECT_EQ(real, -2500.0);
    run.parse("-n 010");
    EXPECT_EQ(number, 8);

    for (const char* bad : {"99999999999", "2147483648", "-2147483649", "99999999999999999999", "1.5", "x"}) {
        EXPECT_EQ(run.parse(std::string("-n ") + bad), CmdLine::STATUS_BAD_VALUE) << bad;
        EXPECT_EQ(run.messages(),
                  std::string("p: invalid integer value \"") + bad + "\"\np: bad value for -n option.\n");
    }
    EXPECT_EQ(number, 8);
    run.parse("--number=");
    EXPECT_EQ(run.messages(), "p: empty integer value specified.\np: bad value for --number option.\n");
    run.parse("--real= -r 1x");
    EXPECT_EQ(run.messages(),
              "p: empty floating-point value specified.\np: bad value for --real option.\n"
              "p: invalid floating-point value \"1x\"\np: bad value for -r option.\n");
}

TEST(Values, ACharacterLeavesTheRestOfItsGroup) {
    CmdArgChar mark('m', "mark", "char", "");
    CmdArgBool verbose('v', "verbose", "");
    CmdLine commandLine("p", &mark, &verbose, nullptr);
    CommandLineRun run(commandLine);

    EXPECT_EQ(run.parse("-mxv"), CmdLine::STATUS_OK);
    EXPECT_EQ(mark, 'x');
    EXPECT_TRUE(verbose);
    EXPECT_EQ(run.parse("-m xv"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_THAT(run.messages(), ::testing::StartsWith("p: invalid character value \"xv\"\n"));
    EXPECT_EQ(run.parse("--mark=xv"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_EQ(run.parse("--mark="), CmdLine::STATUS_BAD_VALUE);
}

TEST(Values, SwitchesActOnTheirOwnOrAnothersBool) {
    CmdArgBool on('a', "on", "");
    CmdArgClear off('b', "off", "");
    CmdArgToggle flip('c', "flip", "");
    CmdArgBoolRef setOff(off, 'd', "set", "");
    CmdArgClearRef clearOn(on, 'e', "clear", "");
    CmdArgToggleRef flipOn(on, 'f', "turn", "");
    CmdLine commandLine("p", &on, &off, &flip, &setOff, &clearOn, &flipOn, nullptr);
    CommandLineRun run(commandLine);

    off = true;
    run.parse("-abc");
    EXPECT_TRUE(on);
    EXPECT_FALSE(off);
    EXPECT_TRUE(flip);
    run.parse("-cde");
    EXPECT_FALSE(flip);
    EXPECT_TRUE(off);
    EXPECT_FALSE(on);
    run.parse("-f");
    EXPECT_TRUE(on);
}

TEST(Values, SwitchesWithValues) {
    CmdArgBool color('c', "color", "when", "", optionalSticky);
    CmdArgBool verbose('v', "verbose", "");
    CmdLine commandLine("p", &color, &verbose, nullptr);
    CommandLineRun run(commandLine);

    struct Case {
        const char* text;
        bool before;
        bool after;
    };
    for (const Case& one : {Case{"-c+", false, true},
                            {"-c0", true, false},
                            {"-c~", true, false},
                            {"-c^", false, true},
                            {"-c", false, true},
                            {"--color", false, true},
                            {"--color=-", true, false},
                            {"--color=Yes", false, true},
                            {"--color=TRUE", false, true},
                            {"--color=on", false, true},
                            {"--color=no", true, false},
                            {"--color=False", true, false},
                            {"--color=off", true, false},
                            {"--color=!", true, false},
                            {"-cv", false, true}}) {
        color = one.before;
        EXPECT_EQ(run.parse(one.text), CmdLine::STATUS_OK) << one.text;
        EXPECT_EQ(color, one.after) << one.text;
    }
    EXPECT_TRUE(verbose) << "what is no sign is the next option of the group";
    run.parse("-c-v");
    EXPECT_FALSE(color);

    EXPECT_EQ(run.parse("--color=o"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_THAT(run.messages(), ::testing::StartsWith("p: ambiguous boolean value \"o\"\n"));
    EXPECT_EQ(run.parse("--color=maybe"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_THAT(run.messages(), ::testing::StartsWith("p: unknown boolean value \"maybe\"\n"));
}

TEST(Values, ListsKeepOrderAndCopyTemporaryStrings) {
    CmdArgIntList numbers('n', "number", "count", "", CmdArg::SYNTAX_VALUE_REQUIRED | CmdArg::SYNTAX_LIST);
    CmdArgFloatList reals('r', "real", "value", "", CmdArg::SYNTAX_VALUE_REQUIRED | CmdArg::SYNTAX_LIST);
    CmdArgStrList words("word", "",
                        CmdArg::SYNTAX_POSITIONAL | CmdArg::SYNTAX_VALUE_OPTIONAL | CmdArg::SYNTAX_LIST);
    CmdLine commandLine("p", &numbers, &reals, &words, nullptr);
    CommandLineRun run(commandLine);
    run.parse("-n3 -n1 -r.5 -r2 one two");

    const IntListArray count(numbers.values());
    ASSERT_EQ(count.count(), 2u);
    EXPECT_EQ(count[0], 3);
    EXPECT_EQ(count[1], 1);
    EXPECT_EQ(FloatListArray(reals.values())[1], 2.0);
    const StringListArray text(words.values());
    ASSERT_EQ(text.count(), 2u);
    EXPECT_STREQ(text[0].c_str(), "one");
    EXPECT_STREQ(text[1].c_str(), "two");
}

TEST(Values, LastingStringsAreNotCopied) {
    const char* const vector[] = {"-skept"};
    CmdArgStr word('s', "string", "text", "");
    CmdLine commandLine("p", &word, nullptr);
    CmdArgvIter strings(1, vector);
    EXPECT_TRUE(word.isNull());
    commandLine.parse(strings);
    EXPECT_EQ(static_cast<const char*>(word), vector[0] + 2);
}

TEST(ArgIter, StreamsAreReadByLineWithoutComments) {
    std::istringstream in("  one two\n\n  ! a comment\nthree\t\n" + std::string(1020, 'x') + " yyyy\nlast");
    CmdIstreamIter strings(in);
    for (const std::string& expected : {std::string("one"), std::string("two"), std::string("three"),
                                        std::string(1020, 'x'), std::string("yy"), std::string("last")}) {
        const char* text = strings.next();
        ASSERT_NE(text, nullptr) << expected;
        EXPECT_EQ(text, expected);
    }
    EXPECT_EQ(strings.next(), nullptr);
}

TEST(ArgIter, TextsAreSplitAtTheGivenDelimiters) {
    CmdStrTokIter strings(",a b,,c", ",");
    EXPECT_STREQ(strings.next(), "a b");
    EXPECT_STREQ(strings.next(), "c");
    EXPECT_EQ(strings.next(), nullptr);
    EXPECT_EQ(CmdStrTokIter(nullptr).next(), nullptr);
    EXPECT_EQ(CmdArgvIter(-1, nullptr).next(), nullptr);
}

}  // namespace
