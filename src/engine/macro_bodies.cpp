#include "engine/macro_bodies.h"

#include <algorithm>
#include <list>
#include <span>
#include <utility>
#include <vector>

#include "cpp/lexer.h"
#include "cpp/nodes.h"
#include "cpp/parser.h"
#include "cpp/token_kind.h"
#include "cpp/token_sets.h"
#include "engine/assignment_columns.h"
#include "engine/columns.h"
#include "engine/cpp_formatter.h"
#include "engine/gap.h"
#include "engine/scheme_values.h"
#include "engine/text_lines.h"
#include "engine/token_boundary.h"
#include "scheme/extension_keys.h"
#include "scheme/property_keys.h"
#include "scheme/single_line.h"
#include "textstream/text_document.h"

namespace Tessel {

namespace {

// What stands in lines stays in them: nothing in the scheme ends one, and no line that the author began is joined to
// another.
PropertySet inLinesOfAuthor(PropertySet scheme) {
    scheme = withoutLineEnds(std::move(scheme), LineEndTexts::Absent);
    scheme.erase(Keys::JOIN_SHORT_FUNCTIONS.name);
    scheme.erase(Keys::JOIN_SHORT_STATEMENTS.name);
    scheme.erase(Keys::FORMAT_MACRO_BODIES.name);
    scheme.erase(Keys::ALIGN_LINE_SPLICES.name);
    scheme.setBool(Keys::KEEP_LINE_BREAKS.name, true);
    scheme.setBool(Keys::LINE_WRAP, false);
    return scheme;
}

std::string indentOf(const PropertySet& scheme) {
    const OptionalText indent = readIndent(scheme, Keys::INDENT_FN_CONTENT);
    return std::string(firstPresent(indent, readIndent(scheme, Keys::GLOBAL_INDENT_CONTENT)).text);
}

// Of blocks of control statements whose "{" does not begin a line, where the scheme indents those that do: what is in
// them is indented from the line that they stand in.
std::optional<BraceSettings> bracesBehindHeads(const PropertySet& scheme) {
    std::string text;
    scheme.getString(Keys::WS_BEFORE_CS_OPEN_BRACE, text);
    const std::string_view ofBraces = std::string_view(text).substr(text.rfind('\n') + 1);
    if (ofBraces.empty() || ofBraces.size() == text.size()) return std::nullopt;
    BraceSettings braces;
    braces.indent = readIndent(scheme, Keys::INDENT_CS_CONTENT);
    if (braces.indent.text.starts_with(ofBraces)) braces.indent.text.remove_prefix(ofBraces.size());
    return braces;
}

// The body without splices, a blank for each.
std::string withoutSplices(std::string body) {
    for (std::size_t place = body.find("\\\n"); place != std::string::npos; place = body.find("\\\n", place)) {
        body[place] = ' ';
    }
    return body;
}

// Whether each line but the last ends with a splice and nothing behind it, none of them in a comment or literal, no
// comment would take what follows the splices in, and each brace has its partner.
bool isInPlainLines(std::string_view body) {
    std::size_t splices = 0;
    int depth = 0;
    Cpp::Lexer lexer(body);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        const bool isSplice = token.text == "\\\n";
        if (token.kind == Cpp::LineComment && !isSplice) return false;
        if (token.kind == Cpp::StringLiteral && token.text.find('\n') != std::string_view::npos) return false;
        splices += isSplice ? 1 : 0;
        depth += token.kind == Cpp::OpenBrace ? 1 : token.kind == Cpp::CloseBrace ? -1 : 0;
        if (depth < 0) return false;
    }
    return depth == 0 && splices == static_cast<std::size_t>(std::count(body.begin(), body.end(), '\n'));
}

// The laid out line with what the source has in place of the characters that have been read; nothing where it holds
// others.
std::optional<std::string> withCharactersOf(std::string_view source, std::string_view read, std::string_view laidOut) {
    std::string line(laidOut);
    std::size_t next = 0;
    const auto skip = [&] { while (next < read.size() && isWhitespace(read[next])) ++next; };
    for (char& c : line) {
        if (isWhitespace(c)) continue;
        skip();
        if (next == read.size() || read[next] != c) return std::nullopt;
        c = source[next++];
    }
    skip();
    if (next < read.size()) return std::nullopt;
    return line;
}

// From a token that a splice ends.
bool startsApart(std::string_view line) { return line.empty() || isWhitespace(line.front()); }

// The lines of a body as they are written, from those of the source, of what has been read of these, and of what has
// been laid out, which begins `ahead` lines later; nothing where it does not stand in the same lines.
std::optional<std::string> withLinesOf(const std::vector<std::string_view>& source,
                                       const std::vector<std::string_view>& read,
                                       const std::vector<std::string_view>& written, std::size_t ahead) {
    if (written.size() + ahead != source.size()) return std::nullopt;
    constexpr std::string_view splice = "\\\n";
    std::string all;
    for (std::size_t line = 0; line < source.size(); ++line) {
        const bool isLast = line + 1 == source.size();
        const std::string_view text = isLast ? source[line] : source[line].substr(0, source[line].size() - 1);
        if (line < ahead) {
            all += text;
        } else {
            const auto laidOut = withCharactersOf(text, read[line], written[line - ahead]);
            if (!laidOut) return std::nullopt;
            const bool followsName = line == 0;
            all += followsName ? leadingBlanks(text) : std::string_view();
            const bool isApart = startsApart(source[line]) && !startsApart(*laidOut);
            if (isApart && splicesTokens(all, *laidOut)) all.insert(all.size() - splice.size(), 1, ' ');
            all += followsName ? trimLeft(*laidOut) : std::string_view(*laidOut);
            all += isLast ? std::string_view() : trailingBlanks(text);
        }
        all += isLast ? std::string_view() : splice;
    }
    return all;
}

// Which statements hardly do.
bool definesFunctionOrClass(std::string_view body) {
    struct Item {
        int first = Trn::kEndKind;
        std::size_t words = 0;  // in front of the first bracket
        bool sawParameters = false;
        bool sawValue = false;

        bool isHead() const {
            const bool isOfFunction = sawParameters && words > 1 && !Cpp::isControlKeyword(first);
            return !sawValue && (isOfFunction || Cpp::isClassKey(first) || first == Cpp::KeywordTemplate);
        }
    };
    Cpp::Lexer lexer(body);
    Item item;
    int depth = 0;
    int braces = 0;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (Cpp::isTrivia(token.kind)) continue;
        if (token.kind == Cpp::OpenBrace && depth == 0 && braces == 0 && item.isHead()) return true;
        braces += token.kind == Cpp::OpenBrace ? 1 : token.kind == Cpp::CloseBrace ? -1 : 0;
        if (braces > 0) continue;
        if (depth == 0 && (token.kind == Cpp::CloseBrace || token.kind == Cpp::Semicolon)) {
            item = {};
            continue;
        }
        if (item.first == Trn::kEndKind) item.first = token.kind;
        depth += token.kind == Cpp::OpenParen ? 1 : token.kind == Cpp::CloseParen ? -1 : 0;
        item.sawValue |= depth == 0 && token.kind == Cpp::Assign;
        item.sawParameters |= token.kind == Cpp::CloseParen;
        item.words += depth == 0 && !item.sawParameters ? 1 : 0;
    }
    return false;
}

// Whether parentheses stay open, but for those of `({`, around statements.
bool opensParentheses(std::string_view line) {
    int depth = 0;
    int previous = Trn::kEndKind;
    Cpp::Lexer lexer(line);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::OpenParen || (token.kind == Cpp::CloseParen && previous == Cpp::CloseBrace)) ++depth;
        if (token.kind == Cpp::CloseParen || (token.kind == Cpp::OpenBrace && previous == Cpp::OpenParen)) --depth;
        previous = token.kind;
    }
    return depth > 0;
}

// Not the half of a choice:  (a) ? b :
bool endsLabel(std::string_view line) {
    if (!line.ends_with(':')) return false;
    Cpp::Lexer lexer(line);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::Question) return false;
    }
    return true;
}

// What goes on in the next line hangs behind what stands in front of it, which is not in the text that is laid out.
bool endsStatement(std::string_view line) {
    const bool hasEnd = line.ends_with('{') || line.ends_with('}') || line.ends_with(';') || endsLabel(line);
    return hasEnd && !opensParentheses(line);
}

// What stands in a switch elsewhere:  case a: f();
bool startsWithCase(std::string_view text) {
    const int first = Cpp::Lexer(text).nextToken().kind;
    return first == Cpp::KeywordCase || first == Cpp::KeywordDefault;
}

// What a label leads, too.
bool startsWithLabel(std::string_view line) { return startsWithCase(line) || endsLabel(line); }

// Labels stand in columns of their own, and so do comments, in front of labels.
std::string_view firstStatementOf(std::span<const std::string_view> lines) {
    const auto isStatement = [](std::string_view line) {
        const std::string_view text = trimLeft(line);
        return !text.empty() && !text.starts_with("/*") && !startsWithLabel(line);
    };
    const auto found = std::ranges::find_if(lines, isStatement);
    return found != lines.end() ? *found : lines.front();
}

// How far statements stand behind the labels of their cases; nothing where they do not stand behind these at all.
std::optional<std::string> stepBehindLabel(const PropertySet& scheme) {
    const OptionalText label = readIndent(scheme, Keys::INDENT_CS_CASE_LABELS);
    const OptionalText content = readIndent(scheme, Keys::INDENT_CS_CASE_CONTENT);
    const bool isBehind = label.present && content.present && content.text.starts_with(label.text);
    return isBehind ? std::optional(std::string(content.text.substr(label.text.size()))) : std::nullopt;
}

bool holdsSwitch(std::string_view body) {
    Cpp::Lexer lexer(body);
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::KeywordSwitch) return true;
    }
    return false;
}

// Where the last element of a list ends, which is laid out as the block that it looks like; nothing for statements.
std::optional<std::size_t> endOfListIn(std::string_view body) {
    Cpp::Lexer lexer(body);
    std::size_t end = 0;
    Trn::Token last = lexer.nextToken();
    if (last.kind != Cpp::OpenBrace) return std::nullopt;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        if (token.kind == Cpp::Semicolon) return std::nullopt;
        end = last.offset + last.length;
        last = token;
    }
    return end;
}

// The ";" that has been put behind the last element of a list.
void takeListEndFrom(std::string& laidOut) {
    const std::size_t end = laidOut.rfind(';');
    if (end != std::string::npos) laidOut.erase(end, 1);
}

// The lines end in front of their splices.
ColumnLayout layoutOf(const PropertySet& scheme) {
    constexpr int spliceWidth = 2;
    ColumnLayout layout = ColumnLayout::of(scheme);
    layout.margin = std::max(layout.margin - spliceWidth, 0);
    return layout;
}

}  // namespace

// What a body is read in.
struct MacroBodies::Frame {
    std::string_view open;
    std::string_view close;
};

MacroBodies::MacroBodies(const PropertySet& scheme, const LayoutPasses& passes, Braces braces)
    : scheme_(scheme),
      braces_(braces),
      indent_(indentOf(scheme)),
      bracesBehindHeads_(bracesBehindHeads(scheme_)),
      indentsFromWord_(readSwitch(scheme, Keys::INDENT_FROM_DIRECTIVE)),
      tabSize_(std::max(readTabSize(scheme), 1)),
      passes_(passes) {}

std::optional<std::string> MacroBodies::laidOut(std::string_view directive, const DirectiveParts& parts,
                                                int column) const {
    const std::string_view body = directive.substr(parts.body.offset, parts.body.length);
    const std::string names = withoutHashes(body);
    if (!isInPlainLines(names)) return std::nullopt;
    const std::string text = withoutSplices(names);
    const std::vector<std::string_view> lines = linesOf(text);
    const auto first = std::ranges::find_if_not(lines, [](std::string_view line) { return line.empty(); });
    if (first == lines.end()) return std::nullopt;
    const bool startsOnLine = first == lines.begin();
    if (startsOnLine && lines.size() > 1 && !endsStatement(*first)) return std::nullopt;
    // The blanks behind the macro's name are no indentation.
    const std::string_view firstLine = startsOnLine ? trimLeft(*first) : *first;
    const std::string start(firstLine.begin(), lines.back().end());
    const std::string_view statement = firstStatementOf({first, lines.end()});
    const bool followsLabel = statement.data() != first->data() && startsWithCase(start);
    const bool isIndented = !startsOnLine && (isWhitespace(statement.front()) ||
                                              (followsLabel && !stepBehindLabel(scheme_).value_or("").empty()));
    const std::string indent = isIndented ? indentBehind(directive) : std::string();
    auto result = formatted(start, indent, column);
    if (!result) return std::nullopt;
    // What stands in the line of the directive is not in the column that it has here.
    const bool alignsAssignments = !startsOnLine && readSwitch(scheme_, Keys::ALIGN_ASSIGNMENTS);
    if (alignsAssignments) *result = withAssignmentColumns(layoutOf(scheme_), start, {}, std::move(*result));

    auto inLines = withLinesOf(linesOf(body), lines, linesOf(*result), static_cast<std::size_t>(first - lines.begin()));
    // The scheme may join a brace, or a further part of a statement, to the line in front of it.
    if (inLines || braces_ == Braces::OfAuthor) return inLines;
    if (!bracesOfAuthor_) {
        bracesOfAuthor_ = std::make_unique<MacroBodies>(withBracesOfAuthor(scheme_), passes_, Braces::OfAuthor);
    }
    return bracesOfAuthor_->laidOut(directive, parts, column);
}

std::optional<std::string> MacroBodies::laidOutLine(std::string_view statements) const {
    auto line = formatted(std::string(statements), {}, 0);
    return line && line->find('\n') == std::string::npos ? line : std::nullopt;
}

// #  define f   is itself indented by the blanks behind its "#".
std::string MacroBodies::indentBehind(std::string_view directive) const {
    if (!indentsFromWord_) return indent_;
    const int columns = columnAfter(leadingBlanks(directive.substr(1)), 1, tabSize_) - 1;
    return std::string(static_cast<std::size_t>(columns), ' ') + indent_;
}

// Most sources have no bodies, and most bodies in a source are indented alike.
const FormatOptions& MacroBodies::optionsFor(const std::string& indent, int column) const {
    const std::string margin(static_cast<std::size_t>(column), ' ');
    const bool areFirst = !options_;
    if (areFirst) {
        options_.emplace(FormatOptions{inLinesOfAuthor(scheme_), {}});
        indentBraces(options_->scheme);
    }
    if (areFirst || margin_ != margin || bodyIndent_ != indent) {
        options_->scheme.setString(Keys::LEFT_MARGIN, margin_ = margin);
        options_->scheme.setString(Keys::INDENT_LINKAGE_CONTENT.name, bodyIndent_ = indent);
    }
    return *options_;
}

// Braces that the scheme indents stand so where they begin lines.
void MacroBodies::indentBraces(PropertySet& scheme) const {
    if (!bracesBehindHeads_) return;
    for (const auto& key : {Keys::WS_BEFORE_CS_OPEN_BRACE, Keys::WS_BEFORE_CS_CLOSE_BRACE}) {
        if (std::string text; scheme_.getString(key, text)) scheme.setString(key, text);
    }
}

// The labels stand where other bodies begin. A switch among them would be indented as they are.
std::optional<std::string> MacroBodies::formattedCases(const std::string& body, const std::string& indent,
                                                       int column) const {
    static constexpr Frame cases{"void f() {\nswitch (0) {\n", "\n;}}\n"};
    const std::optional<std::string> step = stepBehindLabel(scheme_);
    if (!step || holdsSwitch(body)) return std::nullopt;
    if (!casesInBody_) {
        PropertySet scheme = scheme_;
        scheme.setString(Keys::INDENT_CS_CASE_LABELS, {});
        scheme.setString(Keys::INDENT_CS_CASE_CONTENT, *step);
        casesInBody_ = std::make_unique<MacroBodies>(scheme, passes_);
    }
    return casesInBody_->formatted(body, cases, indent, column);
}

std::optional<std::string> MacroBodies::formattedList(std::string list, std::size_t end, const std::string& indent,
                                                      int column) const {
    list.insert(end, 1, ';');
    auto laidOut = formatted(list, indent, column);
    if (laidOut) takeListEndFrom(*laidOut);
    return laidOut;
}

// Functions and classes are declarations; statements stand in functions.
std::optional<std::string> MacroBodies::formatted(const std::string& body, const std::string& indent,
                                                  int column) const {
    if (startsWithCase(body)) return formattedCases(body, indent, column);
    if (const auto end = endOfListIn(body)) return formattedList(body, *end, indent, column);
    static constexpr Frame function{"void f() {\n", "\n;}\n"};
    static constexpr Frame declarations{"extern \"C++\" {\n", "\n;}\n"};
    const bool isDeclarations = definesFunctionOrClass(body);
    auto text = formatted(body, isDeclarations ? declarations : function, indent, column);
    return text ? text : formatted(body, isDeclarations ? function : declarations, indent, column);
}

std::optional<std::string> MacroBodies::formatted(const std::string& body, const Frame& frame,
                                                  const std::string& indent, int column) const {
    const Zelmor::TextDocument source(std::string(frame.open) + body + std::string(frame.close));
    Cpp::OpaqueTokens opaque;
    Cpp::RootNode root;
    std::list<Diagnostic> messages;
    Cpp::Lexer lexer(source.text(), opaque);
    Cpp::Parser(Cpp::Unrecognized::Kept).parse(lexer, root, messages);
    const auto isError = [](const Diagnostic& message) { return message.severity != Warning; };
    if (std::ranges::any_of(messages, isError)) return std::nullopt;

    const FormatOptions& options = optionsFor(indent, column);
    CppFormatter formatter(source, opaque, options, passes_, nullptr);
    formatter.indentFrameBy(indent);
    if (bracesBehindHeads_) formatter.setBracesBehindHeads(*bracesBehindHeads_);
    root.accept(formatter);
    const std::string text = formatter.takeText();

    std::size_t start = 0;
    for (auto left = std::ranges::count(frame.open, '\n'); left > 0; --left) {
        const std::size_t open = text.find("{\n", start);
        if (open == std::string::npos) return std::nullopt;
        start = open + 2;
    }
    std::string_view inside = trimRight(std::string_view(text).substr(start));
    const auto isClosing = [](char c) { return !isWhitespace(c); };
    for (auto left = std::ranges::count_if(frame.close, isClosing); left > 0; --left) {
        inside = trimRight(inside.substr(0, inside.size() - std::min<std::size_t>(inside.size(), 1)));
    }
    return std::string(inside);
}

}  // namespace Tessel
