#include "cli/driver.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>

#include "cli/arguments.h"
#include "cli/diagnostic_lines.h"
#include "cli/exception_report.h"
#include "cli/failure.h"
#include "cli/input_file.h"
#include "cli/output_file.h"
#include "engine/format_options.h"
#include "run/format_text.h"
#include "run/side_threads.h"
#include "scheme/named_scheme.h"
#include "scheme/property_set_store.h"
#include "scheme/scheme_check.h"
#include "scheme/scheme_conversion.h"
#include "scheme/scheme_directory.h"
#include "textstream/text_encoding.h"

namespace Cli {

namespace {

void checkScheme(const Tessel::PropertySet& scheme, const std::string& directory) {
    const std::optional<TesselUI::UnusableText> unusable = TesselUI::findUnusableText(scheme);
    if (!unusable) return;
    const std::string file = TesselUI::findSchemeFile(directory, scheme.getName());
    throw Failure("Error: the scheme file \"" + file + "\" cannot be used: " + unusable->key + ' ' +
                  unusable->problem + '.');
}

[[noreturn]] void failToLocate(const std::string& name, const std::string& directory) {
    std::string message = "Error: could not locate a formatting scheme named \"" + name + '"';
    std::error_code error;
    const std::filesystem::directory_iterator files(directory, error);
    if (error)
        message += "\nThe scheme directory \"" + directory + "\" cannot be read: " + error.message() + '.';
    throw Failure(message);
}

// Of many schemes only the one that is wanted is read where its file has its name.
Tessel::PropertySet loadScheme(const std::string& name, const std::string& directory, std::ostream& errors) {
    if (std::optional<Tessel::PropertySet> named = TesselUI::readNamedScheme(directory, name)) {
        checkScheme(*named, directory);
        return *std::move(named);
    }
    TesselUI::PropertySetStore store(directory);
    store.read();
    const std::string notice = TesselUI::convertSchemes(store);
    if (!notice.empty()) errors << '\n' << notice << '\n';
    if (store.count(name) == 0) failToLocate(name, directory);
    checkScheme(store.find(name)->scheme, directory);
    return std::move(store.find(name)->scheme);
}

int runProgram(const Arguments& arguments, const std::string& schemeDirectory,
               const StandardStreams& streams) {
    Tessel::PropertySet scheme = loadScheme(arguments.scheme, schemeDirectory, streams.errors);
    std::optional<Input> input = readInput(arguments.inputFile, streams.input);
    if (!input) return 0;
    if (Zelmor::isUtf16(input->text)) {
        throw Failure("Error: \"" + arguments.inputFile +
                      "\" is stored as UTF-16; convert it to UTF-8 to have it formatted.");
    }

    const Tessel::FormatOptions options{std::move(scheme), Tessel::protectedRegionMarkers()};
    const Run::FormattedText result = Run::formatText(options, input->text, Run::threadsOfMachine());
    if (!result.messages.empty()) return printDiagnostics(result.messages, arguments.inputFile, streams.errors);
    const OutputTarget target{arguments.outputFile, streams.output, input->file ? &*input->file : nullptr};
    if (result.text == input->text && isInput(target)) return 0;  // writing it would only make it look new
    writeOutput(target, result.text);
    return 0;
}

}  // namespace

int run(int argumentCount, const char* const* arguments, const StandardStreams& streams) {
    std::string schemeDirectory;
    try {
        const Arguments parsed = parseArguments(argumentCount, arguments, streams.errors);
        schemeDirectory = TesselUI::schemeDirectory();
        return runProgram(parsed, schemeDirectory, streams);
    } catch (const EndOfProgram& end) {
        return end.status;
    } catch (...) {
        return reportException(schemeDirectory, streams.errors);
    }
}

}  // namespace Cli
