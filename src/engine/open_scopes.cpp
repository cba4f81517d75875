#include "engine/open_scopes.h"

#include <algorithm>
#include <iterator>

#include "cpp/directive_text.h"
#include "engine/gap.h"
#include "textstream/char_set.h"

namespace Tessel {

namespace {

// What the walk has to look at.
constexpr Zelmor::CharSet kMarks("{}\"'/\n");
// What parts items, apart from their text.
constexpr Zelmor::CharSet kItemEnds("{};");
// What stands in no head of a type, and what in no tail.
constexpr Zelmor::CharSet kNoTypeHead("=(/");
constexpr Zelmor::CharSet kNoTypeTail("(){}[]<>=,:\"'/#\\");

template <typename Items, typename Test>
auto findLast(Items& items, const Test& isWanted) {
    const auto last = std::find_if(items.rbegin(), items.rend(), isWanted);
    return last == items.rend() ? items.end() : std::next(last).base();
}

// In characters: how far the walk looks back for the head of a namespace, and ahead for the end of a character, or for
// the text of a raw literal. So its time grows with the text, whatever stands in that.
constexpr std::size_t kLookBehind = 256;
constexpr std::size_t kLookAhead = 16;

// More namespaces and groups are not gone into.
constexpr std::size_t kMostOpen = 64;

// Of a namespace, or of what stands in its place.
bool isNamespaceHead(std::string_view head) {
    return head == "namespace" || head.starts_with("namespace ") || head.starts_with("inline namespace ") ||
           head.starts_with("extern \"");
}

// Of a class or an enumeration: the head of what has one for its type goes on, and so may a comment.
bool isTypeHead(std::string_view head) {
    constexpr std::string_view keys[] = {"class ", "struct ", "union ", "enum ", "typedef "};
    const bool hasKey = std::ranges::any_of(keys, [&](std::string_view key) { return head.starts_with(key); });
    return hasKey && kNoTypeHead.findIn(head) == head.size();
}

// `} name;`, without the brace.
bool isTypeTail(std::string_view tail) {
    return tail.find(';') + 1 == tail.size() && kNoTypeTail.findIn(tail) == tail.size();
}

}  // namespace

bool OpenScopes::goToEndOfItem() {
    while (!isLost_) {
        const std::size_t mark = kMarks.findIn(text_, place_);
        place_ = mark;
        if (mark == text_.size()) return false;
        takeMark();
        if (text_[mark] == '}' && isAmongItems() && startsLine(mark) && takeEndOfItem()) return true;
    }
    return false;
}

void OpenScopes::takeMark() {
    switch (text_[place_]) {
        case '{': return openBrace();
        case '}': return closeBrace();
        case '/': return takeComment();
        case '\n':
            ++place_;
            return takeDirectives();
        default: return takeLiteral();
    }
}

void OpenScopes::takeComment() {
    const std::string_view ahead = text_.substr(place_);
    if (ahead.starts_with("//")) {
        place_ = std::min(text_.find('\n', place_), text_.size());
    } else if (ahead.starts_with("/*")) {
        const std::size_t end = text_.find("*/", place_ + 2);
        place_ = end == std::string_view::npos ? text_.size() : end + 2;
    } else {
        ++place_;
    }
}

// An apostrophe may be none of a literal: it stands in a number, or in a text that is no code.
void OpenScopes::takeLiteral() {
    const char quote = text_[place_];
    const char inFront = place_ > 0 ? text_[place_ - 1] : '\n';
    if (quote == '"' && inFront == 'R') return takeRawLiteral();
    const std::size_t start = ++place_;
    if (quote == '\'' && inFront >= '0' && inFront <= '9') return;
    const std::size_t last = quote == '"' ? text_.size() : std::min(text_.size(), start + kLookAhead);
    std::size_t end = start;
    while (end < last && text_[end] != quote && text_[end] != '\n') end += text_[end] == '\\' ? 2 : 1;
    const bool isClosed = end < last && text_[end] == quote;
    if (isClosed || quote == '"') place_ = std::min(isClosed ? end + 1 : end, text_.size());
}

void OpenScopes::takeRawLiteral() {
    ++place_;
    const std::size_t opening = text_.substr(0, place_ + kLookAhead).find('(', place_);
    if (opening == std::string_view::npos) return;
    const std::string end = ')' + std::string(text_.substr(place_, opening - place_)) + '"';
    place_ = std::min(text_.find(end, opening), text_.size() - end.size()) + end.size();
}

void OpenScopes::openBrace() {
    const std::string_view head = braces_ == 0 ? headOfBrace() : std::string_view();
    if (isNamespaceHead(head)) {
        open({Kind::Namespace, head, 0});
    } else {
        if (braces_ == 0) itemHead_ = head;
        ++braces_;
    }
    ++place_;
}

void OpenScopes::open(const Open& opened) {
    open_.push_back(opened);
    isLost_ = isLost_ || open_.size() > kMostOpen;
}

void OpenScopes::closeBrace() {
    ++place_;
    if (braces_ > 0) {
        --braces_;
        return;
    }
    const Place innermost = innermostNamespace();
    isLost_ = isLost_ || innermost == open_.end();
    if (!isLost_) open_.erase(innermost);
}

// What stands in front of the brace on its line, or on the one that comes before it.
std::string_view OpenScopes::headOfBrace() const {
    const std::size_t length = std::min(place_, kLookBehind);
    const std::string_view before = trimRight(text_.substr(place_ - length, length));
    const std::string_view line = before.substr(lineStartOf(before, before.size()));
    return trimLeft(line.substr(kItemEnds.findBackIn(line)));
}

// Those at the start of a line, and right behind them. What they hold is of no account.
void OpenScopes::takeDirectives() {
    while (place_ < text_.size()) {
        const std::size_t start = kBlanks.skipIn(text_, place_);
        if (start == text_.size() || text_[start] != '#') return;
        const std::size_t end = endOfDirective(start);
        takeConditional(text_.substr(start, end - start));
        place_ = std::min(end + 1, text_.size());
    }
}

// A comment that begins in its last line belongs to it.
std::size_t OpenScopes::endOfDirective(std::size_t start) const {
    std::size_t end = text_.find('\n', start);
    while (end < text_.size() && text_[end - 1] == '\\') end = text_.find('\n', end + 1);
    end = std::min(end, text_.size());
    const std::string_view directive = text_.substr(start, end - start);
    // Most hold none, which is seen sooner from their start.
    const bool holdsComment = directive.find("/*") != directive.npos;
    const std::size_t comment = holdsComment ? directive.rfind("/*") : directive.npos;
    const bool isOpen = comment != directive.npos && directive.find("*/", comment + 2) == directive.npos &&
                        directive.substr(0, comment).find("//") == directive.npos;
    if (!isOpen) return end;
    const std::size_t closing = std::min(text_.find("*/", end), text_.size());
    return std::min(text_.find('\n', closing), text_.size());
}

// What the only branch has opened is open behind the group. Which of several is read, a quick look does not tell.
void OpenScopes::takeConditional(std::string_view directive) {
    const int step = Cpp::conditionalStep(directive);
    if (step > 0) {
        const bool isRead = !Cpp::directiveStartsWith(directive, "#if0");
        open({isRead ? Kind::FirstBranch : Kind::OtherBranch, directive, braces_});
        return;
    }
    if (step == 0 && !Cpp::beginsBranch(directive)) return;
    const Place group = innermostGroup();
    if (group == open_.end()) return;
    const bool isOnly = step < 0 && group->kind == Kind::FirstBranch;
    isLost_ = isLost_ || (!isOnly && std::next(group) != open_.end());
    if (step < 0) {
        open_.erase(group);
        return;
    }
    group->kind = Kind::OtherBranch;
    braces_ = group->braces;
}

OpenScopes::Place OpenScopes::innermostNamespace() {
    return findLast(open_, [](const Open& open) { return open.kind == Kind::Namespace; });
}

OpenScopes::Place OpenScopes::innermostGroup() {
    return findLast(open_, [](const Open& open) { return open.kind != Kind::Namespace; });
}

bool OpenScopes::isAmongItems() const {
    return braces_ == 0 && std::ranges::all_of(open_, [](const Open& open) {
        return open.kind != Kind::OtherBranch && open.braces == 0;
    });
}

bool OpenScopes::startsLine(std::size_t brace) const {
    const std::size_t start = kBlanks.skipBackIn(text_.substr(0, brace));
    return start == 0 || text_[start - 1] == '\n';
}

// Behind the "}".
bool OpenScopes::takeEndOfItem() {
    const std::string_view ahead = text_.substr(place_, kLookBehind);
    const std::size_t length = ahead.find('\n');
    if (length == std::string_view::npos || !ahead.substr(length + 1).starts_with('\n')) return false;
    itemTail_ = ahead.substr(0, length);
    if (!itemTail_.empty() && !(isTypeHead(itemHead_) && isTypeTail(itemTail_))) return false;
    place_ += length + 1;
    return true;
}

std::string OpenScopes::opening() const {
    std::string lines;
    for (const Open& open : open_) {
        lines.append(open.head).append(open.kind == Kind::Namespace ? " {\n" : "\n");
    }
    return lines;
}

std::string OpenScopes::closing() const {
    std::string lines;
    for (auto open = open_.rbegin(); open != open_.rend(); ++open) {
        lines += open->kind == Kind::Namespace ? "}\n" : "#endif\n";
    }
    return lines;
}

std::vector<std::string_view> OpenScopes::groups() const {
    std::vector<std::string_view> directives;
    for (const Open& open : open_) {
        if (open.kind != Kind::Namespace) directives.push_back(open.head);
    }
    return directives;
}

std::string OpenScopes::emptyItem() const {
    const std::string head(isBehindType() ? itemHead_ : "void f()");
    return head + " {\n}" + std::string(itemTail_) + '\n';
}

}  // namespace Tessel
