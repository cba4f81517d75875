#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>

#include "cpp/conditional_groups.h"
#include "cpp/nodes.h"
#include "cpp/opaque_tokens.h"
#include "engine/kept_region.h"
#include "engine/same_lines.h"
#include "textstream/text_document.h"
#include "trn/token_list.h"

namespace Tessel {

// A text in memory with its tree. The text stays where it is, so that positions and views hold.
struct ParsedText {
    explicit ParsedText(std::istream& in) : text(in) {}
    explicit ParsedText(Zelmor::LineFeedText content) : text(std::move(content)) {}
    // What has become of another, whose tree goes along: only white space differs.
    ParsedText(ParsedText& former, std::string content);

    void findUnreadBlocks();
    // Regions that have places in common are one.
    void addRegions(const KeptRegions& added);

    Zelmor::TextDocument text;
    Cpp::OpaqueTokens opaque;
    std::shared_ptr<const Trn::TokenList> tokens;  // null for what has become of another
    Cpp::RootNode root;
    KeptRegions regions;           // in order
    KeptRegions unreadBlocks;      // what the parse has made one token of, in order
    Cpp::TakenConditions conditions;
    SameLines sameLines;           // as in the text that it has come from
    bool hasOpenRegion = false;    // a protected one that nothing closes
    bool hasUnrecognized = false;  // what no rule recognises, kept as it is
};

}  // namespace Tessel
