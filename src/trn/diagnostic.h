#pragma once

#include <string>

#include "trn/position.h"

namespace Tessel {

enum Severity : int { Information = 1, Warning = 2, Error = 3 };

// One message for the user. A position of (0, 0) says that the message concerns no place in the text.
struct Diagnostic {
    int severity = Error;
    Trn::Position position;
    int code = 0;
    std::string text;
};

}  // namespace Tessel
