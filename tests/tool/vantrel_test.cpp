// The built program as a user meets it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "support/program_run.h"

namespace {

using ::testing::AllOf;
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
        for (const char* name : {"VANTREL_SCHEMES", "GIT_DIR", "GIT_INDEX_FILE"})
            setting.environment.emplace_back(name, "");
        setting.environment.emplace_back("XDG_CONFIG_HOME", folder.path());
        return runProgram(folder, arguments, setting);
    }

    ProgramResult filter(const std::vector<std::string>& arguments, const std::string& input) {
        ProgramSetting setting;
        setting.input = input;
        return run(arguments, setting);
    }

    void git(const std::string& arguments) {
        const std::string command = "cd '" + folder.path() +
                                    "' && git -c user.name=a -c user.email=a@b -c init.defaultBranch=main " +
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
    EXPECT_EQ(run({"--diff", folder.path("src/../src/a.c")}).output, diff.output);
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
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"a.c", "b.c"},
                                                      {"."},
                                                      {"-i", "--check", "a.c"},
                                                      {"-i", "-"},
                                                      {"-i", "none.c"},
                                                      {"--lines", "2:1", "a.c"}, {"-i", "--lines", "9:10", "a.c"},
                                                      {"--lines=1:1", "-i", "a.c", "b.c"},
                                                      {"--bogus"},
                                                      {"-s", "bogus", "a.c"},
                                                      {"-s", "a.c/x.vts", "a.c"},
                                                      {"-i", "-", "a.c"},
                                                      {"--format", "bogus", "a.c"},
                                                      {"--changed", "-i"},
                                                      {"-j", "0", "a.c"},
                                                      {"--files", "none"}}) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << arguments.front();
        EXPECT_THAT(result.errors,
                    HasSubstr(result.errors.starts_with("a.c") ? "a.c: error: there is no line 9" : "vantrel: "));
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
    folder.write("future.vts", std::string(scheme) + "3 REQUIRED_VERSION \"2.0\"\n");
    EXPECT_THAT(run({"-l", "-s", "./future.vts", "sub/a.c"}).errors, HasSubstr("needs another version of vantrel"));
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

TEST_F(Vantrel, ManyFilesComeInOrderAndASignalLeavesNoneHalfDone) {
    std::string names;
    for (int number = 100; number < 400; ++number) {
        const std::string name = "f" + std::to_string(number) + ".c";
        std::string text;
        for (int line = 0; line < (number % 7 == 0 ? 3000 : 1); ++line) text += wide;
        folder.write(name, text);
        names += name + '\n';
    }
    EXPECT_EQ(run({"-l", "-q", "-j3", "."}).output, names);
    EXPECT_EQ(filter({"-l", "-q", "--files", "-"}, names).output, names);
    std::string separated = names + names;
    std::replace(separated.begin(), separated.end(), '\n', '\0');
    EXPECT_EQ(filter({"-l", "-q", "-0", "--files", "-"}, separated).output, names);

    const std::string command =
        "cd '" + folder.path() + "'; " VANTREL_PROGRAM " -i -q -j3 . & sleep 0.03; kill -TERM $!; wait $!";
    EXPECT_NE(std::system(command.c_str()), -1);
    for (const std::string& name : folder.names()) {
        if (!name.ends_with(".c")) continue;
        const std::string text = folder.read(name);
        EXPECT_TRUE(text.size() % 8 == 0 || text.size() % 7 == 0) << name;
        EXPECT_EQ(text.back(), '\n') << name;
    }
    EXPECT_EQ(folder.names().size(), 301u) << "a temporary file stays";
    EXPECT_EQ(run({"-i", "-q", "."}).status, 0);
    EXPECT_EQ(run({"--check", "."}).status, 0);
}

TEST_F(Vantrel, IsALanguageServer) {
    const auto frame = [](const std::string& content) {
        return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content;
    };
    const std::string document = R"("textDocument":{"uri":"file://)" + folder.path("a.c") + '"';
    const std::string session =
        frame(R"({"id":1,"method":"initialize","params":{}})") +
        frame(R"({"method":"textDocument/didOpen","params":{)" + document + R"(,"text":"int  a;"}}})") +
        frame(R"({"id":2,"method":"textDocument/formatting","params":{)" + document + "}}}") +
        frame(R"({"id":3,"method":"shutdown"})") + frame(R"({"method":"exit"})");
    const std::string edit =
        R"({"id":2,"jsonrpc":"2.0","result":[{"newText":"","range":{"end":{"character":5,"line":0},)"
        R"("start":{"character":4,"line":0}}}]})";
    const ProgramResult served = filter({"lsp"}, session);
    EXPECT_EQ(served.status, 0);
    EXPECT_THAT(served.output, HasSubstr(frame(edit)));
    std::filesystem::remove(folder.path(".vantrel.vts"));
    EXPECT_THAT(filter({"lsp"}, session).output, HasSubstr("there is no scheme for"));
    EXPECT_THAT(filter({"lsp"}, "GET / HTTP/1.1\r\n\r\n").errors, HasSubstr("a message has no Content-Length"));
}

TEST_F(Vantrel, ShellsReadItsCompletion) {
    folder.write("bash", run({"completion", "bash"}).output);
    const std::string command = "cd '" + folder.path() +
                                "' && bash -c '. ./bash; COMP_WORDS=(vantrel --format g); COMP_CWORD=2; _vantrel; "
                                "echo ${COMPREPLY[@]}; COMP_WORDS=(vantrel --in); COMP_CWORD=1; _vantrel; echo "
                                "${COMPREPLY[@]}' > out";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.read("out"), "gcc github\n--in-place\n");
    EXPECT_EQ(run({"completion", "tcsh"}).status, 2);
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

TEST_F(Vantrel, LinesAndWhatEditorsAsk) {
    folder.write("a.c", "int  a;\nint  b;\n    /*  1\n    2 */\nint  c;\n");
    EXPECT_EQ(run({"--lines=2:2", "--lines", "5:99", "a.c"}).output, "int  a;\nint b;\n    /*  1\n    2 */\nint c;\n");
    EXPECT_EQ(run({"-style=file", "-offset=9", "-length=1", "a.c"}).output, run({"-lines=2:2", "a.c"}).output);
    EXPECT_EQ(run({"-cursor=10", "-lines=1:1", "a.c"}).output,
              "{ \"Cursor\": 9, \"IncompleteFormat\": false }\n" + run({"-lines=1:1", "a.c"}).output);
    EXPECT_THAT(run({"-output-replacements-xml", "-lines=1:1", "a.c"}).output,
                HasSubstr("\n<replacement offset='4' length='1'></replacement>\n</replacements>\n"));
    EXPECT_EQ(filter({"-assume-filename=none/x.c", "-style", "file"}, wide).output, narrow);

    // A comment moves as one, or not at all.
    const std::string comment = "Tessel::PropertySet\n1\n\"x\"\n3 VANTREL_VERSION \"1.2.1\"\n3 LEFT_MARGIN \"\"\n";
    folder.write("x.vts", comment);
    EXPECT_EQ(run({"-s", "x.vts", "--lines=3:3", "a.c"}).output, folder.read("a.c"));
    EXPECT_THAT(run({"-s", "x.vts", "--lines=3:4", "a.c"}).output, HasSubstr("\n/*  1\n2 */\n"));
}

TEST_F(Vantrel, MessagesForMachinesNameEveryPlace) {
    folder.write("a b&.c", refused);
    folder.write("c.c", "int x;\n\nint  a;\nint  b;\n");
    const std::map<std::string, std::vector<std::string>> expected = {
        {"gcc", {"a b&.c:3:7: error: The \"[\"", "c.c:3:1: warning: not laid out as the scheme says (lines 3-4)\n"}},
        {"json",
         {R"({"file":"a b&.c","outcome":"refused","messages":[{"severity":"error","line":3,"column":7,)",
          R"("replacements":[{"offset":12,"length":1,"text":""},{"offset":20,"length":1,"text":""}]})"}},
        {"github", {"::error file=a b&.c,line=3,col=7::The", "::warning file=c.c,line=3,col=1::not laid out"}},
        {"sarif", {R"("uri":"a%20b%26.c"},"region":{"startLine":3,"startColumn":7})", R"("level":"warning")"}},
        {"checkstyle",
         {"<file name=\"a b&amp;.c\">\n    <error line=\"3\" column=\"7\" severity=\"error\" message=\"The "
          "&quot;[&quot;",
          "  </file>\n</checkstyle>\n"}}};
    for (const auto& [format, parts] : expected) {
        const ProgramResult result = run({"--check", "--format", format, "a b&.c", "c.c"});
        EXPECT_EQ(result.status, 3);
        for (const std::string& part : parts) EXPECT_THAT(result.output + result.errors, HasSubstr(part));
    }
}

TEST_F(Vantrel, TellsOfSchemesKeysAndRefusals) {
    EXPECT_THAT(run({"schemes"}).output, HasSubstr("\nknr        "));
    EXPECT_THAT(run({"scheme", "show", "knr"}).output, HasSubstr("\n\"knr\"\n"));
    EXPECT_THAT(run({"keys", "ws_before_expr_op"}).output,
                HasSubstr("    int x = a +b;\n\nand without the line as\n\n    int x = a+b;\n"));
    std::ifstream page(VANTREL_DOCS "/keys.md");
    EXPECT_EQ(run({"keys", "--markdown"}).output, std::string(std::istreambuf_iterator<char>(page), {}))
        << "docs/keys.md is not up to date: build the target \"pages\"";
    EXPECT_THAT(run({"keys", "TAB_SIZ"}).errors, HasSubstr("is TAB_SIZE meant?"));
    folder.write("old.vts", "Tessel::PropertySet\n1\n\"old\"\n# mine\n");
    folder.write("a.c", wide);
    EXPECT_EQ(run({"-l", "-s", "old.vts", "a.c"}).status, 0);
    EXPECT_EQ(folder.read("old.vts"), "Tessel::PropertySet\n1\n\"old\"\n# mine\n") << "a scheme is only read";
    EXPECT_EQ(run({"scheme", "check", "old.vts"}).status, 2);
    EXPECT_EQ(run({"scheme", "upgrade", "old.vts"}).status, 0);
    EXPECT_EQ(run({"scheme", "check", "old.vts"}).status, 0);
    EXPECT_THAT(folder.read("old.vts"), HasSubstr("\n# mine\n"));
    EXPECT_EQ(run({"scheme", "check", "a.c"}).status, 2);

    folder.write("b.c", "int f() {\n  {\n   }\n}\nvoid f()\n{\n    if (a) {\n        go();\n}\n\nint  g;\n");
    const ProgramResult why = run({"why", "b.c"});
    EXPECT_EQ(why.status, 3);
    for (const char* part :
         {"b.c:11:7: error: Unexpected EOF found.", "likely: something that was begun is not finished",
          "b.c:9:1: note: this \"}\" closes the \"{\" of line 7", "before line 5\n", "behind line 9\n"}) {
        EXPECT_THAT(why.output, HasSubstr(part));
    }
    folder.write("b.c",
                 "int ok;\n\n// VANTREL-OFF\nvoid f()\n{\n    if (a) {\n        go();\n}\n// VANTREL-ON\n\nint  g;\n");
    EXPECT_EQ(run({"-i", "b.c"}).status, 0);
    EXPECT_EQ(run({"why", "b.c"}).status, 0);
}

TEST_F(Vantrel, ExplainsByWhichKeyALineIsBroken) {
    folder.write("w.vts",
                 "Tessel::PropertySet\n1\n\"w\"\n3 VANTREL_VERSION \"1.2.1\"\n2 RIGHT_MARGIN 20\n1 LINE_WRAP 1\n"
                 "2 CALL_ARGS_WRAP_STRATEGY 1\n2 EXPR_WRAP_STYLE 2\n2 SHIFT_WRAP_STYLE 1\n1 WRAP_LAST_RESORT 1\n"
                 "3 WS_BETWEEN_FN_CALL_ARGS \" \"\n");
    folder.write("w.c", "void f() {\n  call(first, second);\n  a = first + second_one;\n  first << second << third;\n"
                        "  first = second_one_too;\n  a = b ? second_one : c;\n}\n");
    const std::string wrapped = run({"explain", "-s", "w.vts", "w.c"}).output;
    for (const char* part : {"w.c:2:15: CALL_ARGS_WRAP_STRATEGY 1, RIGHT_MARGIN 20, WRAP_STYLE",
                             "w.c:3:15: EXPR_WRAP_STYLE 2", "w.c:4:19: SHIFT_WRAP_STYLE 1",
                             "w.c:5:11: WRAP_LAST_RESORT 1", "w.c:6:9: RIGHT_MARGIN 20, WRAP_STYLE"}) {
        EXPECT_THAT(wrapped, HasSubstr(part));
    }
}

TEST_F(Vantrel, ExplainsGaps) {
    folder.write("s.vts", "Tessel::PropertySet\n1\n\"s\"\n3 VANTREL_VERSION \"1.2.1\"\n"
                          "2 RIGHT_MARGIN 20\n1 LINE_WRAP 1\n"
                          "3 WS_AFTER_CS_KEY \" \"\n3 INDENT_FN_CONTENT \"\\t\"\n3 WS_BEFORE_FN_OPEN_BRACE \"\\n\"\n");
    folder.write("a.c", "void f() {\n  if(a) b();\n  call(first, second);\n}\n");
    const auto explain = [this](std::vector<std::string> words) {
        words.insert(words.begin(), {"explain", "-s", "s.vts"});
        return run(words).output;
    };
    const std::string changes = explain({"a.c"});
    for (const char* part :
         {"a.c:1:10: WS_BEFORE_FN_OPEN_BRACE \"\\n\"\n    White space before", "\n    · becomes ↵\n",
          "a.c:2:3: INDENT_FN_CONTENT \"\\t\"", "↵·· becomes ↵→", "a.c:3:15: RIGHT_MARGIN 20, WRAP_STYLE"}) {
        EXPECT_THAT(changes, HasSubstr(part));
    }
    EXPECT_THAT(explain({"a.c:2"}), HasSubstr("WS_AFTER_CS_OPEN_PAREN, which the scheme lacks"));
    EXPECT_THAT(explain({"a.c:2:5"}), StartsWith("a.c:2:5: WS_AFTER_CS_KEY \" \"\n"));
    EXPECT_THAT(explain({"--format", "json", "a.c:2:5"}), HasSubstr(R"("key":"WS_AFTER_CS_KEY")"));
    EXPECT_THAT(explain({"--summary", "."}), HasSubstr("2         1  INDENT_FN_CONTENT\n"));
    folder.write("t.vts", "Tessel::PropertySet\n1\n\"t\"\n3 VANTREL_VERSION \"1.2.1\"\n"
                          "3 WS_AFTER_DD_OPEN_BRACE \"\\n\"\n3 INDENT_DD_CONTENT \"\\t\"\n3 WS_AFTER_DD_NAME \" \"\n");
    folder.write("d.c", "int a[] = {\n  1,\n  2\n};\nint b = 1;\nint c;\nvoid f() {\n  switch (a) {\n  case 1:\n    {\n"
                        "    }\n  case 2:\n  {\n  }\n  }\n}\n");
    const auto explainOther = [this](const char* place) { return run({"explain", "-s", "t.vts", place}).output; };
    EXPECT_THAT(explainOther("d.c"),
                AllOf(HasSubstr("d.c:3:3: INDENT_DD_CONTENT"), HasSubstr("d.c:6:6: WS_AFTER_DD_NAME")));
    EXPECT_THAT(explainOther("d.c:10"), HasSubstr("d.c:10:5: GLOBAL_WS_BEFORE_OPEN_BRACE"))
        << "a block that is indented as any other statement";
    EXPECT_THAT(explainOther("d.c:13"), HasSubstr("d.c:13:3: WS_BEFORE_CASE_OPEN_BRACE"));
    folder.write("c.vts", "Tessel::PropertySet\n1\n\"c\"\n3 VANTREL_VERSION \"1.2.1\"\n"
                          "3 WS_BEFORE_LINE_COMMENT \" \"\n");
    folder.write("c.c", "int a;    // b\n          // c\n");
    EXPECT_THAT(run({"explain", "-s", "c.vts", "c.c"}).output, HasSubstr("c.c:2:11: WS_BEFORE_LINE_COMMENT"));
    folder.write("p.vts", "Tessel::PropertySet\n1\n\"p\"\n3 VANTREL_VERSION \"1.2.1\"\n3 LEFT_MARGIN \"\"\n"
                          "1 ALIGN_PPD_LEFT_MOST 1\n3 INDENT_NS_CONTENT \"\"\n3 INDENT_FN_CONTENT \"\t\"\n");
    folder.write("p.c", "int a;\n  #if A\n#endif\nnamespace n {\n#if A\nvoid f() {\n#if B\n#endif\n}\n"
                        "#endif\n}\n");
    EXPECT_THAT(run({"explain", "-s", "p.vts", "p.c"}).output, StartsWith("p.c:2:3: ALIGN_PPD_LEFT_MOST 1\n"));
    for (const char* const line : {"3", "5"}) {
        const std::string place = std::string("p.c:") + line;
        EXPECT_THAT(run({"explain", "-s", "p.vts", place}).output, StartsWith(place + ":1: LEFT_MARGIN \"\"\n"));
    }
    EXPECT_THAT(run({"explain", "-s", "p.vts", "p.c:7"}).output, StartsWith("p.c:7:1: ALIGN_PPD_LEFT_MOST 1\n"));
    folder.write("b.c", "void f( {");
    EXPECT_EQ(run({"explain", "-s", "s.vts", "b.c"}).status, 3);
    const ProgramResult some = run({"explain", "-s", "s.vts", "--summary", "b.c", "missing.c", "a.c"});
    EXPECT_EQ(some.status, 2);
    EXPECT_THAT(some.errors, AllOf(HasSubstr("missing.c: "), HasSubstr("b.c is refused")));
    EXPECT_THAT(some.output, EndsWith("of 1 files\n"));
}

TEST_F(Vantrel, LearnsAScheme) {
    // A line end behind a comment is one between enumerators.
    std::string source = "enum e {\n";
    for (int i = 0; i < 30; ++i) source += "\tA" + std::to_string(i) + (i < 5 ? ", // a\n" : i < 8 ? ", /* a */\n" : ",\n");
    source += "\tB\n};\n\n";
    for (int i = 0; i < 8; ++i) {
        const std::string number = std::to_string(i);
        source += "int f" + number + "(int *a, int b)\n{\n\tint c = a[0]+ b;\n\n\tif (c < b) {\n\t\tgo" +
                  (i % 2 == 0 ? " (\"<&>\", b);" : "(\"<&>\", b);") + "\n\t}\n\treturn c;\n}\n\n";
    }
    folder.write("src/a.c", source);
    folder.write("src/b.c", refused);
    const ProgramResult learned = run({"learn", "-o", "own.vts", "--html", "own.html", "src"});
    EXPECT_EQ(learned.status, 0);
    EXPECT_THAT(learned.errors,
                AllOf(HasSubstr("files that could not be used: 1"), HasSubstr("change 0.00 lines of 100"),
                      HasSubstr("WS_AFTER_FN_CALL_NAME: \"\" 50 % (src/a.c:50), \" \" 50 % (src/a.c:40)")));
    const std::string text = folder.read("own.vts");
    EXPECT_THAT(text, StartsWith("Tessel::PropertySet\n1\n\"own\"\n"));
    EXPECT_THAT(text, HasSubstr("# WS_BEFORE_CS_OPEN_BRACE \" \" 100 % of 8\n3 WS_BEFORE_CS_OPEN_BRACE \" \"\n"));
    EXPECT_THAT(text, HasSubstr("\n# KEEP_UNRECOGNIZED 1 suits any source\n"));
    EXPECT_THAT(text, HasSubstr("\n3 WS_BETWEEN_ENUM_ELEMENTS \"\\n\"\n"));
    EXPECT_THAT(text, HasSubstr("\n3 WS_BEFORE_FN_OPEN_BRACE \"\\n\"\n"));
    EXPECT_THAT(text, HasSubstr("\n3 INDENT_FN_CONTENT \"\\t\"\n"));
    EXPECT_THAT(text, HasSubstr("\n2 ASTERISK_ANCHOR 1\n"));
    EXPECT_EQ(run({"scheme", "check", "own.vts"}).status, 0);
    EXPECT_EQ(run({"--check", "-s", "./own.vts", "src/a.c"}).status, 0);
    EXPECT_THAT(folder.read("own.html"), HasSubstr("go(&quot;&lt;&amp;&gt;&quot;, b);"));
    EXPECT_EQ(run({"learn", "src/b.c"}).status, 2);
    EXPECT_EQ(run({"learn", "--min-agreement", "2", "src"}).status, 2);
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
