#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "edits/line_set.h"

namespace Tool {

// The lines of each file, by its absolute path, that differ from a revision, or that are staged.
class GitLines {
public:
    // Asks git, for the repository around the current folder. Throws Failure where that does not work.
    static GitLines changedSince(const std::string& revision);
    static GitLines staged();

    const std::string& topFolder() const { return top_; }
    // Null when nothing has changed in the file.
    const Edits::LineSet* linesOf(const std::string& absolutePath) const;
    // Whether git knows the file.
    bool knows(const std::string& absolutePath) const;
    // Lines are staged, but the file in the folder is another than the staged one.
    bool hasOtherChanges(const std::string& absolutePath) const;

    // Reads what "git diff -U0" prints.
    static std::map<std::string, Edits::LineSet> parseDiff(const std::string& text);

private:
    explicit GitLines(const std::vector<std::string>& whatToCompare);

    std::string top_;
    std::map<std::string, Edits::LineSet> lines_;
    std::set<std::string> notStaged_;  // files of which not all is staged
};

}  // namespace Tool
