#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "engine/column_layout.h"
#include "engine/extension_settings.h"
#include "engine/format_options.h"
#include "engine/layout_passes.h"
#include "engine/list_rows.h"
#include "engine/parsed_text.h"
#include "engine/text_stretches.h"
#include "trn/diagnostic.h"

namespace Tessel {

class LayoutObserver;

// What one text goes through in a job, stage by stage. Has no state between texts, and may be used by several threads
// at once.
class FormatStages {
public:
    // Both are borrowed.
    FormatStages(const FormatOptions& options, const LayoutPasses& passes);

    // Where a long text may be cut.
    Cuts cuts() const {
        return {.behindTypes = !passes_.alignsDeclarations(options_.scheme) && !extensions_.alignsAssignments,
                .inNamespaces = !extensions_.keepsNamespaceIndent};
    }
    // Reads the text, and makes one node of each of its protected regions. Returns what is wrong with it.
    std::list<Diagnostic> read(ParsedText& source) const;
    // What becomes of a text that has been read. The observer, which may be null, is told of it.
    std::string layOut(ParsedText& source, LayoutObserver* observer) const;
    // A text that cannot be formatted gets a message. Throws when the result is not the source with other white
    // space for any other reason, or has changed what is to be kept as it is.
    static std::optional<Diagnostic> prove(const ParsedText& source, std::string_view result);

private:
    std::string format(ParsedText& source, LayoutObserver* observer) const;
    std::string withLineEnds(const ParsedText& source, std::string result, ListsInRows lists = {}) const;
    bool hasLongLines(std::string_view text) const { return passes_.hasLongLines(options_, text); }
    std::string wrap(ParsedText& formatted) const;
    std::string withLinesWrapped(ParsedText& source, std::string text) const;

    const FormatOptions& options_;
    const LayoutPasses& passes_;
    ExtensionSettings extensions_;
    ColumnLayout columns_;
    bool wrapsLines_;
};

}  // namespace Tessel
