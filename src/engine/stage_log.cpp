#include "engine/stage_log.h"

#include <algorithm>

#include "cpp/token_kind.h"
#include "engine/gap.h"
#include "engine/layout_observer.h"
#include "scheme/property_keys.h"
#include "textstream/otext_doc_buf.h"
#include "textstream/text_document.h"

namespace Tessel {

namespace {

std::ptrdiff_t lineFeedsIn(std::string_view text) { return std::count(text.begin(), text.end(), '\n'); }

std::string_view behindLineFeed(std::string_view text) { return text.substr(text.rfind('\n') + 1); }

// The white space at the place, and the place behind it.
std::string_view takeBlanks(std::string_view text, std::size_t& place) {
    const std::string_view blanks = leadingBlanks(text.substr(std::min(place, text.size())));
    place += blanks.size();
    return blanks;
}

KeyId keyOf(std::string_view before, std::string_view after, std::string_view next, bool isWrapping) {
    const bool isOnLine = lineFeedsIn(before) == 0 && lineFeedsIn(after) == 0;
    if (isOnLine && next.starts_with("//")) return Keys::WS_BEFORE_LINE_COMMENT;
    const bool movesLines = lineFeedsIn(before) != lineFeedsIn(after);
    if (isWrapping) return movesLines ? KeyId(Keys::RIGHT_MARGIN) : KeyId(Keys::WRAP_STYLE);
    // Lines go along with what moves that they hang from, and those of nothing but a comment with the comments above.
    const bool isMoved = !movesLines && !isOnLine && behindLineFeed(before) != behindLineFeed(after);
    if (isMoved) return next.starts_with("//") ? Keys::WS_BEFORE_LINE_COMMENT : KeyId(Keys::ALIGN_ASSIGNMENTS);
    if (isOnLine && next.starts_with('=')) return Keys::ALIGN_ASSIGNMENTS;
    const bool isWidened = isOnLine && before == " " && !next.empty() && !next.starts_with("/*");
    if (isWidened) return Keys::ALIGN_LIST_COLUMNS;
    return movesLines ? KeyId(Keys::MAX_BLANK_LINES) : KeyId(Keys::STRIP_TRAILING_WS);
}

void tell(LayoutObserver& observer, KeyId key, const Zelmor::TextDocument& source, std::size_t offset, int value) {
    if (offset <= source.size()) observer.measured({key, offset, value});
}

void tellLine(LayoutObserver& observer, const Zelmor::TextDocument& source, std::string_view line, std::size_t start) {
    const std::size_t end = kBlanks.skipBackIn(line);
    tell(observer, Keys::STRIP_TRAILING_WS, source, start + end, end == line.size());
    const std::size_t indent = kBlanks.skipIn(line);
    const std::string_view front = line.substr(0, indent);
    if (indent == line.size() || indent < 2) {
        if (!front.starts_with('\t')) return;
    }
    const bool hasTabs = front.find('\t') != std::string_view::npos;
    tell(observer, Keys::KEEP_TABS, source, start, hasTabs);
    tell(observer, Keys::CONVERT_WS, source, start, hasTabs ? Zelmor::SpacesToTabs : Zelmor::TabsToSpaces);
}

}  // namespace

void tellStage(LayoutObserver& observer, const Zelmor::TextDocument& source, std::string_view before,
               std::string_view after, bool isWrapping) {
    std::size_t place = 0;
    std::size_t placeBefore = 0;
    std::size_t placeAfter = 0;
    const std::string_view text = source.text();
    while (place < text.size()) {
        DecidedGap gap;
        gap.offset = place;
        gap.found = takeBlanks(text, place);
        const std::string_view blanksBefore = takeBlanks(before, placeBefore);
        gap.written = takeBlanks(after, placeAfter);
        if (blanksBefore != gap.written) {
            gap.key = keyOf(blanksBefore, gap.written, text.substr(place), isWrapping);
            gap.hasValue = true;
            if (isWrapping && lineFeedsIn(gap.written) > 0) gap.indentKey = Keys::WRAP_STYLE;
            observer.decided(gap);
        }
        ++place;
        ++placeBefore;
        ++placeAfter;
    }
}

void tellLines(LayoutObserver& observer, const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque) {
    const std::string_view text = source.text();
    auto token = opaque.begin();
    int emptyLines = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = text.substr(start, end - start);
        while (token != opaque.end() && std::size_t{token->offset} + token->length <= start) ++token;
        if (token == opaque.end() || token->offset >= start) tellLine(observer, source, line, start);
        const bool isEmpty = isBlanks(line);
        if (!isEmpty && emptyLines > 0) tell(observer, Keys::MAX_BLANK_LINES, source, start, emptyLines);
        emptyLines = isEmpty ? emptyLines + 1 : 0;
        start = end + 1;
    }
    for (const Cpp::OpaqueToken& comment : opaque) {
        const std::string_view front = text.substr(0, comment.offset);
        const std::string_view blanks = trailingBlanks(front);
        const bool followsCode = blanks.size() < front.size() && blanks.find('\n') == std::string_view::npos;
        if (comment.kind == Cpp::Directive) {
            const bool startsLine = front.empty() || front.ends_with('\n');
            tell(observer, Keys::ALIGN_PPD_LEFT_MOST, source, comment.offset, startsLine);
        }
        if (comment.kind != Cpp::LineComment || !followsCode) continue;
        DecidedGap gap;
        gap.key = Keys::WS_BEFORE_LINE_COMMENT;
        gap.offset = comment.offset - blanks.size();
        gap.found = blanks;
        gap.written = blanks;
        observer.decided(gap);
    }
}

}  // namespace Tessel
