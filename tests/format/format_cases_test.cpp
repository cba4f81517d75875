#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "support/case_file.h"
#include "support/format_text.h"
#include "support/visible_diff.h"

// Runs the cases of the *.txt files of this folder, a test each. Next to its text, every case checks that the
// tokens are the same and that a second run changes nothing.

namespace TestSupport {

void PrintTo(const FormatCase& tested, std::ostream* out) {
    *out << tested.place;
}

namespace {

class FormatCases : public testing::TestWithParam<FormatCase> {};

std::vector<FormatCase> allCases() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(VANTREL_FORMAT_CASES)) {
        if (entry.path().extension() == ".txt") paths.push_back(entry.path().string());
    }
    std::ranges::sort(paths);
    std::vector<FormatCase> cases;
    for (const std::string& path : paths) std::ranges::move(readCaseFile(path), std::back_inserter(cases));
    return cases;
}

TEST_P(FormatCases, GivesTheText) {
    const FormatCase& tested = GetParam();
    const Formatted result = formatText(tested.scheme, tested.input);
    if (result.accepted() && result.text != tested.expected) {
        ADD_FAILURE() << tested.place << ": not as expected\n" << visibleDiff(tested.expected, result.text);
    }
    const std::string broken = brokenPromise(tested.scheme, tested.input, result, tested.checksSecondRun);
    if (!broken.empty()) ADD_FAILURE() << tested.place << ": " << broken;
}

std::string testNameOf(const testing::TestParamInfo<FormatCase>& tested) {
    return tested.param.name;
}

INSTANTIATE_TEST_SUITE_P(, FormatCases, testing::ValuesIn(allCases()), testNameOf);

}  // namespace

}  // namespace TestSupport
