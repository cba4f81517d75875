#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scheme/property_set.h"

namespace TesselUI {

// The scheme directory in memory: every file "*.vts" in it holds one scheme, known by the name that stands
// inside the file. Nothing touches the disk but `read` and `write`.
class PropertySetStore {
public:
    struct Entry {
        bool readOnly =
            false;  // the file may not be written: the scheme is used, but never changed or deleted
        Tessel::PropertySet scheme;
    };
    using iterator = std::vector<Entry>::iterator;
    using const_iterator = std::vector<Entry>::const_iterator;

    // A scheme file that cannot be read, or holds no scheme.
    class ReadError {
    public:
        explicit ReadError(std::string path) : path_(std::move(path)) {}
        const std::string& path() const { return path_; }

    private:
        std::string path_;
    };

    // A scheme file that cannot be written.
    class WriteError {
    public:
        explicit WriteError(std::string path) : path_(std::move(path)) {}
        const std::string& path() const { return path_; }

    private:
        std::string path_;
    };

    // An empty store over a directory, with or without a "/" at its end.
    explicit PropertySetStore(std::string directory);

    // Replaces the content by that of the directory; of two schemes with one name, the one whose file name
    // sorts first counts. Throws ReadError, and then keeps the content that it had.
    void read();
    // Makes the directory match the store: deletes the scheme files that the store does not know, and brings
    // the others up to date, where they hold something else than the store; comments in them stay. Files of
    // read-only schemes, and of those that a second name hid, stay. Throws WriteError.
    void write() const;

    // 1 or 0. Names are compared byte by byte.
    int count(std::string_view name) const;
    iterator find(std::string_view name);
    const_iterator find(std::string_view name) const;

    // In the order of the names.
    iterator begin() { return entries_.begin(); }
    iterator end() { return entries_.end(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    // Adds a writable scheme, unless one of that name is there.
    void insert(const Tessel::PropertySet& scheme);
    // Removes a writable scheme; its file goes with the next `write`.
    void erase(std::string_view name);

    // The names, without directory, of the scheme files in a directory. Only what can be read like a file
    // counts: no directories, pipes or devices.
    static std::set<std::string> findPSFiles(const std::string& directory);
    // A file name for a scheme that is to be added: free in this store, and possible in any directory.
    std::string validFilename(std::string_view name) const;

private:
    bool knowsFile(const std::string& fileName) const;

    std::string path_;
    std::vector<Entry> entries_;                    // sorted by name, each name once
    std::map<std::string, std::string> fileNames_;  // file name to the name of its scheme
    std::set<std::string> hiddenFiles_;             // files whose scheme has the name of an earlier one
};

}  // namespace TesselUI
