#include "scheme/named_scheme.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "scheme/property_set_store.h"
#include "scheme/scheme_conversion.h"

namespace TesselUI {

namespace {

namespace fs = std::filesystem;

// The name that a file's scheme has, without a look at the scheme: some are long, and there may be many. Empty where
// the file does not begin like one.
std::string nameIn(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::string head;
    std::string line;
    for (int count = 0; count < Tessel::kSchemeHeadLines && std::getline(in, line);) {
        if (line.empty() || line.starts_with('#')) continue;
        head += line + '\n';
        ++count;
    }
    std::istringstream lines(head);
    return Tessel::PropertySet(lines).getName();
}

}  // namespace

std::optional<Tessel::PropertySet> readNamedScheme(const std::string& directory, std::string_view name) {
    if (directory.empty()) return {};
    const std::string usualName = PropertySetStore(directory).validFilename(name);
    std::ifstream in(fs::path(directory) / usualName, std::ios::binary);
    Tessel::PropertySet scheme(in);
    if (in.fail() || scheme.getName() != name || isOldScheme(scheme)) return {};
    for (const std::string& fileName : PropertySetStore::findPSFiles(directory)) {
        if (fileName >= usualName) break;
        if (nameIn(fs::path(directory) / fileName) == name) return {};
    }
    return scheme;
}

}  // namespace TesselUI
