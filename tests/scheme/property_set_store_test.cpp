#include "scheme/property_set_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "scheme_files.h"

namespace {

using Tessel::PropertySet;
using TesselUI::PropertySetStore;
using testing::ElementsAre;
namespace fs = std::filesystem;

std::vector<std::string> names(const PropertySetStore& store) {
    std::vector<std::string> result;
    for (const PropertySetStore::Entry& entry : store) result.push_back(entry.scheme.getName());
    return result;
}

TEST(PropertySetStore, ReadsNothingButFiles) {
    TemporaryFolder directory;
    directory.write("elsewhere/real", schemeText("linked"));
    directory.write("folder.vts/inner.vts", schemeText("inner"));
    fs::create_symlink("elsewhere/real", directory.path("link.vts"));
    fs::create_symlink("nowhere", directory.path(".#lock.vts"));
    ASSERT_EQ(::mkfifo(directory.path("pipe.vts").c_str(), 0600), 0);
    PropertySetStore store = readStore(directory);
    EXPECT_THAT(names(store), ElementsAre("linked"));

    store.find("linked")->scheme.setInt("N", 1);
    store.write();
    EXPECT_EQ(directory.read("elsewhere/real"), schemeText("linked", "2 N 1\n"));
    EXPECT_TRUE(fs::is_symlink(directory.path("link.vts")));
    EXPECT_TRUE(directory.has("folder.vts/inner.vts"));
    EXPECT_TRUE(directory.has("pipe.vts"));
}

TEST(PropertySetStore, KeepsItsContentWhenAFileIsBroken) {
    TemporaryFolder directory;
    directory.write("a.vts", schemeText("a"));
    PropertySetStore store = readStore(directory);
    directory.write("a.vts", schemeText("other"));
    directory.write("b.vts", schemeText("b", "9 KEY 1\n"));
    try {
        store.read();
        ADD_FAILURE() << "read a broken scheme";
    } catch (const PropertySetStore::ReadError& error) {
        EXPECT_EQ(error.path(), directory.path("b.vts"));
    }
    EXPECT_THAT(names(store), ElementsAre("a"));
}

TEST(PropertySetStore, WriteMakesTheDirectoryMatch) {
    TemporaryFolder directory;
    const std::string byHand = schemeText("by hand", "# a comment\n3 A x");
    directory.write("by hand.vts", byHand);
    directory.write(
        "changed.vts",
        "\xEF\xBB\xBF# mine\r\n" +
            schemeText("changed", "# one\n3 C x\r\n2 B +1\n\n# two\n2 D 1 and more\n1 E true\n3 F f\n1 A 0"));
    directory.write("erased.vts", schemeText("erased"));
    directory.write("other.txt", "text");
    PropertySetStore store = readStore(directory);
    store.erase("erased");
    store.erase("unknown");
    store.insert(PropertySet("a/b"));
    PropertySet& changed = store.find("changed")->scheme;
    changed.setInt("D", 2);
    changed.setBool("A", true);
    changed.setBool("B", true);
    changed.setString("D", "\t");
    changed.erase("F");
    directory.write("stray.vts", "no scheme");
    const ino_t untouched = directory.status("by hand.vts").st_ino;
    store.write();
    EXPECT_EQ(directory.read("by hand.vts"), byHand);
    EXPECT_EQ(directory.status("by hand.vts").st_ino, untouched);
    EXPECT_EQ(
        directory.read("changed.vts"),
        "\xEF\xBB\xBF# mine\r\n" + schemeText("changed",
                                              "# one\n3 C x\r\n2 B +1\n\n# two\n2 D 2\r\n1 E true\n1 A 1\r\n"
                                              "1 B 1\r\n3 D \"\\t\"\r\n"));
    EXPECT_EQ(directory.read("a_b.vts"), schemeText("a/b"));
    EXPECT_FALSE(directory.has("erased.vts"));
    EXPECT_FALSE(directory.has("stray.vts"));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 4);
    EXPECT_THAT(names(readStore(directory)), ElementsAre("a/b", "by hand", "changed"));
}

TEST(PropertySetStore, LeavesReadOnlyFilesAlone) {
    TemporaryFolder directory;
    const std::string text = schemeText("kept", "# by hand\n2  N  1\n");
    directory.write("kept.vts", text);
    directory.makeReadOnly("kept.vts");
    PropertySetStore store = readStore(directory);
    ASSERT_TRUE(store.find("kept")->readOnly);
    store.erase("kept");
    EXPECT_EQ(store.count("kept"), 1);
    store.find("kept")->scheme.setInt("N", 2);
    store.write();
    EXPECT_EQ(directory.read("kept.vts"), text);

    PropertySetStore(directory.path()).write();
    EXPECT_EQ(directory.read("kept.vts"), text);
}

TEST(PropertySetStore, KeepsPermissionsAndLinksAndReportsWhatItCannotWrite) {
    TemporaryFolder directory;
    directory.write("a.vts", schemeText("a"));
    fs::permissions(directory.path("a.vts"), fs::perms(0640));
    fs::create_hard_link(directory.path("a.vts"), directory.path("second name"));
    PropertySetStore store = readStore(directory);
    store.find("a")->scheme.setInt("N", 1);
    store.write();
    EXPECT_EQ(fs::status(directory.path("a.vts")).permissions(), fs::perms(0640));
    EXPECT_EQ(directory.read("second name"), schemeText("a", "2 N 1\n"));

    store.insert(PropertySet("folder"));
    directory.write("folder.vts/file", "");
    try {
        store.write();
        ADD_FAILURE() << "replaced a folder by a file";
    } catch (const PropertySetStore::WriteError& error) {
        EXPECT_EQ(error.path(), directory.path("folder.vts"));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 3);
}

TEST(PropertySetStore, FindsValidFileNames) {
    PropertySetStore store("");
    EXPECT_EQ(store.validFilename("a/b:c?"), "a_b_c_.vts");
    EXPECT_EQ(store.validFilename("<>\\|x..y"), "____x_y.vts");
    EXPECT_EQ(store.validFilename("abc."), "abc_vts");
    EXPECT_EQ(store.validFilename(std::string(300, 'x')), std::string(251, 'x') + ".vts");

    std::string umlauts = "x";
    while (umlauts.size() < 400) umlauts += "\u00e4";
    EXPECT_EQ(store.validFilename(umlauts), umlauts.substr(0, 251) + ".vts");
    EXPECT_EQ(store.validFilename('x' + umlauts), 'x' + umlauts.substr(0, 249) + ".vts");

    store.insert(PropertySet("a:b"));
    store.insert(PropertySet("a/b"));
    EXPECT_EQ(store.validFilename("a|b"), "a_b_2.vts");
    store.insert(PropertySet(std::string(300, 'x')));
    EXPECT_EQ(store.validFilename(std::string(301, 'x')), std::string(249, 'x') + "_1.vts");
    store.erase("a:b");
    EXPECT_EQ(store.validFilename("a|b"), "a_b.vts");
}

}  // namespace
