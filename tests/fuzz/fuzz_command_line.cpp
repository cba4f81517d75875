// Any strings, under any parse flags, against arguments of many kinds.
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "cmdline/bool_arg.h"
#include "cmdline/char_arg.h"
#include "cmdline/cmd_line.h"
#include "cmdline/float_arg.h"
#include "cmdline/int_arg.h"
#include "cmdline/string_arg.h"

namespace {

struct Quit {};

constexpr unsigned kFlags = 0x3FF & ~unsigned{CmdLine::FLAG_PROMPT_USER};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t flagBytes = 2;
    if (size < flagBytes) return 0;
    const unsigned flags = (data[0] | unsigned{data[1]} << 8) & kFlags;
    std::vector<std::string> strings;
    std::istringstream lines(std::string(reinterpret_cast<const char*>(data) + flagBytes, size - flagBytes));
    for (std::string line; std::getline(lines, line);) strings.push_back(line);
    std::vector<const char*> vector;
    for (const std::string& string : strings) vector.push_back(string.c_str());

    CmdArgStr scheme('s', "scheme", "name", "a string", CmdArg::SYNTAX_REQUIRED | CmdArg::SYNTAX_VALUE_REQUIRED);
    CmdArgInt number('n', "number", "n", "an int", CmdArg::SYNTAX_OPTIONAL | CmdArg::SYNTAX_VALUE_OPTIONAL);
    CmdArgFloatList floats('f', "floats", "x", "floats",
                           CmdArg::SYNTAX_LIST | CmdArg::SYNTAX_VALUE_REQUIRED | CmdArg::SYNTAX_VALUE_STICKY);
    CmdArgChar character('c', "char", "c", "a character");
    CmdArgBool isOn('v', "verbose", "a switch");
    CmdArgToggle toggle('t', "toggle", "a toggle");
    CmdArgStrList files("file", "files", CmdArg::SYNTAX_POSITIONAL | CmdArg::SYNTAX_LIST);

    std::ostringstream errors;
    CmdLine commandLine("fuzz", &scheme, &number, &floats, &character, &isOn, &toggle, &files, nullptr);
    commandLine.setErrorStream(errors);
    commandLine.setQuitHandler([](int) { throw Quit{}; });
    commandLine.clearFlags(commandLine.flags());
    commandLine.setFlags(flags);
    CmdArgvIter iterator(static_cast<int>(vector.size()), vector.data());
    try {
        commandLine.parse(iterator);
    } catch (const Quit&) {
    }
    return 0;
}
