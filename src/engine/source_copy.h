#pragma once

#include <cstddef>
#include <string_view>

#include "trn/position.h"

namespace Zelmor {
class ITextDocStream;
class OIndentBuf;
class TextDocument;
}  // namespace Zelmor

// Reading the source forward up to a token, and copying it. The texts returned are views of the source and
// live as long as it. A token's start position lies behind its first character, its end position behind its
// last one; all of these stop early at the end of the source and do nothing when the source stands behind the
// position already.
namespace Tessel {

// What lies in front of the token that starts at `start`.
std::string_view readGap(Zelmor::ITextDocStream& in, Trn::Position start);
// Everything up to and including the character that `position` lies behind.
std::string_view readThrough(Zelmor::ITextDocStream& in, Trn::Position position);

// The same, written by the output's own rules. Say whether the input is still good.
bool copyGap(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position start);
bool copyThrough(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position position);

// The same, written with leading white space kept.
void copyGapVerbatim(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position start);
void copyThroughVerbatim(Zelmor::ITextDocStream& in, Zelmor::OIndentBuf& out, Trn::Position position);

void skipGap(Zelmor::ITextDocStream& in, Trn::Position start);
void skipTo(Zelmor::ITextDocStream& in, Trn::Position position);

// How many characters of the source lie in front of the position.
std::size_t offsetOf(const Zelmor::TextDocument& source, Trn::Position position);

std::string_view restOfInput(Zelmor::ITextDocStream& in);

}  // namespace Tessel
