#include "tool/explain_command.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "scheme/known_keys.h"
#include "tool/explained_gaps.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/scheme_finder.h"
#include "tool/source_pass.h"
#include "tool/source_text.h"

namespace Tool {

namespace {

using Json = nlohmann::ordered_json;

// `main.cpp:12:8`; a line or column 0 stands for all of them.
struct Place {
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
};

// Takes the number behind the last colon from the name of what is no file.
std::size_t takeNumber(std::string& name) {
    const std::size_t colon = name.rfind(':');
    if (colon == std::string::npos || std::filesystem::exists(name)) return 0;
    std::size_t number = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + colon + 1, end, number);
    if (error != std::errc() || stop != end) return 0;
    name.resize(colon);
    return number;
}

Place placeOf(const std::string& argument) {
    Place place{argument};
    const std::size_t last = takeNumber(place.file);
    const std::size_t first = last > 0 ? takeNumber(place.file) : 0;
    place.line = first > 0 ? first : last;
    place.column = first > 0 ? last : 0;
    return place;
}

// Those that the place is about: of a file what changes, of a line all, of a column the gap there.
std::vector<ExplainedGap> gapsOf(const Place& place, std::vector<ExplainedGap> gaps) {
    if (place.column > 0) {
        const ExplainedGap* const gap = gapAt(gaps, place.line, place.column);
        return gap ? std::vector<ExplainedGap>{*gap} : std::vector<ExplainedGap>();
    }
    std::erase_if(gaps, [&place](const ExplainedGap& gap) {
        return place.line == 0 ? !gap.isChanged() : place.line < gap.firstLine || place.line > gap.line;
    });
    return gaps;
}

ExplainedText explainFile(const std::string& file, const Tessel::FormatOptions& options) {
    ExplainedText explained;
    const std::string problem = problemWith(file, [&] { explained = explainText(options, readSource(file)); });
    if (!problem.empty()) throw Failure(problem);
    return explained;
}

std::string dumped(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n'; }

Json json(const std::string& file, const ExplainedGap& gap, const Tessel::PropertySet& scheme) {
    return {{"file", file},         {"line", gap.line},
            {"column", gap.column}, {"key", std::string(gap.key.name())},
            {"setting", gap.key ? keyWithValue(gap.key, scheme) : ""},
            {"before", gap.before}, {"after", gap.after}};
}

int explainPlace(const Options& options, const Streams& streams) {
    if (options.paths.size() > 1) throw Failure("several files can be explained with --summary only");
    const Place place = placeOf(options.paths.front());
    SchemeFinder schemes(options.scheme);
    const LoadedScheme* const scheme = schemes.schemeFor(place.file);
    if (!scheme) throw Failure(noSchemeMessage(place.file));
    ExplainedText explained = explainFile(place.file, scheme->options);
    if (!explained.messages.empty()) {
        streams.errors << "vantrel: " << place.file << " is refused; \"vantrel why " << place.file << "\" tells more\n";
        return WasRefused;
    }
    const Tessel::PropertySet& keys = scheme->options.scheme;
    std::string text;
    for (const ExplainedGap& gap : gapsOf(place, std::move(explained.gaps))) {
        if (options.format == MessageFormat::Json) {
            text += dumped(json(place.file, gap, keys));
        } else {
            text += place.file + ':' + std::to_string(gap.line) + ':' + std::to_string(gap.column) + ": " +
                    explanation(gap, keys);
        }
    }
    return say(text, streams);
}

// How many gaps each key changes, by its place in the table of keys; the last is for no key.
using Counts = std::array<std::size_t, Tessel::Keys::ALL.size() + 1>;

struct FileCounts {
    Counts changed{};
    std::string problem;  // why there are none
};

FileCounts countIn(const std::string& file, const Tessel::FormatOptions& options) {
    FileCounts counts;
    counts.problem = problemWith(file, [&] {
        const ExplainedText explained = explainText(options, readSource(file));
        if (!explained.messages.empty()) throw Failure(file + " is refused");
        for (const ExplainedGap& gap : explained.gaps) counts.changed[gap.key.place()] += gap.isChanged();
    });
    return counts;
}

// The keys by the number of gaps that they change, most first.
class Summary {
public:
    void add(const FileCounts& file) {
        ++files_;
        for (std::size_t key = 0; key < file.changed.size(); ++key) {
            gaps_[key] += file.changed[key];
            inFiles_[key] += file.changed[key] > 0;
        }
    }

    std::string text() const {
        std::string result = "gaps changed  in files  key\n";
        for (const std::size_t key : order()) {
            result += column(gaps_[key], 12) + column(inFiles_[key], 10) + "  " + name(key, "none") + '\n';
        }
        return result + "of " + std::to_string(files_) + " files\n";
    }
    std::string lines() const {
        std::string result;
        for (const std::size_t key : order()) {
            result += dumped(Json{{"key", name(key, "")}, {"gaps", gaps_[key]}, {"files", inFiles_[key]}});
        }
        return result;
    }

private:
    static std::string column(std::size_t number, std::size_t width) {
        const std::string digits = std::to_string(number);
        return std::string(width - std::min(digits.size(), width), ' ') + digits;
    }
    static std::string name(std::size_t key, const char* whenNone) {
        return key < Tessel::Keys::ALL.size() ? std::string(Tessel::Keys::ALL[key]) : whenNone;
    }
    std::vector<std::size_t> order() const {
        std::vector<std::size_t> keys;
        for (std::size_t key = 0; key < gaps_.size(); ++key) {
            if (gaps_[key] > 0) keys.push_back(key);
        }
        const auto comesFirst = [this](auto left, auto right) { return gaps_[left] > gaps_[right]; };
        std::stable_sort(keys.begin(), keys.end(), comesFirst);
        return keys;
    }

    Counts gaps_{};
    Counts inFiles_{};
    std::size_t files_ = 0;
};

int summarize(const Options& options, const Streams& streams) {
    const FileList list = findSources(options.paths, options, streams);
    SchemeFinder schemes(options.scheme);
    std::vector<const Tessel::FormatOptions*> schemeOf;  // as the files
    for (const std::string& file : list.files) {
        const LoadedScheme* const scheme = schemes.schemeFor(file);
        if (!scheme) throw Failure(noSchemeMessage(file));
        schemeOf.push_back(&scheme->options);
    }
    Summary summary;
    bool hasProblems = false;
    passOver<FileCounts>(
        list.files.size(), options, streams,
        [&](std::size_t index) { return countIn(list.files[index], *schemeOf[index]); },
        [&](std::size_t, const FileCounts& counts) {
            if (counts.problem.empty()) return summary.add(counts);
            hasProblems = true;
        });
    say(options.format == MessageFormat::Json ? summary.lines() : summary.text(), streams);
    if (!list.missing.empty()) return CannotWork;
    return hasProblems ? WasRefused : Fine;
}

}  // namespace

int explainCommand(const Options& options, const Streams& streams) {
    if (options.format != MessageFormat::Text && options.format != MessageFormat::Json) {
        throw Failure("explain tells of keys as text, or as json");
    }
    return options.isSummary ? summarize(options, streams) : explainPlace(options, streams);
}

}  // namespace Tool
