#include "engine/trailing_comments.h"

#include <algorithm>

#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/shown_width.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

namespace {

std::size_t lineStartOf(std::string_view text, std::size_t offset) {
    return text.substr(0, offset).rfind('\n') + 1;
}

std::size_t textStart(std::string_view text, std::size_t from) {
    return std::min(text.find_first_not_of(" \t", from), text.size());
}

}  // namespace

void TrailingComments::add(std::string_view written, std::size_t offset) {
    for (auto lineFeed = written.find('\n', countedTo_); lineFeed != written.npos;
         lineFeed = written.find('\n', countedTo_)) {
        ++line_;
        countedTo_ = lineFeed + 1;
    }
    countedTo_ = written.size();
    const std::size_t lineStart = lineStartOf(written, written.size());
    Comment comment;
    comment.gapEnd = written.size();
    comment.gapStart = lineStart + trimRight(written.substr(lineStart)).size();
    comment.line = line_;
    comment.sourceColumn = columnIn(source_, offset);
    comment.codeEnd = columnIn(written, comment.gapStart);
    comment.column = columnIn(written, comment.gapEnd);
    comment.isOwnLine = comment.gapStart == lineStart;
    if (comment.column > kRightmostIndent) return;
    if (!comment.isOwnLine || goesOn(comment, offset)) comments_.push_back(comment);
}

// Whether a line with nothing but a comment goes on with the one above, as opposed to belonging to the code below.
bool TrailingComments::goesOn(const Comment& comment, std::size_t offset) {
    if (comments_.empty()) return false;
    const Comment& above = comments_.back();
    return above.line + 1 == comment.line && above.sourceColumn == comment.sourceColumn &&
           codeColumnBelow(offset) != comment.sourceColumn;
}

int TrailingComments::codeColumnBelow(std::size_t offset) {
    if (codeBelow_ <= offset) {
        codeBelow_ = offset;
        do {
            codeBelow_ = std::min(source_.find('\n', codeBelow_), source_.size() - 1) + 1;
        } while (source_.substr(textStart(source_, codeBelow_)).starts_with("//"));
    }
    return columnAfter(source_.substr(codeBelow_, textStart(source_, codeBelow_) - codeBelow_), 0, columns_.tabSize);
}

int TrailingComments::columnIn(std::string_view text, std::size_t offset) const {
    const std::size_t lineStart = lineStartOf(text, offset);
    return shownColumnAfter(text.substr(lineStart, offset - lineStart), 0, columns_.tabSize);
}

void TrailingComments::place(std::string& written) {
    std::string placed;
    placed.reserve(written.size());
    std::size_t copied = 0;
    for (auto first = comments_.cbegin(); first != comments_.cend();) {
        auto last = first + 1;
        while (last != comments_.cend() && last->line == (last - 1)->line + 1 &&
               last->sourceColumn == first->sourceColumn) {
            ++last;
        }
        const int column = columnFor(first, last);
        for (; first != last; ++first) {
            if (first->column == column) continue;
            placed.append(written, copied, first->gapStart - copied);
            placed += blanksTo(column, first->codeEnd);
            copied = first->gapEnd;
        }
    }
    placed.append(written, copied);
    written = std::move(placed);
}

// The least column that is far enough behind all code; where columns of blanks are kept, as far as it was.
int TrailingComments::columnFor(Comments::const_iterator first, Comments::const_iterator last) const {
    const std::string& wanted = settings_.beforeLineComment.text;
    int column = 0;
    int kept = kRightmostIndent;
    int codeEnd = 0;
    for (; first != last; ++first) {
        if (first->isOwnLine) continue;
        column = std::max(column, columnAfter(wanted, first->codeEnd, columns_.tabSize));
        codeEnd = std::max(codeEnd, first->codeEnd);
        kept = std::min(kept, first->width());
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
