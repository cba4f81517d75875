#include "engine/format_stages.h"

#include <algorithm>
#include <functional>
#include <memory>

#include "cpp/lexer.h"
#include "cpp/parser.h"
#include "cpp/token_kind.h"
#include "engine/assignment_columns.h"
#include "engine/cpp_formatter.h"
#include "engine/cpp_pre_formatter.h"
#include "engine/gap.h"
#include "engine/layout_observer.h"
#include "engine/line_ends.h"
#include "engine/region_proof.h"
#include "engine/scheme_values.h"
#include "engine/source_copy.h"
#include "engine/source_indents.h"
#include "engine/stage_log.h"
#include "engine/token_proof.h"
#include "scheme/property_keys.h"
#include "trn/exception.h"

namespace Tessel {

namespace {

constexpr const char* kMalformedLiteral = "The literal that begins here does not end.";
constexpr const char* kStrayBackslash = "Unexpected \"\\\" in front of this.";
// More than any text that settles takes.
constexpr int kWrappingRounds = 4;

// Parses the text. Returns the messages that are more than warnings.
std::list<Diagnostic> parse(Cpp::Parser& parser, ParsedText& source) {
    std::list<Diagnostic> messages;
    Cpp::Lexer lexer(source.text.text(), source.opaque);
    parser.parse(lexer, source.root, messages);
    source.tokens = parser.takeTokens();
    source.conditions = parser.takeConditions();
    source.hasUnrecognized = !std::ranges::all_of(parser.keptItems(), &Cpp::KeptItem::isMacro);
    messages.remove_if([](const Diagnostic& message) { return message.severity == Warning; });
    return messages;
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

// Other formatters leave alone what nothing closes.
CppPreFormatter::OpenRegions openRegionsOf(const PropertySet& scheme) {
    using OpenRegions = CppPreFormatter::OpenRegions;
    return readSwitch(scheme, Keys::KEEP_FOREIGN_REGIONS) ? OpenRegions::Kept : OpenRegions::Forgotten;
}

// What tells a text from others, for all that matters here, and takes no memory: two texts that pass for one end the
// rounds of wrapping early.
struct Fingerprint {
    Fingerprint() = default;
    explicit Fingerprint(std::string_view text) : size(text.size()), hash(std::hash<std::string_view>()(text)) {}
    bool isOf(std::string_view text) const { return text.size() == size && Fingerprint(text).hash == hash; }

    std::size_t size = 0;
    std::size_t hash = 0;
};

}  // namespace

FormatStages::FormatStages(const FormatOptions& options, const LayoutPasses& passes)
    : options_(options),
      passes_(passes),
      extensions_(options.scheme),
      columns_(ColumnLayout::of(options.scheme)),
      wrapsLines_(readSwitch(options.scheme, Keys::LINE_WRAP)) {}

std::list<Diagnostic> FormatStages::read(ParsedText& source) const {
    Cpp::Parser parser(extensions_.keepsUnrecognized ? Cpp::Unrecognized::Kept : Cpp::Unrecognized::Reported);
    std::list<Diagnostic> messages = parse(parser, source);
    if (!messages.empty()) return messages;
    if (extensions_.keepsUnrecognized) source.findUnreadBlocks();
    const CppPreFormatter::LaidOut laidOut{extensions_.formatsMacroCalls, extensions_.formatsOtherGaps,
                                           extensions_.keepsLineBreaks, extensions_.formatsTypeArguments,
                                           extensions_.formatsMacroBodies};
    CppPreFormatter preFormatter(options_.markers, openRegionsOf(options_.scheme), laidOut);
    source.root.accept(preFormatter);
    source.hasOpenRegion = preFormatter.hasOpenRegion();
    KeptRegions regions;
    for (const CppPreFormatter::Region& region : preFormatter.regions()) {
        regions.push_back({offsetOf(source.text, region.start) - 1, offsetOf(source.text, region.end)});
    }
    source.addRegions(regions);
    return messages;
}

std::string FormatStages::layOut(ParsedText& source, LayoutObserver* observer) const {
    if (observer) {
        observer->begin(source.text);
        tellLines(*observer, source.text, source.opaque);
    }
    std::string result = format(source, observer);
    if (wrapsLines_) {
        const std::string unwrapped = observer ? result : std::string();
        result = withLinesWrapped(source, std::move(result));
        if (observer) tellStage(*observer, source.text, unwrapped, result, true);
    }
    if (extensions_.keepsTabs) return withIndentsOfSource(source.text.text(), result, columns_.tabSize);
    return result;
}

std::optional<Diagnostic> FormatStages::prove(const ParsedText& source, std::string_view result) {
    if (const auto lost = findLostToken(source.text.text(), source.opaque, result)) {
        const Zelmor::TextPosition place = source.text.positionOf(*lost);
        const char* message = messageFor(source, *lost);
        if (!message) failProof("in more than white space", place);
        const auto behindFirst = static_cast<std::uint32_t>(place.column + 1);
        return Diagnostic{Error, {static_cast<std::uint32_t>(place.line), behindFirst}, 0, message};
    }
    const auto changed = findChangedLine(source.text.text(), source.regions, result);
    if (changed) failProof("inside of what is to be kept as it is", source.text.positionOf(*changed));
    return std::nullopt;
}

// The formatted text. A tree that nobody needs is gone when this returns.
std::string FormatStages::format(ParsedText& source, LayoutObserver* observer) const {
    CppFormatter formatter(source.text, source.opaque, options_, passes_, observer);
    formatter.setSettledLines(source.sameLines);
    formatter.setUnreadBlocks(source.unreadBlocks);
    formatter.setSourceTokens(std::move(source.tokens));
    source.root.accept(formatter);
    if (!wrapsLines_) Cpp::RootNode().swap(source.root);
    source.addRegions(formatter.regionsInExpressions());
    std::string text = formatter.takeText();
    ListsInRows lists = formatter.takeListsInRows();
    if (!observer) return withLineEnds(source, std::move(text), std::move(lists));
    std::string result = withLineEnds(source, text, std::move(lists));
    tellStage(*observer, source.text, text, result, false);
    return result;
}

// The source with other white space, its columns and line ends put in order.
std::string FormatStages::withLineEnds(const ParsedText& source, std::string result, ListsInRows lists) const {
    if (!lists.empty()) result = withListColumns(columns_, source.text.text(), std::move(lists), std::move(result));
    if (extensions_.alignsAssignments) {
        result = withAssignmentColumns(columns_, source.text.text(), source.regions, std::move(result));
    }
    if (!LineEnds::areWanted(extensions_)) return result;
    return LineEnds(extensions_, columns_, source.text.text(), source.opaque, source.regions, std::move(result))
        .takeText();
}

std::string FormatStages::wrap(ParsedText& formatted) const {
    return withLineEnds(formatted, passes_.wrapLines(options_, formatted.text, formatted.root));
}

// The text with its lines wrapped, which the source has become. Where lines are kept, those that the wrapper begins
// come to hang as any others, until all stand where they are to, or come to stand where they were.
std::string FormatStages::withLinesWrapped(ParsedText& source, std::string text) const {
    if (!hasLongLines(text)) return text;
    Fingerprint wrappedBefore;
    auto formatted = std::make_unique<ParsedText>(source, std::move(text));
    for (int rounds = extensions_.keepsLineBreaks ? kWrappingRounds : 1;; --rounds) {
        std::string wrapped = wrap(*formatted);
        if (rounds == 1 || wrapped == formatted->text.text() || wrappedBefore.isOf(wrapped)) return wrapped;
        ParsedText again(*formatted, std::move(wrapped));
        const Fingerprint formattedBefore(formatted->text.text());
        formatted.reset();
        std::string formattedAgain = format(again, nullptr);
        if (formattedBefore.isOf(formattedAgain)) return again.text.takeText();
        if (!hasLongLines(formattedAgain)) return formattedAgain;
        wrappedBefore = Fingerprint(again.text.text());
        formatted = std::make_unique<ParsedText>(again, std::move(formattedAgain));
    }
}

}  // namespace Tessel
