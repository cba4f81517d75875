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

std::string withLineFeeds(std::string text) {
    return std::string(Zelmor::TextDocument(std::move(text)).text());
}

// A text of which only some gaps have changed is none that the engine has proved.
bool holdsSameTokens(const std::string& before, const std::string& after) {
    const std::string source = withLineFeeds(before);
    return !Tessel::findLostToken(source, Cpp::opaqueTokensOf(source), withLineFeeds(after));
}

void replaceLines(FileResult& result, const std::string& formatted, const Edits::LineSet& lines) {
    result.replacements = Edits::replacementsInLines(result.source, formatted, lines);
    if (holdsSameTokens(result.source, result.formatted())) return;
    result.replacements.clear();
    end(result, Outcome::Refused, "these lines cannot be formatted without the others");
}

void format(const FileJob& job, FileResult& result) {
    if (Zelmor::isUtf16(result.source)) {
        return end(result, Outcome::Refused, "is stored as UTF-16; convert it to UTF-8 to have it formatted");
    }
    const Run::FormattedText formatted = Run::formatText(*job.options, result.source);
    if (!formatted.messages.empty()) {
        result.outcome = Outcome::Refused;
        for (const Tessel::Diagnostic& diagnostic : formatted.messages)
            result.messages.push_back(messageFrom(diagnostic));
        return;
    }
    if (formatted.text == result.source) return;
    if (const std::optional<Edits::LineSet> lines = wantedLines(job, result.source)) {
        replaceLines(result, formatted.text, *lines);
    } else {
        result.replacements = Edits::replacementsBetween(result.source, formatted.text);
    }
    if (!result.replacements.empty()) result.outcome = Outcome::Changed;
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

FileResult formatFile(const FileJob& job) {
    return reportingFailures({.name = job.name}, [&job](FileResult& result) {
        Files::FileContent content = Files::readFile(job.name);
        result.stamp = content.stamp;
        result.source = std::move(content.text);
        format(job, result);
        if (result.outcome == Outcome::Unchanged) std::string().swap(result.source);
    });
}

FileResult formatSource(const FileJob& job, std::string source) {
    return reportingFailures({.name = job.name, .source = std::move(source)},
                             [&job](FileResult& result) { format(job, result); });
}

}  // namespace Tool
