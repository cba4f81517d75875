#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "cpp/opaque_tokens.h"
#include "engine/extension_settings.h"
#include "engine/kept_region.h"
#include "engine/side_by_side.h"
#include "engine/trailing_comments.h"

namespace Tessel {

// What stands at the ends of lines, once all else is laid out:
//
//     int a; // one␣␣       int a;  // one
//     int bcd; // two       int bcd;  // two
//     ␣␣
//                           f();
//     f();
//
// Literals, directives, splices and regions stay as they are.
class LineEnds {
public:
    static bool areWanted(const ExtensionSettings& settings) {
        return settings.stripsLineEnds || settings.mostBlankLines != kAnyNumber ||
               settings.beforeLineComment.present;
    }

    // All but `result`, the source with other white space, are borrowed; `opaque` and `regions` are those of `source`.
    LineEnds(const ExtensionSettings& settings, const ColumnLayout& columns, std::string_view source,
             const Cpp::OpaqueTokens& opaque, const KeptRegions& regions, std::string result);

    std::string takeText();
    LineEnds(const LineEnds&) = delete;
    LineEnds& operator=(const LineEnds&) = delete;

private:
    bool isLiteralOnLine(const Cpp::OpaqueToken& token) const;
    void passRegions(std::size_t offset);
    void writeToken(const Cpp::OpaqueToken& token);
    void addCommentOf(const Cpp::OpaqueToken& directive, std::size_t start, std::string_view text);
    bool alignsBlock(std::string_view comment) const;
    void writeCode(std::size_t end);
    void writeGap(std::string_view gap, bool isSpliced);
    void writeComment(std::string_view comment);
    void copyTo(std::size_t end);

    const ExtensionSettings& settings_;
    std::string_view source_;
    const Cpp::OpaqueTokens& opaque_;
    std::string given_;
    std::string_view result_;
    SideBySide sides_;
    KeptRegions::const_iterator region_;
    KeptRegions::const_iterator regionsEnd_;
    std::string out_;
    std::size_t copied_ = 0;  // of the result
    std::optional<TrailingComments> comments_;
};

}  // namespace Tessel
