#include "engine/format_job.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

#include "cpp/lexer.h"
#include "cpp/nodes.h"
#include "cpp/parser.h"
#include "cpp/token_kind.h"
#include "engine/cpp_formatter.h"
#include "engine/cpp_pre_formatter.h"
#include "engine/extension_settings.h"
#include "engine/gap.h"
#include "engine/layout_observer.h"
#include "engine/line_ends.h"
#include "engine/region_proof.h"
#include "engine/scheme_values.h"
#include "engine/stage_log.h"
#include "engine/source_copy.h"
#include "engine/token_proof.h"
#include "scheme/property_keys.h"
#include "textstream/text_document.h"
#include "trn/exception.h"

namespace Tessel {

namespace {

constexpr const char* kAnalyzing = "Analyzing file:\n%s";
constexpr const char* kFormatting = "Formatting file:\n%s";
constexpr const char* kMalformedLiteral = "The literal that begins here does not end.";
// More than any text that settles takes.
constexpr int kWrappingRounds = 4;
constexpr const char* kStrayBackslash = "Unexpected \"\\\" in front of this.";

// A text in memory with its tree. The text stays where it is, so that positions and views hold.
struct ParsedText {
    explicit ParsedText(std::string content) : text(std::move(content)) {}
    // Borrows the content.
    explicit ParsedText(std::string_view content) : text(Zelmor::TextDocument::borrowing(content)) {}

    Zelmor::TextDocument text;
    Cpp::OpaqueTokens opaque;
    Cpp::RootNode root;
};

// Parses the text. Returns the messages that are more than warnings.
std::list<Diagnostic> parse(Cpp::Parser& parser, ParsedText& source) {
    std::list<Diagnostic> messages;
    Cpp::Lexer lexer(source.text.text(), source.opaque);
    parser.parse(lexer, source.root, messages);
    messages.remove_if([](const Diagnostic& message) { return message.severity == Warning; });
    return messages;
}

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

// What is wrong with the source, where white space can only be added at the cost of other tokens.
const char* messageFor(const ParsedText& source, std::size_t offset) {
    const bool isLiteral =
        std::any_of(source.opaque.begin(), source.opaque.end(), [offset](const Cpp::OpaqueToken& token) {
            return token.kind == Cpp::Unknown && token.offset == offset;
        });
    if (isLiteral) return kMalformedLiteral;
    const std::string_view before = source.text.text().substr(0, offset);
    const auto code = std::find_if_not(before.rbegin(), before.rend(), isWhitespace);
    return code != before.rend() && *code == '\\' ? kStrayBackslash : nullptr;
}

[[noreturn]] void failProof(const std::string& how, const Zelmor::TextPosition& place) {
    throw Trn::Exception("The formatted text would differ from the source " + how + ", first in line " +
                         std::to_string(place.line) + ". Nothing has been written.");
}

// A text that cannot be formatted gets a message. Throws when the result is not the source with other white
// space for any other reason.
std::optional<Diagnostic> prove(const ParsedText& source, std::string_view result) {
    const auto lost = findLostToken(source.text.text(), source.opaque, result);
    if (!lost) return std::nullopt;
    const Zelmor::TextPosition place = source.text.positionOf(*lost);
    if (const char* message = messageFor(source, *lost)) {
        const auto behindFirst = static_cast<std::uint32_t>(place.column + 1);
        return Diagnostic{Error, {static_cast<std::uint32_t>(place.line), behindFirst}, 0, message};
    }
    failProof("in more than white space", place);
}

KeptRegions keptRegions(const ParsedText& source, const CppPreFormatter& preFormatter) {
    KeptRegions result;
    for (const CppPreFormatter::Region& region : preFormatter.regions()) {
        result.push_back({offsetOf(source.text, region.start) - 1, offsetOf(source.text, region.end)});
    }
    return result;
}

void proveRegions(const ParsedText& source, const KeptRegions& regions, std::string_view result) {
    const auto changed = findChangedLine(source.text.text(), regions, result);
    if (changed) failProof("inside of what is to be kept as it is", source.text.positionOf(*changed));
}

// The source with other white space, its line ends put in order.
std::string withLineEnds(const ParsedText& source, const KeptRegions& regions, const FormatOptions& options,
                         std::string result) {
    const ExtensionSettings settings(options.scheme);
    if (!LineEnds::areWanted(settings)) return result;
    const TrailingComments::Columns columns{readTabSize(options.scheme), readTabMode(options.scheme)};
    return LineEnds(settings, columns, source.text.text(), source.opaque, regions, std::move(result)).takeText();
}

// Who is told of a job, and of which source.
struct Listener {
    LayoutObserver* observer = nullptr;
    const ParsedText* source = nullptr;

    void begin() const {
        if (!observer) return;
        observer->begin(source->text);
        tellLines(*observer, source->text, source->opaque);
    }
    void hearStage(std::string_view before, std::string_view after, bool isWrapping) const {
        if (observer) tellStage(*observer, source->text, before, after, isWrapping);
    }
};

// The formatted text; its tree is gone when this returns.
std::string formatParsed(ParsedText& source, const KeptRegions& regions, const FormatOptions& options,
                         const LayoutPasses& passes, const Listener& listener) {
    CppFormatter formatter(source.text, source.opaque, options, passes, listener.observer);
    source.root.accept(formatter);
    Cpp::RootNode().swap(source.root);
    std::string text = formatter.takeText();
    if (!listener.observer) return withLineEnds(source, regions, options, std::move(text));
    std::string result = withLineEnds(source, regions, options, text);
    listener.hearStage(text, result, false);
    return result;
}

}  // namespace

int FormatJob::format(const FormatOptions& options, std::string_view text, std::string& result,
                      std::list<Diagnostic>& diagnostics, UpdateFunctor& progress) const {
    CppPreFormatter preFormatter(options.markers);
    const ExtensionSettings extensions(options.scheme);
    Cpp::Parser parser(extensions.keepsUnrecognized ? Cpp::Unrecognized::Kept : Cpp::Unrecognized::Reported);
    ParsedText source(text);
    if (!progress(kAnalyzing)) return cancel(diagnostics);
    if (auto messages = parse(parser, source); !messages.empty())
        return moveTo(diagnostics, std::move(messages));
    source.root.accept(preFormatter);
    const KeptRegions regions = keptRegions(source, preFormatter);
    if (!progress(kFormatting)) return cancel(diagnostics);
    const Listener listener{observer_, &source};
    listener.begin();

    std::string formattedText = formatParsed(source, regions, options, passes_, listener);
    const std::string formattedOnce = observer_ ? formattedText : std::string();
    const bool wraps = readSwitch(options.scheme, Keys::LINE_WRAP);
    // Where lines are kept, those that the wrapper begins come to hang as any others, until all stand where
    // they are to.
    int rounds = extensions.keepsLineBreaks ? kWrappingRounds : 1;
    std::string wrappedBefore;
    for (bool isSettled = !wraps; !isSettled && rounds > 0; --rounds) {
        ParsedText formatted(std::move(formattedText));
        if (auto messages = parse(parser, formatted); !messages.empty()) {
            return moveTo(diagnostics, std::move(messages));
        }
        formatted.root.accept(preFormatter);
        std::ostringstream wrapped;
        passes_.wrapLines(options, formatted.text, formatted.root, wrapped);
        formattedText =
            withLineEnds(formatted, keptRegions(formatted, preFormatter), options, std::move(wrapped).str());
        isSettled = formattedText == formatted.text.text() || formattedText == wrappedBefore;
        if (isSettled || rounds == 1) break;
        wrappedBefore = formattedText;
        ParsedText again(std::move(formattedText));
        if (auto messages = parse(parser, again); !messages.empty()) {
            return moveTo(diagnostics, std::move(messages));
        }
        again.root.accept(preFormatter);
        formattedText = formatParsed(again, keptRegions(again, preFormatter), options, passes_, {});
        if (formattedText == formatted.text.text()) {
            // All further rounds would end where this one did.
            formattedText = std::move(wrappedBefore);
            break;
        }
    }
    if (wraps) listener.hearStage(formattedOnce, formattedText, true);
    if (auto message = prove(source, formattedText)) return moveTo(diagnostics, {std::move(*message)});
    proveRegions(source, regions, formattedText);
    result = std::move(formattedText);
    return 0;
}

}  // namespace Tessel
