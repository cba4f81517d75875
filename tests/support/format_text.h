#pragma once

#include <string>

#include "cpp/parser.h"
#include "scheme/property_set.h"

namespace Tessel {
class LayoutObserver;
}

namespace TestSupport {

// What one run of the format job gave.
struct Formatted {
    std::string text;
    std::string refusal;  // the messages, a line each; empty when the text was accepted
    bool hasFailed = false;  // with an exception

    bool accepted() const { return refusal.empty(); }
};

Formatted formatText(const Tessel::PropertySet& scheme, const std::string& text,
                     Tessel::LayoutObserver* observer = nullptr);

// What the scheme says of text that no rule recognises.
Cpp::Unrecognized unrecognizedIn(const Tessel::PropertySet& scheme);

// Checks what holds for every text and scheme: that it is accepted, that its tokens and its tree stay as they
// are and, when `checksSecondRun` is set, that formatting the result changes nothing. Answers with what does
// not hold, for a person to read.
std::string brokenPromise(const Tessel::PropertySet& scheme, const std::string& text, const Formatted& result,
                          bool checksSecondRun);

// Reads a scheme of the program by its name. Throws std::runtime_error when there is none.
Tessel::PropertySet shippedScheme(const std::string& name);

std::string contentOfFile(const std::string& path);

}  // namespace TestSupport
