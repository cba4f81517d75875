#pragma once

#include <algorithm>
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

    // Goes on behind the next line that a "}" begins and an item ends, which has an empty line below and stands in
    // nothing but namespaces: that of a function, or of a class or an enumeration whose head stands in one line. Says
    // false where there is none.
    bool goToEndOfItem();
    // In characters from the start of the text.
    std::size_t place() const { return place_; }

    // What opens the namespaces and conditional groups around the place, in lines, and what closes them.
    std::string opening() const;
    std::string closing() const;
    // The directives that have begun the groups.
    std::vector<std::string_view> groups() const;
    bool isBehindType() const { return !itemTail_.empty(); }
    bool isInNamespace() const {
        return std::ranges::any_of(open_, [](const Open& open) { return open.kind == Kind::Namespace; });
    }
    // An item like the one that ends at the place, without what is in it.
    std::string emptyItem() const;

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
    std::size_t endOfDirective(std::size_t start) const;
    void takeConditional(std::string_view directive);
    bool isAmongItems() const;
    bool startsLine(std::size_t brace) const;
    bool takeEndOfItem();

    std::string_view text_;
    std::size_t place_ = 0;
    std::vector<Open> open_;
    std::size_t braces_ = 0;     // those inside of all namespaces
    std::string_view itemHead_;  // in front of the first of them
    std::string_view itemTail_;  // behind the "}" at the end of the last item
    bool isLost_ = false;        // more has been closed than was open, or too much is
};

}  // namespace Tessel
