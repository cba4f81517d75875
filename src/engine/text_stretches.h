#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/parsed_text.h"

namespace Tessel {

// Long texts are laid out in stretches, each as a text of its own: that takes memory for no more than a few of them,
// and they may be laid out at once. A stretch ends behind a body, among the items of the text or of namespaces, with an
// empty line below.
//
// So that it is laid out as it would be in its place, it stands in a frame:
//
//     namespace A {      what is open around it,
//     void f() {
//     }                  what ends in front of it,
//
//     int g() {          the stretch,
//     }
//     }                  and what closes the namespace.
struct Stretch {
    std::string_view text;
    std::string ahead;   // of the frame; nothing for the first stretch
    std::string behind;  // nothing for the last one
};

// Cuts a text whose line ends are line feeds by a quick look for braces, literals, comments and conditional groups. One
// stretch where the text is short, or has no such place.
std::vector<Stretch> cutIntoStretches(std::string_view text);

// Whether a stretch in its frame is what it seemed to be: all that it begins ends in it, and, if it is not the last
// one, what follows has no part in its last item.
bool standsInFrame(const ParsedText& framed, const Stretch& stretch, bool isLast);

// What of the result is the stretch's, with the white space around.
std::string_view withoutFrame(std::string_view result, const Stretch& stretch);

}  // namespace Tessel
