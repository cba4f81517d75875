#include "scheme/property_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using Tessel::PropertySet;
using testing::ElementsAre;

const std::string HEAD = "Tessel::PropertySet\n1\n\"s\"\n";

std::string written(const PropertySet& set) {
    std::ostringstream out;
    set.write(out);
    return out.str();
}

std::string textOf(const PropertySet& set, std::string_view key) {
    std::string value = "absent";
    set.getString(key, value);
    return value;
}

PropertySet parsed(const std::string& text) {
    std::istringstream in(text);
    PropertySet set(in);
    EXPECT_FALSE(in.fail()) << text;
    return set;
}

// The set is not to change when the text is refused.
bool isRefused(const std::string& text) {
    std::istringstream in(text);
    PropertySet set("kept");
    set.setInt("OLD", 7);
    set.read(in);
    if (!in.fail()) return false;
    EXPECT_EQ(set.getName(), "kept");
    EXPECT_THAT(set.names(), ElementsAre("OLD"));
    return true;
}

TEST(PropertySet, ReadsBackWhateverItWrites) {
    for (const std::string name : {"s", "", "\"", "a\"b\"", "  inner  blanks  ", "#", "\\n"}) {
        PropertySet set(name);
        set.setString("quotes", "\"");
        set.setString("quoted", "\"\"");
        set.setString("backslashes", "\\\\\" \\");
        set.setString("blanks", "  \t\v\f\r\n\n");
        set.setString("#hash", "#");
        set.setString("bytes", std::string("\0\x80\xff", 3));
        set.setInt("least", -2147483647 - 1);
        set.setBool("\"key\"", true);
        const PropertySet copy = parsed(written(set));
        EXPECT_EQ(copy.getName(), name);
        EXPECT_EQ(written(copy), written(set));
    }
}

// Keys that mean something, and one that does not, go from among others and come back.
TEST(PropertySet, FindsWhatIsLeftWhenKeysHaveGone) {
    PropertySet set("s");
    for (const char* key : {"WS_AFTER_FN_NAME", "WS_AFTER_DD_NAME", "no_such_key", "WS_AFTER_CS_KEY"}) {
        set.setString(key, key);
    }
    PropertySet changed = set;
    EXPECT_TRUE(changed.erase("WS_AFTER_FN_NAME"));
    EXPECT_FALSE(changed.erase("WS_AFTER_FN_NAME"));
    EXPECT_TRUE(changed.erase("no_such_key"));
    EXPECT_THAT(changed.names(), ElementsAre("WS_AFTER_CS_KEY", "WS_AFTER_DD_NAME"));
    EXPECT_EQ(textOf(changed, "WS_AFTER_CS_KEY"), "WS_AFTER_CS_KEY");
    EXPECT_EQ(textOf(changed, "WS_AFTER_FN_NAME"), "absent");
    EXPECT_EQ(textOf(set, "no_such_key"), "no_such_key");
    changed.setString("WS_AFTER_FN_NAME", "WS_AFTER_FN_NAME");
    EXPECT_FALSE(changed == set);
    changed.setString("no_such_key", "no_such_key");
    EXPECT_TRUE(changed == set);
}

// Each value is looked at once, whatever has come to stand in the place of another; copies keep theirs.
TEST(PropertySet, EditsEachValueOnce) {
    PropertySet set("s");
    for (const std::string key : {"WS_BEFORE_FN_COMMA", "LEFT_MARGIN", "other", "WS_BEFORE_DD_COMMA", "unknown"}) {
        set.setString(key, key.starts_with("WS") || key == "other" ? "go" : "");
    }
    set.setBool("LINE_WRAP", false);
    const PropertySet before = set;
    set.edit([](std::string_view, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>) {
            if (value == "go") return false;
            value += '+';
        } else {
            value = !value;
        }
        return true;
    });
    EXPECT_EQ(written(set), HEAD + "1 LINE_WRAP 1\n3 LEFT_MARGIN \"+\"\n3 unknown \"+\"\n");
    EXPECT_EQ(before.size(), 6U);
}

TEST(PropertySet, ReadsFilesEditedByHand) {
    const PropertySet set = parsed(
        "\xEF\xBB\xBF# a comment\r\n\r\n  Tessel::PropertySet  \r\n#\r\n\t1 of 1\r\n\r\nplain name\r\n"
        "1 ON 1\n1   OFF\t0\n1 NEITHER 2\n1 WORD true\n1 BARE\n"
        "2 N +5 and more\n2 WORDY five\n2 HUGE 99999999999\n"
        "   3 WORD   one two\n3 KEPT \" a b \" tail\n3 OPEN \"x\n3 ESCAPED \"a\\\"b\\\\\" c\"\n3 NONE\n3\n"
        "3 LAST \"no line end\"");
    EXPECT_EQ(set.getName(), "plain name");
    EXPECT_THAT(set.names(), ElementsAre("OFF", "ON", "N", "ESCAPED", "KEPT", "LAST", "NONE", "OPEN", "WORD"));
    int number = 0;
    EXPECT_TRUE(set.getInt("N", number));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(textOf(set, "WORD"), "one");
    EXPECT_EQ(textOf(set, "KEPT"), " a b ");
    EXPECT_EQ(textOf(set, "OPEN"), "\"x");
    EXPECT_EQ(textOf(set, "ESCAPED"), "a\"b\\");
    EXPECT_EQ(textOf(set, "NONE"), "");
    EXPECT_EQ(textOf(set, "LAST"), "no line end");
}

TEST(PropertySet, RefusesWhatIsNoPropertySet) {
    EXPECT_TRUE(isRefused(""));
    EXPECT_TRUE(isRefused("\xEF\xBBTessel::PropertySet\n1\n\"s\"\n"));
    EXPECT_TRUE(isRefused("Tessel::PropertySet"));
    EXPECT_TRUE(isRefused("Tessel::PropertySets\n1\n\"s\"\n"));
    EXPECT_TRUE(isRefused("Tessel::PropertySet\n2\n\"s\"\n"));
    EXPECT_TRUE(isRefused("Tessel::PropertySet\n0\n\"s\"\n"));
    EXPECT_TRUE(isRefused("Tessel::PropertySet\n99999999999\n\"s\"\n"));
    EXPECT_TRUE(isRefused(HEAD + "1 ON 1\n4 KEY 1\n"));
    EXPECT_TRUE(isRefused(HEAD + "0 KEY 1\n"));
    EXPECT_TRUE(isRefused(HEAD + "KEY 1"));
    EXPECT_TRUE(isRefused(HEAD + "1 ON 1\n99999999999 KEY 1\n1 OFF 0\n"));
}

}  // namespace
