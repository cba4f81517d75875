/*
 * record_store.h - keeps records of fixed size in a file, with an index in memory.
 */
#ifndef RECORD_STORE_H_INCLUDED
#define RECORD_STORE_H_INCLUDED

#include <map>
#include <string>
#include <vector>

#if defined(_WIN32) && !defined(RECORD_STORE_STATIC)
#  ifdef RECORD_STORE_BUILD
#    define RECORD_API __declspec(dllexport)
#  else
#    define RECORD_API __declspec(dllimport)
#  endif
#else
#  define RECORD_API
#endif

class istream_like;

namespace store {

typedef unsigned long RecordId;

enum OpenMode { ReadOnly, ReadWrite = 1, Create = 1 << 1,
	Truncate = Create|4	/* implies Create */ };

/** What goes wrong while a store is read or written. */
class RECORD_API StoreError : public std::exception
{
public:
	enum Kind {
		NotFound = 1,	// no such record
		Damaged,	// checksum differs
		DiskFull = 28	// as errno has it
	};
	StoreError( Kind kind, const std::string &where ) throw();
	virtual ~StoreError() throw() {}
	virtual const char *what() const throw();
	Kind kind() const { return kind_; }
private:
	Kind kind_;
	std::string text_;
};

/**
 * A store of records.  Not safe for threads:
 *   - one writer,
 *   - or many readers.
 */
class RecordStore {
 public:
  struct Header {
    char magic[4];
    unsigned version : 4;
    unsigned flags:12, reserved : 16;
    RecordId first, last;
  };

  typedef std::map<RecordId, std::vector<unsigned char> > Index;
  typedef Index::const_iterator const_iterator;

  explicit RecordStore(const char* path, OpenMode mode = ReadOnly);
  ~RecordStore();

  // Reading
  const unsigned char * find(RecordId id, size_t * length = 0) const;
  bool contains(RecordId id) const { return index_.find(id) != index_.end(); }
  const_iterator begin() const { return index_.begin(); }
  const_iterator end() const { return index_.end(); }
  RecordId  operator[](size_t position) const;

  // Writing
  RecordId insert(const void *data, size_t length);
  bool erase(RecordId id);
  void flush(bool force=false);

 protected:
  virtual void report(const StoreError& error) const;
  static unsigned long checksum( const unsigned char *begin , const unsigned char *end );

 private:
  RecordStore(const RecordStore&);             // not implemented
  RecordStore& operator=(const RecordStore&);  // not implemented

  Header header_;
  Index index_;
  mutable const_iterator last_found_;
  int (*compare_)(const void*, const void*);
  void *file_;
#ifdef RECORD_STORE_STATISTICS
  mutable unsigned long hits_, misses_;
#endif
};

inline bool operator==(const StoreError &a, const StoreError &b) { return a.kind() == b.kind(); }
inline bool operator!=(const StoreError &a, const StoreError &b) { return !(a == b); }

}  // namespace store

extern "C" {
RECORD_API int record_store_version(void);
}

#endif /* RECORD_STORE_H_INCLUDED */
