#include "engine/conditional_bodies.h"

#include <string_view>
#include <utility>

#include "cpp/directive_text.h"
#include "cpp/lexer.h"
#include "cpp/token_kind.h"
#include "engine/source_copy.h"

namespace Tessel {

namespace {

constexpr std::string_view kOpens = "#if";
constexpr std::string_view kEnds = "#endif";

const Cpp::SyntaxNode* firstStatement(const Cpp::BlockNode& body) {
    for (const auto& child : body.children()) {
        if (!Cpp::isTrivia(*child)) return child.get();
    }
    return nullptr;
}

// What stands between the head and its body, where no braces are around that.
std::string_view gapBehindHead(const Cpp::CtrlSubStmtNode& part, const Zelmor::TextDocument& source) {
    if (!part.head() || !part.body() || part.body()->hasBrackets()) return {};
    const Cpp::SyntaxNode* first = firstStatement(*part.body());
    if (!first || first->start().line <= part.head()->end().line + 1) return {};
    const std::size_t start = offsetOf(source, part.head()->end());
    return source.text().substr(start, offsetOf(source, first->start()) - 1 - start);
}

// How many groups the directives of the gap open; negative where one goes on with a group from in front of it.
int groupsOpened(std::string_view gap) {
    if (gap.find('#') == std::string_view::npos) return 0;
    int count = 0;
    Cpp::Lexer lexer(gap);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind != Cpp::Directive) continue;
        if (Cpp::directiveStartsWith(token.text, kOpens)) ++count;
        if (Cpp::directiveStartsWith(token.text, kEnds) && --count < 0) return 0;
        if (count == 0 && Cpp::beginsBranch(token.text)) return -1;
    }
    return count;
}

// Whether the body of the statement's last part stands behind the "#if" of a choice.
bool opensChoice(const Cpp::SyntaxNode& node, const Zelmor::TextDocument& source) {
    const auto* statement = Cpp::as<Cpp::CtrlStmtNode>(&node);
    if (!statement || statement->size() == 0) return false;
    const auto* part = Cpp::as<Cpp::CtrlSubStmtNode>(statement->children().back().get());
    return part && groupsOpened(gapBehindHead(*part, source)) > 0;
}

bool mayOpenEnds(const Cpp::SyntaxNode& node) {
    return Cpp::as<Cpp::DataDeclNode>(&node) || Cpp::as<Cpp::ExprNode>(&node);
}

// Whether the statement, or the declaration, has its end behind the "#if" of a choice.
bool opensEnds(const Cpp::SyntaxNode& node, const Zelmor::TextDocument& source) {
    const std::size_t start = offsetOf(source, node.start()) - 1;
    return groupsOpened(source.text().substr(start, offsetOf(source, node.end()) - start)) > 0;
}

}  // namespace

bool repeatsHead(const Cpp::CtrlSubStmtNode& part, const Zelmor::TextDocument& source) {
    const Cpp::SyntaxNode* first = part.body() ? firstStatement(*part.body()) : nullptr;
    return first && Cpp::as<Cpp::CtrlStmtNode>(first) && groupsOpened(gapBehindHead(part, source)) < 0;
}

bool ConditionalBodies::isBody(const Cpp::SyntaxNode& node) {
    const Cpp::SyntaxNode* const previous = std::exchange(previous_, &node);
    if (const auto* directive = Cpp::as<Cpp::PreprocDirectiveNode>(&node)) {
        const bool mayGoOn = state_ == State::BehindBody || (previous && mayOpenEnds(*previous));
        const bool isOther = mayGoOn && Cpp::beginsBranch(directive->text());
        if (isOther && state_ == State::Outside) isEnd_ = opensEnds(*previous, source_);
        const bool goesOn = isOther && (state_ == State::BehindBody || isEnd_);
        state_ = goesOn ? State::BehindDirective : State::Outside;
        isEnd_ = isEnd_ && goesOn;
        return false;
    }
    if (Cpp::as<Cpp::CommentNode>(&node)) return state_ == State::BehindDirective;
    const bool isBody = state_ == State::BehindDirective && !Cpp::as<Cpp::BlockNode>(&node);
    state_ = isBody || opensChoice(node, source_) ? State::BehindBody : State::Outside;
    return isBody;
}

}  // namespace Tessel
