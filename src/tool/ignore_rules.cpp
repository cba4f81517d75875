#include "tool/ignore_rules.h"

#include <filesystem>
#include <system_error>

#include "files/read_file.h"

namespace Tool {

namespace {

constexpr std::size_t none = std::string_view::npos;

// Takes "[a-z]" or "[!a-z]" from the pattern. False, with nothing taken, where it does not end.
bool takeClass(std::string_view pattern, std::size_t& place, char c, bool& matches) {
    std::size_t at = place + 1;
    const bool isNegated = at < pattern.size() && (pattern[at] == '!' || pattern[at] == '^');
    if (isNegated) ++at;
    bool isIn = false;
    for (const std::size_t first = at; at < pattern.size() && (pattern[at] != ']' || at == first); ++at) {
        const char low = pattern[at];
        if (at + 2 < pattern.size() && pattern[at + 1] == '-' && pattern[at + 2] != ']') {
            isIn = isIn || (low <= c && c <= pattern[at + 2]);
            at += 2;
        } else {
            isIn = isIn || low == c;
        }
    }
    if (at >= pattern.size()) return false;
    place = at + 1;
    matches = isIn != isNegated && c != '/';
    return true;
}

// Matches one character of the path; the place in the pattern then is behind what it matched.
bool matchesCharacter(std::string_view pattern, std::size_t& place, char c) {
    const char wanted = pattern[place];
    if (wanted == '[') {
        bool matches = false;
        if (takeClass(pattern, place, c, matches)) return matches;
    }
    if (wanted == '\\' && place + 1 < pattern.size()) {
        place += 2;
        return pattern[place - 1] == c;
    }
    ++place;
    return wanted == '?' ? c != '/' : wanted == c;
}

std::string_view withoutTrailingBlanks(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    while (line.ends_with(' ') && !line.ends_with("\\ ")) line.remove_suffix(1);
    return line;
}

}  // namespace

// Where a character does not match, the last "*" takes one more, and where that would take a "/", the last "**" does.
bool matchesGlob(std::string_view pattern, std::string_view path) {
    std::size_t place = 0;
    std::size_t at = 0;
    std::size_t starPlace = none;
    std::size_t starAt = 0;
    std::size_t doublePlace = none;
    std::size_t doubleAt = 0;
    while (at < path.size() || place < pattern.size()) {
        if (place < pattern.size() && pattern[place] == '*') {
            if (pattern.substr(place).starts_with("**")) {
                place += 2;
                const bool isFolders = place < pattern.size() && pattern[place] == '/';
                doublePlace = isFolders ? ++place : place;
                doubleAt = at;
                starPlace = none;
                continue;
            }
            starPlace = ++place;
            starAt = at;
            continue;
        }
        if (place < pattern.size() && at < path.size() && matchesCharacter(pattern, place, path[at])) {
            ++at;
            continue;
        }
        if (starPlace != none && starAt < path.size() && path[starAt] != '/') {
            place = starPlace;
            at = ++starAt;
            continue;
        }
        if (doublePlace == none || doubleAt >= path.size()) return false;
        ++doubleAt;
        // "**/" begins at the start of a folder's name.
        if (doublePlace > 0 && pattern[doublePlace - 1] == '/') {
            while (doubleAt < path.size() && path[doubleAt - 1] != '/') ++doubleAt;
        }
        place = doublePlace;
        at = doubleAt;
        starPlace = none;
    }
    return true;
}

void IgnoreRules::addPattern(std::string_view line, const std::string& base) {
    line = withoutTrailingBlanks(line);
    if (line.empty() || line.starts_with('#')) return;
    Rule rule;
    rule.base = base + '/';
    rule.takesIn = line.starts_with('!');
    if (rule.takesIn) line.remove_prefix(1);
    rule.isForFolders = line.ends_with('/');
    if (rule.isForFolders) line.remove_suffix(1);
    rule.isAnchored = line.find('/') != none;
    if (line.starts_with('/')) line.remove_prefix(1);
    rule.pattern = line;
    if (!line.empty()) rules_.push_back(std::move(rule));
}

void IgnoreRules::addFile(const std::string& path, const std::string& base) try {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return;  // most folders have none, and exceptions are slow
    const std::string text = Files::readFile(path).text;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        addPattern(std::string_view(text).substr(start, end - start), base);
        start = end + 1;
    }
} catch (const Files::ReadFailure&) {  // one that cannot be read counts as none
}

bool IgnoreRules::applies(const Rule& rule, std::string_view path, bool isFolder) {
    if ((rule.isForFolders && !isFolder) || !path.starts_with(rule.base)) return false;
    const std::string_view name = rule.isAnchored ? path.substr(rule.base.size()) : path.substr(path.rfind('/') + 1);
    return matchesGlob(rule.pattern, name);
}

bool IgnoreRules::leavesOut(std::string_view path, bool isFolder) const {
    for (auto rule = rules_.rbegin(); rule != rules_.rend(); ++rule) {
        if (applies(*rule, path, isFolder)) return !rule->takesIn;
    }
    return false;
}

}  // namespace Tool
