#include "file_check.h"

#include <algorithm>
#include <chrono>
#include <sstream>

#include "textstream/text_encoding.h"
#include "cpp/parse_text.h"
#include "support/format_text.h"
#include "support/token_compare.h"
#include "support/tree_compare.h"
#include "textstream/byte_order_mark.h"
#include "textstream/text_document.h"

namespace Bench {

namespace {

constexpr std::size_t LONGEST_MESSAGE = 200;
constexpr char SEPARATOR = '\t';

std::string_view firstLineOf(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

std::string inOneLine(std::string_view text) {
    std::string line(text.substr(0, LONGEST_MESSAGE));
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == SEPARATOR; }, ' ');
    return line;
}

std::string lineOf(std::string_view text, std::size_t number) {
    for (; number > 1 && !text.empty(); --number)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    const std::string_view line = firstLineOf(text);
    return std::string(line.substr(std::min(line.find_first_not_of(" \t"), line.size())));
}

// "(12, 5) message" at 12:5; a message without a place is all text.
Finding refusalFrom(const std::string& messages, std::string_view text) {
    std::istringstream in{std::string(firstLineOf(messages))};
    std::size_t line = 0;
    int column = 0;
    char mark = 0;
    if (!(in >> mark >> line >> mark >> column >> mark)) return {Fault::Refused, {}, in.str(), {}};
    Finding refusal{
        Fault::Refused, std::to_string(line) + ':' + std::to_string(column), {}, lineOf(text, line)};
    in.ignore();
    std::getline(in, refusal.message);
    return refusal;
}

std::size_t firstDifferentLine(std::string_view one, std::string_view other) {
    const auto difference = std::ranges::mismatch(one, other).in1;
    return static_cast<std::size_t>(1 + std::count(one.begin(), difference, '\n'));
}

Finding otherTreeFrom(std::string_view before, std::string_view after, Cpp::Unrecognized unrecognized) {
    using CppTest::TreeDump;
    const auto dump = [unrecognized](std::string_view text, TreeDump::Positions positions) {
        Cpp::RootNode root;
        CppTest::parse(text, root, unrecognized);
        return TreeDump::of(root, positions, TreeDump::Texts::Squeezed);
    };
    const std::string expected = dump(before, TreeDump::Positions::Hidden);
    const std::string got = dump(after, TreeDump::Positions::Hidden);
    const std::size_t line = firstDifferentLine(expected, got);
    const std::string node = lineOf(dump(before, TreeDump::Positions::Shown), line);
    return {Fault::OtherTree, {}, "\"" + node + "\" became \"" + lineOf(got, line) + '"', {}};
}

Finding unsettledFrom(std::string_view once, std::string_view twice) {
    const std::size_t line = firstDifferentLine(once, twice);
    return {Fault::SecondRunDiffers, std::to_string(line), "the line of the result", lineOf(once, line)};
}

// The text as the program formats it.
std::string textToFormat(std::string content) {
    if (content.starts_with(Zelmor::BYTE_ORDER_MARK)) content.erase(0, Zelmor::BYTE_ORDER_MARK.size());
    return std::string(Zelmor::TextDocument(std::move(content)).text());
}

void noteKept(std::string_view text, FileReport& report) {
    Cpp::Lexer lexer(text);
    Cpp::Parser parser(Cpp::Unrecognized::Kept);
    Cpp::RootNode root;
    std::list<Tessel::Diagnostic> messages;
    parser.parse(lexer, root, messages);
    long lines = 0;
    long macros = 0;
    for (const Cpp::KeptItem& item : parser.keptItems()) {
        if (item.isMacro) {
            ++macros;
        } else {
            const long count = item.end.line - item.start.line + 1;
            lines += count;
            report.findings.push_back({Fault::KeptUnread, std::to_string(item.start.line),
                                       std::to_string(count) + (count == 1 ? " line" : " lines"),
                                       lineOf(text, item.start.line)});
        }
    }
    report.counts.push_back({"lines kept unread", lines});
    report.counts.push_back({"macro items", macros});
}

void checkResult(const Tessel::PropertySet& scheme, const std::string& text, const std::string& result,
                 std::vector<Finding>& findings) {
    const Cpp::Unrecognized unrecognized = TestSupport::unrecognizedIn(scheme);
    const std::string tokens = TestSupport::tokenDifference(text, result);
    if (!tokens.empty()) {
        findings.push_back({Fault::OtherTokens, {}, tokens, {}});
    } else if (!TestSupport::treeDifference(text, result, unrecognized).empty()) {
        findings.push_back(otherTreeFrom(text, result, unrecognized));
    }
    const TestSupport::Formatted again = TestSupport::formatText(scheme, result);
    if (!again.accepted()) {
        findings.push_back({Fault::SecondRunDiffers, {}, "refused: " + again.refusal, {}});
    } else if (again.text != result) {
        findings.push_back(unsettledFrom(result, again.text));
    }
}

}  // namespace

FileReport checkFile(const Tessel::PropertySet& scheme, const std::string& path) {
    using Clock = std::chrono::steady_clock;
    FileReport report;
    std::string content = TestSupport::contentOfFile(path);
    if (Zelmor::isUtf16(content)) {
        report.findings.push_back({Fault::Refused, {}, "The text is stored in units of two bytes.", {}});
        return report;
    }
    const std::string text = textToFormat(std::move(content));
    const Clock::time_point start = Clock::now();
    const TestSupport::Formatted result = TestSupport::formatText(scheme, text);
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    if (!result.accepted()) {
        report.findings.push_back(refusalFrom(result.refusal, text));
        return report;
    }
    report.counts.push_back({"lines accepted", std::count(text.begin(), text.end(), '\n')});
    checkResult(scheme, text, result.text, report.findings);
    noteKept(text, report);  // the longest part last, should it be cut
    return report;
}

// A line for the seconds, one for the number of counts, one for each count, one for each finding.
std::string FileReport::packed() const {
    std::ostringstream out;
    out << seconds << '\n' << counts.size() << '\n';
    for (const Count& count : counts) out << count.value << SEPARATOR << count.name << '\n';
    for (const Finding& finding : findings) {
        out << static_cast<int>(finding.fault) << SEPARATOR << finding.place << SEPARATOR
            << inOneLine(finding.message) << SEPARATOR << inOneLine(finding.excerpt) << '\n';
    }
    return out.str();
}

FileReport FileReport::unpacked(std::string_view text) {
    FileReport report;
    std::istringstream in{std::string(text)};
    std::size_t countsToCome = 0;
    in >> report.seconds >> countsToCome;
    for (Count count; countsToCome > 0 && in >> count.value; --countsToCome) {
        in.ignore();
        std::getline(in, count.name);
        report.counts.push_back(count);
    }
    Finding finding;
    for (int fault = 0; in >> fault;) {
        in.ignore();
        std::getline(in, finding.place, SEPARATOR);
        std::getline(in, finding.message, SEPARATOR);
        std::getline(in, finding.excerpt);
        finding.fault = static_cast<Fault>(fault);
        report.findings.push_back(finding);
    }
    return report;
}

}  // namespace Bench
