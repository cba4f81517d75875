#pragma once

#include <string>

#include "tool/learn_report.h"

namespace Tool {

// A page of HTML, complete in itself: how far the places of each key agree, lines of both sides where they do not, and
// the scheme. The lines are read from the files.
std::string learnPage(const LearnReport& report);

}  // namespace Tool
