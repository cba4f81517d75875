#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tool {

// Whether a path matches a pattern of gitignore's form: "*" and "?" stop at "/", "**" does not. In time that grows with
// the product of both lengths at most.
bool matchesGlob(std::string_view pattern, std::string_view path);

// Patterns of gitignore's form, from files and from the command line. Of those that match a path, the last one says
// whether it is left out.
class IgnoreRules {
public:
    // `base` is the folder, without a "/" at its end, that the patterns are relative to.
    void addPattern(std::string_view line, const std::string& base);
    // Each line of a file, should it be there.
    void addFile(const std::string& path, const std::string& base);

    // For an absolute path. Folders above it are not looked at.
    bool leavesOut(std::string_view path, bool isFolder) const;

    std::size_t size() const { return rules_.size(); }
    // Forgets all rules but the first.
    void shrink(std::size_t size) { rules_.resize(size); }

private:
    struct Rule {
        std::string base;
        std::string pattern;
        bool takesIn = false;      // begins with "!"
        bool isForFolders = false;  // ends in "/"
        bool isAnchored = false;   // has a "/" inside: else it is for names at any depth
    };

    static bool applies(const Rule& rule, std::string_view path, bool isFolder);

    std::vector<Rule> rules_;
};

}  // namespace Tool
