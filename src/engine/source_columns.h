#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "engine/columns.h"
#include "engine/gap.h"
#include "textstream/char_set.h"
#include "textstream/text_document.h"

namespace Tessel {

// Tells the columns, tabs expanded, at which pieces of one document begin. The document is borrowed.
class SourceColumns {
public:
    SourceColumns(const Zelmor::TextDocument* document, int tabSize) : document_(document), tabSize_(tabSize) {}

    // 0 for a text that is no view of the document. Costs the length of the line in front of the piece.
    int columnOf(std::string_view piece) const {
        if (!isPartOfDocument(piece)) return 0;
        const std::string_view text = document_->text();
        const std::size_t offset = offsetOf(piece);
        const std::size_t lineStart = document_->offsetOf(document_->positionOf(offset).line, 0);
        return columnAfter(text.substr(lineStart, offset - lineStart), 0, tabSize_);
    }

    // The column of the first text on the line that the piece begins on; negative for a text that is no view of the
    // document.
    int columnOfLine(std::string_view piece) const {
        if (!isPartOfDocument(piece)) return -1;
        const std::size_t lineStart = document_->offsetOf(document_->positionOf(offsetOf(piece)).line, 0);
        const std::string_view line = document_->text().substr(lineStart);
        return columnAfter(line.substr(0, kBlanks.skipIn(line)), 0, tabSize_);
    }

    // The same of the piece; negative where it stands too far to the right to count.
    int nearColumnOf(std::string_view piece) const {
        if (!isPartOfDocument(piece)) return -1;
        const std::size_t offset = offsetOf(piece);
        const std::size_t lineStart = document_->offsetOf(document_->positionOf(offset).line, 0);
        return offset - lineStart <= std::size_t{kRightmostIndent} ? columnOf(piece) : -1;
    }

    // Whether nothing but white space stands in front of the piece on its line.
    bool startsLine(std::string_view piece) const {
        if (!isPartOfDocument(piece)) return true;
        constexpr Zelmor::CharSet blanks(" \t\v\f\r");
        const std::string_view text = document_->text();
        const std::size_t start = blanks.skipBackIn(text.substr(0, offsetOf(piece)));
        return start == 0 || text[start - 1] == '\n';
    }

    // Where a view of the document starts.
    std::optional<std::size_t> offsetInDocument(std::string_view piece) const {
        return isPartOfDocument(piece) ? std::optional(offsetOf(piece)) : std::nullopt;
    }

private:
    bool isPartOfDocument(std::string_view piece) const {
        if (!document_) return false;
        const std::string_view text = document_->text();
        const std::less<const char*> isBefore;
        return !isBefore(piece.data(), text.data()) && isBefore(piece.data(), text.data() + text.size());
    }
    std::size_t offsetOf(std::string_view piece) const {
        return static_cast<std::size_t>(piece.data() - document_->text().data());
    }

    const Zelmor::TextDocument* document_;
    int tabSize_;
};

}  // namespace Tessel
