#include "engine/region_proof.h"

#include <algorithm>

#include "engine/side_by_side.h"

namespace Tessel {

namespace {

class Sides : public SideBySide {
public:
    using SideBySide::SideBySide;

    // Goes through the source up to `end`. Stops in front of a line that differs.
    bool compareLines(std::size_t end) {
        while (sourcePlace_ < end) {
            const std::size_t lineFeed = source_.find('\n', sourcePlace_);
            const std::string_view line =
                source_.substr(sourcePlace_, std::min(lineFeed, end) - sourcePlace_);
            if (result_.substr(resultPlace_, line.size()) != line) return false;
            resultPlace_ += line.size();
            sourcePlace_ += line.size();
            if (lineFeed < end && !startLine()) return false;
        }
        return true;
    }

private:
    // Behind the line end in both texts, and the blanks that follow it.
    bool startLine() {
        if (resultPlace_ >= result_.size() || result_[resultPlace_] != '\n') return false;
        sourcePlace_ = behindBlanks(source_, sourcePlace_ + 1);
        resultPlace_ = behindBlanks(result_, resultPlace_ + 1);
        return true;
    }

    static std::size_t behindBlanks(std::string_view text, std::size_t place) {
        while (place < text.size() && text[place] != '\n' && isWhitespace(text[place])) ++place;
        return place;
    }
};

}  // namespace

std::optional<std::size_t> findChangedLine(std::string_view source, const KeptRegions& regions,
                                           std::string_view result) {
    Sides sides(source, result);
    for (const KeptRegion& region : regions) {
        // One that lies in a region that has been compared is behind; what goes on from there is compared from there.
        if (region.start >= sides.sourcePlace()) sides.goTo(region.start);
        if (!sides.compareLines(region.end)) return sides.sourcePlace();
    }
    return std::nullopt;
}

}  // namespace Tessel
