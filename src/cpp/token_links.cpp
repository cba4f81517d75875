#include "cpp/token_links.h"

#include <algorithm>
#include <array>
#include <limits>

#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

constexpr bool beginsStatement(int kind) {
    return isControlKeyword(kind) || isJumpKeyword(kind) || kind == KeywordCase;
}

// What links begin or end at, and what tells something of those around it; most tokens do neither.
constexpr auto kLinkedKinds = [] {
    std::array<bool, std::numeric_limits<std::int8_t>::max() + 1> linked{};
    for (const int kind : {Less, Greater, ShiftRight, Semicolon, Assign, Colon, KeywordTypedef}) {
        linked[static_cast<std::size_t>(kind)] = true;
    }
    for (std::size_t place = 0; place < linked.size(); ++place) {
        const int kind = static_cast<int>(place);
        linked[place] |= isBracket(kind) || isTrivia(kind) || isClassKey(kind) || beginsStatement(kind);
    }
    return linked;
}();

bool isLinked(int kind) { return kind < 0 || kLinkedKinds[static_cast<std::size_t>(kind)]; }

}  // namespace

// One pass over the tokens, with the brackets that are open.
class LinkFinder {
public:
    LinkFinder(const Trn::TokenList& tokens, TokenLinks& result)
        : tokens_(tokens),
          links_(result.links_),
          mismatches_(result.mismatches_),
          labelled_(result.labelled_),
          hasUnopenedBrace_(result.hasUnopenedBrace_) {}

    void run() {
        links_.assign(tokens_.size(), TokenLinks::kNoLink);
        Place firstTrivia = 0;
        Place triviaCount = 0;
        const auto end = static_cast<Place>(tokens_.size());
        for (Place place = 0; place < end; ++place) {
            const int kind = tokens_.kind(place);
            if (triviaCount == 0 && !isLinked(kind)) {
                pass(kind);
                continue;
            }
            if (isTrivia(kind)) {
                if (triviaCount++ == 0) firstTrivia = place;
                continue;
            }
            for (; triviaCount > 0; --triviaCount) links_[firstTrivia++] = place | TokenLinks::kIsTrivia;
            take(place);
        }
        for (; triviaCount > 0; --triviaCount) {
            links_[firstTrivia++] = static_cast<Place>(tokens_.size()) | TokenLinks::kIsTrivia;
        }
        dropAngles();
        for (const Place place : open_) mismatches_.push_back({place, TokenLinks::kNone});
        std::ranges::sort(mismatches_, {}, &TokenLinks::Mismatch::open);
        std::ranges::sort(labelled_);
    }

private:
    using Place = std::uint32_t;

    void take(Place place) {
        const int kind = tokens_.kind(place);
        const bool isName = previous_ == KeywordOperator;
        switch (kind) {
            case OpenParen:
            case OpenBracket:
            case OpenBrace: open(place); break;
            case CloseParen:
            case CloseBracket:
            case CloseBrace: close(place); break;
            case Less:
                if (!isName && canPrecedeArguments()) open_.push_back(place);
                break;
            case Greater:
                if (!isName && angleIsOpen()) join(popBack(), place);
                break;
            case ShiftRight:
                if (!isName && angleIsOpen()) closeTwo(place);
                break;
            case Semicolon:
                dropAngles();
                markStatements();
                namesType_ = false;
                break;
            case Colon:
                if (isAccessKeyword(previous_) || isAccessKeyword(beforePrevious_)) markLabels();
                break;
            case KeywordTypedef:
                nameType();
                break;
            case Assign:
                namesType_ = false;
                if (angleIsOpen() && !opensParameters(open_.back())) dropAngles();
                break;
            default:
                if (isClassKey(kind)) nameType();
                if (beginsStatement(kind)) markStatements();
        }
        pass(kind);
    }

    void pass(int kind) {
        thirdLast_ = beforePrevious_;
        beforePrevious_ = previous_;
        previous_ = kind;
    }

    bool angleIsOpen() const { return !open_.empty() && tokens_.kind(open_.back()) == Less; }

    void dropAngles() {
        while (angleIsOpen()) open_.pop_back();
    }

    Place popBack() {
        const Place place = open_.back();
        open_.pop_back();
        return place;
    }

    void join(Place openPlace, Place closePlace) {
        links_[openPlace] = (links_[openPlace] & ~TokenLinks::kPlaceMask) | closePlace;
    }

    // In the head of a class or in a typedef, outside of other brackets, a "<" compares nothing.
    void nameType() {
        if (angleIsOpen()) return;
        namesType_ = true;
        typeDepth_ = depth_;
    }

    // "operator<" and "operator()" are names; what follows them may have arguments, as what follows a macro that makes
    // the name of a type.
    bool canPrecedeArguments() const {
        if (previous_ == CloseParen) {
            const bool isOperator = beforePrevious_ == OpenParen && thirdLast_ == KeywordOperator;
            return isOperator || (namesType_ && typeDepth_ == depth_);
        }
        return previous_ == Identifier || previous_ == KeywordTemplate || previous_ == CloseBracket ||
               (previous_ >= KeywordStaticCast && previous_ <= KeywordReinterpretCast) ||
               beforePrevious_ == KeywordOperator;
    }

    // Only the parameters of a template or a lambda have values of their own.
    bool opensParameters(Place angle) const {
        Place before = angle;
        while (before > 0 && isTrivia(tokens_.kind(before - 1))) --before;
        if (before == 0) return false;
        const int kind = tokens_.kind(before - 1);
        return kind == KeywordTemplate || kind == CloseBracket;
    }

    void open(Place place) {
        open_.push_back(place);
        ++count(tokens_.kind(place));
        ++depth_;
        if (tokens_.kind(place) == OpenBrace) namesType_ = false;
    }

    int& count(int openKind) { return counts_[static_cast<std::size_t>(openKind - OpenParen)]; }

    // A closing bracket ends what is open inside of the one that it closes, if there is one.
    void close(Place place) {
        dropAngles();
        const int kind = tokens_.kind(place);
        const int openKind = kind == CloseParen ? OpenParen : kind == CloseBracket ? OpenBracket : OpenBrace;
        if (count(openKind) == 0) {
            hasUnopenedBrace_ |= kind == CloseBrace;
            return;
        }
        while (tokens_.kind(open_.back()) != openKind) {
            const Place unclosed = popBack();
            if (tokens_.kind(unclosed) == Less) continue;
            --count(tokens_.kind(unclosed));
            --depth_;
            mismatches_.push_back({unclosed, place});
        }
        --count(openKind);
        --depth_;
        join(popBack(), place);
        if (kind == CloseBrace || typeDepth_ > depth_) namesType_ = false;
    }

    void closeTwo(Place place) {
        const Place inner = popBack();
        if (!angleIsOpen()) {
            // A shift between operands, unless a list ends here that has been opened inside of nothing.
            open_.push_back(inner);
            return;
        }
        join(inner, place);
        join(popBack(), place);
    }

    void markStatements() {
        if (!open_.empty()) links_[open_.back()] |= TokenLinks::kHoldsStatements;
    }

    void markLabels() {
        if (open_.empty() || (!labelled_.empty() && labelled_.back() == open_.back())) return;
        labelled_.push_back(open_.back());
    }

    const Trn::TokenList& tokens_;
    std::vector<std::uint32_t>& links_;
    std::vector<TokenLinks::Mismatch>& mismatches_;
    std::vector<TokenLinks::Index>& labelled_;
    bool& hasUnopenedBrace_;
    std::vector<Place> open_;
    std::array<int, OpenBracket - OpenParen + 1> counts_{};
    int depth_ = 0;           // the number of brackets that are open and no angles
    bool namesType_ = false;  // at `typeDepth_`
    int typeDepth_ = 0;
    int previous_ = Trn::kEndKind;
    int beforePrevious_ = Trn::kEndKind;
    int thirdLast_ = Trn::kEndKind;
};

TokenLinks::TokenLinks(const Trn::TokenList& tokens) { LinkFinder(tokens, *this).run(); }

}  // namespace Cpp
