// The roles of groups in parentheses: each rule looks at one side of a group, and says what it knows.
#include <optional>
#include <string_view>

#include "cpp/item_progress.h"
#include "cpp/token_classes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "cpp/words.h"

namespace Cpp {

namespace {

bool beginsTail(const Trn::Token& word) {
    return isQualifier(word.kind) || word.text == "noexcept" || word.text == "override" || word.text == "final" ||
           word.text == "requires";
}

}  // namespace

// A group, between what has been read of its declaration and what follows it.
class ItemScanner::Group {
public:
    // All are borrowed; a ")" closes the group.
    Group(const ItemScanner& scanner, Index open, Progress& seen, const ItemContext& context)
        : scan_(scanner),
          seen_(seen),
          context_(context),
          open_(open),
          close_(scanner.links_.closing(open)),
          following_(scanner.next(close_)),
          followingKind_(scanner.kind(following_)),
          followsWord_(seen.previous != kNone && isWord(scanner.kind(seen.previous))),
          name_(followsWord_ ? scanner.tokens_.at(seen.previous) : Trn::Token()) {}

    std::optional<Item> role();

private:
    // What a rule says: nothing, or the item whose shape the group tells, or none of these, as it is a specifier's or
    // a class name's.
    struct Verdict {
        bool isGiven;
        std::optional<Item> item;
    };
    static constexpr Verdict kUndecided{false, std::nullopt};
    static constexpr Verdict kSpecifier{true, std::nullopt};
    Verdict data() const { return {true, Item{Item::Shape::Data, open_, 0}}; }
    Verdict macro(Index behind) const { return {true, Item{Item::Shape::Macro, behind, 0}}; }
    Verdict function() const { return {true, Item{Item::Shape::Function, open_, open_}}; }

    Verdict byWordInFront() const;
    Verdict byClassHead() const;
    Verdict byValueInside() const;
    Verdict byMarkInside() const;
    Verdict byClassName() const;
    Verdict byGroupBehind() const;
    Verdict byDeclaratorsBehind() const;
    Verdict byLoneName() const;
    Verdict byMacroName() const;
    Verdict byDeclarationBelow() const;
    Verdict byWordBehind() const;
    Verdict byFunctionBelow() const;
    Verdict byTypeBehind() const;

    bool isLoneName() const;
    bool namesTypeBelow() const;
    bool takesAnnotations() const;
    bool hasTail() const;
    bool goesOnBelow() const;
    bool namesFunctionByMacro() const;
    bool endsMacro(bool goesOn) const;
    bool continuesType(bool goesOn) const;

    bool findsMacros() const { return scan_.findsMacros_; }
    bool isOutside() const { return context_.scope == ItemContext::Scope::Outside; }
    bool startsLine() const { return scan_.startsLaterLine(following_, close_); }
    bool beginsItem() const { return isWord(followingKind_) || scan_.opensAttribute(following_); }
    bool followsStorage() const { return seen_.second != kNone && isStorageWord(kind(seen_.second)); }
    bool holdsParameters() const { return kind(next(open_)) == OpenParen; }
    bool namesMacro() const { return followsWord_ && isUpperCase(name_.text); }
    int kind(Index place) const { return scan_.kind(place); }
    Index next(Index place) const { return scan_.next(place); }
    Index behind(Index place) const { return scan_.behind(place); }

    const ItemScanner& scan_;
    Progress& seen_;
    const ItemContext& context_;
    Index open_;
    Index close_;
    Index following_;
    int followingKind_;
    bool followsWord_;
    Trn::Token name_;  // the word in front; empty where there is none
};

std::optional<Item> ItemScanner::scanParenthesis(Index open, Progress& seen, const ItemContext& context) const {
    if (links_.closing(open) == kNone) return Item{Item::Shape::Function, open, open};
    return Group(*this, open, seen, context).role();
}

std::optional<Item> ItemScanner::Group::role() {
    using Rule = Verdict (Group::*)() const;
    static constexpr Rule kRules[] = {
        &Group::byWordInFront, &Group::byClassHead,         &Group::byValueInside, &Group::byMarkInside,
        &Group::byClassName,   &Group::byGroupBehind,       &Group::byDeclaratorsBehind,
        &Group::byLoneName,    &Group::byMacroName,         &Group::byDeclarationBelow,
        &Group::byWordBehind,  &Group::byFunctionBelow,     &Group::byTypeBehind};
    for (const Rule rule : kRules) {
        if (const Verdict verdict = (this->*rule)(); verdict.isGiven) return verdict.item;
    }
    return function().item;
}

ItemScanner::Group::Verdict ItemScanner::Group::byWordInFront() const {
    if (followsWord_ && takesArgument(name_)) return kSpecifier;
    if (!findsMacros()) return kUndecided;
    if (name_.text.starts_with("__") && scan_.marksItem(open_)) return kSpecifier;
    return followsWord_ && scan_.endsWithAssign(open_) ? data() : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byClassHead() const {
    if (seen_.sawColon) return seen_.sawClassKey || seen_.sawEnum ? kSpecifier : data();
    if (!findsMacros()) return kUndecided;
    if (followingKind_ == Colon && scan_.makesClass(following_)) return kSpecifier;
    if (!seen_.isAlone()) return kUndecided;
    seen_.sawBases = scan_.beginsBasesOfClass(following_);
    return seen_.sawBases || scan_.opensClassBody(following_) ? kSpecifier : kUndecided;
}

// A a(&b);
// A* a GUARDED_BY(&b);
ItemScanner::Group::Verdict ItemScanner::Group::byValueInside() const {
    if (!findsMacros() || (followingKind_ != Semicolon && followingKind_ != Assign)) return kUndecided;
    const bool isValue =
        followingKind_ == Semicolon && scan_.holdsMarkedName(open_) && scan_.followsTypedName(seen_);
    const bool isAddress = kind(next(open_)) == Ampersand && scan_.followsMacroOfName(seen_);
    return isValue || isAddress ? data() : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byMarkInside() const {
    // const Info *CALL(*)
    // find(int number)
    const bool isMarkAlone = next(next(open_)) == close_ && kind(next(open_)) == Asterisk;
    if (findsMacros() && namesMacro() && isMarkAlone && followingKind_ == Identifier) return kSpecifier;
    if (!scan_.opensPointerDeclarator(open_, following_, seen_)) return kUndecided;
    const Index inside = findsMacros() ? scan_.parametersOfArray(open_) : kNone;
    if (inside != kNone) return {true, Item{Item::Shape::Function, open_, inside}};
    if (scan_.declaresFunction(open_)) return {true, Item{Item::Shape::Function, open_, following_}};
    return {true, Item{Item::Shape::FunctionPointer, open_, 0}};
}

ItemScanner::Group::Verdict ItemScanner::Group::byClassName() const {
    if (scan_.holdsClassKey(open_) && followingKind_ == Identifier) return kSpecifier;
    // class EXPORT ALIGNED(16) A {
    const int behindName = kind(next(following_));
    const bool isNamed = followingKind_ == Identifier && (behindName == OpenBrace || behindName == Colon);
    const bool isMacroBehind = findsMacros() && namesMacro() && isNamed;
    const bool isInName = seen_.sawClassKey && (seen_.wordsBehindKey <= 1 || isMacroBehind);
    const bool goesOn = followingKind_ == Identifier || followingKind_ == OpenBrace || followingKind_ == Colon;
    const bool hasArguments = findsMacros() && scan_.opensArguments(following_);
    return (isInName && goesOn) || hasArguments ? kSpecifier : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byGroupBehind() const {
    if (followingKind_ != OpenParen) return kUndecided;
    if (const Index end = scan_.behindMacroOfHeader(open_, seen_); end != kNone) return macro(end);
    if (scan_.heads_.hasBody(following_)) return {true, Item{Item::Shape::Function, open_, following_}};
    return {true, Item{Item::Shape::FunctionPointer, open_, 0}};
}

// int *f(int) attribute((pure)), *g(int);
// HEAD(a, "b") "c";
// DECLARE_ALIGNED(8, int, a)[2] = {}
ItemScanner::Group::Verdict ItemScanner::Group::byDeclaratorsBehind() const {
    const bool mayBeFirst = name_.kind == Identifier && seen_.typeWords > 0 && !seen_.sawOperator;
    if (findsMacros() && mayBeFirst && kind(scan_.behindCalls(following_, seen_.callsEnd)) == Comma) return data();
    if (scan_.heads_.oldStyleTail(open_)) return function();
    if (!findsMacros()) return kUndecided;
    const bool hasValue =
        followingKind_ == Assign && !scan_.hasCompleteTail(open_, seen_) && scan_.endsValue(following_);
    if (hasValue && followsWord_ && !seen_.sawOperator) return data();
    if (!isOutside() || !seen_.isAlone()) return kUndecided;
    if (scan_.endsInLiterals(following_)) return {true, Item{Item::Shape::Statement, open_, 0}};
    return scan_.holdsElements(following_) ? data() : kUndecided;
}

// A name that has no type: a constructor's, a macro's, or that of a function of old.
ItemScanner::Group::Verdict ItemScanner::Group::byLoneName() const {
    if (!isLoneName()) return kUndecided;
    if (findsMacros() && isOutside() && scan_.isCommaAtLineEnd(following_)) return macro(following_ + 1);
    const Index lineEnd = findsMacros() && isOutside() ? scan_.macros_.behindMacroLine(seen_.previous) : kNone;
    if (lineEnd != kNone) return macro(lineEnd);
    if (findsMacros() && (namesTypeBelow() || takesAnnotations())) return function();
    const bool isTail = hasTail();
    const bool goesOn = goesOnBelow();
    if (findsMacros() && endsMacro(goesOn || isTail)) return macro(close_ + 1);
    return continuesType(goesOn) && !isTail ? kSpecifier : function();
}

bool ItemScanner::Group::isLoneName() const {
    const bool isQualified = name_.text.find("::") != std::string_view::npos;
    const bool isSpecial = name_.text.starts_with('~') || isQualified || name_.text == context_.className;
    return seen_.isAlone() && followsWord_ && !isSpecial && name_.kind == Identifier;
}

// EXPORT(int)
// f(int a) PURE;
//
// As opposed to macros below each other:
//
// module_exit(stop)
// LICENSE("GPL");
bool ItemScanner::Group::namesTypeBelow() const {
    const bool isTyped = scan_.followsMacroCall(seen_.start) && !isUpperCase(name_.text);
    const bool isMacroBelow = startsLine() && kind(next(following_)) == OpenParen;
    return isTyped && !isMacroBelow && scan_.endOfAnnotations(following_) != kNone;
}

// static DEFINE(name)
//     aligned(64);
bool ItemScanner::Group::takesAnnotations() const {
    const bool isBelow = startsLine() && scan_.macros_.isIndentedFrom(seen_.previous, following_);
    const bool isBehind = !startsLine() && scan_.tokens_.at(following_).text.starts_with("__");
    return (followsStorage() || isBelow || isBehind) && scan_.endsWithValue(following_);
}

bool ItemScanner::Group::hasTail() const {
    const bool begins = isQualifier(followingKind_) || followingKind_ == KeywordThrow ||
                        followingKind_ == KeywordTry || (findsMacros() && scan_.promisesNoThrow(following_));
    return begins && scan_.hasCompleteTail(open_, seen_);
}

// extern EXPORT(int)
// f(int a);
//
// LOCAL(int)
// NAMED(f)(int a);
bool ItemScanner::Group::goesOnBelow() const {
    const bool isBelow = startsLine() && scan_.macros_.isIndentedFrom(seen_.previous, following_);
    if (isBelow && scan_.endsInAnnotations(following_)) return true;
    const Index parameters = next(following_);
    const bool declaresFunction = kind(parameters) == OpenParen && kind(behind(parameters)) != OpenParen;
    if (findsMacros() && isOutside() && namesFunctionByMacro()) return true;
    const bool isExtern = followsStorage() && kind(seen_.second) == KeywordExtern;
    return findsMacros() && isExtern && declaresFunction && beginsItem();
}

bool ItemScanner::Group::namesFunctionByMacro() const {
    const Index argument = next(following_);
    if (followingKind_ != Identifier || kind(argument) != OpenParen) return false;
    if (kind(behind(argument)) != OpenParen) return false;
    return isUpperCase(scan_.tokens_.at(following_).text) && kind(behind(behind(argument))) == Semicolon;
}

// Whether the line ends a macro, or the text does.
bool ItemScanner::Group::endsMacro(bool goesOn) const {
    if (followingKind_ == CloseBrace || followingKind_ == Trn::kEndKind) return true;
    return startsLine() && beginsItem() && !scan_.beginsBases(following_) && !goesOn;
}

// `API(int) *f()`, `API(2) int f()`, as opposed to `f(a) PURE {`.
bool ItemScanner::Group::continuesType(bool goesOn) const {
    const bool isMark = followingKind_ == Asterisk || followingKind_ == Ampersand;
    const bool isTypeWord = (!startsLine() || goesOn) && isWord(followingKind_);
    if (!isMark && !isTypeWord && !scan_.beginsBases(following_)) return false;
    const bool isTailWord =
        followingKind_ == Identifier && kind(scan_.behindAnnotations(next(following_))) == OpenBrace;
    return !isTailWord;
}

// const int PRIVATE(sizes)[] = {}
// API STACK_OF(int) *f(int a);
ItemScanner::Group::Verdict ItemScanner::Group::byMacroName() const {
    if (!findsMacros() || !namesMacro()) return kUndecided;
    const bool namesArray = followingKind_ == OpenBracket && !scan_.opensAttribute(following_);
    if (namesArray && !seen_.sawOperator) return data();
    return followingKind_ == Asterisk && scan_.marksFunction(following_) ? kSpecifier : kUndecided;
}

// COMMON_HEADER BUFFER_INFO(u8)
// u32 length;
ItemScanner::Group::Verdict ItemScanner::Group::byDeclarationBelow() const {
    const bool mayEndMacros = followsWord_ && (isUpperCase(name_.text) || name_.text.starts_with("__"));
    if (!findsMacros() || !mayEndMacros || !startsLine() || !scan_.followsMacros(seen_)) return kUndecided;
    const bool isBelow = !scan_.macros_.isIndentedFrom(seen_.previous, following_);
    return isBelow && scan_.macros_.isCompleteDeclaration(following_) ? macro(close_ + 1) : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byWordBehind() const {
    if (!findsMacros()) return kUndecided;
    // USED section(".name") static int a;
    if (isStorageWord(followingKind_) && !startsLine()) return kSpecifier;
    const Trn::Token word = scan_.tokens_.at(following_);
    const bool isName = word.kind == Identifier;
    const bool endsData = followingKind_ == Semicolon || (isName && isUpperCase(word.text));
    const bool isData = endsData && !holdsParameters() && scan_.followsDeclaredName(seen_);
    if (isData && !scan_.heads_.hasBody(open_)) return data();
    if (namesMacro() && scan_.beginsBases(following_)) return kSpecifier;
    // CHECKED NONNULL(1) INLINE void *f(A *a)
    const Trn::Token second = scan_.tokens_.at(next(following_));
    const bool areMacros = namesMacro() && !startsLine() && isName && scan_.followsMacros(seen_);
    if (areMacros && isWord(second.kind) && !isUpperCase(second.text) && !beginsTail(second)) return kSpecifier;
    // char aligned(16) bytes[] = {}
    const bool isArray = isName && second.kind == OpenBracket && !scan_.opensAttribute(next(following_));
    return isArray ? kSpecifier : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byFunctionBelow() const {
    const Trn::Token word = scan_.tokens_.at(following_);
    const Index parameters = next(following_);
    const bool isBelow = startsLine() && word.kind == Identifier && kind(parameters) == OpenParen;
    if (!namesMacro() || !isBelow) return kUndecided;
    // T max PLAIN(T a)
    //     NOTHROW(T) {
    const bool isTail = seen_.typeWords > 1 && scan_.macros_.isIndentedFrom(seen_.start, following_);
    const bool hasName = isTail || scan_.followsDeclaredName(seen_);
    if (findsMacros() && isUpperCase(word.text) && hasName) return kUndecided;
    if (scan_.heads_.hasBody(parameters)) return kSpecifier;
    // void PRINTF(1, 2)
    // log(const char *format, ...);
    const bool isDeclared = scan_.followsType(seen_) && kind(behind(parameters)) == Semicolon;
    const bool isPlainName = !isUpperCase(word.text) && !word.text.starts_with("__");
    return findsMacros() && isDeclared && isPlainName ? kSpecifier : kUndecided;
}

ItemScanner::Group::Verdict ItemScanner::Group::byTypeBehind() const {
    const Trn::Token word = scan_.tokens_.at(following_);
    // int size PARAMS((int a)) pure_function;
    const bool endsList = holdsParameters() && seen_.typeWords > 1 && kind(next(following_)) == Semicolon;
    if (!namesMacro() || startsLine() || (findsMacros() && endsList)) return kUndecided;
    const bool continues = isTypeWord(word.kind) || (word.kind == Identifier && !isUpperCase(word.text));
    return continues && !beginsTail(word) ? kSpecifier : kUndecided;
}

}  // namespace Cpp
