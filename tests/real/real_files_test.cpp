#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/format_text.h"

// Every file of this folder, under every scheme of the program: accepted, its tokens the same, and a second
// run without changes.

namespace TestSupport {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const char* folder, bool (*isWanted)(const fs::path&)) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (isWanted(entry.path())) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

bool isScheme(const fs::path& path) {
    return path.extension() == ".vts";
}

bool isSource(const fs::path& path) {
    return path.filename() != "real_files_test.cpp";
}

class RealFiles : public testing::TestWithParam<std::string> {};

TEST_P(RealFiles, KeepTheirTokensAndNeedNoSecondRun) {
    const std::string text = contentOfFile(std::string(VANTREL_REAL_FILES "/") + GetParam());
    for (const std::string& file : namesIn(VANTREL_SHIPPED_SCHEMES, isScheme)) {
        SCOPED_TRACE(file);
        const Tessel::PropertySet scheme = shippedScheme(fs::path(file).stem().string());
        const Formatted result = formatText(scheme, text);
        const std::string broken = brokenPromise(scheme, text, result, true);
        if (!broken.empty()) ADD_FAILURE() << broken;
    }
}

std::string testNameOf(const testing::TestParamInfo<std::string>& tested) {
    std::string name = tested.param;
    std::ranges::replace_if(
        name, [](char c) { return c == '.' || c == '-'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(, RealFiles, testing::ValuesIn(namesIn(VANTREL_REAL_FILES, isSource)), testNameOf);

}  // namespace

}  // namespace TestSupport
