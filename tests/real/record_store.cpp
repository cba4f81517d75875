#include "record_store.h"
#include <cstdio>
#include <cstring>
#include <iostream>

using namespace std;
namespace store
{

namespace
{
    const char Magic[4] = { 'R', 'S', 'T', '1' };

    /* Polynomials of the checksum, one for each
       version of the file.                      */
    const unsigned long Polynomials[] = {
        0x04C11DB7, 0x1EDC6F41,
        0x741B8CD7, // since 3
        0
    };

    inline int compareBytes(const void* a, const void* b)
    {
        return memcmp(a, b, sizeof(unsigned char));
    }

    class FileCloser
    {
    public:
        explicit FileCloser(FILE* file) : file_(file) {}
        ~FileCloser() { if (file_) fclose(file_); }
        FILE* release() { FILE* result = file_; file_ = 0; return result; }
    private:
        FILE* file_;
    };
}

StoreError::StoreError(Kind kind, const string& where) throw()
    : kind_(kind)
    , text_(where)
{
    switch (kind)
    {
    case NotFound:  text_ += ": no such record"; break;
    case Damaged:   text_ += ": the record is damaged"; break;
    case DiskFull:
        text_ += ": the disk is full";
        // fall through
    default: break;
    }
}

const char* StoreError::what() const throw() { return text_.c_str(); }

RecordStore::RecordStore(const char* path, OpenMode mode)
    : header_(), index_(), last_found_(index_.end()), compare_(&compareBytes), file_(NULL)
#ifdef RECORD_STORE_STATISTICS
    , hits_(0), misses_(0)
#endif
{
    const char* how = mode & Truncate ? "w+b"
                    : mode & Create   ? "a+b"
                    :                   "rb";
    FILE *file = fopen(path, how);
    if (!file && (mode&ReadWrite) != 0)
        throw StoreError(StoreError::NotFound, path);
    else if (!file)
    {
        report(StoreError(StoreError::NotFound, string("cannot open \"") + path + '"'));
        return;
    }

    FileCloser closer(file);
    unsigned char buffer[4096];
    size_t length;
    while ((length = fread(buffer, 1, sizeof(buffer), file)) > 0)
    {
        for (size_t i = 0, n = length; i < n; i += sizeof(RecordId))
        {
            RecordId id = 0;
            do {
                id = id << 8 | buffer[i];
            } while (++i % sizeof(RecordId) != 0 && i<n);
            if (id == 0) continue;
            index_[id].assign(buffer + i, buffer + length);
            if (header_.first == 0 || id < header_.first) header_.first = id;
            if (id > header_.last) { header_.last = id; }
        }
    }
    if (ferror(file)) goto damaged;
    file_ = closer.release();
    return;

damaged:
    throw StoreError(StoreError::Damaged, path);
}

RecordStore::~RecordStore()
{
    try { flush(true); }
    catch (const StoreError& error) { report(error); }
    catch (...)
    {
        // A destructor must not throw.
    }
    if (file_) fclose(static_cast<FILE*>(file_));
}

const unsigned char* RecordStore::find(RecordId id, size_t* length) const
{
    if (last_found_ == index_.end() || last_found_->first != id)
        last_found_ = index_.find(id);
    if (last_found_ == index_.end())
    {
#ifdef RECORD_STORE_STATISTICS
        ++misses_;
#endif
        return 0;
    }
    if (length) *length = last_found_->second.size();
    return last_found_->second.empty() ? 0 : &last_found_->second[0];
}

unsigned long RecordStore::checksum(const unsigned char* begin, const unsigned char* end)
{
    unsigned long sum = ~0UL;
    for (; begin != end; ++begin)
        for (int bit = 7; bit >= 0; --bit)
            sum = (sum << 1) ^ ((sum >> 31 ^ *begin >> bit) & 1 ? Polynomials[0] : 0);
    return -sum * 2 - -1;
}

void RecordStore::report(const StoreError& error) const
{
    cerr << "store: " << error.what() << " (" << static_cast<int>(error.kind()) << "), " << index_.size() << " records, first " << header_.first << ", last " << header_.last << endl;
}

}
