#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_set>

namespace Tessel {

// Comments behind "#else" that stand in the column of the one behind its "#endif":
//
//     #else   // _WIN32
//     #endif  // _WIN32
class ConditionalComments {
public:
    // `gap` is what is wanted between code and a comment. The source, which is read when it is asked about first, is
    // borrowed.
    ConditionalComments(std::string_view source, std::string_view gap, int tabSize)
        : source_(source), gap_(gap), tabSize_(tabSize) {}

    // Whether the line comment at `offset` is one of them.
    bool standsByEnd(std::size_t offset);

private:
    void read();

    std::string_view source_;
    std::string_view gap_;
    int tabSize_;
    bool isRead_ = false;
    std::unordered_set<std::size_t> offsets_;
};

}  // namespace Tessel
