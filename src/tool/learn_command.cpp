#include "tool/learn_command.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "files/descriptor.h"
#include "files/write_file.h"
#include "learn/learner.h"
#include "run/format_text.h"
#include "tool/failure.h"
#include "tool/learn_page.h"
#include "tool/learn_report.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/sample_trial.h"
#include "tool/scheme_finder.h"
#include "tool/source_pass.h"
#include "tool/source_text.h"

namespace Tool {

namespace {

constexpr std::size_t sampleSize = 960'000;  // bytes
constexpr std::size_t largestInSample = sampleSize / 6;

struct Observed {
    std::unique_ptr<Learn::Tally> tally;  // none where there is a problem
    Learn::TextHabits habits;
    std::string problem;
};

std::size_t sizeOf(const std::string& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : static_cast<std::size_t>(size);
}

// Files from all over the list, as many as make up a sample. Where all are large, the smallest.
std::vector<std::size_t> sampleOf(const std::vector<std::string>& files) {
    std::vector<std::pair<std::size_t, std::size_t>> sizes;
    std::size_t sum = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::size_t size = sizeOf(files[i]);
        if (size == 0 || size > largestInSample) continue;
        sizes.emplace_back(i, size);
        sum += size;
    }
    std::vector<std::size_t> sample;
    // Each file is taken when the share that the sample has of all bytes passes a whole number of bytes' worth.
    std::size_t passed = 0;
    std::size_t taken = 0;
    for (const auto& [index, size] : sizes) {
        passed += size;
        if (sum > sampleSize && taken * sum > passed * sampleSize) continue;
        sample.push_back(index);
        taken += size;
    }
    if (sample.empty() && !files.empty()) {
        const auto smallest = std::min_element(files.begin(), files.end(), [](const auto& left, const auto& right) {
            return sizeOf(left) < sizeOf(right);
        });
        sample.push_back(static_cast<std::size_t>(smallest - files.begin()));
    }
    return sample;
}

Observed observe(const std::string& file, std::size_t index, const Tessel::FormatOptions& options, int tabSize) {
    Observed observed;
    observed.problem = problemWith(file, [&] {
        const std::string text = readSource(file);
        observed.habits = Learn::habitsOf(text, tabSize);
        Learn::TallyObserver observer(index, tabSize);
        const Run::FormattedText formatted = Run::formatText(options, text, observer);
        if (!formatted.messages.empty()) throw Failure(file + " is refused");
        observed.tally = std::make_unique<Learn::Tally>(observer.tally());
    });
    return observed;
}

class LearnRun {
public:
    LearnRun(const Options& options, const Streams& streams) : options_(options), streams_(streams) {
        if (options.minAgreement <= 0.5 || options.minAgreement > 1) {
            throw Failure("--min-agreement is a share of the places, above 0.5 and up to 1");
        }
        if (!options.from.empty()) given_ = SchemeFinder(options.from).schemeFor("")->options.scheme;
        list_ = findSources(options.paths, options, streams);
    }

    int run() {
        Sample sample = readSample();
        seen_.tabSize = Learn::guessTabSize(sampleHabits_);
        observeAll();
        if (report_.files == 0) throw Failure("no source that could be learned from is accepted");
        learn(acceptedOf(std::move(sample)));
        write();
        return list_.missing.empty() ? Fine : CannotWork;
    }

private:
    using Sample = std::vector<std::pair<std::size_t, std::string>>;  // with the places of the files in the list

    std::string name() const {
        const std::string stem = std::filesystem::path(options_.outputFile).stem().string();
        return stem.empty() || stem.starts_with('.') ? "learned" : stem;
    }

    // What is refused, or cannot be read, tells nothing: the pass over all files counts it.
    Sample readSample() {
        Sample sample;
        for (const std::size_t index : sampleOf(list_.files)) {
            try {
                sample.emplace_back(index, readSource(list_.files[index]));
            } catch (const Failure&) {
                continue;
            }
            sampleHabits_.add(Learn::habitsOf(sample.back().second, 1));
        }
        return sample;
    }

    std::vector<std::string> acceptedOf(Sample sample) const {
        std::vector<std::string> texts;
        for (auto& [index, text] : sample) {
            if (!isRefused_[index]) texts.push_back(std::move(text));
        }
        return texts;
    }

    void observeAll() {
        const Tessel::FormatOptions options{Learn::observingScheme(seen_.tabSize), Tessel::protectedRegionMarkers()};
        passOver<Observed>(
            list_.files.size(), options_, streams_,
            [&](std::size_t index) { return observe(list_.files[index], index, options, seen_.tabSize); },
            [this](std::size_t, const Observed& observed) { take(observed); });
    }

    void take(const Observed& observed) {
        isRefused_.push_back(!observed.tally);
        if (!observed.tally) {
            ++report_.refused;
            return;
        }
        ++report_.files;
        seen_.tally.add(*observed.tally);
        seen_.habits.add(observed.habits);
    }

    void learn(std::vector<std::string> sample) {
        constexpr std::size_t unknown = 0;
        Progress progress(streams_.errors, streams_.errorsAreTerminal && !options_.isQuiet, unknown, "schemes tried");
        SampleTrial trial(std::move(sample), threadsFor(options_), progress);
        const Learn::DecisionRules rules{.minAgreement = options_.minAgreement, .given = given_ ? &*given_ : nullptr};
        const std::vector<Tessel::PropertySet> known = given_ ? std::vector{*given_} : shippedSchemes();
        report_.learned = Learn::learnScheme(name(), seen_, rules, known, trial);
        report_.fileNames = &list_.files;
    }

    void write() {
        report_.lines = seen_.habits.lines;
        const std::string text = learnedSchemeText(report_);
        if (!options_.outputFile.empty()) {
            writeFile(options_.outputFile, text);
        } else if (options_.htmlFile.empty()) {
            say(text, streams_);
        }
        if (!options_.htmlFile.empty()) writeFile(options_.htmlFile, learnPage(report_));
        if (!options_.isQuiet) streams_.errors << learnSummary(report_);
    }

    static void writeFile(const std::string& file, const std::string& text) try {
        Files::writeFile(file, text);
    } catch (const Files::WriteFailure& failure) {
        throw Failure(file + " cannot be written" + (failure.error ? ": " + Files::errorText(failure.error) : ""));
    }

    const Options& options_;
    const Streams& streams_;
    std::optional<Tessel::PropertySet> given_;
    FileList list_;
    std::vector<bool> isRefused_;  // as the list
    Learn::TextHabits sampleHabits_;
    Learn::Observations seen_;
    LearnReport report_;
};

}  // namespace

int learnCommand(const Options& options, const Streams& streams) {
    return LearnRun(options, streams).run();
}

}  // namespace Tool
