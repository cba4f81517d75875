#include "tool/scheme_finder.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "files/descriptor.h"
#include "files/read_file.h"
#include "scheme/property_set_store.h"
#include "scheme/scheme_check.h"
#include "scheme/scheme_conversion.h"
#include "scheme/scheme_directory.h"
#include "tool/failure.h"

namespace Tool {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".vts";
constexpr const char* projectFile = ".vantrel.vts";

std::string readText(const std::string& file) try {
    return Files::readFile(file).text;
} catch (const Files::ReadFailure& failure) {
    throw Failure("the scheme file " + file + " cannot be read: " + Files::errorText(failure.error));
}

// Of those that are only listed, one that cannot be read is left out.
std::string readTextIfAny(const std::string& file) try {
    return Files::readFile(file).text;
} catch (const Files::ReadFailure&) {
    return {};
}

// The comment behind the name of a scheme.
std::string describe(const std::string& text) {
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.starts_with('#')) continue;
        const std::size_t first = line.find_first_not_of("# \t");
        return first == std::string::npos ? "" : line.substr(first);
    }
    return {};
}

std::vector<std::string> schemeDirectories() {
    std::vector<std::string> directories;
    for (std::string directory : {TesselUI::chosenSchemeDirectory(), TesselUI::shippedSchemeDirectory()}) {
        if (directory.empty()) continue;
        if (!directory.ends_with('/')) directory += '/';
        directories.push_back(std::move(directory));
    }
    return directories;
}

// Nothing where the file is no scheme.
std::optional<SchemeSummary> summaryOf(const std::string& file) {
    const std::string text = readTextIfAny(file);
    std::istringstream in(text);
    const Tessel::PropertySet scheme(in);
    if (in.fail()) return std::nullopt;
    return SchemeSummary{scheme.getName(), file, describe(text)};
}

std::vector<SchemeSummary> schemesIn(const std::string& directory) {
    std::vector<SchemeSummary> schemes;
    for (const std::string& fileName : TesselUI::PropertySetStore::findPSFiles(directory)) {
        if (fileName.starts_with('.')) continue;
        if (auto scheme = summaryOf(directory + fileName)) schemes.push_back(std::move(*scheme));
    }
    return schemes;
}

bool isFile(const std::string& chosen) {
    return chosen.find('/') != std::string::npos || chosen.ends_with(ending);
}

std::string namesOfSchemes() {
    std::string names;
    for (const SchemeSummary& scheme : listSchemes()) names += (names.empty() ? "" : ", ") + scheme.name;
    return names;
}

}  // namespace

const LoadedScheme* SchemeFinder::load(const std::string& file) {
    std::unique_ptr<LoadedScheme>& entry = loaded_[file];
    if (entry) return entry.get();
    const std::string text = readText(file);
    std::istringstream in(text);
    Tessel::PropertySet scheme(in);
    std::vector<TesselUI::SchemeFault> faults = TesselUI::lintScheme(text);
    if (in.fail()) throw Failure(file + ": " + faults.front().text);
    if (TesselUI::needsOtherVersion(scheme)) {
        throw Failure("the scheme file " + file + " needs another version of vantrel than this one, " +
                      TesselUI::CURRENT_VERSION);
    }
    if (TesselUI::isOldScheme(scheme)) TesselUI::convertScheme(scheme);
    if (const auto unusable = TesselUI::findUnusableText(scheme)) {
        throw Failure("the scheme file " + file + " cannot be used: " + unusable->key + ' ' + unusable->problem);
    }
    entry = std::make_unique<LoadedScheme>(
        LoadedScheme{file, {std::move(scheme), Tessel::protectedRegionMarkers()}, std::move(faults)});
    return entry.get();
}

const LoadedScheme* SchemeFinder::schemeFor(const std::string& path) {
    if (chosen_.empty()) return nearest(fs::absolute(path).lexically_normal().parent_path().string());
    if (chosenFile_.empty()) chosenFile_ = schemeFile(chosen_);
    return load(chosenFile_);
}

const LoadedScheme* SchemeFinder::nearest(const std::string& folder) {
    std::vector<std::string> visited;
    const LoadedScheme* scheme = nullptr;
    for (fs::path current = folder;; current = current.parent_path()) {
        const auto known = byFolder_.find(current.string());
        if (known != byFolder_.end()) {
            scheme = known->second;
            break;
        }
        visited.push_back(current.string());
        std::error_code error;
        if (fs::is_regular_file(current / projectFile, error)) {
            scheme = load((current / projectFile).string());
            break;
        }
        if (current == current.parent_path()) break;
    }
    for (const std::string& one : visited) byFolder_[one] = scheme;
    return scheme;
}

std::vector<const LoadedScheme*> SchemeFinder::loaded() const {
    std::vector<const LoadedScheme*> all;
    for (const auto& [file, scheme] : loaded_) all.push_back(scheme.get());
    return all;
}

std::vector<SchemeSummary> listSchemes() {
    std::vector<SchemeSummary> schemes;
    std::set<std::string> names;
    for (const std::string& directory : schemeDirectories()) {
        for (SchemeSummary& scheme : schemesIn(directory)) {
            if (names.insert(scheme.name).second) schemes.push_back(std::move(scheme));
        }
    }
    return schemes;
}

std::vector<Tessel::PropertySet> shippedSchemes() {
    const std::string directory = TesselUI::shippedSchemeDirectory();
    std::vector<Tessel::PropertySet> schemes;
    for (const std::string& fileName : TesselUI::PropertySetStore::findPSFiles(directory)) {
        std::istringstream in(readTextIfAny(directory + fileName));
        Tessel::PropertySet scheme(in);
        if (!in.fail() && !TesselUI::findUnusableText(scheme)) schemes.push_back(std::move(scheme));
    }
    return schemes;
}

std::string schemeFile(const std::string& nameOrFile) {
    if (isFile(nameOrFile)) return nameOrFile;
    for (const std::string& directory : schemeDirectories()) {
        // Nearly always that is it; the others need not be read.
        const std::string usualFile = directory + nameOrFile + std::string(ending);
        if (const auto usual = summaryOf(usualFile); usual && usual->name == nameOrFile) return usualFile;
        for (const SchemeSummary& scheme : schemesIn(directory)) {
            if (scheme.name == nameOrFile) return scheme.file;
        }
    }
    throw Failure("there is no scheme named \"" + nameOrFile + "\"\nSchemes: " + namesOfSchemes() +
                  "\nA file is given by its path: ./" + nameOrFile + std::string(ending));
}

std::string noSchemeMessage(const std::string& path) {
    return "there is no scheme for " + path + ": name one with -s, or put a file " + projectFile +
           " into the folder of the project\nSchemes: " + namesOfSchemes() +
           "\nTo start with one of them: vantrel scheme show knr > " + projectFile;
}

}  // namespace Tool
