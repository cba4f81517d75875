// Namespaces, linkage blocks, template headers.

#include <utility>

#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/parser_nesting.h"
#include "cpp/parser_scopes.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"

namespace Cpp {

// At "namespace": whether it gives another name to one.
bool Parser::isNamespaceAlias(const TokenBuffer& tokens) const {
    const TokenView look = view(tokens);
    const Index name = look.next(tokens.place());
    return tokens.kindAt(name) == Identifier && tokens.kindAt(look.next(name)) == Assign;
}

bool Parser::isMacroNamespace(const TokenBuffer& tokens) const {
    return keepsUnrecognized_ && macros(tokens).opensNamespace(tokens.place());
}

void Parser::addNamespace(TokenBuffer& tokens, InteriorNode& list) {
    if (isNamespaceAlias(tokens)) return addAlias(tokens, list);
    NestingScope nesting(depth_, tokens);
    auto head = parseNamespaceHead(tokens);
    skipTrivia(tokens);
    auto body = parseNamespaceBody(tokens);
    list.add(std::make_unique<NamespaceDeclNode>(std::move(head), std::move(body)));
}

// The words up to the "{", with attributes and macros; or a macro alone.
std::unique_ptr<NamespaceHeadNode> Parser::parseNamespaceHead(TokenBuffer& tokens) {
    const Position start = tokens.current().start;
    Position end = start;
    if (tokens.peekKind() != Identifier) {
        Token token = nextSignificant(tokens);
        while (token.kind != KeywordNamespace) token = nextSignificant(tokens);
        end = token.end;
    }
    TokenText name;
    while (true) {
        const Index place = links_.significant(tokens.place());
        const int kind = tokens.kindAt(place);
        const bool isArgument = kind == OpenParen && !name.empty() && links_.closing(place) != TokenLinks::kNone;
        if (kind == Identifier || kind == KeywordInline) {
            name.add(nextSignificant(tokens));
        } else if (isArgument || view(tokens).opensAttribute(place)) {
            addThrough(tokens, links_.closing(place) + 1, name);
        } else {
            break;
        }
        end = name.end();
    }
    return std::make_unique<NamespaceHeadNode>(name.take(), start, end);
}

std::unique_ptr<NamespaceBodyNode> Parser::parseNamespaceBody(TokenBuffer& tokens) {
    if (tokens.peekKind() != OpenBrace) {
        report(tokens.current().start, "Expected:: \"{\".");
        return nullptr;
    }
    const auto takeOther = [&](const Token& token, NamespaceBodyNode& body) {
        if (token.kind != KeywordUsing) return false;
        addAlias(tokens, body, &body);
        return true;
    };
    return parseItems<NamespaceBodyNode>(
        tokens, takeOther, [&](NamespaceBodyNode& body) { addDeclaration(tokens, body, Scope::Outside); });
}

// A template's header, and the conditions behind it; what it is the header of is the next item. Without "<" it
// is an explicit instantiation.
void Parser::addTemplate(TokenBuffer& tokens, InteriorNode& list) {
    const Index start = tokens.place();
    Token keyword = tokens.next();
    const Position first = keyword.start;
    while (keyword.kind != KeywordTemplate) keyword = nextSignificant(tokens);
    if (peekSignificantKind(tokens) != Less) {
        tokens.moveTo(start);
        list.add(parseExprStmt(tokens));
        return;
    }
    skipTrivia(tokens);
    list.add(std::make_unique<TemplateNode>(std::make_unique<KeywordNode>(keyword.kind, first, keyword.end),
                                            parseParameterList(tokens, Brackets::Angles)));
    const Index conditions = links_.significant(tokens.place());
    if (tokens.at(conditions).text != "requires") return;
    addTrivia(tokens, list);
    TokenText text;
    addThrough(tokens, heads(tokens).behindRequires(conditions), text);
    list.add(text.makeLeaf<ExprNode>());
}

void Parser::parseLinkage(TokenBuffer& tokens, InteriorNode& list, Scope scope) {
    const TokenView look = view(tokens);
    const Index language = look.next(tokens.place());
    const Index brace = look.next(language);
    if (tokens.kindAt(language) == StringLiteral && tokens.kindAt(brace) == OpenBrace) {
        list.add(parseLinkageBlock(tokens, brace));
    } else {
        addOrdinaryDeclaration(tokens, list, scope);
    }
}

// extern "C" { … }, export { … }
std::unique_ptr<LinkageBlockNode> Parser::parseLinkageBlock(TokenBuffer& tokens, Index brace) {
    NestingScope nesting(depth_, tokens);
    TokenText linkage;
    addThrough(tokens, brace, linkage);
    auto words = linkage.makeLeaf<ExprNode>();
    const bool hasCLinkage = words->text().ends_with("\"C\"");
    return std::make_unique<LinkageBlockNode>(std::move(words), parseLinkageBody(tokens, hasCLinkage));
}

std::unique_ptr<LinkageBlockBodyNode> Parser::parseLinkageBody(TokenBuffer& tokens, bool hasCLinkage) {
    const auto takeOther = [&](const Token& token, LinkageBlockBodyNode& body) {
        if (token.kind != KeywordUsing) return reportIllegalInLinkage(tokens, hasCLinkage);
        addAlias(tokens, body);
        return true;
    };
    return parseItems<LinkageBlockBodyNode>(
        tokens, takeOther, [&](LinkageBlockBodyNode& body) { addDeclaration(tokens, body, Scope::Outside); });
}

bool Parser::reportIllegalInLinkage(TokenBuffer& tokens, bool hasCLinkage) {
    const Token token = tokens.current();
    const char* message = nullptr;
    if (isAccessKeyword(token.kind)) {
        message = "public: protected: private: labels are illegal inside linkage blocks.";
    } else if (isControlKeyword(token.kind)) {
        message = "control statements (e.g. if, else, while) are illegal inside linkage blocks.";
    } else if (token.kind == KeywordTemplate && hasCLinkage) {
        message = "templates cannot be declared to have 'C' linkage.";
    } else {
        return false;
    }
    tokens.next();
    report(token.start, message);
    return true;
}

}  // namespace Cpp
