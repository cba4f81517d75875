#include "cpp/conditional_groups.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>

#include "cpp/directive_text.h"
#include "cpp/token_kind.h"

namespace Cpp {

namespace {

using Tokens = Trn::TokenList;
using Place = std::uint32_t;

enum class Step { None, Open, Next, Close };

Step stepOf(const Trn::Token& token) {
    if (token.kind != Directive) return Step::None;
    if (directiveStartsWith(token.text, "#if")) return Step::Open;
    if (directiveStartsWith(token.text, "#el")) return Step::Next;
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
        nodes_.push_back({state, kind});
        return static_cast<State>(nodes_.size());
    }
    int kind(State state) const { return nodes_[state - 1].kind; }
    State outer(State state) const { return nodes_[state - 1].outer; }

private:
    struct Node {
        State outer;
        int kind;
    };
    std::vector<Node> nodes_;
};

struct Branch {
    Place first = 0;  // its directive
    OpenBrackets::State end = OpenBrackets::kNone;
    bool closesTooMuch = false;
};

struct Group {
    OpenBrackets::State start = OpenBrackets::kNone;
    std::vector<Branch> branches;
};

// Tokens [first, last) that become one.
struct Fold {
    Place first;
    Place last;
};

class GroupReader {
public:
    explicit GroupReader(const Tokens& tokens) : tokens_(tokens) {}

    // In the order of their ends, inner ones in front of those around them.
    std::vector<Fold> run() {
        for (Place place = 0; place < tokens_.size(); ++place) take(place);
        return std::move(folds_);
    }

private:
    void take(Place place) {
        const int kind = tokens_.kind(place);
        switch (kind) {
            case OpenParen:
            case OpenBracket:
            case OpenBrace: state_ = brackets_.open(state_, kind); return;
            case CloseParen:
            case CloseBracket:
            case CloseBrace: close(openKindOf(kind)); return;
            case Directive: break;
            default: return;
        }
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
    void endBranch() { groups_.back().branches.back().end = state_; }

    void endGroup(Place end) {
        Group group = std::move(groups_.back());
        groups_.pop_back();
        const auto isWhole = [&](const Branch& branch) {
            return branch.end == group.start && !branch.closesTooMuch;
        };
        if (std::ranges::all_of(group.branches, isWhole)) {
            state_ = group.start;
            return;
        }
        const std::size_t chosen = choose(group);
        for (std::size_t i = 0; i < group.branches.size(); ++i) {
            const Place last = i + 1 < group.branches.size() ? group.branches[i + 1].first : end;
            if (i != chosen && last > group.branches[i].first + 1) folds_.push_back({group.branches[i].first, last});
        }
        state_ = group.branches[chosen].end;
        if (group.branches[chosen].closesTooMuch && !groups_.empty()) {
            groups_.back().branches.back().closesTooMuch = true;
        }
    }

    // The branch that is read. What its condition says is remembered, for groups that test the same.
    std::size_t choose(const Group& group) {
        std::size_t chosen = 0;
        for (std::size_t i = group.branches.size(); i-- > 0;) {
            if (!group.branches[i].closesTooMuch && agrees(group, i)) chosen = i;
        }
        for (std::size_t i = 0; i <= chosen; ++i) {
            if (const std::string condition = conditionOf(group, i); !condition.empty()) {
                facts_.emplace(positive(condition), (i == chosen) != condition.starts_with('!'));
            }
        }
        return chosen;
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
    OpenBrackets brackets_;
    OpenBrackets::State state_ = OpenBrackets::kNone;
    std::vector<Group> groups_;
    std::map<std::string, bool> facts_;
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

}  // namespace

void foldUnreadBranches(Tokens& tokens) {
    const std::vector<Fold> folds = outermost(GroupReader(tokens).run());
    if (folds.empty()) return;
    Place kept = folds.front().first;
    Place place = kept;
    for (const Fold& fold : folds) {
        while (place < fold.first) tokens.move(place++, kept++);
        tokens.merge(fold.first, fold.last, UnreadBlock, kept++);
        place = fold.last;
    }
    while (place < tokens.size()) tokens.move(place++, kept++);
    tokens.truncate(kept);
}

}  // namespace Cpp
