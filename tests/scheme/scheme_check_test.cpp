#include "scheme/scheme_check.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

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
