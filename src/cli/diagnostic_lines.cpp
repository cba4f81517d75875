#include "cli/diagnostic_lines.h"

#include <algorithm>
#include <ostream>

namespace Cli {

namespace {

constexpr std::size_t highestStatus = 255;

const char* severityPrefix(int severity) {
    switch (severity) {
        case Tessel::Warning:
            return "Warning: ";
        case Tessel::Error:
            return "Error: ";
        default:
            return "Information: ";
    }
}

}  // namespace

std::string formatDiagnostic(const Tessel::Diagnostic& diagnostic, const std::string& inputName) {
    return severityPrefix(diagnostic.severity) + inputName + '(' + std::to_string(diagnostic.position.line) +
           ") : col " + std::to_string(diagnostic.position.column) + ": " + diagnostic.text + '\n';
}

int printDiagnostics(const std::list<Tessel::Diagnostic>& diagnostics, const std::string& inputName,
                     std::ostream& errors) {
    for (const Tessel::Diagnostic& diagnostic : diagnostics) {
        errors << formatDiagnostic(diagnostic, inputName);
    }
    errors.flush();
    return static_cast<int>(std::min(diagnostics.size(), highestStatus));
}

}  // namespace Cli
