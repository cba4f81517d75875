#include "engine/format_job.h"

#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/format_stages.h"
#include "engine/parsed_text.h"
#include "engine/scheme_values.h"
#include "engine/source_anchors.h"
#include "engine/stretched_text.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

constexpr const char* kAnalyzing = "Analyzing file:\n%s";
constexpr const char* kFormatting = "Formatting file:\n%s";

int moveTo(std::list<Diagnostic>& diagnostics, std::list<Diagnostic> messages) {
    const auto count = static_cast<int>(messages.size());
    diagnostics.splice(diagnostics.end(), messages);
    return count;
}

int fail(std::list<Diagnostic>& diagnostics, Severity severity, const char* text) {
    diagnostics.push_back({severity, {}, 0, text});
    return 1;
}

int cancel(std::list<Diagnostic>& diagnostics) {
    return fail(diagnostics, Information, "Formatting cancelled at user's request.");
}

FormatOptions optionsFor(std::string_view source, const FormatOptions& given) {
    FormatOptions options = withMarkersOfScheme(given);
    if (readSwitch(options.scheme, Keys::ANCHORS_FROM_SOURCE)) {
        options.scheme = withAnchorsOfSource(std::move(options.scheme), source);
    }
    return options;
}

int write(std::ostream& out, const std::string& text) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    return 0;
}

// What has been written takes no memory any more.
int write(std::ostream& out, std::vector<std::string> parts) {
    for (std::string& part : parts) write(out, std::exchange(part, {}));
    return 0;
}

}  // namespace

int FormatJob::format(const FormatOptions& given, std::istream& in, std::ostream& out,
                      std::list<Diagnostic>& diagnostics, UpdateFunctor& progress) const {
    Zelmor::LineFeedText text(in);
    const FormatOptions options = optionsFor(text.text(), given);
    const FormatStages stages(options, passes_);
    if (!progress(kAnalyzing)) return cancel(diagnostics);
    // Only a text that has been read in full can be gone through again from its start.
    if (in.bad()) return fail(diagnostics, Error, "Unable to rewind input.");
    // What is observed has places in the whole text. Whether all of a text can be formatted is known only when its
    // stretches are laid out: who is asked then whether to go on can still have nothing written.
    if (!observer_) {
        std::vector<std::string> parts = StretchedText(stages, text.text()).layOut(tasks_);
        if (!parts.empty()) return progress(kFormatting) ? write(out, std::move(parts)) : cancel(diagnostics);
    }
    ParsedText source(std::move(text));
    if (auto messages = stages.read(source); !messages.empty()) return moveTo(diagnostics, std::move(messages));
    if (!progress(kFormatting)) return cancel(diagnostics);
    const std::string result = stages.layOut(source, observer_);
    if (auto message = FormatStages::prove(source, result)) return moveTo(diagnostics, {std::move(*message)});
    return write(out, result);
}

}  // namespace Tessel
