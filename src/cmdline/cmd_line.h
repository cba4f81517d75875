#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "cmdline/arg_iter.h"
#include "cmdline/cmd_arg.h"
#include "cmdline/cmd_arg_list.h"
#include "cmdline/usage_arg.h"

// How far a parse has come.
struct CmdLineState {
    bool sawEndOfOptions = false;
    bool usedOptions = false;
    bool usedKeywords = false;
    bool isGuessing = false;     // trying the second interpretation of a string
    bool awaitsValue = false;    // the next string is the value of `awaiting`
    CmdArg* awaiting = nullptr;  // borrowed; set exactly while awaitsValue is
    unsigned positionalCount = 0;
    unsigned matchCount = 0;
};

// The forms of an option that are shown.
enum class CmdLineSyntax { Both, OptionsOnly, KeywordsOnly };

// A command line: parses argument strings into the arguments that the program declares, and prints the usage.
//
//     CmdArgStr input("infile", "the file to read");
//     CmdLine commandLine(argv[0], &input, nullptr);
//     CmdArgvIter strings(argc - 1, argv + 1);
//     commandLine.parse(strings);
//
// Faults are reported on the error stream; a parse with automatic processing then prints the usage and quits.
// Besides its own arguments every command line answers -? and -H with the usage.
class CmdLine {
public:
    enum ParseFlag : unsigned {
        FLAG_ANY_CASE_OPTIONS = 0x001,
        FLAG_PROMPT_USER = 0x002,
        FLAG_NO_ABORT = 0x004,
        FLAG_OPTIONS_FIRST = 0x008,
        FLAG_OPTIONS_ONLY = 0x010,
        FLAG_KEYWORDS_ONLY = 0x020,
        FLAG_TEMPORARY = 0x040,
        FLAG_QUIET = 0x080,
        FLAG_NO_GUESSING = 0x100,
        FLAG_ALLOW_PLUS = 0x200,
    };

    enum ParseStatus : unsigned {
        STATUS_OK = 0x000,
        STATUS_ARG_MISSING = 0x001,
        STATUS_VALUE_MISSING = 0x002,
        STATUS_VALUE_NOT_STICKY = 0x004,
        STATUS_VALUE_NOT_SEPARATE = 0x008,
        STATUS_KEYWORD_AMBIGUOUS = 0x010,
        STATUS_BAD_OPTION = 0x020,
        STATUS_BAD_KEYWORD = 0x040,
        STATUS_BAD_VALUE = 0x080,
        STATUS_TOO_MANY_ARGS = 0x100,
    };

    enum UsageLevel : int {
        NO_USAGE = 0,
        TERSE_USAGE = 1,
        VERBOSE_USAGE = 2,
        USAGE_FROM_ENVIRONMENT = 3,
    };

    // Receives the exit status. A handler that returns lets the parse go on.
    using QuitHandler = std::function<void(int status)>;

    static const char* version();

    // The program name, of which the part after the last '/' is kept, and a null-terminated list of pointers
    // to arguments, which are borrowed.
    template <typename... Arguments>
    explicit CmdLine(const char* programName, Arguments... arguments) : CmdLine(NameOnly{programName}) {
        CmdArg* const list[] = {arguments..., nullptr};
        for (CmdArg* const* argument = list; *argument; ++argument) append(**argument);
    }

    CmdLine(const CmdLine&) = delete;
    CmdLine& operator=(const CmdLine&) = delete;
    virtual ~CmdLine() = default;

    void append(CmdArg& argument) { ownList_.add(argument); }

    const char* programName() const { return programName_.c_str(); }
    const char* description() const { return description_.c_str(); }
    void setDescription(const char* description) { description_ = description ? description : ""; }
    void setErrorStream(std::ostream& errors) { errors_ = &errors; }
    void setQuitHandler(QuitHandler handler) { quitHandler_ = std::move(handler); }

    unsigned flags() const { return flags_; }
    void setFlags(unsigned flags) { flags_ |= flags; }
    void clearFlags(unsigned flags) { flags_ &= ~flags; }

    const CmdArgListList& arguments() const { return lists_; }
    const CmdLineState& state() const { return state_; }
    unsigned status() const { return status_; }

    // Parses every string of the iterator and returns the status, a sum of ParseStatus bits. Without
    // automatic processing the caller frames one or more calls by prologue and epilogue.
    unsigned parse(CmdLineArgIter& strings, int autoProcessing = 1);

    // Forgets what a former parse found out; the values of the arguments stay.
    void prologue();

    // Completes a parse: reports what is missing and, if anything was wrong, prints the usage and quits.
    unsigned epilogue();

    void printUsage(std::ostream& out, int level = USAGE_FROM_ENVIRONMENT) const;

    // One argument as the usage shows it: level 2 for the usage line, level 1 for the list of arguments.
    std::string formatArgSyntax(const CmdArg& argument, int level, CmdLineSyntax syntax) const;
    std::string formatArgSyntax(const CmdArg& argument, int level) const;

    // Writes a line to the error stream, after the program's name.
    void error(std::string_view text) const;

    // Calls the quit handler or, when there is none, ends the program.
    void quit(int status) const;

    // Whether arguments must copy the strings that they keep.
    bool hasTemporaryStrings() const { return hasFlag(FLAG_TEMPORARY); }

protected:
    CmdLineState state_;

private:
    struct NameOnly {
        const char* programName;
    };
    explicit CmdLine(NameOnly name);

    bool hasFlag(unsigned flag) const { return (flags_ & flag) != 0; }
    void fail(unsigned status, std::string_view message);

    // Classification of the strings
    void parseString(const char* text);
    bool looksLikeOption(std::string_view text) const;
    bool isOptionGroup(std::string_view text) const;
    bool isKeyword(std::string_view text) const;

    // Option groups and keywords
    void parseOptionGroup(const char* group);
    const char* parseOption(CmdArg& argument, const char* rest);
    void parseKeyword(std::string_view prefix, const char* text);
    bool tryKeyword(const char* text);
    bool tryOptionGroup(const char* text);
    void applyKeyword(CmdArg& argument, std::string_view prefix, const char* text);

    // Values
    void parsePositional(const char* text);
    void takeAwaitedValue(const char* text);
    void finishWithoutValue();
    void awaitValue(CmdArg& argument);
    void stopAwaiting();
    void checkState() const;
    const char* compileValue(CmdArg& argument, const char* text, unsigned whereFound);
    void match(CmdArg& argument, unsigned howMatched);

    // Search
    CmdArg* findOption(char character) const;
    struct KeywordMatch {
        CmdArg* argument = nullptr;
        bool isAmbiguous = false;
    };
    KeywordMatch findKeyword(std::string_view keyword) const;
    CmdArg* nextPositional() const;

    // What is missing
    void reportMissing();
    bool wantsPrompt() const;
    bool promptFor(CmdArg& argument);

    // Texts
    const char* keywordPrefix() const;
    CmdLineSyntax shownSyntax() const;
    std::string argumentName(const CmdArg& argument) const;
    [[noreturn]] void endByInternalError(std::string_view text) const;

    std::string programName_;
    std::string description_;
    std::ostream* errors_;
    QuitHandler quitHandler_;
    unsigned flags_ = FLAG_OPTIONS_FIRST;
    unsigned status_ = STATUS_OK;
    CmdArgUsage questionMark_;
    CmdArgUsage help_;
    CmdArgList ownList_;
    CmdArgList defaultList_;
    CmdArgListList lists_;
};

// Gives all arguments of a command line, its own first, then null.
class CmdLineCmdArgIter {
public:
    explicit CmdLineCmdArgIter(const CmdLine& commandLine)
        : lists_(commandLine.arguments()), arguments_(*lists_()) {}

    CmdArg* operator()();

private:
    CmdArgListListIter lists_;
    CmdArgListIter arguments_;
};
