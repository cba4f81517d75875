#pragma once

#include <vector>

#include "scheme/key_id.h"

// Which keys are alike, so that one tells what another is likely to be.
namespace Learn {

enum class Nature {
    Inline,       // within a line: where a line begins there all the same, its author broke it
    Breakable,    // a line begins there in some styles, and by hand in others
    Together,     // between what may share a line: a line break where nothing does
    Structural,   // line breaks are what the key is about; what stands on one line all the same was kept there
    Hanging,      // as that, and how far the line that begins hangs behind its construct
    Table,        // rows and columns that were laid out by hand, so that only what all agree on is wanted
    Indentation,
    Other,        // numbers and switches
};

Nature natureOf(Tessel::KeyId key);

// The other keys of its family, the nearest first. None for a key that is like no other.
std::vector<Tessel::KeyId> kinOf(Tessel::KeyId key);

}  // namespace Learn
