#include "tool/lsp_command.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "lsp/server.h"
#include "run/side_threads.h"
#include "tool/explained_gaps.h"
#include "tool/failure.h"
#include "tool/file_job.h"
#include "tool/scheme_finder.h"
#include "tool/source_text.h"

namespace Tool {

namespace {

// Schemes are read anew each time: they may be edited in the same session.
class SchemeFormatter : public Lsp::Formatter {
public:
    explicit SchemeFormatter(std::string scheme) : scheme_(std::move(scheme)) {}

    Result format(const std::string& path, const std::string& text,
                  const std::optional<Edits::LineSet>& lines) override {
        SchemeFinder ofProject("");
        SchemeFinder chosen(scheme_);
        const FileJob job{path, optionsFor(path, ofProject, chosen), lines};
        FileResult formatted = formatSource(job, text, Run::threadsOfMachine());
        Result result{formatted.replacements(), {}};
        for (Message& message : formatted.messages) {
            result.problems.push_back({message.line, message.column, std::move(message.text)});
        }
        return result;
    }

    std::string explain(const std::string& path, const std::string& text, std::size_t line,
                        std::size_t column) override {
        SchemeFinder ofProject("");
        SchemeFinder chosen(scheme_);
        const Tessel::FormatOptions& options = *optionsFor(path, ofProject, chosen);
        std::string said;
        problemWith(path, [&] {  // diagnostics tell of one
            const ExplainedText explained = explainText(options, text);
            const ExplainedGap* const gap = gapAt(explained.gaps, line, column);
            if (gap) said = explanation(*gap, options.scheme);
        });
        return said;
    }

private:
    const Tessel::FormatOptions* optionsFor(const std::string& path, SchemeFinder& ofProject,
                                            SchemeFinder& chosen) const {
        try {
            const LoadedScheme* scheme = ofProject.schemeFor(path);
            if (!scheme && !scheme_.empty()) scheme = chosen.schemeFor(path);
            if (scheme) return &scheme->options;
        } catch (const Failure& failure) {
            throw std::runtime_error(failure.message());
        }
        throw std::runtime_error(noSchemeMessage(path));
    }

    std::string scheme_;
};

}  // namespace

int lspCommand(const Options& options, const Streams& streams) {
    Lsp::MessageStream stream(streams.input, streams.output);
    SchemeFormatter formatter(options.scheme);
    return Lsp::Server(stream, formatter).run();
}

}  // namespace Tool
