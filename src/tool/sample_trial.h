#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "learn/scheme_trial.h"

namespace Tool {

// Texts that are formatted again and again, in several threads.
class SampleTrial : public Learn::SchemeTrial {
public:
    SampleTrial(std::vector<std::string> texts, std::size_t threads);

    std::size_t lines() const override { return lines_; }
    std::size_t changedLines(const Tessel::PropertySet& scheme, std::size_t limit) override;

private:
    std::vector<std::string> texts_;
    std::size_t threads_;
    std::size_t lines_ = 0;
};

}  // namespace Tool
