#include "tool/replacement_xml.h"

#include <algorithm>

#include "tool/escape.h"

namespace Tool {

namespace {

// Readers of XML make other white space alike.
std::string_view lineEndCode(char c) {
    switch (c) {
        case '\n': return "&#10;";
        case '\r': return "&#13;";
        default: return {};
    }
}

}  // namespace

std::string replacementXml(const Edits::Replacements& replacements) {
    std::string xml = "<?xml version='1.0'?>\n<replacements xml:space='preserve' incomplete_format='false'>\n";
    for (const Edits::Replacement& one : replacements) {
        xml += "<replacement offset='" + std::to_string(one.offset) + "' length='" + std::to_string(one.length) + "'>";
        xml += escaped(one.text, lineEndCode);
        xml += "</replacement>\n";
    }
    return xml + "</replacements>\n";
}

std::string cursorLine(std::size_t cursor, const Edits::Replacements& replacements) {
    std::size_t moved = cursor;
    for (const Edits::Replacement& one : replacements) {
        if (one.offset >= cursor) break;
        // Inside of what is replaced, it stays as far from its start as it can.
        const std::size_t inside = std::min(cursor, one.end()) - one.offset;
        moved = moved - inside + (cursor < one.end() ? std::min(inside, one.text.size()) : one.text.size());
    }
    return "{ \"Cursor\": " + std::to_string(moved) + ", \"IncompleteFormat\": false }\n";
}

}  // namespace Tool
