#include "tool/file_list.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <ostream>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/descriptor.h"
#include "tool/ignore_rules.h"

namespace Tool {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view usualEndings[] = {"c",   "C",   "cc",  "cpp", "cxx", "c++", "h",   "H",   "hh",  "hpp",
                                             "hxx", "h++", "inl", "ipp", "tpp", "txx", "tcc", "ixx", "cppm"};
constexpr std::string_view foldersOfVersions[] = {".git", ".hg", ".svn"};
constexpr const char* gitIgnore = ".gitignore";
constexpr const char* ownIgnore = ".vantrelignore";

std::string absolutePath(const std::string& path) {
    std::string absolute = fs::absolute(path).lexically_normal().string();
    while (absolute.size() > 1 && absolute.ends_with('/')) absolute.pop_back();
    return absolute;
}

std::string join(const std::string& folder, const std::string& name) {
    if (folder.empty() || folder == ".") return name;
    return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

class Search {
public:
    explicit Search(const FileQuery& query) : query_(query) {
        const std::string here = absolutePath(".");
        for (const std::string& pattern : query.excluded) excluded_.addPattern(pattern, here);
    }

    void take(const std::string& path) {
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0) {
            list_.missing.push_back(path + ": " + Files::errorText(errno));
        } else if (S_ISDIR(status.st_mode)) {
            takeFolder(path);
        } else if (isLeftOut(absolutePath(path))) {
            list_.leftOut.push_back(path);
        } else {
            add(path, status);
        }
    }

    FileList result() { return std::move(list_); }

private:
    using Entry = std::pair<std::string, fs::file_type>;  // its name, links followed to files only

    // Of a file that was named: with the rules of all folders above it that belong to it.
    bool isLeftOut(const std::string& absolute) {
        const IgnoreRules& rules = rulesOfNamed(absolute);
        for (std::size_t end = absolute.find('/', 1); end != std::string::npos; end = absolute.find('/', end + 1)) {
            const std::string folder = absolute.substr(0, end);
            if (rules.leavesOut(folder, true) || excluded_.leavesOut(folder, true)) return true;
        }
        return rules.leavesOut(absolute, false) || excluded_.leavesOut(absolute, false);
    }

    // Files of one folder are mostly named one behind the other.
    const IgnoreRules& rulesOfNamed(const std::string& absolute) {
        std::string folder = absolute.substr(0, absolute.rfind('/') + 1);
        if (folder != namedIn_) {
            namedRules_.shrink(0);
            addRulesAbove(namedRules_, absolute, {ownIgnore});
            namedIn_ = std::move(folder);
        }
        return namedRules_;
    }

    // Those of the folders from the one that a repository begins with down to the one around the path.
    static void addRulesAbove(IgnoreRules& rules, const std::string& absolute,
                              const std::vector<const char*>& fileNames) {
        std::vector<std::string> folders;
        std::error_code error;
        for (fs::path folder = fs::path(absolute).parent_path();; folder = folder.parent_path()) {
            folders.push_back(folder == "/" ? "" : folder.string());
            if (fs::exists(folder / ".git", error)) break;
            if (folder == folder.parent_path()) {
                folders.resize(1);  // no repository
                break;
            }
        }
        for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
            for (const char* name : fileNames) rules.addFile(*folder + '/' + name, *folder);
        }
    }

    void takeFolder(const std::string& path) {
        list_.hasFolders = true;
        const std::string absolute = absolutePath(path);
        rules_.shrink(0);
        std::error_code error;
        if (!fs::exists(absolute + "/.git", error)) addRulesAbove(rules_, absolute, {gitIgnore, ownIgnore});
        walk(path, absolute);
    }

    // Without recursion: folders may nest to any depth.
    void walk(const std::string& top, const std::string& absoluteTop) {
        struct Level {
            std::string path;
            std::string absolute;
            std::vector<Entry> entries;  // that are still to be taken, the last one first
            std::size_t rules;           // how many there were before this folder's own
        };
        std::vector<Level> levels;
        const auto enter = [&](std::string path, std::string absolute) {
            Level level{std::move(path), std::move(absolute), {}, rules_.size()};
            rules_.addFile(level.absolute + '/' + gitIgnore, level.absolute);
            rules_.addFile(level.absolute + '/' + ownIgnore, level.absolute);
            level.entries = entriesOf(level.path);
            levels.push_back(std::move(level));
        };
        enter(top, absoluteTop == "/" ? "" : absoluteTop);
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.entries.empty()) {
                rules_.shrink(level.rules);
                levels.pop_back();
                continue;
            }
            const auto [name, type] = std::move(level.entries.back());
            level.entries.pop_back();
            std::string path = join(level.path, name);
            std::string absolute = level.absolute + '/' + name;
            const bool isFolder = type == fs::file_type::directory;
            if (isFolder ? isOfVersions(name) : !hasSourceEnding(name)) continue;
            if (rules_.leavesOut(absolute, isFolder) || excluded_.leavesOut(absolute, isFolder)) continue;
            if (isFolder) {
                enter(std::move(path), std::move(absolute));
            } else {
                struct stat status {};
                if (::stat(path.c_str(), &status) == 0) add(path, status);
            }
        }
    }

    // Sorted backwards.
    std::vector<Entry> entriesOf(const std::string& folder) {
        std::vector<Entry> entries;
        std::error_code error;
        fs::directory_iterator end;
        for (fs::directory_iterator entry(folder, error); !error && entry != end; entry.increment(error)) {
            std::error_code unknown;
            const bool isLink = entry->is_symlink(unknown);
            const fs::file_type type = entry->status(unknown).type();
            const bool counts = type == fs::file_type::regular || (type == fs::file_type::directory && !isLink);
            if (counts) entries.emplace_back(entry->path().filename().string(), type);
        }
        if (error) list_.missing.push_back(folder + ": " + error.message());
        std::sort(entries.rbegin(), entries.rend());
        return entries;
    }

    static bool isOfVersions(const std::string& name) {
        return std::find(std::begin(foldersOfVersions), std::end(foldersOfVersions), name) !=
               std::end(foldersOfVersions);
    }

    bool hasSourceEnding(const std::string& name) const {
        const std::size_t dot = name.rfind('.');
        if (dot == std::string::npos) return false;
        const std::string ending = name.substr(dot + 1);
        const auto isEnding = [&](std::string_view known) {
            return ending == (known.starts_with('.') ? known.substr(1) : known);
        };
        return std::any_of(std::begin(usualEndings), std::end(usualEndings), isEnding) ||
               std::any_of(query_.endings.begin(), query_.endings.end(), isEnding);
    }

    void add(const std::string& path, const struct stat& status) {
        if (known_.emplace(status.st_dev, status.st_ino).second) list_.files.push_back(path);
    }

    const FileQuery& query_;
    IgnoreRules excluded_;
    IgnoreRules rules_;
    IgnoreRules namedRules_;
    std::string namedIn_;  // the folder that they are for
    std::set<std::pair<dev_t, ino_t>> known_;
    FileList list_;
};

}  // namespace

FileList findFiles(const FileQuery& query) {
    Search search(query);
    for (const std::string& path : query.paths) search.take(path);
    return search.result();
}

void tellOf(const FileList& list, bool isQuiet, std::ostream& errors) {
    for (const std::string& problem : list.missing) errors << "vantrel: " << problem << '\n';
    if (isQuiet) return;
    for (const std::string& file : list.leftOut) {
        errors << "vantrel: " << file << ": left out by .vantrelignore or --exclude\n";
    }
}

std::vector<std::string> splitPaths(const std::string& text, bool hasNullSeparators) {
    const char separator = hasNullSeparators ? '\0' : '\n';
    std::vector<std::string> paths;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        std::string path = text.substr(start, end - start);
        if (!hasNullSeparators && path.ends_with('\r')) path.pop_back();
        if (!path.empty()) paths.push_back(std::move(path));
        start = end + 1;
    }
    return paths;
}

}  // namespace Tool
