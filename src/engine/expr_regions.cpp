#include "engine/expr_regions.h"

#include <algorithm>

#include "cpp/comment_text.h"
#include "cpp/region_markers.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Tessel {

std::optional<OpenRegion> OpenRegion::openedBy(const Trn::Lexeme& token, const MarkerPairs& markers) {
    if (Cpp::opensUnusedBlock(token)) return OpenRegion({});
    if (!Cpp::isComment(token.kind)) return {};
    const std::string_view body = Cpp::trimmedCommentBody(token.text);
    if (body == Cpp::kRegionOff) return OpenRegion(Cpp::kRegionOn);
    const auto pair = std::ranges::find(markers, body, &MarkerPairs::value_type::first);
    if (pair == markers.end()) return {};
    return OpenRegion(pair->second);
}

int OpenRegion::step(const Trn::Lexeme& token) const {
    if (isUnread()) return Cpp::unusedBlockStep(token);
    if (closing_ == Cpp::kRegionOn) return Cpp::protectedRegionStep(token);
    return Cpp::isComment(token.kind) && Cpp::trimmedCommentBody(token.text) == closing_ ? -1 : 0;
}

namespace {

int bracketStep(int kind) {
    switch (kind) {
        case Cpp::OpenParen:
        case Cpp::OpenBracket:
        case Cpp::OpenBrace: return 1;
        case Cpp::CloseParen:
        case Cpp::CloseBracket:
        case Cpp::CloseBrace: return -1;
        default: return 0;
    }
}

// Goes through the tokens once, with the region that is open.
class RegionFinder {
public:
    RegionFinder(const MarkerPairs& markers, ExprTokens& tokens) : markers_(markers), tokens_(tokens) {}

    void run() {
        // Most texts hold nothing that could open one.
        const auto first = std::ranges::find(tokens_, ExprRole::Trivia, &ExprToken::role);
        auto kept = static_cast<std::size_t>(first - tokens_.begin());
        for (std::size_t place = kept; place < tokens_.size(); ++place, ++kept) {
            if (kept < place) tokens_[kept] = tokens_[place];
            const ExprToken& token = tokens_[kept];
            if (token.role == ExprRole::Block) holdsBlock_ = true;
            if (token.role != ExprRole::Trivia) continue;
            if (depth_ == 0) {
                open(kept);
            } else if (depth_ += region_->step(token); depth_ == 0 && !holdsBlock_) {
                merge(kept);
                kept = first_;
            }
        }
        tokens_.resize(kept);
        if (depth_ > 0 && isForeign_ && !holdsBlock_) mergeRest();
    }

private:
    void open(std::size_t place) {
        region_ = OpenRegion::openedBy(tokens_[place], markers_);
        if (!region_) return;
        depth_ = 1;
        isForeign_ = isForeignMarker(Cpp::trimmedCommentBody(tokens_[place].text()));
        first_ = place;
        holdsBlock_ = false;
    }

    // The token at the place ends the region.
    void merge(std::size_t place) {
        ExprToken& region = tokens_[first_];
        region.setText({region.text().data(), tokens_[place].end() - region.offset});
        if (!region_->isUnread()) region.kind = region.text().ends_with('\n') ? Cpp::LineComment : Cpp::BlockComment;
        region.isRegion = true;
    }

    // The region ends behind the text: what stands in it between the same brackets is kept.
    void mergeRest() {
        std::size_t end = first_ + 1;
        for (int nesting = 0; end < tokens_.size(); ++end) {
            const int kind = tokens_[end].kind;
            if (nesting == 0 && (kind == Cpp::Semicolon || bracketStep(kind) < 0)) break;
            nesting += bracketStep(kind);
        }
        if (end == first_ + 1) return;
        merge(end - 1);
        const auto first = tokens_.begin() + static_cast<std::ptrdiff_t>(first_);
        tokens_.erase(first + 1, tokens_.begin() + static_cast<std::ptrdiff_t>(end));
    }

    const MarkerPairs& markers_;
    ExprTokens& tokens_;
    int depth_ = 0;
    bool isForeign_ = false;
    std::size_t first_ = 0;  // of the region
    bool holdsBlock_ = false;
    std::optional<OpenRegion> region_;
};

}  // namespace

void mergeRegions(const MarkerPairs& markers, ExprTokens& tokens) { RegionFinder(markers, tokens).run(); }

}  // namespace Tessel
