#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cpp/parse_text.h"
#include "cpp/tree_dump.h"
#include "engine/moved_positions.h"
#include "support/format_text.h"

// Files that nobody wrote for a test, the program's own and its examples: accepted, with the same tokens and tree, and
// a second run without changes.
namespace TestSupport {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const char* folder, bool (*isWanted)(const fs::path&)) {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (isWanted(entry.path())) paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    return paths;
}

std::vector<fs::path> schemes() {
    return filesIn(VANTREL_SHIPPED_SCHEMES, [](const fs::path& path) { return path.extension() == ".vts"; });
}

void expectKept(const fs::path& source, const fs::path& schemeFile) {
    SCOPED_TRACE(source.string() + " with " + schemeFile.string());
    const Tessel::PropertySet scheme = shippedScheme(schemeFile.stem().string());
    const std::string text = contentOfFile(source.string());
    const std::string broken = brokenPromise(scheme, text, formatText(scheme, text), true);
    if (!broken.empty()) ADD_FAILURE() << broken;
}

bool isSource(const fs::path& path) { return path.extension() == ".cpp" || path.extension() == ".h"; }

TEST(RealFiles, ExamplesWithEveryScheme) {
    for (const fs::path& scheme : schemes()) {
        for (const fs::path& source : filesIn(VANTREL_REAL_FILES "/examples", isSource)) expectKept(source, scheme);
    }
}

// Each with the next scheme.
TEST(RealFiles, SourcesOfTheProgram) {
    const std::vector<fs::path> all = schemes();
    std::size_t count = 0;
    for (const fs::path& source : filesIn(VANTREL_REAL_FILES "/src", isSource)) {
        expectKept(source, all[count++ % all.size()]);
    }
}

// What wrapping relies on: a tree that goes along with its text is the one that reading the text would give.
TEST(RealFiles, TreesMoveWithTheirTexts) {
    using CppTest::TreeDump;
    constexpr auto shown = TreeDump::Positions::Shown;
    const Tessel::PropertySet scheme = shippedScheme("gnu");
    for (const fs::path& file : filesIn(VANTREL_REAL_FILES "/src", isSource)) {
        SCOPED_TRACE(file.string());
        const Zelmor::TextDocument source(contentOfFile(file.string()));
        const Zelmor::TextDocument result(formatText(scheme, std::string(source.text())).text);
        Cpp::RootNode moved;
        Cpp::RootNode read;
        CppTest::parse(source.text(), moved, Cpp::Unrecognized::Kept);
        CppTest::parse(result.text(), read, Cpp::Unrecognized::Kept);
        Tessel::MovedPositions positions(source, result);
        moved.move(positions);
        EXPECT_EQ(TreeDump::of(moved, shown, TreeDump::Texts::Squeezed),
                  TreeDump::of(read, shown, TreeDump::Texts::Squeezed));
    }
}

}  // namespace

}  // namespace TestSupport
