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

// What the contents are indented by: `indent`, the scheme's, but where they are to stay in that column.
OptionalText namespaceIndent(const Cpp::NamespaceBodyNode& body, const OptionalText& indent,
                             const ExtensionSettings& settings, const Zelmor::TextDocument& source, int tabSize);

}  // namespace Tessel
