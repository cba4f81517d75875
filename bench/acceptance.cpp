#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "file_check.h"
#include "support/format_text.h"
#include "worker_pool.h"

// acceptance LIST [-s SCHEME] [-j PROCESSES] [-v]: how many files of a list are formatted as promised.

namespace Bench {

namespace {

constexpr std::size_t PROGRESS_STEP = 100;

struct Options {
    std::string list;
    std::string scheme = "allman";  // by name, or the path of a file
    PoolLimits limits;
    bool isVerbose = false;
};

struct NamedFault {
    Fault fault;
    const char* name;
};

constexpr std::array<NamedFault, 7> FAULTS{{{Fault::Refused, "refused"},
                                            {Fault::OtherTokens, "tokens differing"},
                                            {Fault::OtherTree, "trees differing"},
                                            {Fault::SecondRunDiffers, "second runs differing"},
                                            {Fault::Crashed, "crashes"},
                                            {Fault::Hung, "hangs"},
                                            {Fault::KeptUnread, "items kept unread"}}};

std::vector<std::string> readList(const std::string& path) {
    std::ifstream in(path);
    if (!in) throw std::runtime_error("Cannot read " + path + '.');
    std::vector<std::string> files;
    for (std::string line; std::getline(in, line);) {
        if (line.empty()) continue;
        if (access(line.c_str(), R_OK) != 0) throw std::runtime_error("Cannot read " + line + '.');
        files.push_back(line);
    }
    return files;
}

Tessel::PropertySet readScheme(const std::string& nameOrPath) {
    if (!nameOrPath.ends_with(".vts")) return TestSupport::shippedScheme(nameOrPath);
    std::ifstream in(nameOrPath, std::ios::binary);
    Tessel::PropertySet scheme(in);
    if (in.fail()) throw std::runtime_error(nameOrPath + " holds no scheme.");
    return scheme;
}

FileReport reportFrom(const Answer& answer) {
    if (answer.end == Answer::End::Returned) return FileReport::unpacked(answer.text);
    const Fault fault = answer.end == Answer::End::Hung ? Fault::Hung : Fault::Crashed;
    FileReport report;
    report.findings.push_back({fault, {}, answer.text, {}});
    return report;
}

std::vector<FileReport> checkAll(const std::vector<std::string>& files, const Tessel::PropertySet& scheme,
                                 const PoolLimits& limits) {
    std::vector<FileReport> reports(files.size());
    const bool showsProgress = isatty(STDERR_FILENO) != 0;
    std::size_t done = 0;
    runInWorkers(
        files.size(), limits, [&](std::size_t number) { return checkFile(scheme, files[number]).packed(); },
        [&](std::size_t number, const Answer& answer) {
            reports[number] = reportFrom(answer);
            if (showsProgress && ++done % PROGRESS_STEP == 0) std::cerr << '\r' << done << std::flush;
        });
    if (showsProgress) std::cerr << "\r\033[K";
    return reports;
}

// What refusals are grouped by: the message without what differs from file to file, its numbers and the text
// that it quotes at its end.
std::string kindOf(const Finding& finding) {
    if (finding.fault != Fault::Refused) return {};
    std::string kind;
    for (const char c : finding.message.substr(0, finding.message.find(" Got: "))) {
        const bool isDigit = std::isdigit(static_cast<unsigned char>(c)) != 0;
        if (!isDigit) kind += c;
    }
    return kind;
}

// What is wrong with the files, told in different lights.
class Results {
public:
    Results(const std::vector<std::string>& files, const std::vector<FileReport>& reports)
        : files_(files), reports_(reports) {}

    void printTable() const {
        const std::size_t refused = countOf(Fault::Refused);
        const std::size_t broken = countOf(Fault::Crashed) + countOf(Fault::Hung);
        printRow("files", files_.size());
        printRow("accepted", files_.size() - refused - broken, share(files_.size() - refused - broken));
        printRow("refused", refused, share(refused));
        for (const Count& count : sums()) printRow(count.name.c_str(), static_cast<std::size_t>(count.value));
        for (const auto& [fault, name] : FAULTS) {
            if (fault != Fault::Refused) printRow(name, countOf(fault));
        }
        printLongestRun();
    }

    void printFindings() const {
        for (const auto& [fault, name] : FAULTS) {
            if (countOf(fault) == 0) continue;
            std::printf("\n%s\n", name);
            for (const auto& [kind, lines] : ranked(fault)) {
                if (fault == Fault::Refused) std::printf("%6zu  %s\n", lines.size(), kind.c_str());
                for (const std::string& line : lines) std::printf("        %s\n", line.c_str());
            }
        }
    }

private:
    using Group = std::pair<std::string, std::vector<std::string>>;

    static void printRow(const char* name, std::size_t number, const std::string& remark = {}) {
        std::printf("%-22s %9zu%s\n", name, number, remark.c_str());
    }

    std::string share(std::size_t part) const {
        std::array<char, 32> text{};
        const double whole = static_cast<double>(std::max<std::size_t>(files_.size(), 1));
        std::snprintf(text.data(), text.size(), "  %6.2f %%", 100.0 * static_cast<double>(part) / whole);
        return text.data();
    }

    static std::string shown(const Finding& finding) {
        const std::string place = finding.place.empty() ? std::string() : ':' + finding.place;
        const std::string excerpt = finding.excerpt.empty() ? std::string() : "    | " + finding.excerpt;
        const bool isToldByGroup = kindOf(finding) == finding.message;
        return place + (isToldByGroup ? std::string() : ": " + finding.message) + excerpt;
    }

    std::size_t countOf(Fault fault) const {
        std::size_t count = 0;
        for (const FileReport& report : reports_) {
            for (const Finding& finding : report.findings) count += finding.fault == fault;
        }
        return count;
    }

    std::vector<Count> sums() const {
        std::vector<Count> sums;
        for (const FileReport& report : reports_) {
            for (const Count& count : report.counts) {
                const auto sum = std::ranges::find(sums, count.name, &Count::name);
                if (sum == sums.end()) {
                    sums.push_back(count);
                } else {
                    sum->value += count.value;
                }
            }
        }
        return sums;
    }

    void printLongestRun() const {
        const auto longest = std::ranges::max_element(reports_, {}, &FileReport::seconds);
        if (longest == reports_.end()) return;
        const std::string& path = files_[static_cast<std::size_t>(longest - reports_.begin())];
        std::printf("%-22s %6.0f ms  %s\n", "longest run", longest->seconds * 1000, path.c_str());
    }

    // The findings of one fault by their kinds, the most frequent first.
    std::vector<Group> ranked(Fault fault) const {
        std::map<std::string, std::vector<std::string>> kinds;
        for (std::size_t i = 0; i < files_.size(); ++i) {
            for (const Finding& finding : reports_[i].findings) {
                if (finding.fault != fault) continue;
                kinds[kindOf(finding)].push_back(files_[i] + shown(finding));
            }
        }
        std::vector<Group> groups(kinds.begin(), kinds.end());
        std::ranges::stable_sort(groups, std::greater(),
                                 [](const Group& group) { return group.second.size(); });
        return groups;
    }

    const std::vector<std::string>& files_;
    const std::vector<FileReport>& reports_;
};

std::optional<Options> parse(int argumentCount, char** arguments) {
    Options options;
    for (int letter; (letter = getopt(argumentCount, arguments, "s:j:v")) != -1;) {
        if (letter == 's') options.scheme = optarg;
        if (letter == 'j') options.limits.processes = std::max(1UL, std::strtoul(optarg, nullptr, 10));
        if (letter == 'v') options.isVerbose = true;
        if (letter == '?') return {};
    }
    if (optind != argumentCount - 1) return {};
    options.list = arguments[optind];
    return options;
}

int run(const Options& options) {
    const std::vector<std::string> files = readList(options.list);
    const std::vector<FileReport> reports = checkAll(files, readScheme(options.scheme), options.limits);
    const Results results(files, reports);
    results.printTable();
    if (options.isVerbose) results.printFindings();
    return 0;
}

}  // namespace

}  // namespace Bench

int main(int argumentCount, char** arguments) {
    const std::optional<Bench::Options> options = Bench::parse(argumentCount, arguments);
    if (!options) {
        std::cerr << "Usage: acceptance LIST [-s SCHEME] [-j PROCESSES] [-v]\n";
        return 2;
    }
    try {
        return Bench::run(*options);
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
}
