#include "tool/source_pass.h"

#include "tool/failure.h"

namespace Tool {

FileList findSources(const std::vector<std::string>& paths, const Options& options, const Streams& streams) {
    FileList list = findFiles({paths, options.endings, options.excluded});
    tellOf(list, options.isQuiet, streams.errors);
    if (list.files.empty()) throw Failure("there is no C or C++ source to read");
    return list;
}

}  // namespace Tool
