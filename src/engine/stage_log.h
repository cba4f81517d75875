#pragma once

#include <string_view>

#include "cpp/opaque_tokens.h"

namespace Zelmor {
class TextDocument;
}

// What is told of the stages of a job that know no gaps of the source, when someone listens.
namespace Tessel {

class LayoutObserver;

// The gaps that differ between what a stage got and what it made of that, both the source with other white space: by
// the key that the stage is for. `isWrapping` tells the wrapping of lines from putting line ends in order.
void tellStage(LayoutObserver& observer, const Zelmor::TextDocument& source, std::string_view before,
               std::string_view after, bool isWrapping);

// What the source does at the ends of its lines, and at their beginning.
void tellLines(LayoutObserver& observer, const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque);

}  // namespace Tessel
