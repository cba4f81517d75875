#include "format_text.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "engine/format_job.h"
#include "layout/passes.h"
#include "trn/exception.h"

namespace Fuzz {

namespace {

class GoOn : public Tessel::UpdateFunctor {
public:
    bool operator()(const std::string&) override { return true; }
};

}  // namespace

std::optional<std::string> formatText(const Tessel::PropertySet& scheme, std::string_view source) {
    const Tessel::Passes passes;
    const Tessel::FormatJob job(passes);
    std::istringstream in{std::string(source)};
    std::ostringstream out;
    std::list<Tessel::Diagnostic> diagnostics;
    GoOn goOn;
    try {
        if (job.format({scheme, Tessel::protectedRegionMarkers()}, in, out, diagnostics, goOn) != 0) {
            if (diagnostics.empty() || !out.str().empty()) std::abort();
            return std::nullopt;
        }
    } catch (const Trn::Exception& exception) {
        std::fprintf(stderr, "%s\n", exception.message().c_str());
        std::abort();
    }
    return std::move(out).str();
}

}  // namespace Fuzz
