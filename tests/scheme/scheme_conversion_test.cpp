#include "scheme/scheme_conversion.h"

#include <gtest/gtest.h>

#include <string>

#include "scheme_files.h"

namespace {

using TesselUI::convertSchemes;
using TesselUI::PropertySetStore;

TEST(SchemeConversion, BringsAnOldSchemeToTheCurrentKeys) {
    TemporaryFolder directory;
    directory.write("old.vts", schemeText(
        "old",
        "1 ALIGN_CS_FOR_CLAUSES_LEFT 0\n1 ALIGN_CS_FOR_CLAUSES_LEFT_ON_WRAP 1\n1 ALIGN_FN_PARAMS_LEFT 1\n"
        "1 ALIGN_FN_PARAMS_LEFT_ON_WRAP 1\n1 UNKNOWN 1\n2 SPACES_PER_TAB 4\n2 WRAP_INDENT 0\n"
        "3 GLOBAL_INDENT_CONTENT \"    \"\n3 GLOBAL_WS_AFTER_OPEN_BRACE \"\\t\"\n"
        "3 GLOBAL_WS_BEFORE_OPEN_BRACE \"\\n\"\n3 WS_AFTER_CLASS_HEAD \"class\"\n3 WS_AFTER_CS_HEAD \"cs\"\n"
        "3 WS_AFTER_DD_NAME \" \"\n3 WS_AFTER_ENUM_HEAD \"enum\"\n3 WS_AFTER_FN_HEAD \"fn\"\n"
        "3 WS_AFTER_FN_NAME \" \"\n3 WS_AFTER_NS_HEAD \"ns\"\n3 WS_BEFORE_FN_COMMA \" \"\n"));
    PropertySetStore store = readStore(directory);
    EXPECT_EQ(convertSchemes(store), "");
    EXPECT_EQ(directory.read("old.vts"), schemeText(
        "old",
        "1 DATA_DO_NOT_FORMAT 0\n1 LINE_WRAP 0\n1 UNKNOWN 1\n2 COMMA_WRAP_STYLE 2\n2 EXPR_WRAP_STYLE 2\n"
        "2 LINE_WRAP_DO_NOT_FORMAT 0\n2 LIST_WRAP_STRATEGY 1\n2 RIGHT_MARGIN 78\n2 SHIFT_WRAP_STYLE 1\n"
        "2 TAB_SIZE 4\n2 WRAP_STYLE 1\n3 GLOBAL_INDENT_CONTENT \"    \"\n"
        "3 GLOBAL_WS_AFTER_OPEN_BRACE \"\\t\"\n3 GLOBAL_WS_BEFORE_COMMA \"\"\n"
        "3 GLOBAL_WS_BEFORE_OPEN_BRACE \"\\n\"\n3 INDENT_DD_CONTENT \"    \"\n3 VANTREL_VERSION \"1.2.1\"\n"
        "3 WRAP_INDENT \"    \"\n3 WS_AFTER_DD_OPEN_BRACE \"\\t\"\n3 WS_AFTER_FN_CALL_NAME \" \"\n"
        "3 WS_AFTER_FN_NAME \" \"\n3 WS_BEFORE_BASE_CLAUSES_COMMA \"\"\n3 WS_BEFORE_CLASS_INITS_COMMA \"\"\n"
        "3 WS_BEFORE_CLASS_OPEN_BRACE \"class\"\n3 WS_BEFORE_CS_OPEN_BRACE \"cs\"\n"
        "3 WS_BEFORE_DD_CLOSE_BRACE \"\"\n3 WS_BEFORE_DD_COMMA \"\"\n3 WS_BEFORE_DD_OPEN_BRACE \"\\n\"\n"
        "3 WS_BEFORE_ENUM_COMMA \"\"\n3 WS_BEFORE_ENUM_OPEN_BRACE \"enum\"\n3 WS_BEFORE_FN_CALL_COMMA \"\"\n"
        "3 WS_BEFORE_FN_COMMA \"\"\n3 WS_BEFORE_FN_OPEN_BRACE \"fn\"\n3 WS_BEFORE_NS_OPEN_BRACE \"ns\"\n"
        "3 WS_BEFORE_TP_COMMA \"\"\n3 WS_BETWEEN_DD_ELEMENTS \" \"\n3 WS_BETWEEN_FN_CALL_ARGS \"\\n\"\n"
        "3 WS_BETWEEN_FN_PARAMS \"\\n\"\n"));
}

TEST(SchemeConversion, NamesTheOldSchemesThatItMayNotConvert) {
    TemporaryFolder directory;
    const std::string longName(5000, 'b');
    directory.write("1.vts", schemeText(longName));
    directory.makeReadOnly("1.vts");
    PropertySetStore one = readStore(directory);
    EXPECT_EQ(
        convertSchemes(one),
        "The scheme '" + longName +
            "' was created using a previous version of Vantrel C++. The file is marked read-only and so "
            "cannot be converted. Please ensure the file is read-write and run Vantrel C++ again. Once the "
            "scheme has been converted, the file can be set read-only again.");

    directory.write("2.vts", schemeText("a"));
    directory.makeReadOnly("2.vts");
    directory.write("3.vts", schemeText("writable"));
    PropertySetStore several = readStore(directory);
    EXPECT_EQ(
        convertSchemes(several),
        "The following schemes were created using a previous version of Vantrel C++:\r\na\r\n" + longName +
            "\r\nThe files are read-only and so cannot be converted. Please ensure that the scheme files "
            "listed are read-write and run Vantrel C++ again. Once the schemes have been converted, the "
            "files can be set read-only again.");
    EXPECT_EQ(directory.read("2.vts"), schemeText("a"));
    EXPECT_NE(directory.read("3.vts"), schemeText("writable"));
}

}  // namespace
