#pragma once

#include <iosfwd>
#include <list>

#include "engine/format_options.h"
#include "engine/layout_passes.h"
#include "engine/task_runner.h"
#include "engine/update_functor.h"
#include "trn/diagnostic.h"

namespace Tessel {

class LayoutObserver;

// Runs the whole pipeline over one source text: parse, close protected regions, format and, when the scheme
// asks for it, wrap the long lines of the result. A long text goes through it in stretches. Has no state between calls.
class FormatJob {
public:
    // All are borrowed: the passes of the layer above that take part in a job, who runs the parts of a long one, and
    // who is told what decided the layout, or null.
    FormatJob(const LayoutPasses& passes, TaskRunner& tasks, LayoutObserver* observer = nullptr)
        : passes_(passes), tasks_(tasks), observer_(observer) {}

    // Returns 0 on success: then the formatted text, its lines ended by line feeds, stands in `out` and
    // `diagnostics` is unchanged. Otherwise nothing has been written, and the result is the number of messages
    // appended to `diagnostics`. Exceptions of the passes go through to the caller.
    int format(const FormatOptions& options, std::istream& in, std::ostream& out,
               std::list<Diagnostic>& diagnostics, UpdateFunctor& progress) const;

private:
    const LayoutPasses& passes_;
    TaskRunner& tasks_;
    LayoutObserver* observer_;
};

}  // namespace Tessel
