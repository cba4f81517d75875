#include "scheme/property_set_store.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "files/write_file.h"
#include "scheme/scheme_text.h"
#include "textstream/text_document.h"

namespace TesselUI {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view EXTENSION = ".vts";
constexpr std::size_t MAX_FILE_NAME = 255;  // bytes, the limit of the usual file systems

bool comesBefore(const PropertySetStore::Entry& entry, std::string_view name) {
    return entry.scheme.getName().compare(name) < 0;
}

// The first entry whose name is not before `name`.
template <typename Entries>
auto position(Entries& entries, std::string_view name) {
    return std::lower_bound(entries.begin(), entries.end(), name, comesBefore);
}

template <typename Entries>
auto findEntry(Entries& entries, std::string_view name) {
    const auto found = position(entries, name);
    return found != entries.end() && found->scheme.getName() == name ? found : entries.end();
}

// A link that leads nowhere is not there. What cannot be examined counts as a file, so that reading it
// reports the problem. Most file systems tell of what kind a file is with its name.
bool mayHoldScheme(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_regular_file(error) || entry.status(error).type() == fs::file_type::none;
}

Tessel::PropertySet readScheme(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    Tessel::PropertySet scheme(in);
    if (in.fail()) throw PropertySetStore::ReadError(path);
    return scheme;
}

// A file that somebody else writes at the same moment keeps what they wrote: it is not older than ours.
void updateSchemeFile(const std::string& path, const Tessel::PropertySet& scheme) {
    std::ifstream in(path, std::ios::binary);
    const std::string former = Zelmor::readAll(in);
    const std::string text = updatedSchemeText(former, scheme);
    if (text == former) return;
    try {
        Files::writeFile(path, text);
    } catch (const Files::WriteFailure& failure) {
        if (failure.reason != Files::WriteFailure::Reason::ChangedMeanwhile) {
            throw PropertySetStore::WriteError(path);
        }
    }
}

// The name cut to a number of bytes, but not within a UTF-8 character.
std::string_view cut(std::string_view name, std::size_t length) {
    if (name.size() <= length) return name;
    while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
    return name.substr(0, length);
}

// Characters that some system refuses, and the ".." that leads out of a directory, become "_".
std::string fileNameOf(std::string_view name, const std::string& ending) {
    constexpr std::string_view refused = "<>:\\/|?";
    const std::string text = std::string(cut(name, MAX_FILE_NAME - ending.size())) + ending;
    std::string fileName;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDoubleDot = text.compare(i, 2, "..") == 0;
        fileName += isDoubleDot || refused.find(text[i]) != std::string_view::npos ? '_' : text[i];
        if (isDoubleDot) ++i;
    }
    return fileName;
}

}  // namespace

PropertySetStore::PropertySetStore(std::string directory) : path_(std::move(directory)) {
    if (!path_.empty() && path_.back() != '/') path_ += '/';
}

void PropertySetStore::read() {
    if (path_.empty()) return;
    PropertySetStore fresh(path_);
    std::set<std::string> names;
    for (const std::string& fileName : findPSFiles(path_)) {
        const std::string path = path_ + fileName;
        Entry entry{Files::isReadOnly(path), readScheme(path)};
        const std::string name = entry.scheme.getName();
        if (names.insert(name).second) {
            fresh.fileNames_.emplace(fileName, name);
            fresh.entries_.push_back(std::move(entry));
        } else {
            fresh.hiddenFiles_.insert(fileName);
        }
    }
    std::sort(fresh.entries_.begin(), fresh.entries_.end(), [](const Entry& left, const Entry& right) {
        return left.scheme.getName() < right.scheme.getName();
    });
    *this = std::move(fresh);
}

void PropertySetStore::write() const {
    if (path_.empty()) return;
    for (const std::string& fileName : findPSFiles(path_)) {
        if (knowsFile(fileName) || Files::isReadOnly(path_ + fileName)) continue;
        std::error_code staysInPlace;
        fs::remove(path_ + fileName, staysInPlace);
    }
    for (const auto& [fileName, name] : fileNames_) {
        const const_iterator entry = find(name);
        if (entry == end() || entry->readOnly) continue;
        updateSchemeFile(path_ + fileName, entry->scheme);
    }
}

int PropertySetStore::count(std::string_view name) const {
    return find(name) == end() ? 0 : 1;
}

PropertySetStore::iterator PropertySetStore::find(std::string_view name) {
    return findEntry(entries_, name);
}

PropertySetStore::const_iterator PropertySetStore::find(std::string_view name) const {
    return findEntry(entries_, name);
}

void PropertySetStore::insert(const Tessel::PropertySet& scheme) {
    const std::string name = scheme.getName();
    if (count(name) > 0) return;
    entries_.insert(position(entries_, name), Entry{false, scheme});
    fileNames_.emplace(validFilename(name), name);
}

void PropertySetStore::erase(std::string_view name) {
    const iterator entry = find(name);
    if (entry == end() || entry->readOnly) return;
    std::erase_if(fileNames_, [&](const auto& file) { return file.second == name; });
    entries_.erase(entry);
}

std::set<std::string> PropertySetStore::findPSFiles(const std::string& directory) {
    std::set<std::string> fileNames;
    std::error_code error;
    for (fs::directory_iterator file(directory, error), last; !error && file != last; file.increment(error)) {
        std::string fileName = file->path().filename().string();
        if (fileName.ends_with(EXTENSION) && mayHoldScheme(*file)) fileNames.insert(std::move(fileName));
    }
    return fileNames;
}

std::string PropertySetStore::validFilename(std::string_view name) const {
    std::string fileName = fileNameOf(name, std::string(EXTENSION));
    for (int number = 1; knowsFile(fileName); ++number) {
        fileName = fileNameOf(name, '_' + std::to_string(number) + std::string(EXTENSION));
    }
    return fileName;
}

bool PropertySetStore::knowsFile(const std::string& fileName) const {
    return fileNames_.contains(fileName) || hiddenFiles_.contains(fileName);
}

}  // namespace TesselUI
