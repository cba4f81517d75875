#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/format_options.h"
#include "learn/scheme_trial.h"
#include "tool/progress.h"

namespace Tool {

// Texts that are formatted again and again, in several threads.
class SampleTrial : public Learn::SchemeTrial {
public:
    // The progress is borrowed; it counts the schemes.
    SampleTrial(std::vector<std::string> texts, std::size_t threads, Progress& progress);

    std::size_t lines() const override { return lines_; }
    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t limit) override;
    std::map<Tessel::KeyId, std::size_t> causes(const Tessel::PropertySet& scheme) override;
    std::unique_ptr<Learn::SchemeTrial> laidOut(const Tessel::PropertySet& scheme) override;

private:
    std::size_t changedBy(const Tessel::FormatOptions& options, std::size_t index) const;

    std::vector<std::string> texts_;
    std::vector<std::string> wanted_;  // what is to become of them
    std::size_t threads_;
    Progress& progress_;
    std::size_t lines_ = 0;
};

}  // namespace Tool
