#include "scheme/scheme_check.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

TEST(SchemeCheck, WhitespaceTextsHoldNothingElse) {
    for (const char* key : {"WS_AFTER_FN_NAME", "GLOBAL_WS_BEFORE_COMMA", "INDENT_FN_CONTENT",
                            "GLOBAL_INDENT_CONTENT", "LEFT_MARGIN", "WRAP_INDENT", "WS_BEFORE_EXPR_OP"}) {
        for (const std::string& bad : {"x"s, " \r\n"s, "\f"s, "\v"s, "\0"s, " /**/"s, "\xC2\xA0"s}) {
            Tessel::PropertySet scheme("s");
            scheme.setString("AAA", "text");
            scheme.setString(key, bad);
            const auto unusable = TesselUI::findUnusableText(scheme);
            ASSERT_TRUE(unusable) << key << bad;
            EXPECT_EQ(unusable->key, key);
        }
    }
}

TEST(SchemeCheck, OtherTextsAndTypesAreNotConcerned) {
    Tessel::PropertySet scheme("s");
    scheme.setString("WS_AFTER_FN_NAME", " \t\n\n");
    scheme.setString("INDENT_FN_CONTENT", std::string(TesselUI::MAXIMUM_WHITESPACE_LENGTH, ' '));
    scheme.setString("LEFT_MARGIN", "");
    scheme.setString("VANTREL_VERSION", "1.2.1");
    scheme.setInt("WRAP_INDENT", 7);
    scheme.setBool("WS_AFTER_CS_KEY", true);
    scheme.setString("WS_AFTER_FN_NAMES", "misspelt");
    scheme.setString("INDENT_SOMETHING", "x");
    EXPECT_FALSE(TesselUI::findUnusableText(scheme));
    scheme.setString("INDENT_FN_CONTENT", std::string(TesselUI::MAXIMUM_WHITESPACE_LENGTH + 1, ' '));
    EXPECT_EQ(TesselUI::findUnusableText(scheme)->key, "INDENT_FN_CONTENT");
}

}  // namespace
