#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>

#include "engine/format_options.h"
#include "trn/diagnostic.h"

namespace Tessel {
class LayoutObserver;
}

namespace Run {

struct FormattedText {
    std::string text;                        // with the line ends and the byte-order mark that the source has
    std::list<Tessel::Diagnostic> messages;  // why the source is refused: then there is no text
};

// Formats a text as it stands in a file, UTF-16 excepted. May run in several threads at once. Exceptions of the
// engine go through to the caller. A long text takes so many threads.
FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text, std::size_t threads = 1);
// The observer is told what decided the layout.
FormattedText formatText(const Tessel::FormatOptions& options, std::string_view text,
                         Tessel::LayoutObserver& observer);

}  // namespace Run
