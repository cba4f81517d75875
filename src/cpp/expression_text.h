#pragma once

#include <memory>
#include <utility>
#include <vector>

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
        if (form == Form::Statement && isLeftOut(token.kind)) {
            text.extend(token);
        } else {
            text.add(token);
        }
    }

    bool expectsBodyAt(Index place) const {
        return place == requirements || (!lambdas.empty() && lambdas.back() == place);
    }

    std::unique_ptr<ExprNode> makeLeaf() {
        auto leaf = text.makeLeaf<ExprNode>();
        if (leaf) leaf->setBodies(std::move(bodies));
        return leaf;
    }

    static bool isLeftOut(int kind) {
        switch (kind) {
            case OpenParen:
            case CloseParen:
            case Less:
            case Greater:
            case KeywordTemplate: return true;
            default: return false;
        }
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
