#include "tool/git_lines.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "tool/child_process.h"
#include "tool/failure.h"
#include "tool/file_list.h"

namespace Tool {

namespace {

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

std::string git(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "git");
    ChildResult result = runChild(std::move(arguments));
    if (result.status != 0) throw Failure("git does not tell what has changed: " + firstLine(result.errors));
    return std::move(result.output);
}

// A name with odd characters stands in quotes, escaped as in C.
std::string unquoted(std::string_view name) {
    if (!name.starts_with('"')) return std::string(name.substr(0, name.find('\t')));
    constexpr std::string_view letters = "abtnvfr";
    std::string result;
    for (std::size_t at = 1; at < name.size() && name[at] != '"'; ++at) {
        if (name[at] != '\\' || at + 1 >= name.size()) {
            result += name[at];
        } else if (const char c = name[++at]; c >= '0' && c <= '7') {
            int code = 0;
            const char* const start = name.data() + at;
            std::from_chars(start, start + std::min<std::size_t>(3, name.size() - at), code, 8);
            result += static_cast<char>(code);
            at += 2;
        } else {
            const std::size_t letter = letters.find(c);
            result += letter == std::string_view::npos ? c : static_cast<char>('\a' + letter);
        }
    }
    return result;
}

// "@@ -3,2 +4,5 @@": the lines of the new side, from 4 to 8.
bool readHunk(std::string_view line, Edits::LineSet::Range& range) {
    const std::size_t plus = line.find(" +");
    if (plus == std::string_view::npos) return false;
    const char* const end = line.data() + line.size();
    std::size_t first = 0;
    std::size_t count = 1;
    const auto parsed = std::from_chars(line.data() + plus + 2, end, first);
    if (parsed.ptr != end && *parsed.ptr == ',') std::from_chars(parsed.ptr + 1, end, count);
    range = {first, first + count - 1};
    return count > 0;
}

std::vector<std::string> diffOptions(std::vector<std::string> more) {
    std::vector<std::string> options = {"-c", "core.quotePath=false", "diff", "-U0", "--no-color", "--no-ext-diff",
                                        "--no-renames", "--src-prefix=a/", "--dst-prefix=b/", "--diff-filter=d"};
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

}  // namespace

GitLines::GitLines(const std::vector<std::string>& whatToCompare) {
    top_ = firstLine(git({"rev-parse", "--show-toplevel"}));
    for (auto& [path, lines] : parseDiff(git(diffOptions(whatToCompare)))) {
        lines_.emplace(top_ + '/' + path, std::move(lines));
    }
}

GitLines GitLines::changedSince(const std::string& revision) {
    if (revision.starts_with('-')) throw Failure("\"" + revision + "\" is no revision");
    return GitLines({revision, "--"});
}

GitLines GitLines::staged() {
    GitLines lines({"--cached", "--"});
    for (const std::string& path : splitPaths(git({"diff", "--name-only", "-z", "--"}), true)) {
        lines.notStaged_.insert(lines.top_ + '/' + path);
    }
    return lines;
}

const Edits::LineSet* GitLines::linesOf(const std::string& absolutePath) const {
    const auto found = lines_.find(absolutePath);
    return found == lines_.end() ? nullptr : &found->second;
}

bool GitLines::knows(const std::string& absolutePath) const {
    return runChild({"git", "ls-files", "--error-unmatch", "--", absolutePath}).status == 0;
}

bool GitLines::hasOtherChanges(const std::string& absolutePath) const {
    return notStaged_.contains(absolutePath);
}

std::map<std::string, Edits::LineSet> GitLines::parseDiff(const std::string& text) {
    std::map<std::string, std::vector<Edits::LineSet::Range>> ranges;
    std::vector<Edits::LineSet::Range>* current = nullptr;
    bool isHead = false;  // of a file: what follows "+++" or "@@" there is no text
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = std::string_view(text).substr(start, end - start);
        start = end + 1;
        Edits::LineSet::Range range{};
        if (line.starts_with("diff ")) {
            isHead = true;
            current = nullptr;
        } else if (isHead && line.starts_with("+++ ")) {
            const std::string name = unquoted(line.substr(4));
            current = name.starts_with("b/") ? &ranges[name.substr(2)] : nullptr;
        } else if (line.starts_with("@@ ")) {
            isHead = false;
            if (current && readHunk(line, range)) current->push_back(range);
        }
    }
    std::map<std::string, Edits::LineSet> result;
    for (auto& [path, lines] : ranges) {
        if (!lines.empty()) result.emplace(path, Edits::LineSet(std::move(lines)));
    }
    return result;
}

}  // namespace Tool
