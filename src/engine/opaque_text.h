#pragma once

#include <string_view>

#include "engine/convertible_blanks.h"
#include "engine/source_columns.h"
#include "textstream/oindent_stream.h"

// Writing tokens whose inner white space is not the formatter's to change, but for the tabs and blanks in
// comments and directives that the output converts (see ConvertibleBlanks).
namespace Tessel {

// Tabs as they are, for the time of a scope.
class RawTabsScope {
public:
    explicit RawTabsScope(Zelmor::OIndentBuf& out) : out_(out), saved_(out.tabMode()) { set(Zelmor::KeepTabs); }
    RawTabsScope(const RawTabsScope&) = delete;
    RawTabsScope& operator=(const RawTabsScope&) = delete;
    ~RawTabsScope() { set(saved_); }

private:
    void set(int tabMode) {
        if (saved_ != Zelmor::KeepTabs) out_.setTabMode(tabMode);
    }

    Zelmor::OIndentBuf& out_;
    int saved_;
};

// A literal, or text that has been rendered for the place where the output stands: it is written as it is, but
// for the indentation in front of a literal that starts a line.
void writeLiteral(std::string_view text, Zelmor::OIndentBuf& out);
void writeRendered(std::string_view text, Zelmor::OIndentBuf& out);

// What becomes of the tabs and blanks in a comment or directive that the output could convert.
enum class InnerBlanks { Convert, Keep };

// Writes a comment or directive piece by piece. Where the output converts tabs or blanks, so are those that
// may be.
class OpaqueWriter {
public:
    // Of a text, which is borrowed.
    OpaqueWriter(std::string_view text, InnerBlanks inner, Zelmor::OIndentBuf& out);

    // The pieces come in order. Others may write what stands between them.
    void write(std::string_view piece);

private:
    bool mayConvert(std::string_view text) const;
    bool isConcerned(std::string_view text) const;
    void findRun();

    Zelmor::OIndentBuf& out_;
    ConvertibleBlanks blanks_;
    std::string_view run_;  // the next one
};

// A comment or directive, line for line as it is.
void writeInPlace(std::string_view text, InnerBlanks inner, Zelmor::OIndentBuf& out);

// Whether a literal in the directive goes on behind a line end, so that the white space at the start of the next
// line is part of it.
bool continuesLiteral(std::string_view directive);

// The same for any of the literals in a text, those of its directives among them.
bool holdsLinesOfLiteral(std::string_view text);

// Where the further lines of a text come to stand that are less indented than its first character: below that, or as
// far in front of it as they were.
enum class OuterLines { BelowStart, AsTheyWere };

// A comment or directive. Its further lines keep their place relative to its first character, whose column in
// the input `source` tells.
void writeLines(std::string_view text, const SourceColumns& source, InnerBlanks inner, Zelmor::OIndentBuf& out,
                OuterLines outer = OuterLines::BelowStart);
void writeLines(std::string_view text, int inputColumn, InnerBlanks inner, Zelmor::OIndentBuf& out,
                OuterLines outer = OuterLines::BelowStart);
// A block that is kept unread, whose directives stand where the output does, and whose first one moves from the column
// in the input to that. What stands between them moves as far as code does, which is `codeColumn` where it stood in
// the column of the directive, and is not looked into.
void writeAmongCode(std::string_view block, int inputColumn, int codeColumn, Zelmor::OIndentBuf& out);
// How far behind its first character the text of a further line comes to stand.
int columnsBehindStart(std::string_view line, int inputColumn, int tabSize);

}  // namespace Tessel
