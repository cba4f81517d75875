#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "cmdline/string_arg.h"

namespace {

// What constructing arguments writes to standard error.
template <typename Construct>
std::string errorsOf(Construct construct) {
    std::ostringstream errors;
    std::streambuf* const original = std::cerr.rdbuf(errors.rdbuf());
    construct();
    std::cerr.rdbuf(original);
    return errors.str();
}

TEST(CmdArgSyntax, AnArgumentThatCannotBeGivenIsAFault) {
    EXPECT_EQ(errorsOf([] { CmdArgStr(0, nullptr, "text", CmdArg::SYNTAX_OPTIONAL); }),
              "*** Error: non-positional CmdArg has no character or keyword name!\n"
              "\t(error occurred in CmdArg constructor)\n");
}

TEST(CmdArgDeclaration, EveryForm) {
    using Arg = CmdArg;
    struct Case {
        const char* text;
        char option;
        const char* keyword;
        const char* valueName;
        const char* description;
        unsigned syntax;
    };
    for (const Case& one : {
             Case{"-s|--scheme name : to use: this", 's', "scheme", "name", "to use: this",
                  Arg::SYNTAX_REQUIRED | Arg::SYNTAX_VALUE_REQUIRED},
             {"[-v|--verbose [level]]:talk", 'v', "verbose", "level", "talk", Arg::SYNTAX_VALUE_OPTIONAL},
             {"[ -I=folder ... ]", 'I', nullptr, "folder", "",
              Arg::SYNTAX_VALUE_REQUIRED | Arg::SYNTAX_VALUE_STICKY | Arg::SYNTAX_LIST},
             {"[--all]", 0, "all", nullptr, "", Arg::SYNTAX_OPTIONAL},
             {"[--tab[=width]]", 0, "tab", "width", "", Arg::SYNTAX_VALUE_OPTIONAL | Arg::SYNTAX_VALUE_STICKY},
             {"infile : read", 0, nullptr, "infile", "read",
              Arg::SYNTAX_REQUIRED | Arg::SYNTAX_VALUE_REQUIRED | Arg::SYNTAX_POSITIONAL},
             {"[infile]", 0, nullptr, "infile", "", Arg::SYNTAX_VALUE_OPTIONAL | Arg::SYNTAX_POSITIONAL},
         }) {
        EXPECT_EQ(errorsOf([&] {
                      const CmdArgStr argument(one.text);
                      EXPECT_EQ(argument.optionCharacter(), one.option) << one.text;
                      EXPECT_STREQ(argument.keyword(), one.keyword) << one.text;
                      EXPECT_STREQ(argument.valueName(), one.valueName) << one.text;
                      EXPECT_STREQ(argument.description(), one.description) << one.text;
                      EXPECT_EQ(argument.syntaxFlags(), one.syntax) << one.text;
                  }), "");
    }
}

}  // namespace
