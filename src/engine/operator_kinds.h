#pragma once

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "trn/token.h"

// What the passes ask about the kinds of tokens below the level of the tree.
namespace Tessel {

constexpr bool isOperatorKind(int kind) {
    switch (kind) {
        case Cpp::Colon:
        case Cpp::Assign:
        case Cpp::Asterisk:
        case Cpp::Ampersand:
        case Cpp::Slash:
        case Cpp::Plus:
        case Cpp::Minus:
        case Cpp::Tilde: return true;
        default: return kind >= Cpp::Percent && kind <= Cpp::Question;
    }
}

constexpr bool isPointerMark(int kind) { return kind == Cpp::Asterisk || kind == Cpp::Ampersand; }

// The second mark of a reference to what moves, too.
constexpr bool isAnyMark(int kind) { return isPointerMark(kind) || kind == Cpp::LogicalAnd; }

constexpr bool isShiftKind(int kind) { return kind == Cpp::ShiftLeft || kind == Cpp::ShiftRight; }

constexpr bool isLogicalAndOr(int kind) { return kind == Cpp::LogicalAnd || kind == Cpp::LogicalOr; }

using Cpp::isBuiltinTypeKeyword;

// Of a word or a literal that stands for a value.
constexpr bool isValueKind(int kind) {
    switch (kind) {
        case Cpp::Identifier:
        case Cpp::Number:
        case Cpp::CharLiteral:
        case Cpp::StringLiteral:
        case Cpp::KeywordThis:
        case Cpp::KeywordTrue:
        case Cpp::KeywordFalse: return true;
        default: return false;
    }
}

constexpr bool isAssignmentKind(int kind) {
    return kind == Trn::kEndKind || kind == Cpp::Assign ||
           (kind >= Cpp::AsteriskAssign && kind <= Cpp::BarAssign);
}

constexpr bool isCastKeyword(int kind) {
    return kind >= Cpp::KeywordStaticCast && kind <= Cpp::KeywordReinterpretCast;
}

}  // namespace Tessel
