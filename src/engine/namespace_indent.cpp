#include "engine/namespace_indent.h"

#include <algorithm>

#include "engine/source_columns.h"
#include "engine/source_copy.h"

namespace Tessel {

std::optional<bool> standsInNamespaceColumn(const Cpp::NamespaceBodyNode& body, const Zelmor::TextDocument& source,
                                            int tabSize) {
    if (!body.hasBrackets()) return std::nullopt;
    const SourceColumns columns(&source, tabSize);
    const auto from = [&source](const Cpp::SyntaxNode& node) {
        return source.text().substr(offsetOf(source, node.start()) - 1);
    };
    // Comments and directives often stand elsewhere.
    const auto tells = [&](const auto& child) { return !Cpp::isTrivia(*child) && columns.startsLine(from(*child)); };
    const auto first = std::find_if(body.childBegin(), body.childEnd(), tells);
    if (first == body.childEnd()) return std::nullopt;
    return columns.columnOf(from(**first)) <= columns.columnOfLine(from(body));
}

OptionalText NamespaceIndents::indentOf(const Cpp::NamespaceBodyNode& body, const OptionalText& indent,
                                        int tabSize) const {
    if (settings_.indentsInnerNamespaces && depth_ == 0) return {true, {}, settings_.indentsInnerNamespaces.key};
    const bool stays = settings_.keepsNamespaceIndent && indent.present &&
                       standsInNamespaceColumn(body, source_, tabSize).value_or(false);
    return stays ? OptionalText{true, {}, indent.key} : indent;
}

}  // namespace Tessel
