#include "tool/replacement_xml.h"

#include <algorithm>

namespace Tool {

std::string replacementXml(const Edits::Replacements& replacements) {
    std::string xml = "<?xml version='1.0'?>\n<replacements xml:space='preserve' incomplete_format='false'>\n";
    for (const Edits::Replacement& one : replacements) {
        xml += "<replacement offset='" + std::to_string(one.offset) + "' length='" + std::to_string(one.length) + "'>";
        for (const char c : one.text) {
            if (c == '\n' || c == '\r') {
                xml += c == '\n' ? "&#10;" : "&#13;";
            } else {
                xml += c;
            }
        }
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
