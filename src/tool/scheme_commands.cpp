#include "tool/scheme_commands.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "files/descriptor.h"
#include "files/read_file.h"
#include "files/write_file.h"
#include "scheme/key_guide.h"
#include "scheme/property_set.h"
#include "scheme/scheme_conversion.h"
#include "scheme/scheme_lint.h"
#include "scheme/scheme_text.h"
#include "tool/failure.h"
#include "tool/key_page.h"
#include "tool/output.h"
#include "tool/reporter.h"
#include "tool/scheme_finder.h"

namespace Tool {

namespace {

Files::FileContent readScheme(const std::string& file) try {
    return Files::readFile(file);
} catch (const Files::ReadFailure& failure) {
    throw Failure(file + ": " + Files::errorText(failure.error));
}

}  // namespace

int listSchemesCommand(const Streams& streams) {
    const std::vector<SchemeSummary> schemes = listSchemes();
    std::size_t width = 0;
    for (const SchemeSummary& scheme : schemes) width = std::max(width, scheme.name.size());
    std::string text;
    for (const SchemeSummary& scheme : schemes) {
        const std::string margin(width + 2, ' ');
        text +=
            scheme.name + margin.substr(scheme.name.size()) + scheme.description + '\n' + margin + scheme.file + '\n';
    }
    return say(text, streams);
}

int keysCommand(const Options& options, const Streams& streams) {
    if (options.keyPage == KeyPage::Markdown) return say(keyPageMarkdown(), streams);
    if (options.keyPage == KeyPage::Html) return say(keyPageHtml(), streams);
    if (options.argument.empty()) return say(keyList(), streams);
    std::string key = options.argument;
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    if (const Tessel::KeyGuide* guide = Tessel::findKeyGuide(key)) return say(keyText(*guide), streams);
    const std::string_view meant = Tessel::nearestKey(key);
    throw Failure("there is no key " + options.argument +
                  (meant.empty() ? "; \"vantrel keys\" lists all" : "; is " + std::string(meant) + " meant?"));
}

int showSchemeCommand(const Options& options, const Streams& streams) {
    return say(readScheme(schemeFile(options.argument)).text, streams);
}

int checkSchemeCommand(const Options& options, const Streams& streams) {
    const std::string text = readScheme(options.argument).text;
    const std::vector<TesselUI::SchemeFault> faults = TesselUI::lintScheme(text);
    std::string said;
    for (const TesselUI::SchemeFault& fault : faults) {
        said += messageText(options.argument, {Message::Severity::Warning, fault.line, 1, fault.text}, text, false);
    }
    say(said, streams);
    return faults.empty() ? Fine : CannotWork;
}

int upgradeSchemeCommand(const Options& options, const Streams& streams) {
    const Files::FileContent content = readScheme(options.argument);
    std::istringstream in(content.text);
    Tessel::PropertySet scheme(in);
    if (in.fail()) throw Failure(options.argument + ": " + TesselUI::lintScheme(content.text).front().text);
    if (!TesselUI::isOldScheme(scheme)) return say(options.argument + " is up to date\n", streams);
    TesselUI::convertScheme(scheme);
    try {
        Files::writeFile(options.argument, TesselUI::updatedSchemeText(content.text, scheme), &content.stamp);
    } catch (const Files::WriteFailure& failure) {
        throw Failure(options.argument + " cannot be written" +
                      (failure.error ? ": " + Files::errorText(failure.error) : ""));
    }
    return say(options.argument + " now is a scheme of version " + TesselUI::CURRENT_VERSION + '\n', streams);
}

}  // namespace Tool
