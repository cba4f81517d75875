#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/open_scopes.h"
#include "engine/parsed_text.h"

namespace Tessel {

// Long texts are laid out in stretches, each as a text of its own: that takes memory for no more than a few of them,
// and they may be laid out at once. A stretch ends behind a function or a type, among the items of the text or of
// namespaces, with an empty line below.
//
// So that it is laid out as it would be in its place, it stands in a frame:
//
//     namespace A {      what is open around it,
//     void f() {
//     }                  an item like the one that ends in front of it,
//
//     int g() {          the stretch,
//     }
//     }                  and what closes the namespace.
struct Stretch {
    std::string_view text;
    std::string ahead;                     // of the frame; nothing for the first stretch
    std::string behind;                    // nothing for the last one
    std::vector<std::string_view> groups;  // the directives that begin those which the frame has a part of
    std::size_t number = 0;                // in their order, from 0 on
    bool isLast = false;
};

// Where a text may be cut, apart from functions among its outermost items.
struct Cuts {
    bool behindTypes = true;   // unless declarations are aligned: a type may stand among them
    bool inNamespaces = true;  // unless the first item of each tells how that is laid out
};

// Cuts a text whose line ends are line feeds by a quick look for braces, literals, comments and conditional groups.
// There is one stretch where the text is short, or has no place for a cut.
class StretchCutter {
public:
    // The text is borrowed.
    StretchCutter(std::string_view text, Cuts cuts) : text_(text), cuts_(cuts), scopes_(text) {}

    // The next stretch: the look goes no further than to its end. Nothing behind the last one.
    std::optional<Stretch> next();
    // There are no more than that.
    std::size_t mostStretches() const;

private:
    bool goToCut();
    bool mayCut() const;

    std::string_view text_;
    Cuts cuts_;
    OpenScopes scopes_;
    std::size_t stretches_ = 0;
    std::size_t start_ = 0;  // of the next stretch
    std::string ahead_;      // of that
};

// Whether a stretch in its frame is what it seemed to be: all that it begins ends in it, and, if it is not the last
// one, what follows has no part in its last item.
bool standsInFrame(const ParsedText& framed, const Stretch& stretch);

// What of the result is the stretch's, with the white space around.
std::string_view withoutFrame(std::string_view result, const Stretch& stretch);

}  // namespace Tessel
