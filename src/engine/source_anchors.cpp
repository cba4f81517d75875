#include "engine/source_anchors.h"

#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"
#include "engine/operator_kinds.h"
#include "engine/scheme_values.h"
#include "scheme/property_keys.h"

namespace Tessel {

namespace {

constexpr int kToType = 0;
constexpr int kToName = 1;
constexpr int kAsItIs = -1;


// What a type ends with that no operator follows but seldom.
bool mayEndType(int kind) {
    return kind == Cpp::Identifier || kind == Cpp::Greater || kind == Cpp::KeywordConst || isBuiltinTypeKeyword(kind);
}

bool isConditionKey(int kind) {
    return kind == Cpp::KeywordIf || kind == Cpp::KeywordFor || kind == Cpp::KeywordWhile || kind == Cpp::KeywordSwitch;
}

std::size_t behind(const Trn::Token& token) { return std::size_t{token.offset} + token.length; }

// The marks against names less those against types. Those with white space on neither or both sides may be operators.
class MarkCount {
public:
    void pass(const Trn::Token& token) {
        if (isAnyMark(token.kind) && mayEndType(type_.kind)) {
            if (!sawMarks_) marksStart_ = token.offset;
            sawMarks_ = true;
            mark_ = token;
            return;
        }
        if (sawMarks_ && token.kind == Cpp::Identifier && token.start.line == type_.end.line) {
            const bool standsApart = marksStart_ > behind(type_);
            const bool leadsName = behind(mark_) == token.offset;
            if (standsApart == leadsName) namesAhead_ += leadsName ? 1 : -1;
        }
        sawMarks_ = false;
        type_ = token;
    }
    long namesAhead() const { return namesAhead_; }

private:
    Trn::Token type_;
    Trn::Token mark_;  // the last one behind the type
    std::size_t marksStart_ = 0;
    bool sawMarks_ = false;
    long namesAhead_ = 0;
};

// The gaps behind commas and "=", in front of conditions and arguments in which white space is where the scheme has it,
// less those in which it is not: what every author writes much of, and styles differ in.
class GapCount {
public:
    explicit GapCount(const PropertySet& scheme)
        : behindComma_(readText(scheme, Keys::WS_BETWEEN_FN_CALL_ARGS)),
          behindAssign_(readText(scheme, Keys::WS_BETWEEN_EXPR_OP_OPERANDS)),
          beforeCondition_(readText(scheme, Keys::WS_AFTER_CS_KEY)),
          beforeArguments_(readText(scheme, Keys::WS_AFTER_FN_CALL_NAME)) {}

    void pass(const Trn::Token& token) {
        const OptionalText* const wanted = wantedInFrontOf(token);
        if (wanted && wanted->present && token.start.line == previous_.end.line) {
            const bool isEmpty = behind(previous_) == token.offset;
            asWanted_ += isEmpty == wanted->text.empty() ? 1 : -1;
        }
        previous_ = token;
    }
    bool keepsScheme() const { return asWanted_ >= 0; }

private:
    const OptionalText* wantedInFrontOf(const Trn::Token& token) const {
        if (previous_.kind == Cpp::Comma) return &behindComma_;
        if (previous_.kind == Cpp::Assign) return &behindAssign_;
        if (token.kind != Cpp::OpenParen) return nullptr;
        if (isConditionKey(previous_.kind)) return &beforeCondition_;
        return previous_.kind == Cpp::Identifier ? &beforeArguments_ : nullptr;
    }

    OptionalText behindComma_;
    OptionalText behindAssign_;
    OptionalText beforeCondition_;
    OptionalText beforeArguments_;
    Trn::Token previous_;
    long asWanted_ = 0;
};

// Whether the scheme has a side of its own to put all marks on.
bool hasOneAnchor(const PropertySet& scheme) {
    const int asterisk = readInt(scheme, Keys::ASTERISK_ANCHOR, kAsItIs);
    return asterisk != kAsItIs && asterisk == readInt(scheme, Keys::AMPERSAND_ANCHOR, kAsItIs);
}

}  // namespace

PropertySet withAnchorsOfSource(PropertySet scheme, std::string_view source) {
    MarkCount marks;
    GapCount gaps(scheme);
    Cpp::Lexer lexer(source);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        marks.pass(token);
        gaps.pass(token);
    }
    const bool saysNothing = hasOneAnchor(scheme) && !gaps.keepsScheme();
    if (marks.namesAhead() == 0 || saysNothing) return scheme;
    for (const auto& key : {Keys::ASTERISK_ANCHOR, Keys::AMPERSAND_ANCHOR}) {
        scheme.setInt(key, marks.namesAhead() > 0 ? kToName : kToType);
    }
    return scheme;
}

}  // namespace Tessel
