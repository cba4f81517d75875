#include "engine/source_copy.h"

#include "textstream/itext_doc_stream.h"
#include "textstream/oindent_stream.h"
#include "textstream/text_document.h"

namespace Tessel {

std::string_view readThrough(Zelmor::ITextDocStream& in, Trn::Position position) {
    return in.readTo(position.line, position.column);
}

std::string_view readGap(Zelmor::ITextDocStream& in, Trn::Position start) {
    // The position is that behind the first character.
    return in.readTo(start.line, start.column > 0 ? start.column - 1 : 0);
}

bool copyGap(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position start) {
    out.write(readGap(in, start));
    return in.good();
}

bool copyThrough(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position position) {
    out.write(readThrough(in, position));
    return in.good();
}

void copyGapVerbatim(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position start) {
    out.writeVerbatim(readGap(in, start));
}

void copyThroughVerbatim(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position position) {
    out.writeVerbatim(readThrough(in, position));
}

void skipGap(Zelmor::ITextDocStream& in, Trn::Position start) { readGap(in, start); }

void skipTo(Zelmor::ITextDocStream& in, Trn::Position position) { readThrough(in, position); }

std::size_t offsetOf(const Zelmor::TextDocument& source, Trn::Position position) {
    return source.offsetOf(static_cast<int>(position.line), static_cast<int>(position.column));
}

std::string_view restOfInput(Zelmor::ITextDocStream& in) { return in.rest(); }

}  // namespace Tessel
