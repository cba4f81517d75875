#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/directive_parts.h"
#include "engine/format_options.h"
#include "engine/formatter_settings.h"
#include "engine/optional_text.h"
#include "engine/layout_passes.h"

namespace Tessel {

// Lays out the statements that a macro stands for, or the members of a class:
//
//     #define swap(a,b) do{      #define swap(a, b) do {        a splice at the end of each line but the last
//         t=a;                       t = a;
//       a=b; } while(0)              a = b; } while (0)
//
// The lines stay what they are, for each but the last ends with a splice. What begins in the line of the directive
// is indented from it, as is what its author began in the first column; other bodies as that of a function is.
class MacroBodies {
public:
    // Whose lines braces stand on: where those of the scheme would join lines, those of the author are kept.
    enum class Braces { OfScheme, OfAuthor };

    // The passes are borrowed.
    MacroBodies(const PropertySet& scheme, const LayoutPasses& passes, Braces braces = Braces::OfScheme);

    // The part of the directive that is `parts.body`, of which the lines are indented from `column`; nothing where it
    // is to be kept, for it cannot be read, or would stand in other lines.
    std::optional<std::string> laidOut(std::string_view directive, const DirectiveParts& parts, int column) const;
    // Statements of one line; nothing where they are to be kept.
    std::optional<std::string> laidOutLine(std::string_view statements) const;

private:
    struct Frame;

    std::string indentBehind(std::string_view directive) const;
    const FormatOptions& optionsFor(const std::string& indent, int column) const;
    void indentBraces(PropertySet& scheme) const;

    std::optional<std::string> formatted(const std::string& text, const std::string& indent, int column) const;
    std::optional<std::string> formattedCases(const std::string& body, const std::string& indent, int column) const;
    std::optional<std::string> formattedList(std::string list, std::size_t end, const std::string& indent,
                                             int column) const;
    std::optional<std::string> formatted(const std::string& body, const Frame& frame, const std::string& indent,
                                         int column) const;

    PropertySet scheme_;
    Braces braces_;
    std::string indent_;
    std::optional<BraceSettings> bracesBehindHeads_;
    Keyed<bool> indentsFromWord_;
    int tabSize_;
    const LayoutPasses& passes_;
    mutable std::optional<FormatOptions> options_;  // those of the last body
    mutable std::string margin_;
    mutable std::string bodyIndent_;
    mutable std::unique_ptr<MacroBodies> bracesOfAuthor_;
    mutable std::unique_ptr<MacroBodies> casesInBody_;  // with the indents of labels that stand where bodies begin
};

}  // namespace Tessel
