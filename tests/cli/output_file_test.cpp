#include "cli/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "cli/failure.h"
#include "files/temporary_file.h"
#include "support/temporary_folder.h"

namespace {

constexpr const char* cannotOpen = "Error: could not open output file for writing.";

// The message of the failure, or "" when the text has been written.
std::string write(const std::string& name, std::string_view text, const Files::FileStamp* input = nullptr) {
    try {
        Cli::writeOutput({.name = name, .input = input}, text);
        return "";
    } catch (const Cli::Failure& failure) {
        return failure.message();
    }
}

std::string lines(int count) {
    std::string result;
    for (int line = 0; line < count; ++line) result += "int variable" + std::to_string(line) + ";\n";
    return result;
}

class OutputFile : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(OutputFile, HasThePermissionsThatTheUserWants) {
    const mode_t mask = ::umask(027);
    write(folder.path("new.cpp"), "x");
    ::umask(mask);
    EXPECT_EQ(folder.status("new.cpp").st_mode & 07777u, 0640u);

    for (const mode_t mode : {0600u, 0755u, 0666u}) {
        folder.write("old.cpp", "old");
        ::chmod(folder.path("old.cpp").c_str(), mode);
        EXPECT_EQ(write(folder.path("old.cpp"), "new"), "");
        EXPECT_EQ(folder.status("old.cpp").st_mode & 07777u, mode);
    }
}

TEST_F(OutputFile, KeepsItsOwner) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs the right to give files away";
    folder.write("a.cpp", "old");
    ASSERT_EQ(::chown(folder.path("a.cpp").c_str(), 12345, 23456), 0);
    EXPECT_EQ(write(folder.path("a.cpp"), "new"), "");
    EXPECT_EQ(folder.status("a.cpp").st_uid, 12345u);
    EXPECT_EQ(folder.status("a.cpp").st_gid, 23456u);
}

TEST_F(OutputFile, IsReplacedAsAWhole) {
    folder.write("a.cpp", "old text");
    std::ifstream reader(folder.path("a.cpp"));
    EXPECT_EQ(write(folder.path("a.cpp"), "new"), "");
    std::string seen;
    std::getline(reader, seen);
    EXPECT_EQ(seen, "old text") << "who has the file open still sees the former text";
}

TEST_F(OutputFile, SymbolicLinksStayAndTheirTargetIsWritten) {
    std::filesystem::create_directory(folder.path("deep"));
    folder.write("deep/a.cpp", "old");
    std::filesystem::create_symlink("a.cpp", folder.path("deep/b.cpp"));
    std::filesystem::create_symlink("deep/b.cpp", folder.path("c.cpp"));
    EXPECT_EQ(write(folder.path("c.cpp"), "new"), "");
    EXPECT_EQ(folder.read("deep/a.cpp"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("c.cpp")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("deep/b.cpp")));

    std::filesystem::create_symlink("deep/not-yet.cpp", folder.path("d.cpp"));
    EXPECT_EQ(write(folder.path("d.cpp"), "made"), "");
    EXPECT_EQ(folder.read("deep/not-yet.cpp"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("d.cpp")));

    std::filesystem::create_symlink("circle", folder.path("circle"));
    EXPECT_EQ(write(folder.path("circle"), "x"), cannotOpen);
}

TEST_F(OutputFile, FilesOfSeveralNamesStayOneFile) {
    folder.write("a.cpp", lines(100));
    std::filesystem::create_hard_link(folder.path("a.cpp"), folder.path("b.cpp"));
    for (const std::string& text : {std::string("short"), lines(1000)}) {
        EXPECT_EQ(write(folder.path("a.cpp"), text), "");
        EXPECT_EQ(folder.read("b.cpp"), text);
    }
}

TEST_F(OutputFile, AnOpenFileThatALinkStandsForIsWrittenInPlace) {
    folder.write("log", "a longer text");
    const int descriptor = ::open(folder.path("log").c_str(), O_RDWR);
    EXPECT_EQ(write("/proc/self/fd/" + std::to_string(descriptor), "new"), "");
    char seen[16];
    EXPECT_EQ(::read(descriptor, seen, sizeof seen), 3);
    ::close(descriptor);
}

TEST_F(OutputFile, PipesAndDevices) {
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = folder.read("pipe"); });
    EXPECT_EQ(write(pipe, lines(10000)), "");
    reader.join();
    EXPECT_EQ(received, lines(10000));

    EXPECT_EQ(write("/dev/null", "x"), "");
    EXPECT_EQ(write("/dev/full", "x"), "Error: could not write \"/dev/full\": No space left on device");
}

TEST_F(OutputFile, WhatCannotBeOpened) {
    folder.write("file", "");
    for (const std::string& name : {folder.path(), folder.path("none/a.cpp"), folder.path("file/a.cpp"),
                                    folder.path(std::string(300, 'n')), folder.path("new/"), std::string()}) {
        EXPECT_EQ(write(name, "x"), cannotOpen) << name;
    }
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"});
}

TEST_F(OutputFile, PermissionsOfOthersAreRespected) {
    if (::geteuid() == 0) GTEST_SKIP() << "everything is permitted to the superuser";
    folder.write("readonly.cpp", "old");
    ::chmod(folder.path("readonly.cpp").c_str(), 0444);
    EXPECT_EQ(write(folder.path("readonly.cpp"), "new"), cannotOpen);
    EXPECT_EQ(folder.read("readonly.cpp"), "old");

    folder.write("a.cpp", "old");
    ::chmod(folder.path().c_str(), 0555);
    EXPECT_EQ(write(folder.path("a.cpp"), "new"), "") << "in place: the folder takes no new file";
    EXPECT_EQ(write(folder.path("b.cpp"), "new"), cannotOpen);
    ::chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(folder.read("a.cpp"), "new");
}

TEST_F(OutputFile, AnInputThatHasChangedMeanwhileIsLeftAlone) {
    folder.write("a.cpp", "old");
    const Files::FileStamp stamp = Files::FileStamp::of(folder.status("a.cpp"));
    EXPECT_EQ(write(folder.path("other.cpp"), "new", &stamp), "");
    folder.write("a.cpp", "edited by hand");
    EXPECT_NE(write(folder.path("a.cpp"), "new", &stamp).find("was changed by another program"), std::string::npos);
    EXPECT_EQ(folder.read("a.cpp"), "edited by hand");

    const Files::FileStamp fresh = Files::FileStamp::of(folder.status("a.cpp"));
    EXPECT_EQ(write(folder.path("a.cpp"), "new", &fresh), "");
    EXPECT_EQ(folder.read("a.cpp"), "new");
}

// Runs the action in a process of its own; returns how that ended.
template <typename Action>
int statusOfChild(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        action();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

TEST_F(OutputFile, TheTemporaryFileGoesWithTheSignalThatEndsTheProgram) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const int status = statusOfChild([&] {
            const Files::TemporaryFile temporary(folder.path("a.cpp"), 0600);
            if (temporary.error() || folder.names().size() != 1) ::_exit(1);
            ::raise(signal);
        });
        EXPECT_TRUE(WIFSIGNALED(status)) << signal;
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(folder.names(), std::set<std::string>{}) << signal;
    }
}

TEST_F(OutputFile, IgnoredSignalsStayIgnoredAndOthersComeBack) {
    const int status = statusOfChild([&] {
        ::signal(SIGHUP, SIG_IGN);
        {
            Files::TemporaryFile temporary(folder.path("a.cpp"), 0600);
            ::raise(SIGHUP);
            if (temporary.replaceTarget() != 0) ::_exit(1);
        }
        ::raise(SIGTERM);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.cpp"}) << "what has taken its place stays";
}

}  // namespace
