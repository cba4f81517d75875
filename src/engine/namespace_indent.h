#pragma once

#include <optional>

#include "cpp/nodes.h"
#include "engine/extension_settings.h"
#include "engine/optional_text.h"
#include "textstream/text_document.h"

namespace Tessel {

// Whether the contents of a namespace stand in its column in the source, not behind it; nothing where no line tells.
//
//     namespace a {
//     namespace b {
//         int i;
//     }
//     }
std::optional<bool> standsInNamespaceColumn(const Cpp::NamespaceBodyNode& body, const Zelmor::TextDocument& source,
                                            int tabSize);

// What the contents of a namespace are indented by: `indent`, the scheme's, but where they are to stay in that column.
// It is told of each body in the order of the text, for as long as a scope stands.
class NamespaceIndents {
public:
    // Borrowed.
    NamespaceIndents(const ExtensionSettings& settings, const Zelmor::TextDocument& source)
        : settings_(settings), source_(source) {}

    class Scope {
    public:
        Scope(NamespaceIndents& indents, const Cpp::NamespaceBodyNode& body, const OptionalText& indent, int tabSize)
            : indents_(indents), indent_(indents.indentOf(body, indent, tabSize)) {
            ++indents_.depth_;
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope() { --indents_.depth_; }

        const OptionalText& indent() const { return indent_; }

    private:
        NamespaceIndents& indents_;
        OptionalText indent_;
    };

private:
    OptionalText indentOf(const Cpp::NamespaceBodyNode& body, const OptionalText& indent, int tabSize) const;

    const ExtensionSettings& settings_;
    const Zelmor::TextDocument& source_;
    int depth_ = 0;  // of the namespaces around
};

}  // namespace Tessel
