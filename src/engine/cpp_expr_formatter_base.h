#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/expr_tokens.h"
#include "engine/format_options.h"
#include "engine/kept_region.h"
#include "engine/opaque_text.h"
#include "engine/optional_text.h"
#include "engine/source_columns.h"
#include "engine/text_sweep.h"
#include "engine/extension_settings.h"
#include "scheme/property_set.h"
#include "textstream/itext_doc_stream.h"
#include "textstream/oindent_stream.h"

namespace Tessel {

// What becomes of a directive that is written.
enum class DirectiveText {
    LaidOut,  // as the scheme says
    Settled,  // it has been laid out already, for the column that it has in the source
    Kept,     // it is not looked into
};

// The operations on text below the tree that all passes share: separators, comments over several lines, and
// directives. Texts are formatted for the state of the output at which they will be written; what the
// operations return holds the indentation of its lines already.
class CppExprFormatterBase {
public:
    // `source`, when given, is borrowed: the document that the texts are views of. It tells the columns at which
    // comments over several lines began; in other texts their lines count from the text's start.
    // The log may be null.
    explicit CppExprFormatterBase(const PropertySet& scheme, const Zelmor::TextDocument* source = nullptr,
                                  LayoutLog* log = nullptr);

    // The elements of a list stay aligned: an element or separator that starts a line puts the elements into
    // the column of the first one.
    virtual std::string respaceListSeparator(std::string_view text, int kind, const OptionalText& before,
                                             const OptionalText& after, const Zelmor::IndentState& state);
    virtual std::string respaceSeparator(std::string_view text, int kind, const OptionalText& before,
                                         const OptionalText& after, const Zelmor::IndentState& state);
    // Copies from where the input stands through `end`; a comment's further lines keep their place relative to
    // its first character.
    virtual void formatCommentLines(Trn::Position start, Trn::Position end, Zelmor::ITextDocStream& in,
                                    Zelmor::OIndentBuf& out);
    // The same for a directive, or for all that is kept under "#if 0", placed as ALIGN_PPD_LEFT_MOST says.
    virtual void formatDirective(Trn::Position start, Trn::Position end, Zelmor::ITextDocStream& in,
                                 Zelmor::OIndentBuf& out, DirectiveText text);

    // LINE_WRAP: lines that an earlier run has wrapped are joined, to be wrapped again.
    bool wrapsLines() const { return wrapsLines_; }
    // KEEP_LINE_BREAKS: lines stay that begin inside a construct.
    bool keepsLines() const { return extensions_.keepsLineBreaks; }
    // The column of the first text on the line of the source that the piece begins on; negative for what is no view
    // of it.
    int columnOfSourceLine(std::string_view piece) const { return columns_.columnOfLine(piece); }
    // KEEP_COLUMNS: blanks that make a column stay where one blank is wanted.
    bool keepsColumns() const { return extensions_.keepsColumns; }
    // ALIGN_LIST_COLUMNS: lists in rows come to stand in columns.
    bool alignsLists() const { return extensions_.alignsLists; }
    bool formatsTypeArguments() const { return extensions_.formatsTypeArguments; }
    LambdaParameters lambdaParameters() const {
        return formatsTypeArguments() ? LambdaParameters::Declared : LambdaParameters::LikeOperands;
    }
    // Directives are not moved, so that the white space in front of them is theirs.
    bool keepsDirectivePlaces() const { return !directivesLeftMostSet_; }
    // As the code around them.
    bool indentsDirectives() const { return directivesLeftMostSet_ && !directivesLeftMost_; }
    // The same for a comment that the output has reached, and for a directive with the white space in front.
    void writeComment(std::string_view text, Zelmor::OIndentBuf& out);
    void writeDirective(std::string_view gap, std::string_view directive, Zelmor::OIndentBuf& out,
                        DirectiveText text = DirectiveText::LaidOut);

    // Between these, what comes in a text is kept.
    const MarkerPairs& markers() const { return markers_; }
    // A region, a view of the source, with the gap in front of it: a comment or a directive by its first token.
    void writeRegion(std::string_view gap, std::string_view region, int kind, Zelmor::OIndentBuf& out);

    // Where in the source regions have been kept so far.
    const KeptRegions& keptRegions() const { return keptRegions_; }

protected:
    ~CppExprFormatterBase() = default;

    // Writes a directive where the output stands, if there is anything in it to lay out.
    virtual bool layOutDirective(std::string_view, Zelmor::OIndentBuf&) { return false; }

    // White space around one kind of separator. A setting that is not present leaves the input's.
    struct SeparatorSpacing {
        const OptionalText& before;
        const OptionalText& after;

        bool breaksLines() const { return before.hasLineFeed() || after.hasLineFeed(); }
    };

    // At a separator in `sweep`: writes it with the white space around it, up to the token that follows.
    // `listColumn` is that of the list's elements, or null where they need not be aligned.
    void writeSeparator(TextSweep& sweep, const SeparatorSpacing& spacing, const int* listColumn);
    // At a comment or directive in `sweep`: writes it with the gap in front of it.
    void writeTrivia(TextSweep& sweep);
    bool spacesCommentBehindComma(const TextSweep& sweep) const;
    // White space that is not one blank: where lines are wrapped it becomes one, as it would after parting
    // and joining.
    static bool isJoinable(std::string_view gap);

    const PropertySet& scheme() const { return scheme_; }
    const SourceColumns& sourceColumns() const { return columns_; }
    int tabSize() const { return tabSize_; }
    LayoutLog* log() const { return log_; }

private:
    void writeComments(std::string_view gap, Zelmor::OIndentBuf& out);
    std::string respace(std::string_view text, int kind, SeparatorSpacing spacing, bool isList,
                        const Zelmor::IndentState& state);
    bool movesFromCode(std::string_view directive, int codeColumn, const Zelmor::OIndentBuf& out) const;
    void startDirectiveLine(std::string_view directive, Zelmor::OIndentBuf& out) const;
    void writeAfterSeparator(TextSweep& sweep, const OptionalText& after);
    PropertySet scheme_;
    int tabSize_;
    SourceColumns columns_;
    OptionalText leftMargin_;
    bool wrapsLines_;
    ExtensionSettings extensions_;
    const MarkerPairs& markers_;
    KeptRegions keptRegions_;
    bool directivesLeftMost_ = false;
    bool directivesLeftMostSet_ = false;
    ExprTokens tokens_;
    LayoutLog* log_;
};

}  // namespace Tessel
