// The built program as a user meets it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/program_run.h"

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* scheme =
    "Tessel::PropertySet\n1\n\"mine\"\n3 VANTREL_VERSION \"1.2.1\"\n3 WS_AFTER_DD_TYPE_ID \" \"\n";
constexpr const char* wide = "int  a;\n";
constexpr const char* narrow = "int a;\n";
constexpr const char* refused = "void f()\n{\n\tint a[2;\n}\n";

class Vantrel : public ::testing::Test {
protected:
    Vantrel() { folder.write(".vantrel.vts", scheme); }

    ProgramResult run(const std::vector<std::string>& arguments, ProgramSetting setting = {}) {
        for (const char* name : {"VANTREL_SCHEMES", "GIT_DIR", "GIT_INDEX_FILE"}) setting.environment.emplace_back(name, "");
        setting.environment.emplace_back("XDG_CONFIG_HOME", folder.path());
        return runProgram(folder, arguments, setting);
    }

    ProgramResult filter(const std::vector<std::string>& arguments, const std::string& input) {
        ProgramSetting setting;
        setting.input = input;
        return run(arguments, setting);
    }

    void git(const std::string& arguments) {
        const std::string command = "cd '" + folder.path() + "' && git -c user.name=a -c user.email=a@b -c init.defaultBranch=main " +
                                    arguments + " >/dev/null 2>&1";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    TemporaryFolder folder;
};

TEST_F(Vantrel, ModesLookOrWriteAndTellByTheStatus) {
    folder.write("src/a.c", wide);
    folder.write("src/b.c", narrow);
    const auto before = folder.status("src/b.c");
    EXPECT_EQ(run({"--check", "src"}).status, 1);
    EXPECT_EQ(run({"-l", "-q", "src"}).output, "src/a.c\n");
    const ProgramResult diff = run({"--diff", "src/a.c"});
    EXPECT_EQ(diff.output, "--- a/src/a.c\n+++ b/src/a.c\n@@ -1 +1 @@\n-int  a;\n+int a;\n");
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(run({"src/a.c"}).output, narrow);
    EXPECT_EQ(folder.read("src/a.c"), wide);

    const ProgramResult written = run({"-i", "src", "src/a.c"});
    EXPECT_THAT(written.errors, StartsWith("1 formatted, 1 unchanged in "));
    EXPECT_EQ(written.status, 0);
    EXPECT_EQ(folder.read("src/a.c"), narrow);
    EXPECT_EQ(folder.status("src/b.c").st_ino, before.st_ino);
    EXPECT_EQ(folder.status("src/b.c").st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(run({"--check", "src"}).status, 0);
    EXPECT_EQ(folder.names(), (std::set<std::string>{".vantrel.vts", "src"}));
}

TEST_F(Vantrel, NeverGuesses) {
    folder.write("a.c", wide);
    folder.write("b.c", wide);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"a.c", "b.c"}, {"."}, {"-i", "--check", "a.c"}, {"-i", "-"}, {"-i", "none.c"}, {"--lines", "2:1", "a.c"},
          {"--lines=1:1", "-i", "a.c", "b.c"}, {"--bogus"}, {"-s", "bogus", "a.c"}, {"-s", "a.c/x.vts", "a.c"},
          {"-i", "-", "a.c"}, {"--format", "bogus", "a.c"}, {"--changed", "-i"}, {"-j", "0", "a.c"}, {"--files", "none"}}) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << arguments.front();
        EXPECT_THAT(result.errors, StartsWith("vantrel: "));
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(folder.read("a.c") + folder.read("b.c"), std::string(wide) + wide);
    EXPECT_THAT(run({"."}).errors, HasSubstr("a.c, b.c?\n  -i "));
    std::filesystem::remove(folder.path(".vantrel.vts"));
    EXPECT_THAT(run({"--check", "a.c"}).errors, HasSubstr("no scheme for a.c"));
    EXPECT_EQ(run({"--check", "-s", "allman", "a.c"}).status, 1);
}

TEST_F(Vantrel, TheNearestSchemeCountsAndItsFaultsAreTold) {
    folder.write("sub/.vantrel.vts",
                 "Tessel::PropertySet\n1\n\"x\"\n3 WS_AFTER_DD_TYP_ID \" \"\n2 CONVERT_WS 7\n1 TAB_SIZE 1\n");
    folder.write("sub/a.c", wide);
    const std::string faults = run({"-l", "sub/a.c"}).errors;
    for (const char* fault : {".vts:4:1: warning: unknown key WS_AFTER_DD_TYP_ID; is WS_AFTER_DD_TYPE_ID meant?",
                              ".vts:5:1: warning: CONVERT_WS is 7: values are from 0 to 2",
                              ".vts:6:1: warning: TAB_SIZE has the type 2 (number)", "there is no VANTREL_VERSION"}) {
        EXPECT_THAT(faults, HasSubstr(fault));
    }
    EXPECT_EQ(filter({"--stdin-filename", "sub/b.c"}, wide).output, wide);
    EXPECT_EQ(filter({}, wide).output, narrow);
}

TEST_F(Vantrel, RefusalsStopNothingAndAreToldWithTheirPlace) {
    folder.write("a.c", refused);
    folder.write("b.c", wide);
    folder.write("c.c", std::string("\xFF\xFE") + "i\0n\0t\0"); 
    const ProgramResult result = run({"-i", "-j2", "."});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, HasSubstr("a.c:3:7: error: The \"[\" that begins here is not closed"));
    EXPECT_THAT(result.errors, HasSubstr("\n    3 | \tint a[2;\n      | \t     ^\n"));
    EXPECT_THAT(result.errors, HasSubstr("c.c: error: is stored as UTF-16"));
    EXPECT_EQ(folder.read("b.c"), narrow);
    EXPECT_EQ(run({"--check", "--on-refusal=skip", "."}).status, 0);

    const ProgramResult echo = filter({}, refused);
    EXPECT_EQ(echo.output, refused) << "an editor would lose its buffer";
    EXPECT_EQ(echo.status, 3);
    EXPECT_EQ(filter({"--on-refusal", "fail"}, refused).output, "");
}

TEST_F(Vantrel, LinesOfGit) {
    git("init");
    folder.write("a.c", "int  a;\nint  b;\nint  c;\n");
    folder.write("sub/b.c", "int  x;\n");
    git("add -A");
    git("commit -m a");
    folder.write("a.c", "int  a;\nint  bb;\nint  c;\n");
    folder.write("new.c", wide);
    EXPECT_EQ(run({"-l", "-q", "--changed"}).output, "a.c\n");
    EXPECT_EQ(run({"-i", "--changed", "."}).status, 0);
    EXPECT_EQ(folder.read("a.c"), "int  a;\nint bb;\nint  c;\n");
    EXPECT_THAT(run({"-i", "--changed", "new.c"}).errors, HasSubstr("git does not know"));
    git("add -A");
    EXPECT_EQ(run({"-l", "-q", "--staged"}).output, "new.c\n");
    folder.write("new.c", "int   more;\nint  a;\n");
    EXPECT_THAT(run({"-i", "--staged"}).errors, HasSubstr("new.c: has changes that are not staged"));
    EXPECT_EQ(run({"-i", "--changed=HEAD~7"}).status, 2);
}

TEST_F(Vantrel, OutputThatCannotBeWritten) {
    folder.write("a.c", wide);
    ProgramSetting full;
    full.outputPath = "/dev/full";
    EXPECT_THAT(run({"a.c"}, full).errors, HasSubstr("standard output cannot be written: No space left"));
    ProgramSetting closed;
    closed.outputIsBrokenPipe = true;
    EXPECT_EQ(run({"--diff", "a.c"}, closed).status, 2);
    ProgramSetting small;
    small.limits.emplace_back(RLIMIT_FSIZE, 0);
    EXPECT_EQ(run({"-i", "a.c"}, small).status, 2);
    EXPECT_EQ(folder.read("a.c"), wide);
    EXPECT_EQ(folder.names(), (std::set<std::string>{".vantrel.vts", "a.c"}));
}

}  // namespace
