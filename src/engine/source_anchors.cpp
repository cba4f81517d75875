#include "engine/source_anchors.h"

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

constexpr int kToType = 0;
constexpr int kToName = 1;

bool mayBeMark(int kind) { return kind == Cpp::Asterisk || kind == Cpp::Ampersand || kind == Cpp::LogicalAnd; }

// What a type ends with that no operator follows but seldom.
bool mayEndType(int kind) {
    return kind == Cpp::Identifier || kind == Cpp::Greater || kind == Cpp::KeywordConst || isBuiltinTypeKeyword(kind);
}

std::size_t behind(const Trn::Token& token) { return std::size_t{token.offset} + token.length; }

// The marks against names less those against types. Those with white space on neither or both sides may be operators.
long namesAhead(std::string_view source) {
    long ahead = 0;
    Cpp::Lexer lexer(source);
    Trn::Token type;
    Trn::Token mark;  // the last one behind the type
    std::size_t marksStart = 0;
    bool sawMarks = false;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (mayBeMark(token.kind) && mayEndType(type.kind)) {
            if (!sawMarks) marksStart = token.offset;
            sawMarks = true;
            mark = token;
            continue;
        }
        if (sawMarks && token.kind == Cpp::Identifier && token.start.line == type.end.line) {
            const bool standsApart = marksStart > behind(type);
            const bool leadsName = behind(mark) == token.offset;
            if (standsApart == leadsName) ahead += leadsName ? 1 : -1;
        }
        sawMarks = false;
        type = token;
    }
    return ahead;
}

}  // namespace

PropertySet withAnchorsOfSource(PropertySet scheme, std::string_view source) {
    const long ahead = namesAhead(source);
    if (ahead == 0) return scheme;
    for (const auto& key : {Keys::ASTERISK_ANCHOR, Keys::AMPERSAND_ANCHOR}) {
        scheme.setInt(key, ahead > 0 ? kToName : kToType);
    }
    return scheme;
}

}  // namespace Tessel
