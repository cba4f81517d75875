#include "tool/why_command.h"

#include <list>
#include <optional>

#include "cpp/lexer.h"
#include "cpp/nodes.h"
#include "cpp/parser.h"
#include "cpp/parser_messages.h"
#include "cpp/token_kind.h"
#include "engine/extension_settings.h"
#include "run/format_text.h"
#include "textstream/byte_order_mark.h"
#include "textstream/text_document.h"
#include "tool/failure.h"
#include "tool/fences.h"
#include "tool/output.h"
#include "tool/reporter.h"
#include "tool/scheme_finder.h"
#include "tool/source_text.h"
#include "trn/exception.h"

namespace Tool {

namespace {

constexpr std::size_t mostMessages = 10;

// What a message means to somebody who did not write the parser.
const char* likelyCause(const Tessel::Diagnostic& message) {
    const auto says = [&message](const char* part) { return message.text.find(part) != std::string::npos; };
    if (says("is not closed")) return "a bracket is missing or there is one too many, or a macro hides one";
    if (says("literal")) return "a quote is missing, or an apostrophe stands where none may";
    switch (message.code) {
        case Cpp::UnexpectedEnd: return "something that was begun is not finished: a \";\" or a bracket is missing";
        case Cpp::ExpectedFunctionEnd:
        case Cpp::ExpectedDataEnd: return "a \";\" is missing in front of this, or a macro stands in the place of one";
        case Cpp::UnexpectedSemicolon:
        case Cpp::StraySemicolon: return "there is a \";\" too many";
        case Cpp::AccessLabelInBlock:
        case Cpp::TemplateInBlock:
        case Cpp::NamespaceInBlock: return "a \"}\" is missing before this";
        case Cpp::ExpectedControlKeyword: return "a keyword stands where no statement of its kind can";
        case Cpp::ExpectedCloseParen:
        case Cpp::ExpectedOpenParen: return "a parenthesis is missing, or a macro hides one";
        default: break;
    }
    return "this is not read as C or C++: a macro that stands for a keyword or a bracket, or text of another kind";
}

struct Brace {
    std::size_t line = 0;
    std::size_t indent = 0;
};

// Where the braces of a text part: what a "{" that stands alone, or the first "}" at the start of a line that is
// indented otherwise than the line of its "{", tells. Outermost braces that match in front of it say that there is
// nothing amiss between them. A line 0 stands for none.
struct Parting {
    Brace open;
    Brace close;
};

// Nothing where all braces have their match.
std::optional<Parting> findParting(std::string_view text) {
    Cpp::Lexer lexer(text);
    std::vector<Brace> open;
    std::optional<Parting> suspect;
    std::size_t line = 0;
    std::size_t indent = 0;
    for (Trn::Token token = lexer.nextToken(); token.kind != Trn::kEndKind; token = lexer.nextToken()) {
        const bool startsLine = token.start.line > line;
        if (startsLine) indent = token.start.column;
        line = token.end.line;
        const Brace brace{token.start.line, indent};
        if (token.kind == Cpp::OpenBrace) open.push_back(brace);
        if (token.kind != Cpp::CloseBrace) continue;
        if (open.empty()) return suspect.value_or(Parting{{}, brace});
        const bool isOdd = startsLine && open.back().line != brace.line && open.back().indent != brace.indent;
        if (isOdd && !suspect) suspect = {open.back(), brace};
        open.pop_back();
        if (open.empty() && !isOdd) suspect.reset();
    }
    if (open.empty()) return std::nullopt;
    return suspect.value_or(Parting{open.back(), {}});
}

class Explanation {
public:
    Explanation(const std::string& file, const Tessel::FormatOptions& options, std::string source)
        : file_(file), options_(options), source_(std::move(source)) {}

    // Whether the source is accepted.
    bool tell() {
        try {
            const std::list<Tessel::Diagnostic> messages = Run::formatText(options_, source_).messages;
            if (messages.empty()) {
                tellKept();
                return true;
            }
            tellRefusal(messages);
        } catch (const Trn::Exception& fault) {
            text_ += file_ + ": " + fault.message() + "\n    this is a fault of the formatter's\n";
        }
        return false;
    }

    std::string text() && { return std::move(text_); }

private:
    void add(Message::Severity severity, Trn::Position position, const std::string& text) {
        const std::size_t column = std::max<std::size_t>(position.column, 1);
        text_ += messageText(file_, {severity, position.line, column, text}, source_, false);
    }

    void tellRefusal(const std::list<Tessel::Diagnostic>& messages) {
        std::size_t count = 0;
        std::vector<std::size_t> suspects;
        for (const Tessel::Diagnostic& message : messages) {
            suspects.push_back(message.position.line);
            if (++count > mostMessages) continue;
            add(Message::Severity::Error, message.position, message.text);
            text_ += std::string("    likely: ") + likelyCause(message) + "\n\n";
        }
        if (messages.size() > mostMessages)
            text_ += "... and " + std::to_string(messages.size() - mostMessages) + " more messages\n\n";
        if (const auto parting = findParting(Zelmor::TextDocument(source_).text())) {
            tellParting(*parting);
            suspects = {parting->open.line, parting->close.line};
            std::erase(suspects, std::size_t{0});
        }
        tellFences(std::move(suspects));
    }

    void addBrace(const Brace& brace, const std::string& text) {
        add(Message::Severity::Note, {static_cast<std::uint32_t>(brace.line), static_cast<std::uint32_t>(brace.indent)},
            text);
    }

    void tellParting(const Parting& parting) {
        const auto& [open, close] = parting;
        if (close.line > 0) {
            addBrace(close, open.line == 0 ? "this \"}\" closes nothing"
                                           : "this \"}\" closes the \"{\" of line " + std::to_string(open.line) +
                                                 ", but is indented otherwise: the brackets part between the two");
        }
        if (open.line > 0) {
            addBrace(open, close.line > 0 ? "this is the line of the \"{\"" : "the \"{\" of this line is never closed");
        }
        text_ += '\n';
    }

    void tellFences(std::vector<std::size_t> suspects) {
        const std::vector<Edits::LineSet::Range> fences = findFences(options_, source_, std::move(suspects));
        if (fences.empty()) return;
        text_ += "The rest is formatted when these lines are put between fences:\n";
        for (const Edits::LineSet::Range& fence : fences) {
            text_ += "    // VANTREL-OFF   on a line of its own before line " + std::to_string(fence.first) + '\n' +
                     "    // VANTREL-ON    on a line of its own behind line " + std::to_string(fence.last) + '\n';
        }
    }

    void tellKept() {
        const Zelmor::TextDocument document(source_);
        const bool keeps = Tessel::ExtensionSettings(options_.scheme).keepsUnrecognized;
        Cpp::Parser parser(keeps ? Cpp::Unrecognized::Kept : Cpp::Unrecognized::Reported);
        Cpp::Lexer lexer(document.text());
        Cpp::RootNode root;
        std::list<Tessel::Diagnostic> messages;
        parser.parse(lexer, root, messages);
        for (const Cpp::KeptItem& item : parser.keptItems()) {
            add(Message::Severity::Note, item.start,
                item.isMacro ? "kept as it is: a macro by itself, without \";\""
                             : "kept as it is: no rule recognises it");
        }
        text_ += file_ + ": accepted; " + std::to_string(parser.keptItems().size()) + " items are kept as they are\n";
    }

    const std::string& file_;
    const Tessel::FormatOptions& options_;
    std::string source_;
    std::string text_;
};

}  // namespace

int whyCommand(const Options& options, const Streams& streams) {
    SchemeFinder schemes(options.scheme);
    const LoadedScheme* const scheme = schemes.schemeFor(options.argument);
    if (!scheme) throw Failure(noSchemeMessage(options.argument));
    std::string source = readSource(options.argument);
    if (source.starts_with(Zelmor::BYTE_ORDER_MARK)) source.erase(0, Zelmor::BYTE_ORDER_MARK.size());
    Explanation explanation(options.argument, scheme->options, std::move(source));
    const bool isAccepted = explanation.tell();
    say(std::move(explanation).text(), streams);
    return isAccepted ? Fine : WasRefused;
}

}  // namespace Tool
