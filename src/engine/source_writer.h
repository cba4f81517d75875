#pragma once

#include <cstddef>
#include <string_view>

#include "cpp/opaque_tokens.h"
#include "engine/cpp_expr_formatter_base.h"
#include "engine/expr_regions.h"
#include "engine/kept_region.h"
#include "engine/layout_log.h"
#include "engine/optional_text.h"
#include "textstream/itext_doc_stream.h"
#include "textstream/oindent_stream.h"

namespace Tessel {

// The forward sweep over a source: reads it piece by piece and writes the pieces to the output. White space
// in a piece is written by the output's rules; comments, directives and literals in it keep what they hold.
//
// A gap is what stands between two tokens. The gap writers take one that has just been read and replace the
// white space at its ends; comments and directives in it stay, with the line ends that they need, and two
// tokens that nothing would hold apart any more stay apart by a blank.
class SourceWriter {
public:
    // All are borrowed; the log may be null; `opaque` are the opaque tokens of `source`.
    SourceWriter(const Zelmor::TextDocument& source, const Cpp::OpaqueTokens& opaque, Zelmor::OIndentBuf& out,
                 CppExprFormatterBase& trivia, LayoutLog* log);

    // Branches of conditional groups that are one token in the tree, in their order; borrowed. Where none are told of,
    // what is in them is written as other text is.
    void setUnreadBlocks(const KeptRegions& blocks) { unreadBlocks_ = &blocks; }

    Zelmor::ITextDocStream& in() { return in_; }
    Zelmor::OIndentBuf& out() { return *out_; }

    // The pieces are views of the source.
    std::string_view readGap(Trn::Position start);
    std::string_view readThrough(Trn::Position position);
    std::string_view rest() { return in_.rest(); }
    // What has not been read yet.
    std::string_view ahead() const { return text_.substr(in_.offset()); }
    // Reads the white space that comes next, and nothing else.
    void skipBlanks();
    // The character of the source at `offset` characters behind what has been read; 0 at the end.
    char peek(std::size_t offset = 0) const;
    // The character read last; 0 at the start.
    char peekBehind() const { return in_.offset() == 0 ? '\0' : text_[in_.offset() - 1]; }

    void write(std::string_view piece);
    void copyGap(Trn::Position start) { write(readGap(start)); }
    void copyThrough(Trn::Position position) { write(readThrough(position)); }
    // What has been read ends with its line: the gap behind it keeps a line end.
    void keepLineEndBehind() { lineEndPlace_ = in_.offset(); }
    // A piece of which nothing changes but the white space at the start of its lines.
    void writeProtected(std::string_view piece);

    // The gap's trailing white space becomes what is wanted; it stays where that is absent.
    void writeMerged(std::string_view gap, WantedText wanted);
    // Its leading white space does, which it has to.
    void writePrepended(std::string_view gap, const WantedText& wanted);
    // What is to stand in place of the leading white space has been written.
    void writeWithoutLeading(std::string_view gap) { putPrepended(gap, WantedText(std::string_view())); }
    // White space that has been read, and nothing else: what is wanted in its place.
    void replace(std::string_view whitespace, const WantedText& wanted);
    // White space that others write: what was looked up for it.
    void leave(std::string_view whitespace, const WantedText& wanted);
    // What the source does at the piece, where a key is not about its white space.
    void measure(KeyId key, std::string_view piece, int value);
    // The start of a gap up to the line end of a directive, where there are only comments in front of that.
    // Returns the rest.
    std::string_view writeDirectiveEnd(std::string_view gap);

    // Whether a comment, a directive or any other token whose white space has to stay stands in the piece.
    bool holdsOpaque(std::string_view piece) const;
    // Whether the gap, read last, ends its line, and a directive comes next, behind comments on its line or
    // none.
    bool startsDirectiveBehind(std::string_view gap) const;
    // Whether what has been read ends in a literal that the name behind it is joined to, so that they mean
    // something else apart.
    bool followsJoinedLiteral() const;
    bool holdsLineComment(std::string_view piece) const;
    // Whether comments stand in it, and nothing else of that kind.
    bool holdsOnlyComments(std::string_view piece) const;
    bool holdsOnlyBlockComments(std::string_view piece) const;
    // The column at which the next character will appear, for what is to be indented from it.
    int nextColumn() const;

    // Reads from another place for the time of a scope.
    class InputScope {
    public:
        InputScope(SourceWriter& writer, std::size_t offset) : in_(writer.in_), saved_(in_.offset()) {
            in_.moveTo(offset);
        }
        InputScope(const InputScope&) = delete;
        InputScope& operator=(const InputScope&) = delete;
        ~InputScope() { in_.moveTo(saved_); }

    private:
        Zelmor::ITextDocStream& in_;
        std::size_t saved_;
    };

    // Writes to another output for the time of a scope.
    class OutputScope {
    public:
        OutputScope(SourceWriter& writer, Zelmor::OIndentBuf& out) : writer_(writer), saved_(writer.out_) {
            writer_.out_ = &out;
        }
        OutputScope(const OutputScope&) = delete;
        OutputScope& operator=(const OutputScope&) = delete;
        ~OutputScope() { writer_.out_ = saved_; }

    private:
        SourceWriter& writer_;
        Zelmor::OIndentBuf* saved_;
    };

private:
    std::size_t offsetOf(std::string_view piece) const {
        return static_cast<std::size_t>(piece.data() - text_.data());
    }
    Cpp::OpaqueTokens::const_iterator firstOpaque(std::size_t offset) const;
    bool wouldJoin(std::string_view gap) const;
    WantedText asLastNeeds(std::string_view gap, std::string_view whitespace, const WantedText& wanted) const;
    bool isInDirective(std::size_t place) const;
    bool isBeforeDirective() const;
    WantedText asNextNeeds(std::string_view gap, const WantedText& wanted) const;
    void putPrepended(std::string_view gap, const WantedText& wanted);
    void keepDirectivePlace(std::string_view gap);
    void writeText(std::string_view text);
    std::size_t endOfRegion(const OpenRegion& region, Cpp::OpaqueTokens::const_iterator first, std::size_t end) const;
    std::size_t endOfUnreadBlock(std::size_t start, std::size_t end) const;
    Trn::Token tokenAt(const Cpp::OpaqueToken& opaque) const;
    void writeProtectedLine(std::string_view line);
    template <typename Test>
    bool anyOpaque(std::string_view piece, Test isWanted) const;

    std::string_view text_;
    Zelmor::ITextDocStream in_;
    Zelmor::OIndentBuf* out_;
    const Cpp::OpaqueTokens& opaque_;
    mutable std::size_t opaquePlace_ = 0;  // where the search for the next opaque token begins
    std::size_t lineEndPlace_ = std::string_view::npos;  // where the gap begins that has to keep a line end
    const KeptRegions* unreadBlocks_ = nullptr;
    CppExprFormatterBase& trivia_;
    LayoutLog* log_;
};

}  // namespace Tessel
