// Some lines only of real files, with every shipped scheme.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "scheme/property_set.h"
#include "tool/file_job.h"

namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text) {
    Lines lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

std::vector<fs::path> filesIn(const fs::path& folder, const std::string& ending) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ending) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(Lines, OthersStayAndTheRestLeadsToTheWholeResult) {
    constexpr std::size_t longestRange = 20;
    // So many that what differs in one of a hundred does not reach the bound by luck.
    constexpr int rangesPerScheme = 24;
    std::mt19937 random(1);
    const std::vector<fs::path> sources = filesIn(VANTREL_SOURCES, ".cpp");
    int runs = 0;
    int others = 0;
    for (const fs::path& file : filesIn(VANTREL_SHIPPED_SCHEMES, ".vts")) {
        std::ifstream in(file);
        const Tessel::FormatOptions options{Tessel::PropertySet(in), Tessel::protectedRegionMarkers()};
        for (int count = 0; count < rangesPerScheme; ++count) {
            const Tool::FileJob whole{sources[random() % sources.size()].string(), &options, {}};
            const Tool::FileResult full = Tool::formatFile(whole, 1);
            const Lines before = linesOf(full.source);
            const std::size_t first = 1 + random() % before.size();
            const std::size_t last = std::min(first + random() % longestRange, before.size());
            const Tool::FileJob part{whole.name, &options, Edits::LineSet({{first, last}})};
            const Tool::FileResult some = Tool::formatFile(part, 1);
            ASSERT_TRUE(some.messages.empty()) << part.name << some.messages.front().text;

            const Lines after = linesOf(some.formatted());
            ASSERT_TRUE(std::equal(before.begin(), before.begin() + static_cast<long>(first) - 1, after.begin()));
            ASSERT_TRUE(std::equal(before.rbegin(), before.rend() - static_cast<long>(last), after.rbegin()))
                << part.name << ':' << first << '-' << last << " with " << file;
            ++runs;
            others += Tool::formatSource(whole, some.formatted(), 1).formatted() != full.formatted();
        }
    }
    // Lines that hang under a line which was formatted without them.
    EXPECT_LE(others * 100, runs * 3) << others << " of " << runs;
}

}  // namespace
