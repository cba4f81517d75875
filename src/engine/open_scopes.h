#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tessel {

// Goes over a text that has not been read, and knows what is open around each place, as far as a quick look for braces,
// literals, comments and conditional groups tells.
class OpenScopes {
public:
    // The text is borrowed; its line ends are line feeds.
    explicit OpenScopes(std::string_view text) : text_(text) { takeDirectives(); }

    // Goes on behind the next line with nothing but a "}", which has an empty line below and stands in nothing but
    // namespaces. Says false where there is none.
    bool goToEndOfBody();
    // In characters from the start of the text.
    std::size_t place() const { return place_; }

    // What opens the namespaces and conditional groups around the place, in lines, and what closes them.
    std::string opening() const;
    std::string closing() const;

private:
    enum class Kind { Namespace, FirstBranch, OtherBranch };
    struct Open {
        Kind kind;
        std::string_view head;  // up to the "{", or the directive
        std::size_t braces;     // that were open in front of a group, but for those of namespaces
    };

    using Place = std::vector<Open>::iterator;

    // The end where there is none.
    Place innermostNamespace();
    Place innermostGroup();
    void takeMark();
    void takeComment();
    void takeLiteral();
    void takeRawLiteral();
    void openBrace();
    void open(const Open& opened);
    void closeBrace();
    std::string_view headOfBrace() const;
    void takeDirectives();
    void takeConditional(std::string_view directive);
    bool isAmongItems() const;
    bool standsAloneAbove(std::size_t brace) const;

    std::string_view text_;
    std::size_t place_ = 0;
    std::vector<Open> open_;
    std::size_t braces_ = 0;  // those inside of all namespaces
    bool isLost_ = false;     // more has been closed than was open, or too much is
};

}  // namespace Tessel
