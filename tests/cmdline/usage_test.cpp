#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cmd_line_fixture.h"
#include "cmdline/bool_arg.h"

namespace {

std::string usageOf(const CmdLine& commandLine, int level) {
    std::ostringstream out;
    commandLine.printUsage(out, level);
    return out.str();
}

using Usage = ThreeArguments;

TEST_F(Usage, OfTheProgram) {
    commandLine.setDescription("One line\r\n\r\nanother\r\n");
    const std::string line = "Usage: format -s|--scheme schemename [-?|--?] [-H|--Help] infile outfile\n";
    EXPECT_EQ(usageOf(commandLine, 0), "");
    EXPECT_EQ(usageOf(commandLine, 1), line);
    EXPECT_EQ(usageOf(commandLine, 2),
              line +
                  "Options/Arguments:\n"
                  "        -s|--scheme schemename  scheme to use for formatting\n"
                  "        -?|--?                  ; print usage and exit.\n"
                  "        -H|--Help               ; print usage and exit.\n"
                  "        infile                  name of the file to read\n"
                  "        outfile                 name of the file to write (can be the same as\n"
                  "                                infile)\n"
                  "\nDescription:\n"
                  "        One line\r\n\r\n        another\r\n");
}

TEST_F(Usage, LevelComesFromTheEnvironment) {
    const std::string full = usageOf(commandLine, 2);
    const std::string terse = usageOf(commandLine, 1);
    EXPECT_EQ(usageOf(commandLine, 3), full);
    struct Case {
        const char* value;
        std::string expected;
    };
    for (const Case& one : {Case{"", ""}, {"0", ""}, {"1", terse}, {"2", full}, {"-7", full}, {"x", full}}) {
        ::setenv("USAGE_LEVEL", one.value, 1);
        EXPECT_EQ(usageOf(commandLine, 3), one.expected) << one.value;
    }
    run.parse("");
    EXPECT_THAT(run.errors(), ::testing::HasSubstr("Options/Arguments:"));
    ::setenv("USAGE_LEVEL", "1", 1);
    run.parse("");
    EXPECT_THAT(run.errors(), ::testing::EndsWith(terse));
    ::unsetenv("USAGE_LEVEL");
}

TEST_F(Usage, ASyntaxWiderThanItsColumnHasTheLineForItself) {
    const std::string name(60, 'k');
    CmdArgBool wide(0, name.c_str(), "explained");
    commandLine.append(wide);
    const std::string indent(8 + 45, ' ');
    EXPECT_THAT(usageOf(commandLine, 2), ::testing::HasSubstr("        --" + name + "\n" + indent + "explained\n"));
}

TEST_F(Usage, ParagraphsAreWrapped) {
    const std::string word(200, 'w');
    commandLine.setDescription(("one\ttwo   " + word + " end   ").c_str());
    const std::string indent(8, ' ');
    EXPECT_THAT(usageOf(commandLine, 2),
                ::testing::EndsWith("Description:\n" + indent + "one\ttwo\n" + indent + std::string(71, 'w') +
                                    "\n" + indent + std::string(71, 'w') + "\n" + indent +
                                    std::string(58, 'w') + " end   \n"));
    commandLine.setDescription((std::string(71, 'a') + " " + std::string(70, 'b') + " c").c_str());
    EXPECT_THAT(usageOf(commandLine, 2),
                ::testing::EndsWith("\n" + indent + std::string(71, 'a') + "\n" + indent +
                                    std::string(70, 'b') + "\n" + indent + "c\n"));
}

}  // namespace
