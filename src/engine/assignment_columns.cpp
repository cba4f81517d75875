#include "engine/assignment_columns.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "engine/assignment_lines.h"
#include "engine/columns.h"
#include "engine/gap.h"
#include "engine/side_by_side.h"
#include "textstream/otext_doc_buf.h"

namespace Tessel {

namespace {

KeptRegions regionsIn(std::string_view result, std::string_view source, const KeptRegions& regions) {
    KeptRegions moved;
    SideBySide sides(source, result);
    for (const KeptRegion& region : regions) {
        sides.goTo(region.start);
        const std::size_t start = sides.resultPlace();
        sides.passUpTo(region.end);
        moved.push_back({start, std::max(start, sides.resultPlace())});
    }
    return moved;
}

// Writes a text with other white space in front of some of its lines and "=".
class AssignmentWriter {
public:
    AssignmentWriter(const ColumnLayout& layout, std::string_view text) : layout_(layout), text_(text) {
        out_.reserve(text.size() + text.size() / kShareAdded);
    }

    std::string write(const AssignmentLines& found);

private:
    static constexpr std::size_t kShareAdded = 16;

    void writeIndent(const HangingLine& line, int shift);
    void writeGap(const AssignmentSign& sign);
    void copyTo(std::size_t end) {
        out_ += text_.substr(copied_, end - copied_);
        copied_ = end;
    }

    const ColumnLayout& layout_;
    std::string_view text_;
    std::string out_;
    std::size_t copied_ = 0;
};

std::string AssignmentWriter::write(const AssignmentLines& found) {
    std::vector<int> shifts;
    shifts.reserve(found.lines().size());
    for (const HangingLine& line : found.lines()) {
        int shift = 0;
        if (line.parent != kNoLine) {
            const std::size_t sign = found.lines()[line.parent].sign;
            shift = shifts[line.parent];
            if (line.isBehindSign && sign != kNoSign) shift += found.signs()[sign].shift();
        }
        shifts.push_back(shift);
        if (shift != 0) writeIndent(line, shift);
        if (line.sign != kNoSign && found.signs()[line.sign].shift() != 0) writeGap(found.signs()[line.sign]);
    }
    copyTo(text_.size());
    return std::move(out_);
}

// Behind tabs that stay, blanks come and go.
void AssignmentWriter::writeIndent(const HangingLine& line, int shift) {
    const std::size_t start = lineStartOf(text_, line.textStart);
    std::string_view indent = text_.substr(start, line.textStart - start);
    copyTo(start);
    const std::size_t blanks = indent.size() - (indent.find_last_not_of(' ') + 1);
    if (!Zelmor::keepsTabs(layout_.tabMode) || (shift < 0 && blanks < static_cast<std::size_t>(-shift))) {
        out_ += layout_.blanks(0, line.column + shift);
    } else if (shift > 0) {
        out_.append(indent).append(static_cast<std::size_t>(shift), ' ');
    } else {
        out_ += indent.substr(0, indent.size() - static_cast<std::size_t>(-shift));
    }
    copied_ = line.textStart;
}

void AssignmentWriter::writeGap(const AssignmentSign& sign) {
    copyTo(sign.gapStart);
    out_ += layout_.blanks(sign.codeEnd, sign.wanted);
    copied_ = sign.gapEnd;
}

}  // namespace

std::string withAssignmentColumns(const ColumnLayout& layout, std::string_view source, const KeptRegions& regions,
                                  std::string result) {
    const AssignmentLines found(result, regionsIn(result, source, regions), layout.tabSize, layout.margin);
    return AssignmentWriter(layout, result).write(found);
}

}  // namespace Tessel
