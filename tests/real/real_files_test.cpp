#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "support/format_text.h"

// Every file of this folder, and of the examples, under every scheme of the program: accepted, its tokens the same, and a second
// run without changes.

namespace TestSupport {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> filesIn(const char* folder, bool (*isWanted)(const fs::path&)) {
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (isWanted(entry.path())) paths.push_back(entry.path().string());
    }
    std::ranges::sort(paths);
    return paths;
}

bool isScheme(const fs::path& path) {
    return path.extension() == ".vts";
}

bool isSource(const fs::path& path) {
    return path.filename() != "real_files_test.cpp";
}

std::vector<std::string> sources() {
    std::vector<std::string> paths = filesIn(VANTREL_REAL_FILES, isSource);
    std::ranges::copy(filesIn(VANTREL_EXAMPLES, isSource), std::back_inserter(paths));
    return paths;
}

class RealFiles : public testing::TestWithParam<std::string> {};

TEST_P(RealFiles, KeepTheirTokensAndNeedNoSecondRun) {
    const std::string text = contentOfFile(GetParam());
    for (const std::string& file : filesIn(VANTREL_SHIPPED_SCHEMES, isScheme)) {
        SCOPED_TRACE(file);
        const Tessel::PropertySet scheme = shippedScheme(fs::path(file).stem().string());
        const Formatted result = formatText(scheme, text);
        const std::string broken = brokenPromise(scheme, text, result, true);
        if (!broken.empty()) ADD_FAILURE() << broken;
    }
}

std::string testNameOf(const testing::TestParamInfo<std::string>& tested) {
    std::string name = fs::path(tested.param).filename().string();
    std::ranges::replace_if(
        name, [](char c) { return c == '.' || c == '-'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(, RealFiles, testing::ValuesIn(sources()), testNameOf);

}  // namespace

}  // namespace TestSupport
