#include "engine/parsed_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "cpp/token_kind.h"
#include "engine/moved_positions.h"

namespace Tessel {

ParsedText::ParsedText(ParsedText& former, std::string content) : text(std::move(content)) {
    root.swap(former.root);
    MovedPositions positions(former.text, text);
    root.move(positions);
    for (const Cpp::OpaqueToken& token : former.opaque) {
        const std::size_t start = positions.movedStart(token.offset);
        const std::size_t end = positions.movedEnd(std::size_t{token.offset} + token.length);
        opaque.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end - start), token.kind});
    }
    for (const KeptRegion& region : former.regions) {
        regions.push_back({positions.movedStart(region.start), positions.movedEnd(region.end)});
    }
    for (const KeptRegion& block : former.unreadBlocks) {
        unreadBlocks.push_back({positions.movedStart(block.start), positions.movedEnd(block.end)});
    }
    sameLines = positions.takeSameLines();
}

void ParsedText::findUnreadBlocks() {
    for (Trn::TokenList::Index place = 0; place < tokens->size(); ++place) {
        if (tokens->kind(place) != Cpp::UnreadBlock) continue;
        unreadBlocks.push_back({tokens->offset(place), tokens->endOffset(place)});
    }
}

void ParsedText::addRegions(const KeptRegions& added) {
    KeptRegions all = std::exchange(regions, {});
    all.insert(all.end(), added.begin(), added.end());
    std::ranges::sort(all, {}, &KeptRegion::start);
    for (KeptRegion& region : all) {
        // What stands between an #endif and the comment behind it is that comment's.
        region.end = text.text().find_last_not_of(" \t", region.end - 1) + 1;
        if (regions.empty() || region.start >= regions.back().end) {
            regions.push_back(region);
        } else {
            regions.back().end = std::max(regions.back().end, region.end);
        }
    }
}

}  // namespace Tessel
