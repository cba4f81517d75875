#include "textstream/oindent_buf.h"

#include <algorithm>

#include "textstream/oindent_stream.h"

namespace Zelmor {

namespace {

constexpr bool isLeadingSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r' && c != '\n'); }

std::size_t behindLeadingSpace(std::string_view line, std::size_t place = 0) {
    while (place < line.size() && isLeadingSpace(line[place])) ++place;
    return place;
}

bool holdsText(std::string_view line) {
    return !line.empty() && (line.back() > ' ' || behindLeadingSpace(line) < line.size());
}

}  // namespace

IndentState::IndentState(const OIndentBuf& out)
    : indent(out.indent()),
      keepLeadingSpace(out.keepLeadingSpace()),
      tabMode(out.tabMode()),
      tabSize(out.tabSize()),
      line(out.line()),
      column(out.column()),
      textColumn(out.textColumn_) {}

IndentState::IndentState(const OIndentStream& out) : IndentState(out.buffer()) {}

OIndentBuf::OIndentBuf(IndentState state)
    : OTextDocBuf({state.tabMode, state.tabSize, state.line, state.column}),
      indent_(std::move(state.indent)),
      keepLeadingSpace_(state.keepLeadingSpace),
      textColumn_(state.textColumn) {
    if (textColumn_ < 0) startIndent();
}

OIndentBuf::OIndentBuf(std::streambuf* target, std::string indent, bool keepLeadingSpace, TextLayout layout)
    : OTextDocBuf(target, layout), indent_(std::move(indent)), keepLeadingSpace_(keepLeadingSpace) {}

std::size_t OIndentBuf::write(std::string_view text) {
    if (text.empty()) return 0;
    if (goesOnPlainly(text) || startsPlainly(text)) return writePlainly(text);
    return text == "\n" ? putLines(text) : writeLines(text);
}

std::size_t OIndentBuf::writePlainly(std::string_view text) {
    if (column_ == 0 && !indent_.empty() && put(indent_) != indent_.size()) return 0;
    if (!lineHasText_ || textColumn_ < 0) noteText(text);
    return putPlain(text);
}

void OIndentBuf::noteText(std::string_view line) {
    lineHasText_ = lineHasText_ || holdsText(line);
    if (textColumn_ < 0) findTextColumn(line);
}

std::size_t OIndentBuf::writeLines(std::string_view text) {
    const std::size_t asTheyStand = keepLeadingSpace_ && indent_.empty() ? text.rfind('\n') + 1 : 0;
    std::size_t taken = asTheyStand > 0 ? putLines(text.substr(0, asTheyStand)) : 0;
    if (taken < asTheyStand) return taken;
    while (taken < text.size()) {
        if (column_ == 0 && text[taken] != '\n') {
            if (!keepLeadingSpace_) {
                taken = behindLeadingSpace(text, taken);
                if (taken == text.size() || text[taken] == '\n') continue;
            }
            if (!indent_.empty() && put(indent_) != indent_.size()) break;
        }
        const std::size_t lineFeed = text.find('\n', taken);
        const std::size_t end = lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
        const std::string_view line = text.substr(taken, end - taken);
        lineHasText_ = lineFeed == std::string_view::npos && (lineHasText_ || holdsText(line));
        if (textColumn_ < 0) findTextColumn(line);
        taken += put(line);
        if (lineFeed != std::string_view::npos) textColumn_ = -1;
        if (taken != end) break;
    }
    return taken;
}

// Writes whole lines to which nothing is added.
std::size_t OIndentBuf::putLines(std::string_view lines) {
    lineHasText_ = false;
    textColumn_ = -1;
    return put(lines);
}

// The piece of a line that is written next may have the line's first text.
void OIndentBuf::findTextColumn(std::string_view line) {
    const std::size_t first = behindLeadingSpace(line);
    if (first == line.size() || line[first] == '\n') return;
    textColumn_ = columnBehind(line.substr(0, first));
}

std::size_t OIndentBuf::writeVerbatim(std::string_view text) {
    if (text.empty()) return 0;
    if (goesOnPlainly(text) || startsPlainly(text)) return writePlainly(text);
    LeadingSpaceScope keepSpace(*this, true);
    return writeLines(text);
}

OIndentBuf::int_type OIndentBuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char character = traits_type::to_char_type(c);
    return write({&character, 1}) == 1 ? c : traits_type::eof();
}

std::streamsize OIndentBuf::xsputn(const char* text, std::streamsize size) {
    return static_cast<std::streamsize>(write({text, static_cast<std::size_t>(size)}));
}

}  // namespace Zelmor
