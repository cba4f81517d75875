#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cmd_line_fixture.h"
#include "cmdline/bool_arg.h"
#include "cmdline/char_arg.h"
#include "cmdline/float_arg.h"
#include "cmdline/int_arg.h"

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

TEST(Values, SwitchesWithValues) {
    CmdArgBool color('c', "color", "when", "", optionalSticky);
    CmdArgBool verbose('v', "verbose", "");
    CmdLine commandLine("p", &color, &verbose, nullptr);
    CommandLineRun run(commandLine);

    const auto expectAll = [&](std::initializer_list<const char*> texts, bool before, bool after) {
        for (const char* text : texts) {
            color = before;
            EXPECT_EQ(run.parse(text), CmdLine::STATUS_OK) << text;
            EXPECT_EQ(color, after) << text;
        }
    };
    expectAll({"-c+", "-c^", "-c", "--color", "--color=Yes", "--color=TRUE", "--color=on", "-cv"}, false, true);
    expectAll({"-c0", "-c~", "--color=-", "--color=no", "--color=False", "--color=off", "--color=!"}, true, false);
    EXPECT_TRUE(verbose) << "what is no sign is the next option of the group";
    run.parse("-c-v");
    EXPECT_FALSE(color);

    EXPECT_EQ(run.parse("--color=o"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_THAT(run.messages(), ::testing::StartsWith("p: ambiguous boolean value \"o\"\n"));
    EXPECT_EQ(run.parse("--color=maybe"), CmdLine::STATUS_BAD_VALUE);
    EXPECT_THAT(run.messages(), ::testing::StartsWith("p: unknown boolean value \"maybe\"\n"));
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

}  // namespace
