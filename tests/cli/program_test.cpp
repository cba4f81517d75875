// The built program as a user meets it: what it prints, its exit status, and what it leaves on the disk.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <set>
#include <utility>

#include "support/program_run.h"

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

#if defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer);
#elif defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

constexpr const char* usageLine = "Usage: VantrelCmd -s|--scheme schemename [-?|--?] [-H|--Help] infile outfile\n";
constexpr const char* cannotOpenOutput = "Error: could not open output file for writing.\n";

std::string schemeText(const std::string& name, const std::string& properties = "") {
    return "Tessel::PropertySet\n1\n\"" + name + "\"\n3 VANTREL_VERSION \"1.2.1\"\n" + properties;
}

class Program : public ::testing::Test {
protected:
    Program() { schemes.write("plain.vts", schemeText("plain")); }

    ProgramResult run(const std::vector<std::string>& arguments, ProgramSetting setting = {}) {
        setting.environment.emplace_back("VANTREL_SCHEMES", schemes.path());
        setting.environment.emplace_back("USAGE_LEVEL", "");
        setting.environment.emplace_back("PROMPT_USER", "");
        return runProgram(folder, arguments, setting);
    }

    ProgramResult runOn(const std::string& input, const std::string& output, ProgramSetting setting = {}) {
        return run({"-s", "plain", input, output}, std::move(setting));
    }

    TemporaryFolder schemes;
    TemporaryFolder folder;
};

TEST_F(Program, FaultyCommandLinesGetTheUsageOnStandardError) {
    struct Case {
        std::vector<std::string> arguments;
        const char* firstMessage;
    };
    for (const Case& one : {Case{{}, "-s|--scheme schemename required."},
                            {{"-s", "plain", "a.cpp"}, "outfile required."},
                            {{"a.cpp", "b.cpp"}, "-s|--scheme schemename required."},
                            {{"-s"}, "value required for -s option."},
                            {{"-s", "plain", "a", "b", "c"}, "too many arguments given."},
                            {{"-x", "-s", "plain", "a", "b"}, "unknown option \"-x\"."}}) {
        const ProgramResult result = run(one.arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, StartsWith(std::string("VantrelCmd: ") + one.firstMessage + '\n'));
        EXPECT_THAT(result.errors, HasSubstr(usageLine));
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(folder.names(), std::set<std::string>{});
}

TEST_F(Program, HelpGoesToStandardOutput) {
    for (const char* option : {"-?", "-H", "--help"}) {
        const ProgramResult result = run({option});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, StartsWith(usageLine));
        EXPECT_THAT(result.output, HasSubstr("\nDescription:\n        Vantrel C++ 1.2.1\r\n"));
        EXPECT_THAT(result.output, HasSubstr("\r\n\r\n        Website: "));
        EXPECT_EQ(result.errors, "");
    }
}

TEST_F(Program, FilesAndStandardStreams) {
    const std::string text = "int a;\n";
    folder.write("a.cpp", text);
    EXPECT_EQ(runOn("a.cpp", "b.cpp").status, 0);
    EXPECT_EQ(folder.read("b.cpp"), text);

    EXPECT_EQ(runOn("a.cpp", "-").output, text);
    EXPECT_EQ(runOn("-", "-", {.input = text}).output, text);
    EXPECT_EQ(runOn("-", "c.cpp", {.input = text}).status, 0);
    EXPECT_EQ(folder.read("c.cpp"), text);
}

TEST_F(Program, InputAndOutputMayBeTheSameFile) {
    folder.write("a.cpp", "int a;\nint b;\r\nint c;\n");
    ::chmod(folder.path("a.cpp").c_str(), 0750);
    std::filesystem::create_symlink("a.cpp", folder.path("link.cpp"));
    const ProgramResult result = runOn("link.cpp", "link.cpp");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(folder.read("a.cpp"), "int a;\nint b;\nint c;\n");
    EXPECT_EQ(folder.status("a.cpp").st_mode & 07777u, 0750u);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.cpp")));
    EXPECT_EQ(folder.names(), (std::set<std::string>{"a.cpp", "link.cpp"}));

    const struct stat before = folder.status("a.cpp");
    EXPECT_EQ(runOn("link.cpp", "a.cpp").status, 0);
    EXPECT_EQ(folder.status("a.cpp").st_ino, before.st_ino) << "written though nothing changes";
    folder.write("b.cpp", folder.read("a.cpp"));
    const struct stat other = folder.status("b.cpp");
    EXPECT_EQ(runOn("a.cpp", "b.cpp").status, 0);
    EXPECT_NE(folder.status("b.cpp").st_ino, other.st_ino) << "an output of its own looks new";
}

TEST_F(Program, MissingAndEmptyInputIsPassedOverInSilence) {
    folder.write("empty.cpp", "");
    folder.write("out.cpp", "kept");
    for (const char* input : {"none.cpp", "none/none.cpp", "empty.cpp", "/dev/null", "-"}) {
        for (const char* output : {"out.cpp", "new.cpp", "-"}) {
            const ProgramResult result = runOn(input, output);
            EXPECT_EQ(result.status, 0);
            EXPECT_EQ(result.errors + result.output, "");
        }
    }
    EXPECT_EQ(folder.read("out.cpp"), "kept");
    EXPECT_FALSE(folder.has("new.cpp"));
}

TEST_F(Program, InputThatCannotBeRead) {
    std::filesystem::create_directory(folder.path("folder"));
    ProgramResult result = runOn("folder", "out.cpp");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("Error: could not open \"folder\" for input\n"));

    result = runOn("-", "out.cpp", {.closed = {STDIN_FILENO}});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("Error: could not read \"-\": "));

    if (::geteuid() != 0) {
        folder.write("secret.cpp", "int a;\n");
        ::chmod(folder.path("secret.cpp").c_str(), 0);
        result = runOn("secret.cpp", "out.cpp");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.errors, "Error: could not open \"secret.cpp\" for input\n");
    }
    EXPECT_FALSE(folder.has("out.cpp"));
}

TEST_F(Program, OutputThatCannotBeOpenedOrWritten) {
    folder.write("a.cpp", "int a;\n");
    EXPECT_EQ(runOn("a.cpp", "none/b.cpp").errors, cannotOpenOutput);
    for (const ProgramSetting& setting :
         {ProgramSetting{.outputPath = "/dev/full"}, ProgramSetting{.closed = {STDOUT_FILENO}},
          ProgramSetting{.outputIsBrokenPipe = true}}) {
        const ProgramResult result = runOn("a.cpp", "-", setting);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, StartsWith("Error: could not write to standard output: "));
    }
}

TEST_F(Program, AFullDiskLeavesTheFileWhole) {
    std::string text;
    for (int line = 0; line < 2000; ++line) text += "int name;\r\n\n";
    folder.write("a.cpp", text);
    folder.write("old.cpp", "old");
    folder.write("twice.cpp", "old");
    std::filesystem::create_hard_link(folder.path("twice.cpp"), folder.path("again.cpp"));
    const ProgramSetting little{.limits = {{RLIMIT_FSIZE, 4096}}};
    const std::set<std::string> before = folder.names();
    for (const char* output : {"a.cpp", "old.cpp", "twice.cpp", "new.cpp"}) {
        const ProgramResult result = runOn("a.cpp", output, little);
        EXPECT_EQ(result.status, 1) << output;
        EXPECT_EQ(result.errors, "Error: could not write \"" + std::string(output) + "\": File too large\n");
    }
    EXPECT_EQ(folder.read("a.cpp"), text);
    EXPECT_EQ(folder.read("old.cpp"), "old");
    EXPECT_EQ(folder.read("again.cpp"), "old");
    EXPECT_EQ(folder.names(), before);
}

TEST_F(Program, ClosedStandardStreamsAreNeverMistakenForFiles) {
    folder.write("a.cpp", "int a;\r\nint b;\r\n");
    const ProgramResult result = runOn("a.cpp", "a.cpp", {.closed = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(folder.read("a.cpp"), "int a;\r\nint b;\r\n");
    EXPECT_EQ(run({"-s", "none", "a.cpp", "a.cpp"}, {.closed = {STDOUT_FILENO, STDERR_FILENO}}).status, 1);
    EXPECT_EQ(folder.read("a.cpp"), "int a;\r\nint b;\r\n");
}

TEST_F(Program, MarksAndLineEndsOfTheInputStay) {
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string& text :
         {mark + "int a;\n", mark + "int a;\r\nint b;\r\n", std::string("int a;\r\nint b;\r\n")}) {
        EXPECT_EQ(runOn("-", "-", {.input = text}).output, text);
    }
    EXPECT_EQ(runOn("-", "-", {.input = "int a;\r\nint b;\nint c;\r\n"}).output, "int a;\r\nint b;\r\nint c;\r\n");
}

TEST_F(Program, Utf16IsRefused) {
    using namespace std::string_literals;
    folder.write("a.cpp", "\xFF\xFEi\0n\0t\0"s);
    folder.write("b.cpp", "i\0n\0t\0 \0a\0;\0"s);
    for (const char* input : {"a.cpp", "b.cpp"}) {
        const ProgramResult result = runOn(input, "out.cpp");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, HasSubstr("is stored as UTF-16"));
    }
    EXPECT_FALSE(folder.has("out.cpp"));
}

TEST_F(Program, ASourceThatDoesNotParseIsReportedAndLeftAlone) {
    folder.write("bad.cpp", "\nint f() { if x; }\n");
    folder.write("out.cpp", "kept");
    const ProgramResult result = runOn("bad.cpp", "out.cpp");
    const auto lines = std::count(result.errors.begin(), result.errors.end(), '\n');
    EXPECT_GE(result.status, 1);
    EXPECT_EQ(result.status, lines);
    EXPECT_THAT(result.errors, StartsWith("Error: bad.cpp(2) : col "));
    EXPECT_EQ(folder.read("out.cpp"), "kept");
    EXPECT_THAT(runOn("-", "-", {.input = "int x\n"}).errors, StartsWith("Error: -(2) : col 0: "));
}

TEST_F(Program, ALiteralThatWouldTakeInMoreIsReported) {
    schemes.write("close.vts", schemeText("close", "3 WS_BEFORE_FN_CLOSE_PAREN \"\"\n"));
    const ProgramResult result = run({"-s", "close", "-", "-"}, {.input = "f('\n)"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "Error: -(1) : col 3: The literal that begins here does not end.\n");
    EXPECT_EQ(result.output, "");
}

TEST_F(Program, SchemesThatCannotBeUsed) {
    folder.write("a.cpp", "int a;\n");
    ProgramResult result = run({"-s", "Plain", "a.cpp", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "Error: could not locate a formatting scheme named \"Plain\"\n");

    schemes.write("letters.vts", schemeText("with letters", "3 WS_AFTER_FN_NAME \" x\"\n"));
    result = run({"-s", "with letters", "a.cpp", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr(schemes.path("letters.vts") + "\" cannot be used: WS_AFTER_FN_NAME "));
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(runOn("a.cpp", "-").status, 0) << "another scheme is not concerned";

    schemes.write("broken.vts", "no scheme\n");
    EXPECT_EQ(runOn("a.cpp", "-").status, 0) << "its file has its name, so that no other is read";
    result = run({"-s", "with letters", "a.cpp", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("trying to read the scheme file \"" + schemes.path("broken.vts") + "\"."));
}

TEST_F(Program, OfTwoSchemesWithOneNameTheFirstFileCounts) {
    folder.write("a.cpp", "f(a);\n");
    schemes.write("b.vts", schemeText("b", "3 WS_AFTER_FN_NAME \"\"\n"));
    schemes.write("c.vts", "# Not its file.\n" + schemeText("b", "3 WS_AFTER_FN_NAME \"  \"\n"));
    EXPECT_EQ(run({"-s", "b", "a.cpp", "-"}).output, "f(a);\n");
    schemes.write("a.vts", "# Not its file.\n" + schemeText("b", "3 WS_AFTER_FN_NAME \" \"\n"));
    EXPECT_EQ(run({"-s", "b", "a.cpp", "-"}).output, "f (a);\n");
}

TEST_F(Program, RunsAtOnceConvertTheSameSchemes) {
    folder.write("a.cpp", "int a;\n");
    for (int i = 0; i < 20; ++i) {
        const std::string name = "old" + std::to_string(i);
        schemes.write(name + ".vts", "Tessel::PropertySet\n1\n\"" + name + "\"\n");
    }
    const std::set<std::string> before = schemes.names();
    std::vector<std::future<ProgramResult>> runs;
    for (int i = 0; i < 8; ++i) {
        runs.push_back(std::async(std::launch::async,
                                  [&, i] { return run({"-s", "old" + std::to_string(i), "a.cpp", "-"}); }));
    }
    for (auto& one : runs) {
        const ProgramResult result = one.get();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "int a;\n");
        EXPECT_EQ(result.errors, "");
    }
    EXPECT_EQ(schemes.names(), before);
    for (const std::string& name : before) EXPECT_THAT(schemes.read(name), HasSubstr("VANTREL_VERSION")) << name;
}

TEST_F(Program, WantOfMemoryIsSaid) {
    if (isSanitized) GTEST_SKIP() << "sanitizers need more address space than there is";
    folder.write("a.cpp", "int a;\n");
    std::filesystem::resize_file(folder.path("a.cpp"), std::uintmax_t{1} << 30);
    const ProgramResult result = runOn("a.cpp", "a.cpp", {.limits = {{RLIMIT_AS, 256u << 20}}});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("Vantrel C++ is out of memory."));
    EXPECT_THAT(folder.names(), std::set<std::string>{"a.cpp"});
}

}  // namespace
