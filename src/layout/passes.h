#pragma once

#include "engine/layout_passes.h"

namespace Tessel {

// The passes of this folder, as the format job calls them.
class Passes : public LayoutPasses {
public:
    DeclarationColumns measure(const PropertySet& scheme, const Zelmor::TextDocument& source,
                               Cpp::RootNode& root) const override;
    bool alignsDeclarations(const PropertySet& scheme) const override;
    bool hasLongLines(const FormatOptions& options, std::string_view formatted) const override;
    std::string wrapLines(const FormatOptions& options, const Zelmor::TextDocument& formatted,
                          Cpp::RootNode& root) const override;
};

}  // namespace Tessel
