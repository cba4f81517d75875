#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace Tool {

struct FileQuery {
    std::vector<std::string> paths;
    std::vector<std::string> endings;   // beside the usual ones
    std::vector<std::string> excluded;  // patterns of gitignore's form
};

// The files that a query means, each once, in the order of the paths and, in folders, of the names.
struct FileList {
    std::vector<std::string> files;
    std::vector<std::string> missing;  // "a.cpp: No such file or directory"
    std::vector<std::string> leftOut;  // files that were named, but that a pattern leaves out
    bool hasFolders = false;           // one was among the paths
};

// Folders are walked without following links to folders; files in them count when their ending is one of C or C++, and
// .gitignore and .vantrelignore do not leave them out. Files that are named count whatever they are called, unless
// .vantrelignore or the query leaves them out.
FileList findFiles(const FileQuery& query);

// Tells of what is missing and, unless that is too much, of what is left out.
void tellOf(const FileList& list, bool isQuiet, std::ostream& errors);

// The paths in a list, separated by line ends or NULs.
std::vector<std::string> splitPaths(const std::string& text, bool hasNullSeparators);

}  // namespace Tool
