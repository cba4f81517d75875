#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "edits/line_set.h"

namespace Tool {

enum class Mode { Print, InPlace, Check, Diff, List };
enum class MessageFormat { Text, Gcc, Json, Github, Sarif, Checkstyle };
enum class OnRefusal { Default, Fail, Skip, Echo };
enum class Color { Auto, Always, Never };
enum class KeyPage { None, Markdown, Html };
enum class Command {
    Format,
    Schemes,
    Keys,
    SchemeShow,
    SchemeCheck,
    SchemeUpgrade,
    Why,
    Explain,
    Learn,
    Lsp,
    Completion,
    Manual
};

// What the command line says.
struct Options {
    Command command = Command::Format;
    std::string argument;  // of a command: a key, a scheme, a file, a shell
    bool isSummary = false;  // of explanations
    KeyPage keyPage = KeyPage::None;

    std::vector<std::string> paths;
    std::string filesFrom;        // a list of paths; "-" is standard input
    bool hasNullSeparators = false;  // in that list
    std::vector<std::string> endings;
    std::vector<std::string> excluded;

    Mode mode = Mode::Print;
    std::string scheme;  // a name or a file; empty: looked for
    std::string inputName;  // of standard input
    std::vector<Edits::LineSet::Range> lines;
    std::optional<std::string> changedSince;  // a revision
    bool onlyStaged = false;

    std::string outputFile;     // of learn; empty: standard output
    std::string from;           // a scheme that learn takes what it does not find from
    double minAgreement = 0.8;  // of the places that learn finds
    std::string htmlFile;

    int jobs = 0;  // 0: as many as there are processors
    MessageFormat format = MessageFormat::Text;
    OnRefusal onRefusal = OnRefusal::Default;
    Color color = Color::Auto;
    bool isQuiet = false;
    bool isVerbose = false;

    // As other formatters have it.
    std::vector<std::size_t> offsets;
    std::vector<std::size_t> lengths;
    std::optional<std::size_t> cursor;
    bool printsReplacements = false;
};

// Throws Failure for a faulty command line. Nothing when all has been said: help, the version.
std::optional<Options> parseOptions(int count, const char* const* arguments, std::ostream& out);

// How many files are read at once.
std::size_t threadsFor(const Options& options);

// An option, for what is made of all of them: completion, the manual.
struct OptionEntry {
    std::string names;  // "-i,--in-place"
    std::string value;  // "NAME"; empty for a switch
    std::string description;
    std::vector<std::string> choices;
};

std::vector<OptionEntry> optionTable();
std::vector<std::pair<std::string, std::string>> commandTable();  // name and description

}  // namespace Tool
