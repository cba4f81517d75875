#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scheme/property_set.h"

namespace Fuzz {

// What formatting the result again has to come to. That of C and C++ does not change; of sources that are
// neither, as most made-up ones, it has to settle with the second run.
enum class Again { Accepted, Settled };

// Where the scheme comes from. Lines are all that tells a macro without a ";" from a type, and a specifier with an
// argument, `A(x) b;`, from a function. One that was drawn breaks lines where nobody would, even between a type and a
// name: with such macros read, its results need not have the tree of the source. Those of a shipped scheme have it, but
// where a made-up text has no more than words in a row.
enum class Origin { Shipped, Drawn };

// Ends the process for a result that does harm to nobody but is not what it should be: the proof has refused
// it, it does not settle, or a word has become a macro. With FUZZ_TOLERANT in the environment, nothing happens: such a
// thing is rare enough in sources that are no C or C++ for a change not to be blamed.
void failUnlessTolerant(const char* promise, const std::string& details);

// The formatted text, or nothing when the source does not parse. Whatever else goes wrong ends the process,
// and so does a result that breaks a promise: its tokens are not those of the source, or it does
// not stand further runs. What is wrong is on standard error.
std::optional<std::string> formatChecked(const Tessel::PropertySet& scheme, std::string_view source,
                                         Origin origin, Again again);

}  // namespace Fuzz
