#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Zelmor {

// A text in one piece of memory, with all line ends made line feeds. Views of it hold as long as it stays where it is.
class LineFeedText {
public:
    // CR LF and a lone CR each become one LF.
    explicit LineFeedText(std::string text);
    // All that remains in the stream. The text of a ViewStream is borrowed where it has no CR.
    explicit LineFeedText(std::istream& in);

    std::string_view text() const { return own_.empty() ? borrowed_ : std::string_view(own_); }
    // Nothing is left.
    std::string take();
    // `c` stands for itself, a CR too. Views do not hold.
    void replaceCharacter(std::size_t offset, char c);

private:
    std::string own_;  // nothing while another's text is borrowed
    std::string_view borrowed_;
};

// Reads everything that remains, in big blocks. A failure to read sets the stream's badbit.
std::string readAll(std::istream& in);

}  // namespace Zelmor
