// Which files a command line means.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/temporary_folder.h"
#include "tool/file_list.h"
#include "tool/git_lines.h"
#include "tool/ignore_rules.h"

namespace {

using Paths = std::vector<std::string>;

TEST(IgnoreRules, MatchAsGitignoreDoes) {
    struct Case {
        const char* pattern;
        const char* path;
        bool isFolder;
        bool leavesOut;
    };
    for (const Case& one : {Case{"*.o", "/r/a/b.o", false, true}, Case{"*.o", "/r/b.c", false, false},
                            Case{"build/", "/r/x/build", true, true}, Case{"build/", "/r/build", false, false},
                            Case{"/out", "/r/out", false, true}, Case{"/out", "/r/a/out", false, false},
                            Case{"a/*.c", "/r/a/b.c", false, true}, Case{"a/*.c", "/r/a/b/c.c", false, false},
                            Case{"a/**/z", "/r/a/z", false, true}, Case{"a/**/z", "/r/a/b/c/z", false, true},
                            Case{"a/**/z", "/r/a/bz", false, false}, Case{"**/gen", "/r/x/gen", false, true},
                            Case{"a/**", "/r/a/b/c", false, true}, Case{"a/**", "/r/a", true, false},
                            Case{"[!a-c]x", "/r/dx", false, true}, Case{"[!a-c]x", "/r/bx", false, false},
                            Case{"\\#x", "/r/#x", false, true}, Case{"# x", "/r/# x", false, false},
                            Case{"x ", "/r/x", false, true}, Case{"f?o", "/r/foo", false, true},
                            Case{"*", "/elsewhere/x", false, false}, Case{"[z", "/r/[z", false, true}}) {
        Tool::IgnoreRules rules;
        rules.addPattern(one.pattern, "/r");
        EXPECT_EQ(rules.leavesOut(one.path, one.isFolder), one.leavesOut) << one.pattern << " and " << one.path;
    }
    Tool::IgnoreRules rules;
    for (const char* line : {"*.h", "!keep.h", "/sub/keep.h"}) rules.addPattern(line, "/r");
    EXPECT_FALSE(rules.leavesOut("/r/keep.h", false));
    EXPECT_TRUE(rules.leavesOut("/r/sub/keep.h", false));
    EXPECT_FALSE(Tool::matchesGlob("**a**a**a**a**a*a*a*a*a*b", std::string(20000, 'a')));
}

class FileList : public ::testing::Test {
protected:
    FileList() { std::filesystem::current_path(folder.path()); }
    ~FileList() override { std::filesystem::current_path(former_); }

    TemporaryFolder folder;

private:
    std::filesystem::path former_ = std::filesystem::current_path();
};

TEST_F(FileList, FoldersAreWalkedWithoutWhatIsLeftOut) {
    for (const char* name : {"b.cpp", "a.h", "notes.txt", "kernel.cu", "build/x.c", ".git/y.c", "sub/deep/z.cc",
                             "sub/gen/skip.c", "sub/gen/own.c", "sub/old.c", "sub/build/q.c"}) {
        folder.write(name, "");
    }
    folder.write(".gitignore", "build/\n");
    folder.write("sub/.vantrelignore", "gen/*\n!own.c\n");
    std::filesystem::create_symlink("..", folder.path("sub/loop"));
    std::filesystem::create_symlink("sub", folder.path("link"));
    std::filesystem::create_symlink("b.cpp", folder.path("same.cpp"));

    EXPECT_EQ(Tool::findFiles({{"."}, {}, {}}).files,
              (Paths{"a.h", "b.cpp", "sub/deep/z.cc", "sub/gen/own.c", "sub/old.c"}));
    EXPECT_EQ(Tool::findFiles({{"sub", "./", "sub/deep/z.cc"}, {".cu"}, {"deep", "/b.*", "sub/gen"}}).files,
              (Paths{"sub/old.c", "./a.h", "./kernel.cu", "./same.cpp"}));
    EXPECT_EQ(Tool::findFiles({{"link/"}, {}, {}}).files.size(), 3u) << "a link that is named is followed";

    const Tool::FileList named =
        Tool::findFiles({{"notes.txt", "build/x.c", "sub/gen/skip.c", "none.c", "b.cpp"}, {}, {"b.*"}});
    EXPECT_EQ(named.files, (Paths{"notes.txt", "build/x.c"}));
    EXPECT_EQ(named.leftOut, (Paths{"sub/gen/skip.c", "b.cpp"}));
    EXPECT_EQ(named.missing, (Paths{"none.c: No such file or directory"}));
}

TEST(GitLines, AreReadFromADiff) {
    const auto lines = Tool::GitLines::parseDiff(
        "diff --git a/x.c b/x.c\n--- a/x.c\n+++ b/x.c\n@@ -1 +1,2 @@ f()\n-+++ b/no.c\n++++ b/no.c\n+b\n@@ -9,2 +10,0 "
        "@@\n-c\n-d\n"
        "diff --git a/y b/y\n--- a/y\n+++ \"b/\\303\\244\\t.c\"\n@@ -0,0 +1 @@\n+x\n"
        "diff --git a/gone b/gone\n--- a/gone\n+++ b/gone\n@@ -3 +2,0 @@\n-x\n");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines.at("x.c").containsAll(1, 2));
    EXPECT_FALSE(lines.at("x.c").contains(10));
    EXPECT_TRUE(lines.at("\xC3\xA4\t.c").contains(1));
}

}  // namespace
