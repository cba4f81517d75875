#include "scheme/scheme_directory.h"

#include <errno.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// Each test starts with no setting but an empty folder for settings.
class SchemeDirectory : public testing::Test {
protected:
    SchemeDirectory() {
        ::unsetenv("VANTREL_SCHEMES");
        ::setenv("XDG_CONFIG_HOME", configuration_.path().c_str(), 1);
    }

    TemporaryFolder configuration_;
    const std::string executables_ = fs::canonical(program_invocation_name).parent_path().string() + "/";
};

TEST_F(SchemeDirectory, ComesFromTheEnvironmentBeforeTheSettings) {
    configuration_.write("vantrel/settings", "# mine\n[x]\nOther=/no\r\n PropertySetStore = /my schemes/a=b \r\n");
    EXPECT_EQ(TesselUI::schemeDirectory(), "/my schemes/a=b");
    ::setenv("VANTREL_SCHEMES", "relative", 1);
    EXPECT_EQ(TesselUI::schemeDirectory(), "relative");
}

TEST_F(SchemeDirectory, FindsTheSettingsInTheHomeDirectory) {
    ::setenv("XDG_CONFIG_HOME", "not/absolute", 1);
    ::setenv("HOME", configuration_.path().c_str(), 1);
    configuration_.write(".config/vantrel/settings", "PropertySetStore=/x");
    EXPECT_EQ(TesselUI::schemeDirectory(), "/x");
}

TEST_F(SchemeDirectory, FillsInAnEmptySetting) {
    configuration_.write("vantrel/settings", "");
    EXPECT_EQ(TesselUI::schemeDirectory(), executables_);
    EXPECT_EQ(configuration_.read("vantrel/settings"), "PropertySetStore = " + executables_ + "\n");

    configuration_.write("vantrel/settings", "a = b");
    TesselUI::schemeDirectory();
    EXPECT_EQ(configuration_.read("vantrel/settings"), "a = b\nPropertySetStore = " + executables_ + "\n");

    configuration_.write("vantrel/settings", "a = b\nPropertySetStore =  \nc = d");
    TesselUI::schemeDirectory();
    EXPECT_EQ(configuration_.read("vantrel/settings"), "a = b\nPropertySetStore = " + executables_ + "\nc = d");
}

}  // namespace
