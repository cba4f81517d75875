#pragma once

#include <string>
#include <string_view>

#include "engine/declaration_columns.h"
#include "engine/format_options.h"

namespace Cpp {
class RootNode;
}
namespace Zelmor {
class TextDocument;
}

namespace Tessel {

// What the engine needs of the layer above it: measuring runs of declarations before formatting, and wrapping
// long lines after it.
class LayoutPasses {
public:
    virtual ~LayoutPasses() = default;

    // The columns at which the declarations of the tree are to be aligned, as the scheme's switches say.
    // `source` is the text that the tree's positions are positions in.
    virtual DeclarationColumns measure(const PropertySet& scheme, const Zelmor::TextDocument& source,
                                       Cpp::RootNode& root) const = 0;

    // Whether that looks at declarations at all: what stands between them may then be theirs to go past.
    virtual bool alignsDeclarations(const PropertySet& scheme) const = 0;

    // Whether wrapLines() would change the text. Most have no line beyond the right margin.
    virtual bool hasLongLines(const FormatOptions& options, std::string_view formatted) const = 0;

    // What becomes of `formatted`, which `root` is the tree of, with every line beyond the right margin laid out anew.
    virtual std::string wrapLines(const FormatOptions& options, const Zelmor::TextDocument& formatted,
                                  Cpp::RootNode& root) const = 0;
};

}  // namespace Tessel
