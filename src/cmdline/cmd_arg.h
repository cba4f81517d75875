#pragma once

#include <string>
#include <string_view>

class CmdLine;

// One argument that a program declares: how it is written on the command line, what it is called in the
// usage, and, in the derived classes, the value that it takes.
class CmdArg {
public:
    // How the argument may be written. Fixed at construction.
    enum SyntaxFlag : unsigned {
        SYNTAX_OPTIONAL = 0x00,
        SYNTAX_REQUIRED = 0x01,
        SYNTAX_VALUE_OPTIONAL = 0x02,
        SYNTAX_VALUE_REQUIRED = 0x04,
        SYNTAX_VALUE_SEPARATE = 0x08,  // the value must be an argument string of its own
        SYNTAX_VALUE_STICKY = 0x10,    // the value must be in the same argument string
        SYNTAX_LIST = 0x20,
        SYNTAX_POSITIONAL = 0x40,
        SYNTAX_HIDDEN = 0x80,  // left out of the usage
    };

    // What a parse found out about the argument.
    enum RunTimeFlag : unsigned {
        GIVEN = 0x01,
        VALUE_GIVEN = 0x02,
        MATCHED_BY_OPTION = 0x04,
        MATCHED_BY_KEYWORD = 0x08,
        VALUE_IN_SAME_STRING = 0x10,
        VALUE_IN_SEPARATE_STRING = 0x20,
    };

    // An option with a value. 0 stands for no option character, null or "" for no keyword and no value name.
    CmdArg(char optionCharacter, const char* keyword, const char* valueName, const char* description,
           unsigned syntaxFlags = SYNTAX_VALUE_REQUIRED);

    // An option without a value.
    CmdArg(char optionCharacter, const char* keyword, const char* description,
           unsigned syntaxFlags = SYNTAX_OPTIONAL);

    // A positional argument.
    CmdArg(const char* valueName, const char* description,
           unsigned syntaxFlags = SYNTAX_POSITIONAL | SYNTAX_VALUE_REQUIRED);

    // The whole syntax in one text, written as the usage shows it (see cmd_arg_declaration.h). A faulty text
    // is reported on standard error and leaves out of the argument what could not be read.
    explicit CmdArg(const char* declaration);

    CmdArg(const CmdArg&) = delete;
    CmdArg& operator=(const CmdArg&) = delete;

    virtual ~CmdArg() = default;

    // A dummy appears in the usage and is never matched.
    virtual bool isDummy() const { return false; }

    // Converts the value at the start of `text` and moves `text` past what it used; null means that no value
    // was given. Returns 0 on success. Reports a bad value through `commandLine`.
    virtual int compile(const char*& text, CmdLine& commandLine) = 0;

    char optionCharacter() const { return optionCharacter_; }
    const char* keyword() const { return keyword_.empty() ? nullptr : keyword_.c_str(); }
    const char* valueName() const { return valueName_.empty() ? nullptr : valueName_.c_str(); }
    const char* description() const { return description_.c_str(); }

    unsigned syntaxFlags() const { return syntax_; }
    bool isRequired() const { return (syntax_ & SYNTAX_REQUIRED) != 0; }
    bool isPositional() const { return (syntax_ & SYNTAX_POSITIONAL) != 0; }
    bool isList() const { return (syntax_ & SYNTAX_LIST) != 0; }
    bool isHidden() const { return (syntax_ & SYNTAX_HIDDEN) != 0; }
    bool takesValue() const { return (syntax_ & (SYNTAX_VALUE_OPTIONAL | SYNTAX_VALUE_REQUIRED)) != 0; }
    bool needsValue() const { return (syntax_ & SYNTAX_VALUE_REQUIRED) != 0; }
    bool wantsSeparateValue() const { return (syntax_ & SYNTAX_VALUE_SEPARATE) != 0; }
    bool wantsStickyValue() const { return (syntax_ & SYNTAX_VALUE_STICKY) != 0; }

    unsigned runTimeFlags() const { return runTime_; }
    bool isGiven() const { return (runTime_ & GIVEN) != 0; }
    bool hasValueGiven() const { return (runTime_ & VALUE_GIVEN) != 0; }
    bool wasMatchedByOption() const { return (runTime_ & MATCHED_BY_OPTION) != 0; }
    bool wasMatchedByKeyword() const { return (runTime_ & MATCHED_BY_KEYWORD) != 0; }
    bool hasValueInSameString() const { return (runTime_ & VALUE_IN_SAME_STRING) != 0; }

    // The how-manieth match of the parse gave this argument; 0 when it was not given.
    unsigned sequence() const { return sequence_; }

    void resetRunTime();
    void noteMatch(unsigned howMatched, unsigned sequence);
    void noteValue(unsigned whereFound) { runTime_ |= VALUE_GIVEN | whereFound; }

private:
    void normalise();

    char optionCharacter_ = 0;
    std::string keyword_;
    std::string valueName_;
    std::string description_;
    unsigned syntax_ = SYNTAX_OPTIONAL;
    unsigned runTime_ = 0;
    unsigned sequence_ = 0;
};
