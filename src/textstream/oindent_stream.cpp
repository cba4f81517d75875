#include "textstream/oindent_stream.h"

namespace Zelmor {

IndentScope::IndentScope(OIndentStream& out, std::string indent)
    : IndentScope(out.buffer(), std::move(indent)) {}

LeadingSpaceScope::LeadingSpaceScope(OIndentStream& out, bool keepLeadingSpace)
    : LeadingSpaceScope(out.buffer(), keepLeadingSpace) {}

OIndentStream::OIndentStream(std::ostream& target, std::string indent, bool keepLeadingSpace, int tabMode,
                             int tabSize, int firstLine, int firstColumn)
    : OIndentStreamBase(target.rdbuf(), std::move(indent), keepLeadingSpace,
                        {tabMode, tabSize, firstLine, firstColumn}),
      std::ostream(&buffer_) {}

OIndentStream::OIndentStream(IndentState state)
    : OIndentStreamBase(std::move(state)), std::ostream(&buffer_) {}

const std::string& OIndentStream::text() {
    flush();
    return buffer_.text();
}

std::ostream& operator<<(std::ostream& out, Verbatim verbatim) {
    auto* const buffer = dynamic_cast<OIndentBuf*>(out.rdbuf());
    if (!buffer) return out << verbatim.text;
    LeadingSpaceScope keepSpace(*buffer, true);
    return out << verbatim.text;
}

}  // namespace Zelmor
