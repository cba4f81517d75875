#include "tool/file_job.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "cpp/lexer.h"
#include "engine/token_proof.h"
#include "files/descriptor.h"
#include "files/read_file.h"
#include "run/format_text.h"
#include "textstream/text_document.h"
#include "textstream/text_encoding.h"
#include "trn/exception.h"

namespace Tool {

namespace {

Message messageFrom(const Tessel::Diagnostic& diagnostic) {
    const std::size_t column = diagnostic.position.line == 0 ? 0 : std::max<std::size_t>(diagnostic.position.column, 1);
    return {Message::Severity::Error, diagnostic.position.line, column, diagnostic.text};
}

void end(FileResult& result, Outcome outcome, std::string text) {
    result.outcome = outcome;
    result.messages.push_back({Message::Severity::Error, 0, 0, std::move(text)});
}

// The lines that a job names, those of its ranges of bytes among them; nothing when it names none.
std::optional<Edits::LineSet> wantedLines(const FileJob& job, const std::string& source) {
    if (!job.lines && job.bytes.empty()) return std::nullopt;
    std::vector<Edits::LineSet::Range> ranges;
    if (job.lines) ranges = job.lines->ranges();
    for (const auto& [offset, length] : job.bytes) {
        const auto lineOf = [&](std::size_t place) {
            const auto end = source.begin() + static_cast<std::ptrdiff_t>(std::min(place, source.size()));
            return static_cast<std::size_t>(std::count(source.begin(), end, '\n')) + 1;
        };
        ranges.push_back({lineOf(offset), lineOf(offset + (length > 0 ? length - 1 : 0))});
    }
    return Edits::LineSet(std::move(ranges));
}

// What is wrong with the lines that a job names; empty when nothing is.
std::string faultOfLines(const FileJob& job, const std::string& source) {
    if (!job.lines || job.lines->ranges().empty()) return {};
    const Edits::LineSet::Range& last = job.lines->ranges().back();
    const auto count = static_cast<std::size_t>(std::count(source.begin(), source.end(), '\n')) + 1;
    if (last.first <= count) return {};
    return "there is no line " + std::to_string(last.first) + ": it has " + std::to_string(count);
}

std::string withLineFeeds(std::string text) {
    return std::string(Zelmor::TextDocument(std::move(text)).text());
}

// The lines of comments and directives that begin their line, and of which only some lines are wanted: they move as
// one, so that they are to stay as they are.
std::vector<Edits::LineSet::Range> partlyWanted(const std::string& source, const Cpp::OpaqueTokens& opaque,
                                                const Edits::LineSet& lines) {
    std::vector<Edits::LineSet::Range> ranges;
    std::size_t line = 1;
    auto place = source.begin();
    const auto lineFeedsUpTo = [&](std::size_t offset) {
        const auto end = source.begin() + static_cast<std::ptrdiff_t>(offset);
        return static_cast<std::size_t>(std::count(std::exchange(place, end), end, '\n'));
    };
    for (const Cpp::OpaqueToken& token : opaque) {
        const std::size_t first = line += lineFeedsUpTo(token.offset);
        const std::size_t lineStart = source.rfind('\n', token.offset) + 1;
        const bool startsLine = source.find_first_not_of(" \t", lineStart) >= token.offset;
        const bool endsLine = source[token.offset + token.length - 1] == '\n';  // as directives do
        line += lineFeedsUpTo(token.offset + token.length);
        const std::size_t last = endsLine ? line - 1 : line;
        if (startsLine && last > first && !lines.containsAll(first, last)) ranges.push_back({first, last});
    }
    return ranges;
}

void change(FileResult& result, std::string text) {
    if (text == result.source) return;
    result.outcome = Outcome::Changed;
    result.changed = std::move(text);
}

// A text of which only some gaps have changed is none that the engine has proved.
void replaceLines(FileResult& result, const std::string& formatted, const Edits::LineSet& lines) {
    const std::string source = withLineFeeds(result.source);
    const Cpp::OpaqueTokens opaque = Cpp::opaqueTokensOf(source);
    const Edits::LineSet whole = lines.without(partlyWanted(source, opaque, lines));
    std::string changed = Edits::replaced(result.source, Edits::replacementsInLines(result.source, formatted, whole));
    if (Tessel::findLostToken(source, opaque, withLineFeeds(changed))) {
        return end(result, Outcome::Refused, "these lines cannot be formatted without the others");
    }
    change(result, std::move(changed));
}

void format(const FileJob& job, FileResult& result, std::size_t threads) {
    if (Zelmor::isUtf16(result.source)) {
        return end(result, Outcome::Refused, "is stored as UTF-16; convert it to UTF-8 to have it formatted");
    }
    if (std::string fault = faultOfLines(job, result.source); !fault.empty()) {
        return end(result, Outcome::Failed, std::move(fault));
    }
    Run::FormattedText formatted = Run::formatText(*job.options, result.source, threads);
    if (!formatted.messages.empty()) {
        result.outcome = Outcome::Refused;
        for (const Tessel::Diagnostic& diagnostic : formatted.messages)
            result.messages.push_back(messageFrom(diagnostic));
        return;
    }
    if (const std::optional<Edits::LineSet> lines = wantedLines(job, result.source)) {
        replaceLines(result, formatted.text, *lines);
    } else {
        change(result, std::move(formatted.text));
    }
}

template <typename Action>
FileResult reportingFailures(FileResult result, Action action) {
    try {
        action(result);
    } catch (const Files::ReadFailure& failure) {
        end(result, Outcome::Failed, "cannot be read: " + Files::errorText(failure.error));
    } catch (const Trn::Exception& fault) {
        end(result, Outcome::Refused, fault.message());
    } catch (const std::bad_alloc&) {
        end(result, Outcome::Failed, "there is not enough memory to format it");
    } catch (const std::exception& fault) {
        end(result, Outcome::Refused, fault.what());
    }
    return result;
}

}  // namespace

FileResult formatFile(const FileJob& job, std::size_t threads) {
    return reportingFailures({.name = job.name}, [&job, threads](FileResult& result) {
        Files::FileContent content = Files::readFile(job.name);
        result.stamp = content.stamp;
        result.source = std::move(content.text);
        format(job, result, threads);
    });
}

FileResult formatSource(const FileJob& job, std::string source, std::size_t threads) {
    return reportingFailures({.name = job.name, .source = std::move(source)},
                             [&job, threads](FileResult& result) { format(job, result, threads); });
}

}  // namespace Tool
