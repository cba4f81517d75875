#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "learn/learner.h"

namespace Tool {

// What was learned, and from what.
struct LearnReport {
    Learn::Learned learned;
    std::size_t files = 0;    // that were accepted
    std::size_t refused = 0;  // those that were not, or could not be read
    std::size_t lines = 0;    // of those accepted
    const std::vector<std::string>* fileNames = nullptr;  // all, as places tell them; borrowed
};

// Words of both the texts below and the page.
std::string withThousands(std::size_t number);             // 1,953
std::string percentText(std::size_t part, std::size_t whole);  // "97 %", rounded down
std::string reasonText(const Learn::Decision& decision);
std::string changedPerHundred(const LearnReport& report);

// The scheme, each line under a comment that tells what speaks for it.
std::string learnedSchemeText(const LearnReport& report);

// For people: what it was learned from, what the scheme still changes, and which keys are left open.
std::string learnSummary(const LearnReport& report);

}  // namespace Tool
