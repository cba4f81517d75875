#include "textstream/itext_doc_stream.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace {

using Zelmor::ITextDocStream;
using Zelmor::TextDocument;

std::pair<int, int> place(const ITextDocStream& in) {
    return {in.line(), in.column()};
}

TEST(ITextDocStream, ADifferentCharacterCanBePutBack) {
    const TextDocument document("ab\ncd");
    ITextDocStream in(document);
    const std::string_view before = in.readTo(2, 1);
    in.putback('x').putback('y').putback('\n');
    EXPECT_TRUE(in.good());
    EXPECT_EQ(place(in), std::pair(1, 1));
    EXPECT_EQ(in.get(), '\n');
    EXPECT_EQ(place(in), std::pair(2, 0));
    EXPECT_EQ(in.rest(), "yxd");
    EXPECT_EQ(before, "ab\nc");
    EXPECT_EQ(document.text(), "ab\ncd");
}

std::string readToByGet(ITextDocStream& in, std::pair<int, int> target) {
    std::string read;
    while (in.good() && place(in) < target) {
        const int c = in.get();
        if (c != EOF) read += static_cast<char>(c);
    }
    return read;
}

TEST(ITextDocStream, ReadToEqualsReadingByGet) {
    std::mt19937 random(1);
    const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int i = below(12); i > 0; --i) text += "ab\t\n\r"[below(5)];
        const int firstLine = 1 + below(2);
        const int firstColumn = below(3);
        const TextDocument document(text);
        ITextDocStream fast(document, 0, 1, firstLine, firstColumn);
        ITextDocStream slow(document, 0, 1, firstLine, firstColumn);
        for (int step = 0; step < 5; ++step) {
            const std::pair target(below(6), below(6));
            const std::string_view read = fast.readTo(static_cast<std::uint32_t>(target.first),
                                                      static_cast<std::uint32_t>(target.second));
            EXPECT_EQ(read, readToByGet(slow, target));
            if (below(3) == 0) {
                fast.unget();
                slow.unget();
            }
            ASSERT_EQ(place(fast), place(slow));
            ASSERT_EQ(fast.offset(), slow.offset());
            ASSERT_EQ(fast.rdstate(), slow.rdstate());
        }
    }
}

}  // namespace
