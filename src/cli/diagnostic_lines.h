#pragma once

#include <iosfwd>
#include <list>
#include <string>

#include "trn/diagnostic.h"

namespace Cli {

// Error: main.cpp(12) : col 5: unexpected token
std::string formatDiagnostic(const Tessel::Diagnostic& diagnostic, const std::string& inputName);

// One line for each, in order. Returns the exit status: their number, as far as a status can count.
int printDiagnostics(const std::list<Tessel::Diagnostic>& diagnostics, const std::string& inputName,
                     std::ostream& errors);

}  // namespace Cli
