#include "engine/trailing_comments.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

namespace {

constexpr int kNoColumn = -1;

std::size_t lineStartOf(std::string_view text, std::size_t offset) {
    return text.substr(0, offset).rfind('\n') + 1;
}

std::size_t textStart(std::string_view text, std::size_t from) {
    return std::min(text.find_first_not_of(" \t", from), text.size());
}

}  // namespace

void TrailingComments::add(std::string& written, std::size_t offset) {
    Comment comment;
    comment.sourceColumn = columnIn(source_, offset);
    const bool goesOn = isBelowLast(written, comment);
    if (!goesOn) placeLast(written);
    if (conditionals_.standsByEnd(offset)) return;
    const std::size_t lineStart = lineStartOf(written, written.size());
    comment.gapEnd = written.size();
    comment.gapStart = lineStart + trimRight(std::string_view(written).substr(lineStart)).size();
    comment.codeEnd = columnIn(written, comment.gapStart);
    comment.column = columnIn(written, comment.gapEnd);
    comment.isOwnLine = comment.gapStart == lineStart;
    if (comment.column > kRightmostIndent) return;
    // A line with nothing but a comment may belong to the code below.
    if (comment.isOwnLine && (!goesOn || codeColumnBelow(offset) == comment.sourceColumn)) return;
    last_.push_back(comment);
}

void TrailingComments::finish(std::string& written) { placeLast(written); }

// Whether the comment that comes next stands in the line behind the last one, and below it in the source.
bool TrailingComments::isBelowLast(std::string_view written, const Comment& comment) const {
    if (last_.empty() || last_.back().sourceColumn != comment.sourceColumn) return false;
    const std::size_t lineEnd = written.find('\n', last_.back().gapEnd);
    return lineEnd != written.npos && written.find('\n', lineEnd + 1) == written.npos;
}

// What stands in front of a "}" belongs to its block, which is indented further.
int TrailingComments::codeColumnBelow(std::size_t offset) {
    if (codeBelow_ <= offset) {
        codeBelow_ = offset;
        do {
            codeBelow_ = std::min(source_.find('\n', codeBelow_), source_.size() - 1) + 1;
        } while (source_.substr(textStart(source_, codeBelow_)).starts_with("//"));
    }
    const std::size_t code = textStart(source_, codeBelow_);
    if (source_.substr(code).starts_with('}')) return kNoColumn;
    return columnAfter(source_.substr(codeBelow_, code - codeBelow_), 0, columns_.tabSize);
}

int TrailingComments::columnIn(std::string_view text, std::size_t offset) const {
    const std::size_t lineStart = lineStartOf(text, offset);
    return shownColumnAfter(text.substr(lineStart, offset - lineStart), 0, columns_.tabSize);
}

void TrailingComments::placeLast(std::string& written) {
    const int column = columnForLast();
    const auto isAstray = [column](const Comment& comment) { return comment.column != column; };
    const auto first = std::ranges::find_if(last_, isAstray);
    if (first != last_.end()) {
        const std::size_t start = first->gapStart;
        const std::string tail = written.substr(start);
        written.resize(start);
        std::size_t copied = start;
        for (auto comment = first; comment != last_.end(); ++comment) {
            if (!isAstray(*comment)) continue;
            written.append(tail, copied - start, comment->gapStart - copied);
            written += blanksTo(column, comment->codeEnd);
            copied = comment->gapEnd;
        }
        written.append(tail, copied - start);
    }
    last_.clear();
}

// The least column that is far enough behind all code; where columns of blanks are kept, as far as it was.
int TrailingComments::columnForLast() const {
    const std::string_view wanted = settings_.beforeLineComment.text;
    int column = 0;
    int kept = kRightmostIndent;
    int codeEnd = 0;
    for (const Comment& comment : last_) {
        if (comment.isOwnLine) continue;
        column = std::max(column, columnAfter(wanted, comment.codeEnd, columns_.tabSize));
        codeEnd = std::max(codeEnd, comment.codeEnd);
        kept = std::min(kept, comment.width());
    }
    return settings_.keepsColumns ? std::max(column, codeEnd + kept) : column;
}

std::string TrailingComments::blanksTo(int column, int from) const {
    // In tabs where the output's are.
    Zelmor::OTextDocBuf out({columns_.tabMode, columns_.tabSize, 1, from});
    const std::string blanks(static_cast<std::size_t>(column - from), ' ');
    out.sputn(blanks.data(), column - from);
    return out.takeText();
}

}  // namespace Tessel
