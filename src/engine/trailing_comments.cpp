#include "engine/trailing_comments.h"

#include <algorithm>
#include <cstdlib>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"

namespace Tessel {

namespace {

constexpr int kNoCode = -1;
constexpr int kWideTab = 8;
constexpr int kNearColumn = 1;

std::size_t textStart(std::string_view text, std::size_t from) {
    return kBlanks.skipIn(text, from);
}

// Whether the line that begins there holds nothing but one comment.
bool isCommentLine(std::string_view text, std::size_t lineStart) {
    const std::string_view rest = text.substr(textStart(text, lineStart));
    if (!rest.starts_with("/*")) return rest.starts_with("//");
    const std::string_view line = trimRight(rest.substr(0, rest.find('\n')));
    return line.find("*/") == line.size() - 2;
}

}  // namespace

TrailingComments::Comment TrailingComments::commentAt(std::string_view written, std::size_t offset) const {
    Comment comment;
    comment.offset = offset;
    comment.sourceColumn = columnIn(source_, offset, columns_.tabSize);
    comment.length = shownColumnAfter(source_.substr(offset, source_.find('\n', offset) - offset), 0, columns_.tabSize);
    const std::size_t lineStart = lineStartOf(written, written.size());
    comment.gapEnd = written.size();
    comment.gapStart = lineStart + trimRight(written.substr(lineStart)).size();
    comment.isOwnLine = comment.gapStart == lineStart;
    const std::string_view code = written.substr(lineStart, comment.gapStart - lineStart);
    comment.codeEnd = shownColumnAfter(code, 0, columns_.tabSize);
    comment.column = shownColumnAfter(written.substr(comment.gapStart), comment.codeEnd, columns_.tabSize);
    comment.closesBody = trimLeft(code) == "}";
    comment.opensBody = code.ends_with('{');
    comment.standsAlone = code == "}" || trimLeft(code).starts_with('#');
    return comment;
}

// Those with which the comment does not go on move to where they belong.
void TrailingComments::placeOthers(std::string& written, Comment& comment) {
    const std::size_t size = written.size();
    placeLast(written);
    comment.gapStart = comment.gapStart + written.size() - size;
    comment.gapEnd = written.size();
}

void TrailingComments::add(std::string& written, std::size_t offset) {
    Comment comment = commentAt(written, offset);
    const bool goesOn = isBelowLast(written, comment);
    if (!goesOn) placeOthers(written, comment);
    if (conditionals_.standsByEnd(offset)) return;
    if (comment.column > kRightmostIndent || leadsElements(written, comment, offset)) return;
    // A line with nothing but a comment may belong to the code below.
    if (comment.isOwnLine && (!goesOn || standsAboveCode(comment))) return;
    push(comment);
}

void TrailingComments::addBlock(std::string& written, std::size_t offset) {
    Comment comment = commentAt(written, offset);
    comment.isBlock = true;
    const bool goesOn = comment.isOwnLine ? goesOnBelowLast(written, comment) : isBelowLast(written, comment);
    if (!goesOn) placeOthers(written, comment);
    if (comment.isOwnLine && !goesOn) return;
    if (comment.column > kRightmostIndent) return;
    // It belongs to what comes next.
    if (!comment.isOwnLine && written[comment.gapStart - 1] == '(') return;
    push(comment);
}

// {// of these
//  a, b}
bool TrailingComments::leadsElements(std::string_view written, const Comment& comment, std::size_t offset) {
    const bool isAgainstBrace = offset > 0 && source_[offset - 1] == '{' && written.ends_with('{');
    return isAgainstBrace && settings_.closesLists() &&
           codeColumnBelow(offset, columns_.tabSize) == comment.sourceColumn;
}

// Whether a block comment without code in front goes on with the last one, and has room below it.
bool TrailingComments::goesOnBelowLast(std::string_view written, const Comment& comment) {
    if (last_.empty() || !last_.back().isBlock || !isInNextLine(written)) return false;
    if (!isBelow(last_.back(), comment, 0)) return false;
    const int column = isFixed(last_.front()) ? last_.front().column : lastColumn_;
    if (columns_.margin > 0 && column + comment.length > columns_.margin) return false;
    // A line with nothing but a comment may belong to the code below.
    return !standsAboveCode(comment);
}

// Whether the source has the code below it in its column, by the width of tabs that has it below the last comment.
bool TrailingComments::standsAboveCode(const Comment& comment) {
    const bool isNear = std::abs(last_.back().sourceColumn - comment.sourceColumn) <= kNearColumn;
    const int tabSize = isNear ? columns_.tabSize : kWideTab;
    return codeColumnBelow(comment.offset, tabSize) == columnIn(source_, comment.offset, tabSize);
}

// Whether the source has it in the column of the other one, which it may miss by so many columns, or has so in an
// editor with wide tabs. Line comments may come to do that by chance, where lines are indented with tabs: those in a
// column have a tab in front of themselves, too.
bool TrailingComments::isBelow(const Comment& other, const Comment& comment, int most) const {
    if (std::abs(other.sourceColumn - comment.sourceColumn) <= most) return true;
    const auto isBehindTab = [this](const Comment& one) { return one.offset > 0 && source_[one.offset - 1] == '\t'; };
    return (comment.isBlock || (isBehindTab(other) && isBehindTab(comment))) &&
           wideColumnOf(other) == wideColumnOf(comment);
}

void TrailingComments::push(const Comment& comment) {
    last_.push_back(comment);
    if (!comment.isOwnLine) lastColumn_ = std::max(lastColumn_, columnOf(comment));
    lastLength_ = std::max(lastLength_, comment.length);
}

void TrailingComments::finish(std::string& written) { placeLast(written); }

// Whether the comment that comes next stands in the line behind the last one, and below it in the source.
bool TrailingComments::isBelowLast(std::string_view written, const Comment& comment) const {
    if (last_.empty() || last_.back().isBlock != comment.isBlock) return false;
    if (isFixed(last_.front()) || isFixed(comment)) return false;
    return (standsInColumn(comment) || mayJoinLast(comment)) && isInNextLine(written);
}

// Whether a block comment stays where it is, whatever stands below it.
bool TrailingComments::isFixed(const Comment& comment) const {
    return comment.isBlock && !comment.isOwnLine && (comment.standsAlone || settings_.keepsColumns);
}

bool TrailingComments::isInNextLine(std::string_view written) const {
    const std::size_t lineEnd = written.find('\n', last_.back().gapEnd);
    return lineEnd != written.npos && written.find('\n', lineEnd + 1) == written.npos;
}

// Whether the source has it in the column of the last one, which a comment that goes on may miss by one. Block comments
// that are aligned wherever they stood go by what fits: in a column of the source, they would not stay in it once the
// code is laid out.
bool TrailingComments::standsInColumn(const Comment& comment) const {
    const Comment& last = last_.back();
    if (endsOtherBody(comment) && !settings_.keepsColumns) return false;
    if (comment.isBlock && settings_.alignsLineComments) return false;
    const bool mayMiss = !comment.isBlock && comment.isOwnLine && !last.standsAlone && !last.opensBody;
    return isBelow(last, comment, mayMiss ? kNearColumn : 0);
}

// Whether it stands behind the end of a body, as the last one does, but of one that is indented otherwise. Block
// comments behind such ends are in a column on purpose, unless the source has the ends below each other.
bool TrailingComments::endsOtherBody(const Comment& comment) const {
    const Comment& last = last_.back();
    const bool isApart = comment.closesBody && last.closesBody && comment.codeEnd != last.codeEnd;
    return isApart && (!comment.isBlock || sourceCodeEndOf(comment) == sourceCodeEndOf(last));
}

// Whether one that does not stand below the last one may come to do so.
bool TrailingComments::mayJoinLast(const Comment& comment) const {
    if (!settings_.alignsLineComments || comment.isOwnLine || comment.standsAlone || last_.back().standsAlone) {
        return false;
    }
    const int column = std::max(lastColumn_, columnOf(comment));
    return columns_.margin <= 0 || column + std::max(lastLength_, comment.length) <= columns_.margin;
}

// The least one for it.
int TrailingComments::columnOf(const Comment& comment) const {
    if (comment.isBlock) return comment.codeEnd + 1;
    const int column = columnAfter(settings_.beforeLineComment.text, comment.codeEnd, columns_.tabSize);
    // Behind a "/", it would begin there.
    const bool followsSlash = trimRight(source_.substr(0, comment.offset)).ends_with('/');
    return followsSlash ? std::max(column, comment.codeEnd + 1) : column;
}

// Where it stands in an editor with wide tabs.
int TrailingComments::wideColumnOf(const Comment& comment) const { return columnIn(source_, comment.offset, kWideTab); }

// The column behind the code in front of it.
int TrailingComments::sourceCodeEndOf(const Comment& comment) const {
    return columnIn(source_, trimRight(source_.substr(0, comment.offset)).size(), columns_.tabSize);
}

// What stands in front of a "}" belongs to its block, which is indented further.
int TrailingComments::codeColumnBelow(std::size_t offset, int tabSize) {
    if (codeBelow_ <= offset) {
        codeBelow_ = offset;
        do {
            codeBelow_ = std::min(source_.find('\n', codeBelow_), source_.size() - 1) + 1;
        } while (isCommentLine(source_, codeBelow_));
    }
    const std::size_t code = textStart(source_, codeBelow_);
    if (source_.substr(code).starts_with('}')) return kNoCode;
    return columnAfter(source_.substr(codeBelow_, code - codeBelow_), 0, tabSize);
}

int TrailingComments::columnIn(std::string_view text, std::size_t offset, int tabSize) {
    const std::size_t lineStart = lineStartOf(text, offset);
    return shownColumnAfter(text.substr(lineStart, offset - lineStart), 0, tabSize);
}

void TrailingComments::placeLast(std::string& written) {
    const int column = columnForLast();
    // Where one would leave the margin, they stay as they are.
    const auto isPushedOut = [&](const Comment& comment) {
        return comment.column < column && column + comment.length > columns_.margin;
    };
    const bool mayMove = columns_.margin <= 0 || last_.empty() || !last_.back().isBlock ||
                         std::ranges::none_of(last_, isPushedOut);
    const auto isAstray = [column](const Comment& comment) { return comment.column != column; };
    const auto first = mayMove ? std::ranges::find_if(last_, isAstray) : last_.end();
    if (first != last_.end()) {
        const std::size_t start = first->gapStart;
        const std::string tail = written.substr(start);
        written.resize(start);
        std::size_t copied = start;
        for (auto comment = first; comment != last_.end(); ++comment) {
            if (!isAstray(*comment)) continue;
            written.append(tail, copied - start, comment->gapStart - copied);
            written += columns_.blanks(comment->codeEnd, column);
            copied = comment->gapEnd;
        }
        written.append(tail, copied - start);
    }
    last_.clear();
    lastColumn_ = 0;
    lastLength_ = 0;
}

// The least column that is far enough behind all code; where columns of blanks are kept, as far as it was.
int TrailingComments::columnForLast() const {
    if (!last_.empty() && isFixed(last_.front())) return last_.front().column;
    int column = 0;
    int kept = kRightmostIndent;
    int codeEnd = 0;
    for (const Comment& comment : last_) {
        if (comment.isOwnLine) continue;
        column = std::max(column, columnOf(comment));
        codeEnd = std::max(codeEnd, comment.codeEnd);
        kept = std::min(kept, comment.width());
    }
    const bool keepsWidth = !last_.empty() && last_.back().isBlock && !settings_.alignsLineComments;
    if (keepsWidth) return codeEnd + kept;
    return settings_.keepsColumns ? std::max(column, codeEnd + kept) : column;
}

}  // namespace Tessel
