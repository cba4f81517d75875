#include "format_text.h"

#include <fstream>
#include <list>
#include <sstream>
#include <stdexcept>

#include "engine/extension_settings.h"
#include "engine/format_job.h"
#include "layout/passes.h"
#include "token_compare.h"
#include "tree_compare.h"
#include "trn/exception.h"
#include "visible_diff.h"

namespace TestSupport {

namespace {

class GoesOn : public Tessel::UpdateFunctor {
public:
    bool operator()(const std::string&) override { return true; }
};

}  // namespace

Formatted formatText(const Tessel::PropertySet& scheme, const std::string& text, Tessel::LayoutObserver* observer) {
    const Tessel::Passes passes;
    std::istringstream in(text);
    std::ostringstream out;
    std::list<Tessel::Diagnostic> diagnostics;
    GoesOn progress;
    Tessel::TaskRunner tasks;
    try {
        const Tessel::FormatOptions options{scheme, Tessel::protectedRegionMarkers()};
        Tessel::FormatJob(passes, tasks, observer).format(options, in, out, diagnostics, progress);
    } catch (const Trn::Exception& fault) {
        return {{}, fault.message() + '\n', true};
    }
    Formatted result{out.str(), {}, false};
    for (const Tessel::Diagnostic& message : diagnostics) {
        result.refusal += '(' + std::to_string(message.position.line) + ", " +
                          std::to_string(message.position.column) + ") " + message.text + '\n';
    }
    return result;
}

Cpp::Unrecognized unrecognizedIn(const Tessel::PropertySet& scheme) {
    const bool isKept = Tessel::ExtensionSettings(scheme).keepsUnrecognized;
    return isKept ? Cpp::Unrecognized::Kept : Cpp::Unrecognized::Reported;
}

std::string brokenPromise(const Tessel::PropertySet& scheme, const std::string& text, const Formatted& result,
                          bool checksSecondRun) {
    if (!result.accepted()) return "The text was refused:\n" + result.refusal;
    const std::string difference = tokenDifference(text, result.text);
    if (!difference.empty()) return "The tokens changed: " + difference + '\n';
    const std::string otherTree = treeDifference(text, result.text, unrecognizedIn(scheme));
    if (!otherTree.empty()) return "The tree changed:\n" + otherTree;
    if (!checksSecondRun) return {};
    const Formatted again = formatText(scheme, result.text);
    if (!again.accepted()) return "The result was refused:\n" + again.refusal;
    if (again.text == result.text) return {};
    return "A second run changed the result:\n" + visibleDiff(result.text, again.text);
}

Tessel::PropertySet shippedScheme(const std::string& name) {
    std::ifstream in(VANTREL_SHIPPED_SCHEMES "/" + name + ".vts", std::ios::binary);
    Tessel::PropertySet scheme(in);
    if (in.fail() || scheme.getName() != name) throw std::runtime_error("There is no scheme " + name + '.');
    return scheme;
}

std::string contentOfFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("Cannot read " + path + '.');
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

}  // namespace TestSupport
