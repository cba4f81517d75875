#include "cmdline/bool_arg.h"

#include <cstring>
#include <string>

#include "cmdline/cmd_line.h"
#include "cmdline/text_match.h"

int CmdArgBoolCompiler::compile(const char*& text, CmdLine& commandLine) {
    if (!text) {
        act();
        return 0;
    }
    const bool isInOptionGroup = wasMatchedByOption() && hasValueInSameString();
    if (compileSign(*text)) {
        text += isInOptionGroup ? 1 : std::strlen(text);
        return 0;
    }
    if (isInOptionGroup && !needsValue()) {  // what follows are further options
        act();
        return 0;
    }
    if (wasMatchedByKeyword() && compileWord(text)) {
        text += std::strlen(text);
        return 0;
    }
    const bool isAmbiguous = wasMatchedByKeyword() && equalsIgnoringCase(text, "o");
    commandLine.error((isAmbiguous ? "ambiguous" : "unknown") + std::string(" boolean value \"") + text +
                      '"');
    return -1;
}

bool CmdArgBoolCompiler::compileSign(char sign) {
    switch (sign) {
        case '+':
        case '1':
            target() = true;
            return true;
        case '-':
        case '0':
            target() = false;
            return true;
        case '!':
        case '^':
        case '~':
            target() = !target();
            return true;
        default:
            return false;
    }
}

bool CmdArgBoolCompiler::compileWord(const char* text) {
    struct Word {
        const char* text;
        bool value;
    };
    constexpr Word words[] = {{"yes", true}, {"true", true},   {"on", true},
                              {"no", false}, {"false", false}, {"off", false}};
    for (const Word& word : words) {
        if (!startsWithIgnoringCase(text, word.text)) continue;
        target() = word.value;
        return true;
    }
    return false;
}
