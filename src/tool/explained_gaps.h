#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/format_options.h"
#include "scheme/key_id.h"
#include "trn/diagnostic.h"

namespace Tool {

// White space of a source, what becomes of it, and by which key.
struct ExplainedGap {
    std::size_t line = 0;    // from 1, of what stands behind it
    std::size_t column = 0;  // from 1, in bytes
    std::size_t firstLine = 0;  // on which it begins
    std::size_t firstColumn = 0;
    std::string before;
    std::string after;
    Tessel::KeyId key;  // none where no key has to do with it

    bool isChanged() const { return before != after; }
};

struct ExplainedText {
    std::vector<ExplainedGap> gaps;  // those that change, and those that a key is for
    std::list<Tessel::Diagnostic> messages;  // why the source is refused
};

// Exceptions of the engine go through to the caller.
ExplainedText explainText(const Tessel::FormatOptions& options, std::string_view text);

// The gap at a place, or in front of what stands there; null where there is none. Line and column count from 1.
const ExplainedGap* gapAt(const std::vector<ExplainedGap>& gaps, std::size_t line, std::size_t column);

// The key with its value in the scheme: `WS_AFTER_CS_KEY " "`.
std::string keyWithValue(Tessel::KeyId key, const Tessel::PropertySet& scheme);
// White space drawn: `·` a blank, `→` a tab, `↵` a line end.
std::string drawn(std::string_view blanks);
// What people are told of one gap: the key with its value and meaning, and the white space before and after.
std::string explanation(const ExplainedGap& gap, const Tessel::PropertySet& scheme);

}  // namespace Tool
