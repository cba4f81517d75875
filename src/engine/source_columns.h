#pragma once

#include <functional>
#include <string_view>

#include "engine/columns.h"
#include "textstream/text_document.h"

namespace Tessel {

// Tells the columns, tabs expanded, at which pieces of one document begin. The document is borrowed.
class SourceColumns {
public:
    SourceColumns(const Zelmor::TextDocument* document, int tabSize) : document_(document), tabSize_(tabSize) {}

    // 0 for a text that is no view of the document. Costs the length of the line in front of the piece.
    int columnOf(std::string_view piece) const {
        if (!document_) return 0;
        const std::string_view text = document_->text();
        const std::less<const char*> isBefore;
        if (isBefore(piece.data(), text.data()) || !isBefore(piece.data(), text.data() + text.size())) return 0;
        const auto offset = static_cast<std::size_t>(piece.data() - text.data());
        const std::size_t lineStart = document_->offsetOf(document_->positionOf(offset).line, 0);
        return columnAfter(text.substr(lineStart, offset - lineStart), 0, tabSize_);
    }

private:
    const Zelmor::TextDocument* document_;
    int tabSize_;
};

}  // namespace Tessel
