#include "engine/text_sweep.h"

#include "engine/gap.h"

namespace Tessel {

std::string_view TextSweep::gap() const {
    const std::size_t end = atEnd() ? text_.size() : current().token.offset;
    return text_.substr(written_, end - written_);
}

std::string_view TextSweep::takeGap() {
    const std::string_view taken = gap();
    written_ += taken.size();
    return taken;
}

void TextSweep::writeGapWith(std::string_view wanted) {
    const std::string_view kept = trimRight(takeGap());
    out_.write(kept);
    if (endedLine_ && kept.empty()) {
        const std::size_t lineFeed = wanted.find('\n');
        wanted = lineFeed == std::string_view::npos ? std::string_view() : wanted.substr(lineFeed + 1);
    }
    out_.writeVerbatim(wanted);
}

void TextSweep::writeToken() {
    out_.write(currentText());
    passToken();
}

void TextSweep::passToken() {
    endedLine_ = currentText().ends_with('\n');
    written_ = current().token.offset + current().token.length;
    ++place_;
}

}  // namespace Tessel
