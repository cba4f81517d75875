#include "engine/layout_log.h"

#include <functional>

#include "engine/gap.h"
#include "scheme/extension_keys.h"

namespace Tessel {

bool LayoutLog::isOfSource(std::string_view piece) const {
    const std::less<const char*> isBefore;
    return piece.data() && !isBefore(piece.data(), source_.data()) &&
           !isBefore(source_.data() + source_.size(), piece.data() + piece.size());
}

KeyId LayoutLog::decider(const WantedText& wanted) const {
    if (!place_.oneLine || !wanted.present || wanted.hasLineFeed()) return wanted.key;
    std::string value;
    const bool isSet = wanted.key && scheme_.getString(wanted.key, value);
    return isSet && value.find('\n') != value.npos ? place_.oneLine : wanted.key;
}

void LayoutLog::decided(std::string_view found, const WantedText& wanted) {
    if (!isOfSource(found)) return;
    DecidedGap gap;
    gap.key = decider(wanted);
    gap.offset = offsetOf(found);
    gap.found = found;
    gap.written = wanted.present ? wanted.text() : found;
    gap.hasValue = wanted.present && wanted.key;
    gap.baseColumn = place_.lineColumn;
    gap.isOnOneLine = wanted.isOnOneLine;
    const bool isHanging = gap.key == KeyId(Keys::KEEP_LINE_BREAKS);
    if (gap.written.find('\n') != std::string_view::npos && !isHanging) gap.indentKey = place_.indent;
    lastWritten_ = gap.written;
    last_ = gap;
    last_.written = lastWritten_;
    observer_.decided(gap);
    const bool isColumn = isColumnGap(found);
    if (gap.key && (isColumn || found == " ")) observer_.measured({Keys::KEEP_COLUMNS, gap.offset, isColumn});
}

void LayoutLog::indented(std::string_view piece, KeyId key) {
    if (!last_.indentKey || !isOfSource(piece) || last_.end() != offsetOf(piece)) return;
    last_.indentKey = key;
    observer_.decided(last_);
}

void LayoutLog::left(std::string_view found, const WantedText& wanted) {
    decided(found, wanted);
    left_ = wanted;
    leftEnd_ = found.data() + found.size();
}

// The line end in front of the piece, which a directive or comment has brought, begins its gap.
void LayoutLog::copiedBehindLineEnd(std::string_view piece) {
    const std::string_view front = source_.substr(0, offsetOf(piece));
    if (piece.empty() || !front.ends_with('\n')) return;
    const std::size_t start = offsetOf(piece) - trailingBlanks(front).size();
    const std::size_t end = offsetOf(piece) + leadingBlanks(piece).size();
    if (last_.end() != end) decided(source_.substr(start, end - start), {});
}

void LayoutLog::copied(std::string_view piece) {
    if (!isOfSource(piece)) return;
    copiedBehindLineEnd(piece);
    for (std::size_t lineFeed = piece.find('\n'); lineFeed != std::string_view::npos;
         lineFeed = piece.find('\n', lineFeed)) {
        std::size_t start = lineFeed;
        while (start > 0 && isWhitespace(piece[start - 1])) --start;
        while (lineFeed < piece.size() && isWhitespace(piece[lineFeed])) ++lineFeed;
        const std::string_view blanks = piece.substr(start, lineFeed - start);
        const bool isLeft = leftEnd_ == blanks.data() + blanks.size() && !left_.present;
        decided(blanks, isLeft ? left_ : WantedText());
    }
}

void LayoutLog::measured(KeyId key, std::string_view piece, int value) {
    if (isOfSource(piece)) observer_.measured({key, offsetOf(piece), value});
}

void LayoutLog::measured(KeyId key, std::string_view piece, std::string_view value) {
    if (isOfSource(piece)) observer_.measured({key, offsetOf(piece), std::string(value)});
}

}  // namespace Tessel
