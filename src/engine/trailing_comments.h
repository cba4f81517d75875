#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "engine/column_layout.h"
#include "engine/conditional_comments.h"
#include "engine/extension_settings.h"

namespace Tessel {

// Line comments behind code, as far behind it as the scheme says. Those that stand below each other in the source, and
// lines of nothing but a comment that go on with one of them, stay in one column:
//
//     int a;   // one            int a;    // one
//     int bcd; // two            int bcd;  // two
//              // and more                 // and more
//
// With ALIGN_LINE_COMMENTS those behind lines that follow each other do so anyway, as far as they fit in the margin.
// Block comments that end their lines below each other stay in one column too, with the least white space among
// theirs, or a blank with ALIGN_LINE_COMMENTS, unless one of them would leave the margin for it. Those behind a lone
// "}" do not move, nor do others with KEEP_COLUMNS; lines that go on with one of them come to stand below it.
// One behind "#else" stays in the column of the one behind its "#endif".
class TrailingComments {
public:
    // The settings are borrowed, as is the source.
    TrailingComments(const ColumnLayout& columns, std::string_view source, const ExtensionSettings& settings)
        : columns_(columns),
          source_(source),
          settings_(settings),
          conditionals_(source, settings.beforeLineComment.text, columns.tabSize) {}

    // The comment at `offset` of the source comes next behind what has been written. Those in front that it does not go
    // on with move to where they belong.
    void add(std::string& written, std::size_t offset);
    // The same for a block comment that ends its line.
    void addBlock(std::string& written, std::size_t offset);
    // The same of the last ones: no further comment comes.
    void finish(std::string& written);

private:
    struct Comment {
        std::size_t offset = 0;    // in the source
        std::size_t gapStart = 0;  // of the white space in front of it
        std::size_t gapEnd = 0;
        int sourceColumn = 0;
        int codeEnd = 0;  // the column behind the code in front of it
        int column = 0;   // where it stands
        int length = 0;
        bool isBlock = false;
        bool isOwnLine = false;
        bool standsAlone = false;  // behind a directive, or the "}" of a namespace
        bool closesBody = false;   // behind a "}" and nothing else
        bool opensBody = false;    // what stands in its lines may miss it by a column, too

        int width() const { return column - codeEnd; }
    };
    using Comments = std::vector<Comment>;

    bool leadsElements(std::string_view written, const Comment& comment, std::size_t offset);
    Comment commentAt(std::string_view written, std::size_t offset) const;
    void push(const Comment& comment);
    void placeOthers(std::string& written, Comment& comment);
    bool goesOnBelowLast(std::string_view written, const Comment& comment);
    bool standsAboveCode(const Comment& comment);
    bool isBelow(const Comment& other, const Comment& comment, int most) const;
    bool isBelowLast(std::string_view written, const Comment& comment) const;
    bool isInNextLine(std::string_view written) const;
    bool isFixed(const Comment& comment) const;
    bool standsInColumn(const Comment& comment) const;
    bool endsOtherBody(const Comment& comment) const;
    bool mayJoinLast(const Comment& comment) const;
    int columnOf(const Comment& comment) const;
    int wideColumnOf(const Comment& comment) const;
    int sourceCodeEndOf(const Comment& comment) const;
    void placeLast(std::string& written);
    int codeColumnBelow(std::size_t offset, int tabSize);
    static int columnIn(std::string_view text, std::size_t offset, int tabSize);
    int columnForLast() const;

    ColumnLayout columns_;
    std::string_view source_;
    const ExtensionSettings& settings_;
    ConditionalComments conditionals_;
    Comments last_;              // those that share a column, and have not been placed
    int lastColumn_ = 0;         // the least one for them
    int lastLength_ = 0;         // of the longest of them
    std::size_t codeBelow_ = 0;  // where the first line begins, behind the last one looked at, that is no comment
};

}  // namespace Tessel
