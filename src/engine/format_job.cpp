#include "engine/format_job.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
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
#include "engine/moved_positions.h"
#include "engine/region_proof.h"
#include "engine/same_lines.h"
#include "engine/scheme_values.h"
#include "engine/source_anchors.h"
#include "engine/source_copy.h"
#include "engine/source_indents.h"
#include "engine/stage_log.h"
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
    explicit ParsedText(std::istream& in) : text(in) {}
    // What has become of another, whose tree goes along: only white space differs.
    ParsedText(ParsedText& former, std::string content) : text(std::move(content)) {
        root.swap(former.root);
        MovedPositions positions(former.text, text);
        root.move(positions);
        for (const Cpp::OpaqueToken& token : former.opaque) {
            const std::size_t start = positions.movedStart(token.offset);
            const std::size_t end = positions.movedEnd(std::size_t{token.offset} + token.length);
            opaque.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end - start), token.kind});
        }
        for (const KeptRegion& region : former.regions) {
            regions.push_back({positions.movedStart(region.start), positions.movedEnd(region.end)});
        }
        for (const KeptRegion& block : former.unreadBlocks) {
            unreadBlocks.push_back({positions.movedStart(block.start), positions.movedEnd(block.end)});
        }
        sameLines = positions.takeSameLines();
    }

    void findUnreadBlocks() {
        for (Trn::TokenList::Index place = 0; place < tokens->size(); ++place) {
            if (tokens->kind(place) != Cpp::UnreadBlock) continue;
            unreadBlocks.push_back({tokens->offset(place), tokens->endOffset(place)});
        }
    }

    // Regions that have places in common are one.
    void addRegions(const KeptRegions& added) {
        KeptRegions all = std::exchange(regions, {});
        all.insert(all.end(), added.begin(), added.end());
        std::ranges::sort(all, {}, &KeptRegion::start);
        for (const KeptRegion& region : all) {
            if (regions.empty() || region.start >= regions.back().end) {
                regions.push_back(region);
            } else {
                regions.back().end = std::max(regions.back().end, region.end);
            }
        }
    }

    Zelmor::TextDocument text;
    Cpp::OpaqueTokens opaque;
    std::shared_ptr<const Trn::TokenList> tokens;  // null for what has become of another
    Cpp::RootNode root;
    KeptRegions regions;       // in order
    KeptRegions unreadBlocks;  // what the parse has made one token of, in order
    SameLines sameLines;  // as in the text that it has come from
};

// Parses the text. Returns the messages that are more than warnings.
std::list<Diagnostic> parse(Cpp::Parser& parser, ParsedText& source) {
    std::list<Diagnostic> messages;
    Cpp::Lexer lexer(source.text.text(), source.opaque);
    parser.parse(lexer, source.root, messages);
    source.tokens = parser.takeTokens();
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

void proveRegions(const ParsedText& source, std::string_view result) {
    const auto changed = findChangedLine(source.text.text(), source.regions, result);
    if (changed) failProof("inside of what is to be kept as it is", source.text.positionOf(*changed));
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

// Other formatters leave alone what nothing closes.
CppPreFormatter::OpenRegions openRegionsOf(const PropertySet& scheme) {
    using OpenRegions = CppPreFormatter::OpenRegions;
    return readSwitch(scheme, Keys::KEEP_FOREIGN_REGIONS) ? OpenRegions::Kept : OpenRegions::Forgotten;
}

FormatOptions optionsFor(std::string_view source, const FormatOptions& given) {
    FormatOptions options = withMarkersOfScheme(given);
    if (readSwitch(options.scheme, Keys::ANCHORS_FROM_SOURCE)) {
        options.scheme = withAnchorsOfSource(std::move(options.scheme), source);
    }
    return options;
}

// What the stages of a job have in common.
struct Stages {
    // Reads the text, and makes one node of each of its protected regions. Returns what is wrong with it.
    std::list<Diagnostic> read(ParsedText& source) const {
        Cpp::Parser parser(extensions.keepsUnrecognized ? Cpp::Unrecognized::Kept : Cpp::Unrecognized::Reported);
        std::list<Diagnostic> messages = parse(parser, source);
        if (!messages.empty()) return messages;
        if (extensions.keepsUnrecognized) source.findUnreadBlocks();
        const CppPreFormatter::LaidOut laidOut{extensions.formatsMacroCalls, extensions.formatsOtherGaps,
                                                 extensions.keepsLineBreaks, extensions.formatsTypeArguments,
                                                 extensions.formatsMacroBodies};
        CppPreFormatter preFormatter(options.markers, openRegionsOf(options.scheme), laidOut);
        source.root.accept(preFormatter);
        KeptRegions regions;
        for (const CppPreFormatter::Region& region : preFormatter.regions()) {
            // What stands between an #endif and the comment behind it is that comment's.
            const std::size_t start = offsetOf(source.text, region.start) - 1;
            const std::size_t end = source.text.text().find_last_not_of(" \t", offsetOf(source.text, region.end) - 1);
            regions.push_back({start, end + 1});
        }
        source.addRegions(regions);
        return messages;
    }

    // The formatted text. A tree that nobody needs is gone when this returns.
    std::string format(ParsedText& source, const Listener& listener) const {
        CppFormatter formatter(source.text, source.opaque, options, passes, listener.observer);
        formatter.setSettledLines(source.sameLines);
        formatter.setUnreadBlocks(source.unreadBlocks);
        formatter.setSourceTokens(std::move(source.tokens));
        source.root.accept(formatter);
        if (!wrapsLines) Cpp::RootNode().swap(source.root);
        source.addRegions(formatter.regionsInExpressions());
        std::string text = formatter.takeText();
        if (!listener.observer) return withLineEnds(source, std::move(text));
        std::string result = withLineEnds(source, text);
        listener.hearStage(text, result, false);
        return result;
    }

    // The source with other white space, its line ends put in order.
    std::string withLineEnds(const ParsedText& source, std::string result) const {
        if (!LineEnds::areWanted(extensions)) return result;
        return LineEnds(extensions, columns, source.text.text(), source.opaque, source.regions, std::move(result))
            .takeText();
    }

    bool hasLongLines(std::string_view text) const { return passes.hasLongLines(options, text); }

    std::string wrap(ParsedText& formatted) const {
        return withLineEnds(formatted, passes.wrapLines(options, formatted.text, formatted.root));
    }

    const FormatOptions& options;
    const LayoutPasses& passes;
    ExtensionSettings extensions{options.scheme};
    // No tab size counts as one, as in all that is written.
    TrailingComments::Columns columns{std::max(readTabSize(options.scheme), 1), readTabMode(options.scheme),
                                      readInt(options.scheme, Keys::RIGHT_MARGIN, 0).value};
    bool wrapsLines = readSwitch(options.scheme, Keys::LINE_WRAP);
};

// What tells a text from others, for all that matters here, and takes no memory: two texts that pass for one end the
// rounds of wrapping early.
struct Fingerprint {
    Fingerprint() = default;
    explicit Fingerprint(std::string_view text) : size(text.size()), hash(std::hash<std::string_view>()(text)) {}
    bool isOf(std::string_view text) const { return text.size() == size && Fingerprint(text).hash == hash; }

    std::size_t size = 0;
    std::size_t hash = 0;
};

// The text with its lines wrapped, which the source has become. Where lines are kept, those that the wrapper begins
// come to hang as any others, until all stand where they are to, or come to stand where they were.
std::string withLinesWrapped(const Stages& stages, ParsedText& source, std::string text) {
    if (!stages.hasLongLines(text)) return text;
    Fingerprint wrappedBefore;
    auto formatted = std::make_unique<ParsedText>(source, std::move(text));
    for (int rounds = stages.extensions.keepsLineBreaks ? kWrappingRounds : 1;; --rounds) {
        std::string wrapped = stages.wrap(*formatted);
        if (rounds == 1 || wrapped == formatted->text.text() || wrappedBefore.isOf(wrapped)) return wrapped;
        ParsedText again(*formatted, std::move(wrapped));
        const Fingerprint formattedBefore(formatted->text.text());
        formatted.reset();
        std::string formattedAgain = stages.format(again, {});
        if (formattedBefore.isOf(formattedAgain)) return again.text.takeText();
        if (!stages.hasLongLines(formattedAgain)) return formattedAgain;
        wrappedBefore = Fingerprint(again.text.text());
        formatted = std::make_unique<ParsedText>(again, std::move(formattedAgain));
    }
}

}  // namespace

int FormatJob::format(const FormatOptions& given, std::istream& in, std::ostream& out,
                      std::list<Diagnostic>& diagnostics, UpdateFunctor& progress) const {
    ParsedText source(in);
    const FormatOptions options = optionsFor(source.text.text(), given);
    const Stages stages{options, passes_};
    if (!progress(kAnalyzing)) return cancel(diagnostics);
    // Only a text that has been read in full can be gone through again from its start.
    if (in.bad()) return fail(diagnostics, Error, "Unable to rewind input.");
    if (auto messages = stages.read(source); !messages.empty()) return moveTo(diagnostics, std::move(messages));
    if (!progress(kFormatting)) return cancel(diagnostics);
    const Listener listener{observer_, &source};
    listener.begin();

    std::string result = stages.format(source, listener);
    if (stages.wrapsLines) {
        const std::string unwrapped = observer_ ? result : std::string();
        result = withLinesWrapped(stages, source, std::move(result));
        listener.hearStage(unwrapped, result, true);
    }
    if (stages.extensions.keepsTabs) {
        const int tabSize = std::max(readTabSize(options.scheme), 1);
        result = withIndentsOfSource(source.text.text(), result, tabSize);
    }
    if (auto message = prove(source, result)) return moveTo(diagnostics, {std::move(*message)});
    proveRegions(source, result);
    out.write(result.data(), static_cast<std::streamsize>(result.size()));
    out.flush();
    return 0;
}

}  // namespace Tessel
