#include "cpp/conditional_groups.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <utility>

#include "cpp/directive_text.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

namespace {

using Tokens = Trn::TokenList;
using Place = std::uint32_t;

enum class Step { None, Open, Next, Close };

Step stepOf(const Trn::Token& token) {
    if (token.kind != Directive) return Step::None;
    if (directiveStartsWith(token.text, "#if")) return Step::Open;
    if (beginsBranch(token.text)) return Step::Next;
    return directiveStartsWith(token.text, "#endif") ? Step::Close : Step::None;
}

int openKindOf(int closeKind) {
    switch (closeKind) {
        case CloseParen: return OpenParen;
        case CloseBracket: return OpenBracket;
        default: return OpenBrace;
    }
}

// The brackets that are open at a place, as a list whose tails are shared: those at an "#if" are there again for
// each of its branches.
class OpenBrackets {
public:
    using State = std::uint32_t;  // the innermost open bracket
    static constexpr State kNone = 0;

    State open(State state, int kind) {
        nodes_.push_back({state, kind, depth(state) + 1});
        return static_cast<State>(nodes_.size());
    }
    int kind(State state) const { return nodes_[state - 1].kind; }
    State outer(State state) const { return nodes_[state - 1].outer; }
    int depth(State state) const { return state == kNone ? 0 : nodes_[state - 1].depth; }

private:
    struct Node {
        State outer;
        int kind;
        int depth;
    };
    std::vector<Node> nodes_;
};

constexpr Place kNoPlace = std::numeric_limits<Place>::max();

struct Branch {
    Place first = 0;  // its directive
    OpenBrackets::State end = OpenBrackets::kNone;
    bool closesTooMuch = false;
    Place last = kNoPlace;  // its last token that is no comment or directive
};

struct Group {
    OpenBrackets::State start = OpenBrackets::kNone;
    std::vector<Branch> branches;
};

// More comments and directives in a row than stand between a head and its body; the look for a token ends there.
constexpr Place kMaximumTrivia = 32;

// Tokens; longer ones are not looked into.
constexpr Place kLongestHead = 256;

// Whether a token that ends a branch may be the last one of a head, whose body is to come.
bool mayEndHead(int kind) {
    return kind == Identifier || kind >= KeywordClass || kind == CloseParen || kind == CloseBracket ||
           kind == Greater || kind == ShiftRight;
}

// Tokens [first, last) that become one.
struct Fold {
    Place first;
    Place last;
};

using Conditions = std::set<std::string>;

class GroupReader {
public:
    // Branches that open brackets and have no "#else" are read but where `closed` is there, and has not their
    // condition.
    explicit GroupReader(const Tokens& tokens, std::optional<Conditions> closed = {})
        : tokens_(tokens), closed_(std::move(closed)) {}

    void run() {
        const auto end = static_cast<Place>(tokens_.size());
        for (Place place = 0; place < end; ++place) {
            const int kind = tokens_.kind(place);
            if (!isTrivia(kind)) {
                last_ = place;
                if (isBracket(kind)) takeBracket(kind);
            } else if (kind == Directive) {
                takeDirective(place);
            }
        }
    }

    bool endsOpen() const { return state_ != OpenBrackets::kNone; }
    // Those of branches that close more than they open.
    const Conditions& closedConditions() const { return closing_; }

    // In the order of their ends, inner ones in front of those around them.
    std::vector<Fold> takeFolds() { return std::move(folds_); }
    TakenConditions takeConditions() { return std::move(facts_); }

private:
    void takeBracket(int kind) {
        const bool opens = kind == OpenParen || kind == OpenBracket || kind == OpenBrace;
        if (opens) {
            state_ = brackets_.open(state_, kind);
        } else {
            close(openKindOf(kind));
        }
    }

    void takeDirective(Place place) {
        switch (stepOf(tokens_[place])) {
            case Step::Open:
                groups_.push_back({state_, {}});
                startBranch(place);
                return;
            case Step::Next:
                if (groups_.empty()) return;
                endBranch();
                state_ = groups_.back().start;
                startBranch(place);
                return;
            case Step::Close:
                if (groups_.empty()) return;
                endBranch();
                endGroup(place);
                return;
            case Step::None: return;
        }
    }

    void close(int openKind) {
        if (state_ != OpenBrackets::kNone && brackets_.kind(state_) == openKind) {
            state_ = brackets_.outer(state_);
        } else if (!groups_.empty()) {
            groups_.back().branches.back().closesTooMuch = true;
        }
    }

    void startBranch(Place place) { groups_.back().branches.push_back({place}); }
    void endBranch() {
        Branch& branch = groups_.back().branches.back();
        branch.end = state_;
        if (last_ != kNoPlace && last_ > branch.first) branch.last = last_;
    }

    // `#ifdef A`, a head, `#else`, another head, `#endif`, and the body, bases or initialisers of both.
    bool splitsHead(const Group& group, Place end) const {
        std::size_t count = 0;
        bool hasHead = false;
        bool endWithColons = true;
        for (const Branch& branch : group.branches) {
            if (branch.last == kNoPlace) continue;
            if (kindBehind(branch.first) == Comma) return false;
            ++count;
            hasHead |= endsHead(branch);
            endWithColons &= endsWithColon(branch);
        }
        if (!hasHead || count <= 1) return false;
        const int following = kindBehind(end);
        return following == OpenBrace || following == Colon || endWithColons;
    }

    bool endsHead(const Branch& branch) const {
        if (branch.last == kNoPlace) return false;
        return mayEndHead(tokens_.kind(branch.last)) || endsWithColon(branch);
    }

    // Whether the branch is nothing but the head of a constructor and the ":" of its initialisers.
    bool endsWithColon(const Branch& branch) const {
        if (tokens_.kind(branch.last) != Colon || branch.last - branch.first > kLongestHead) return false;
        int before = Trn::kEndKind;
        for (Place place = branch.first + 1; place < branch.last; ++place) {
            const int kind = tokens_.kind(place);
            if (isTrivia(kind)) continue;
            if (kind == Semicolon || kind == OpenBrace || kind == Question || kind == KeywordCase) return false;
            before = kind;
        }
        return before == CloseParen || before == Identifier;
    }

    // Of the token behind a directive, whatever stands between; none where a branch ends first.
    int kindBehind(Place directive) const {
        const Place limit = std::min<Place>(directive + kMaximumTrivia, static_cast<Place>(tokens_.size()));
        for (Place place = directive + 1; place < limit; ++place) {
            if (stepOf(tokens_[place]) == Step::Next) break;
            if (!isTrivia(tokens_.kind(place))) return tokens_.kind(place);
        }
        return Trn::kEndKind;
    }

    void endGroup(Place end) {
        Group group = std::move(groups_.back());
        groups_.pop_back();
        const auto isWhole = [&](const Branch& branch) {
            return branch.end == group.start && !branch.closesTooMuch;
        };
        const bool areWhole = std::ranges::all_of(group.branches, isWhole);
        state_ = group.start;
        if (areWhole && !splitsHead(group, end)) return;
        noteClosing(group);
        const std::size_t count = group.branches.size();
        const auto mayBeRead = [&](const Branch& branch) {
            return areWhole ? endsHead(branch) : !branch.closesTooMuch;
        };
        const std::size_t chosen = isNeverClosed(group) ? count : choose(group, mayBeRead);
        for (std::size_t i = 0; i < count; ++i) {
            const Place last = i + 1 < count ? group.branches[i + 1].first : end;
            if (i != chosen && last > group.branches[i].first + 1) folds_.push_back({group.branches[i].first, last});
        }
        if (chosen == count) return;
        state_ = group.branches[chosen].end;
        if (group.branches[chosen].closesTooMuch && !groups_.empty()) {
            groups_.back().branches.back().closesTooMuch = true;
        }
    }

    void noteClosing(const Group& group) {
        const int depth = brackets_.depth(group.start);
        for (std::size_t i = 0; i < group.branches.size(); ++i) {
            if (brackets_.depth(group.branches[i].end) < depth) closing_.insert(conditionOf(group, i));
        }
    }

    bool isNeverClosed(const Group& group) const {
        return closed_ && group.branches.size() == 1 &&
               brackets_.depth(group.branches.front().end) > brackets_.depth(group.start) &&
               !closed_->contains(conditionOf(group, 0));
    }

    // The branch that is read, or the number of branches where none is. What its condition says is remembered, for
    // groups that test the same.
    template <typename MayBeRead>
    std::size_t choose(const Group& group, MayBeRead mayBeRead) {
        const std::size_t count = group.branches.size();
        std::size_t chosen = count;
        for (std::size_t i = count; i-- > 0;) {
            if (mayBeRead(group.branches[i]) && agrees(group, i)) chosen = i;
        }
        if (chosen == count && !isKnownToBeSkipped(group)) {
            const auto first = std::ranges::find_if(group.branches, mayBeRead);
            chosen = first == group.branches.end() ? 0 : static_cast<std::size_t>(first - group.branches.begin());
        }
        for (std::size_t i = 0; i <= chosen && i < count; ++i) {
            if (const std::string condition = conditionOf(group, i); !condition.empty()) {
                facts_.emplace(positive(condition), (i == chosen) != condition.starts_with('!'));
            }
        }
        return chosen;
    }

    // No condition holds, by what was chosen before, and there is no "#else".
    bool isKnownToBeSkipped(const Group& group) const {
        for (std::size_t i = 0; i < group.branches.size(); ++i) {
            const std::string condition = conditionOf(group, i);
            const auto fact = facts_.find(positive(condition));
            if (condition.empty() || fact == facts_.end() || fact->second != condition.starts_with('!')) return false;
        }
        return true;
    }

    // A branch is read when its own condition holds and those in front of it do not.
    bool agrees(const Group& group, std::size_t branch) const {
        for (std::size_t i = 0; i <= branch; ++i) {
            const std::string condition = conditionOf(group, i);
            const auto fact = facts_.find(positive(condition));
            if (condition.empty() || fact == facts_.end()) continue;
            const bool holds = fact->second != condition.starts_with('!');
            if (holds != (i == branch)) return false;
        }
        return true;
    }

    std::string conditionOf(const Group& group, std::size_t branch) const {
        return testedCondition(tokens_[group.branches[branch].first].text);
    }

    static std::string positive(const std::string& condition) {
        return condition.starts_with('!') ? condition.substr(1) : condition;
    }

    const Tokens& tokens_;
    std::optional<Conditions> closed_;
    Conditions closing_;
    Place last_ = kNoPlace;  // the last token that is no comment or directive
    OpenBrackets brackets_;
    OpenBrackets::State state_ = OpenBrackets::kNone;
    std::vector<Group> groups_;
    TakenConditions facts_;
    std::vector<Fold> folds_;
};

// The folds that lie in no other one, in order.
std::vector<Fold> outermost(std::vector<Fold> folds) {
    std::ranges::sort(folds, [](const Fold& a, const Fold& b) {
        return a.first != b.first ? a.first < b.first : a.last > b.last;
    });
    std::vector<Fold> result;
    for (const Fold& fold : folds) {
        if (result.empty() || fold.first >= result.back().last) result.push_back(fold);
    }
    return result;
}

// Where the text ends inside of a bracket, and would not if what is opened under a condition for good were left out,
// that is left out.
GroupReader readGroups(const Tokens& tokens) {
    GroupReader reader(tokens);
    reader.run();
    if (!reader.endsOpen()) return reader;
    GroupReader other(tokens, reader.closedConditions());
    other.run();
    return other.endsOpen() ? reader : other;
}

}  // namespace

TakenConditions foldUnreadBranches(Tokens& tokens) {
    GroupReader reader = readGroups(tokens);
    const std::vector<Fold> folds = outermost(reader.takeFolds());
    TakenConditions conditions = reader.takeConditions();
    if (folds.empty()) return conditions;
    Place kept = folds.front().first;
    Place place = kept;
    for (const Fold& fold : folds) {
        while (place < fold.first) tokens.move(place++, kept++);
        tokens.merge(fold.first, fold.last, UnreadBlock, kept++);
        place = fold.last;
    }
    while (place < tokens.size()) tokens.move(place++, kept++);
    tokens.truncate(kept);
    return conditions;
}

}  // namespace Cpp
