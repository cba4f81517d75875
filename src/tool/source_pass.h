#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "tool/file_list.h"
#include "tool/options.h"
#include "tool/ordered_pool.h"
#include "tool/progress.h"
#include "tool/streams.h"

// How commands go that read many sources and write none of them.
namespace Tool {

// Those that the paths mean. Tells of paths that are missing and of files that are left out; throws Failure when there
// is nothing else.
FileList findSources(const std::vector<std::string>& paths, const Options& options, const Streams& streams);

// Runs `job(index)`, which throws nothing, for each of the sources in several threads, and hands the results to
// `consume(index, result)` in their order. What has gone wrong is told of: a result has it as its `problem`.
template <typename Result, typename Job, typename Consume>
void passOver(std::size_t sources, const Options& options, const Streams& streams, Job job, Consume consume) {
    Progress progress(streams.errors, streams.errorsAreTerminal && !options.isQuiet, sources);
    OrderedPool<Result> pool(threadsFor(options));
    pool.run(sources, job, [&](std::size_t index, const Result& result) {
        if (!result.problem.empty()) {
            progress.wipe();
            streams.errors << "vantrel: " << result.problem << '\n';
        }
        consume(index, result);
        progress.countOne();
    });
}

}  // namespace Tool
