#include "textstream/oindent_stream.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <utility>

namespace {

using Zelmor::IndentState;
using Zelmor::OIndentBuf;
using Zelmor::OIndentStream;

std::pair<int, int> place(const OIndentBuf& out) {
    return {out.line(), out.column()};
}

IndentState layout(int tabMode, int tabSize) {
    IndentState state;
    state.tabMode = tabMode;
    state.tabSize = tabSize;
    return state;
}

std::string converted(std::string_view text, int tabMode, int tabSize = 4) {
    OIndentBuf out(layout(tabMode, tabSize));
    out.writeVerbatim(text);
    return out.takeText();
}

TEST(OIndentStream, TabsBecomeSpacesOutsideOfLiteralsAndSpacesTabs) {
    OIndentBuf out(layout(1, 4));
    out.write("a\tb");
    EXPECT_EQ(out.column(), 5);
    EXPECT_EQ(out.takeText(), "a   b");
    EXPECT_EQ(converted("\t\tx", 1), "        x");
    EXPECT_EQ(converted("'\t'\t\"a\t\\\"\tb\"\tc", 1), "'\t'   \"a\t\\\"\tb\"  c");
    EXPECT_EQ(converted("\"open\t\n\t", 1), "\"open\t\n    ");
    EXPECT_EQ(converted("  x   y", 2, 1), "  x   y") << "a tab of one column never stands for spaces";
}

TEST(OIndentStream, SpacesHeldBackCountAndAreWrittenBeforeChangesAndByFlush) {
    std::ostringstream target;
    OIndentStream out(target, "", true, 2, 4, 1, 0);
    out << "  ";
    EXPECT_EQ(out.column(), 2);
    EXPECT_EQ(target.str(), "");
    out.setTabSize(2);
    EXPECT_EQ(target.str(), "  ");
    out << ' ' << std::flush;
    EXPECT_EQ(target.str(), "   ");
    out << "x ";
    EXPECT_EQ(target.str(), "   x");
    out.setTabMode(0);
    EXPECT_EQ(target.str(), "   x ");
}

TEST(OIndentStream, BulkWritesEqualCharacterWrites) {
    std::mt19937 random(1);
    const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
    const auto randomText = [&](unsigned size) {
        std::string text;
        for (int i = below(size); i > 0; --i) text += "    \t\t\n\nab\"'\\\v\r"[below(15)];
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        IndentState state = layout(below(3), 1 + below(8));
        state.indent = randomText(6);
        state.keepLeadingSpace = below(2) == 0;
        state.column = below(4);
        OIndentBuf bulk(state);
        OIndentStream single(state);
        for (int step = 0; step < 3; ++step) {
            const std::string text = randomText(24);
            EXPECT_EQ(bulk.write(text), text.size());
            for (const char c : text) single.put(c);
            ASSERT_EQ(place(bulk), place(single.buffer()));
            if (below(8) == 0) {
                const int tabMode = below(3);
                bulk.setTabMode(tabMode);
                single.setTabMode(tabMode);
            }
        }
        ASSERT_EQ(bulk.text(), single.text());
    }
}

}  // namespace
