#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/format_options.h"
#include "scheme/scheme_lint.h"

namespace Tool {

// A scheme that is ready to be used, and the file that it came from.
struct LoadedScheme {
    std::string file;
    Tessel::FormatOptions options;
    std::vector<TesselUI::SchemeFault> faults;  // of its file
};

// What a list of schemes says of one.
struct SchemeSummary {
    std::string name;
    std::string file;
    std::string description;  // the comment in the file that tells what it is for
};

// Finds the scheme of each file, reading no scheme twice, and writing none. Throws Failure for one that cannot be used.
class SchemeFinder {
public:
    // The scheme of that name, or in that file, for all files; when it is empty, the nearest file ".vantrel.vts"
    // upwards.
    explicit SchemeFinder(std::string chosen) : chosen_(std::move(chosen)) {}

    // Null when there is none. Borrowed from the finder.
    const LoadedScheme* schemeFor(const std::string& path);

    // Those that were read, in the order of their files.
    std::vector<const LoadedScheme*> loaded() const;

private:
    const LoadedScheme* load(const std::string& file);
    const LoadedScheme* nearest(const std::string& folder);

    std::string chosen_;
    std::string chosenFile_;  // once it has been looked for
    std::map<std::string, std::unique_ptr<LoadedScheme>> loaded_;  // by file
    std::map<std::string, const LoadedScheme*> byFolder_;
};

// All schemes that have a name, the user's own before shipped ones.
std::vector<SchemeSummary> listSchemes();

// The shipped ones that can be used.
std::vector<Tessel::PropertySet> shippedSchemes();

// The file of a scheme that is given by its name, or as a file. Throws Failure when there is none of that name.
std::string schemeFile(const std::string& nameOrFile);

// What to do where no scheme is found for a file.
std::string noSchemeMessage(const std::string& path);

}  // namespace Tool
