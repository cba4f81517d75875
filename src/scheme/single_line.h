#pragma once

#include "scheme/property_set.h"

namespace Tessel {

// What becomes of the texts that end lines.
enum class LineEndTexts { Blanks, Absent };

// The scheme for what stays on one line: no text of it ends a line, and no switch does.
PropertySet withoutLineEnds(PropertySet scheme, LineEndTexts become = LineEndTexts::Blanks);

// The scheme for lines that stay what they are: braces, and further parts of statements, stand on those that their
// author has them on.
PropertySet withBracesOfAuthor(PropertySet scheme);

}  // namespace Tessel
