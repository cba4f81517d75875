#include "cli/driver.h"

#include <filesystem>
#include <list>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>

#include "cli/arguments.h"
#include "cli/diagnostic_lines.h"
#include "cli/exception_report.h"
#include "cli/failure.h"
#include "cli/input_file.h"
#include "cli/output_file.h"
#include "cli/text_encoding.h"
#include "engine/format_job.h"
#include "layout/passes.h"
#include "scheme/property_set_store.h"
#include "scheme/scheme_check.h"
#include "scheme/scheme_conversion.h"
#include "scheme/scheme_directory.h"
#include "textstream/byte_order_mark.h"

namespace Cli {

namespace {

// There is nobody who could stop a run half way.
class NeverCancels : public Tessel::UpdateFunctor {
public:
    bool operator()(const std::string&) override { return true; }
};

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

Tessel::PropertySet loadScheme(const std::string& name, const std::string& directory, std::ostream& errors) {
    TesselUI::PropertySetStore store(directory);
    store.read();
    const std::string notice = TesselUI::convertSchemes(store);
    if (!notice.empty()) errors << '\n' << notice << '\n';
    if (store.count(name) == 0) failToLocate(name, directory);
    checkScheme(store.find(name)->scheme, directory);
    return std::move(store.find(name)->scheme);
}

// The text to format, without what the encoding puts around it.
std::istringstream openText(std::string text, const TextEncoding& encoding) {
    if (encoding.hasByteOrderMark) text.erase(0, Zelmor::BYTE_ORDER_MARK.size());
    return std::istringstream(std::move(text));
}

// Formats `in` into `out`; answers with the diagnostics that kept it from doing so.
std::list<Tessel::Diagnostic> format(Tessel::PropertySet scheme, std::istream& in, std::ostringstream& out) {
    std::list<Tessel::Diagnostic> diagnostics;
    const Tessel::FormatOptions options{std::move(scheme), Tessel::protectedRegionMarkers()};
    const Tessel::Passes passes;
    NeverCancels progress;
    out.exceptions(std::ios::badbit);  // want of memory must not pass for a short text
    Tessel::FormatJob(passes).format(options, in, out, diagnostics, progress);
    return diagnostics;
}

int runProgram(const Arguments& arguments, const std::string& schemeDirectory,
               const StandardStreams& streams) {
    Tessel::PropertySet scheme = loadScheme(arguments.scheme, schemeDirectory, streams.errors);
    std::optional<Input> input = readInput(arguments.inputFile, streams.input);
    if (!input) return 0;
    if (isUtf16(input->text)) {
        throw Failure("Error: \"" + arguments.inputFile +
                      "\" is stored as UTF-16; convert it to UTF-8 to have it formatted.");
    }

    const TextEncoding encoding = detectEncoding(input->text);
    std::istringstream in = openText(std::move(input->text), encoding);
    std::ostringstream out;
    const std::list<Tessel::Diagnostic> diagnostics = format(std::move(scheme), in, out);
    if (!diagnostics.empty()) return printDiagnostics(diagnostics, arguments.inputFile, streams.errors);

    std::string text = encoding.hasCarriageReturns ? addCarriageReturns(out.view()) : std::move(out).str();
    const OutputTarget target{arguments.outputFile, streams.output, input->file ? &*input->file : nullptr};
    if (text == in.view() && isInput(target)) return 0;  // writing it would only make it look new
    if (encoding.hasByteOrderMark) text.insert(0, Zelmor::BYTE_ORDER_MARK);
    writeOutput(target, text);
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
