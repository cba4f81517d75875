#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "cpp/leaf_text.h"
#include "cpp/parser.h"
#include "cpp/token_kind.h"

namespace Cpp {

// An expression as far as it has been read: its text, and the blocks in it.
struct Parser::Expression {
    // The text of an expression statement leaves its parentheses, angles and "template" out.
    enum class Form { Whole, Statement };

    explicit Expression(Form textForm = Form::Whole) : form(textForm) {}

    void add(const Token& token, Index place) {
        previous = place;
        sawTemplate |= token.kind == KeywordTemplate;
        if (form == Form::Statement && isLeftOutOfStatements(token.kind)) {
            text.leaveOut(token);
        } else {
            text.add(token);
        }
    }

    // Takes `count` tokens in front of the place, which go on with the text; none is a "template".
    void widen(const Token& last, Index end, std::size_t count) {
        previous = end - 1;
        const bool isWhole = form == Form::Whole;
        text.widen(last, count, isWhole ? LeafText::Form::Joined : LeafText::Form::JoinedStatement);
    }

    bool expectsBodyAt(Index place) const {
        return place == requirements || (!lambdas.empty() && lambdas.back() == place);
    }

    std::unique_ptr<ExprNode> makeLeaf() {
        auto leaf = text.makeLeaf<ExprNode>();
        if (leaf) leaf->setBodies(std::move(bodies));
        return leaf;
    }

    Form form;
    TokenText text;
    ExprBodies bodies;
    Index previous = TokenLinks::kNone;  // the last token that is no comment
    std::vector<Index> lambdas;          // the "{" of bodies to come, the next one last
    Index requirements = TokenLinks::kNone;  // the "{" of those to come
    bool sawTemplate = false;
};

}  // namespace Cpp
