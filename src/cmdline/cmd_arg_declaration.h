#pragma once

#include <string>
#include <vector>

// The syntax of an argument as one text, in the form in which the usage shows it:
//
//     -c|--count number : how often             required option with a value
//     [-c|--count number] : how often           optional option
//     [-v|--verbose [level]] : talk more        the value may be omitted
//     [-I=folder ...] : search there            "=" a sticky value, "..." a list of values
//     infile : the file to read                 positional
//
// An option has a character, a keyword or both. Blanks may stand between the parts; everything after the
// first ":" that follows the syntax is the description.
struct CmdArgDeclaration {
    char optionCharacter = 0;
    std::string keyword;
    std::string valueName;
    std::string description;
    unsigned syntaxFlags = 0;

    // One line for each fault, ended by a line feed.
    std::vector<std::string> errors;
};

CmdArgDeclaration readDeclaration(const char* declaration);
