#pragma once

#include <string>
#include <vector>

#include "scheme/property_set.h"

namespace TestSupport {

// One text, and what a scheme is to make of it.
struct FormatCase {
    std::string name;   // of the file and the title, in letters, digits and "_"; unique within the file
    std::string place;  // file and line, for messages
    Tessel::PropertySet scheme;
    std::string input;
    std::string expected;
    bool checksSecondRun = true;
};

// Reads a file of cases like these:
//
//     What is written before the first case is for people, but for lines that start with
//     #scheme LEFT_MARGIN="" TAB_SIZE=4
//     which goes for all cases of the file.
//
//     >>> the "}" and "else"
//     #scheme WS_BETWEEN_CS="\n" -LEFT_MARGIN
//     if (a) { b(); } else { c(); }
//     <<<
//     if (a) { b(); }
//     else { c(); }
//     <<< WS_BETWEEN_CS=" "
//     if (a) { b(); } else { c(); }
//
//     <<< as it is KEEP_ONE_LINE_BLOCKS=true
//
// Each "<<<" is a case of its own, with further settings for itself, or, as "<<< #base knr", with another scheme; with
// "as it is" the text is to come back. KEY=value sets a key: a text in quotes,
// with the escapes of scheme files, true, false, or a number; -KEY removes it. The scheme holds nothing but
// VANTREL_VERSION and an empty LEFT_MARGIN, or starts with a shipped one: "#base allman". A line "#once",
// with the reason behind it, says that the rules do not promise a second run without changes. Throws
// std::runtime_error when the file is not of this form.
std::vector<FormatCase> readCaseFile(const std::string& path);

}  // namespace TestSupport
