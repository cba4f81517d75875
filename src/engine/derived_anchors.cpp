#include "engine/derived_anchors.h"

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/expr_settings.h"
#include "engine/operator_kinds.h"
#include "engine/scheme_values.h"
#include "scheme/extension_keys.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

bool isMark(int kind) { return kind == Cpp::Asterisk || kind == Cpp::Ampersand || kind == Cpp::LogicalAnd; }

bool mayEndType(int kind) {
    return kind == Cpp::Identifier || kind == Cpp::Greater || isBuiltinTypeKeyword(kind) || Cpp::isQualifier(kind);
}

// Of what may stand behind a mark, expressions have none but names.
bool mayFollowMark(int kind) {
    switch (kind) {
        case Cpp::Identifier:
        case Cpp::CloseParen:
        case Cpp::Comma:
        case Cpp::Greater: return true;
        default: return Cpp::isQualifier(kind);
    }
}

// By how many more marks stand at the type than at the name.
long surplusAtType(std::string_view text) {
    long surplus = 0;
    Cpp::Lexer lexer(text);
    Trn::Token previous = lexer.nextToken();
    Trn::Token token = lexer.nextToken();
    while (token.kind != Trn::kEndKind) {
        if (!isMark(token.kind) || !mayEndType(previous.kind)) {
            previous = token;
            token = lexer.nextToken();
            continue;
        }
        const bool standsApart = previous.offset + previous.length < token.offset;
        while (isMark(token.kind)) {
            previous = token;
            token = lexer.nextToken();
        }
        const bool isFollowedByBlank = previous.offset + previous.length < token.offset;
        if (mayFollowMark(token.kind) && standsApart != isFollowedByBlank) surplus += standsApart ? -1 : 1;
    }
    return surplus;
}

}  // namespace

PropertySet withAnchorsOf(std::string_view text, PropertySet scheme) {
    if (!readSwitch(scheme, Keys::DERIVE_ANCHORS)) return scheme;
    const long surplus = surplusAtType(text);
    if (surplus == 0) return scheme;
    for (const std::string_view anchor : {Keys::ASTERISK_ANCHOR, Keys::AMPERSAND_ANCHOR}) {
        scheme.setInt(anchor, surplus > 0 ? kAnchoredToType : kAnchoredToName);
    }
    return scheme;
}

}  // namespace Tessel
