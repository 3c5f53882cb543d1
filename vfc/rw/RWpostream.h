#ifndef VFC_RW_RWPOSTREAM_H
#define VFC_RW_RWPOSTREAM_H

#include <iosfwd>
#include <streambuf>

#include "vfc/base/export.h"
#include "vfc/rw/RWvostream.h"

/// Writes the portable object format, printable ASCII readable on any platform, to a
/// std::streambuf.
///
/// Every item is one token followed by a line feed; characters that are not printable are escaped.
/// Items pass through a 4 KiB buffer of the stream: those of an object are held back until the
/// outermost object is complete (an object larger than the buffer goes over in pieces), items
/// written outside an object go at once. So after any call made from outside an object's saveGuts,
/// everything written is in the std::streambuf; flush() also syncs the std::streambuf.
///
/// The stream borrows the buffer (with the std::ostream form, the ostream's buffer), which must
/// outlive it; the std::ostream's own state is not changed.
///
/// Failure: a null buffer, or a buffer that refuses bytes or fails to sync, sets fail and bad, and
/// from then on every write is dropped. Check good() after writing.
class VFC_API RWpostream : public RWvostream {
  public:
    explicit RWpostream(std::streambuf* sb);
    explicit RWpostream(std::ostream& os);
    ~RWpostream() override;

    RWvostream& operator<<(char c) override;
    RWvostream& operator<<(const char* s) override;
    RWvostream& operator<<(bool v) override;
    RWvostream& operator<<(short v) override;
    RWvostream& operator<<(unsigned short v) override;
    RWvostream& operator<<(int v) override;
    RWvostream& operator<<(unsigned v) override;
    RWvostream& operator<<(long v) override;
    RWvostream& operator<<(unsigned long v) override;
    RWvostream& operator<<(long long v) override;
    RWvostream& operator<<(unsigned long long v) override;
    RWvostream& operator<<(float v) override;
    RWvostream& operator<<(double v) override;
    RWvostream& put(char c) override;
    RWvostream& putString(const char* s, size_t n) override;
    RWvostream& putObjectStart() override;
    RWvostream& putObjectEnd() override;
    // Hands everything over and flushes the underlying buffer.
    RWvostream& flush() override;
    void commit() override;

    std::streambuf* rdbuf() const { return sb_; }

  private:
    void write(const char* p, size_t n);
    // Room for n bytes (n at most the buffer's size) at the end of the buffer, committing what
    // it holds first when it has too little; null once the stream failed. Callers write into
    // it and then set pending_ to their end.
    char* room(size_t n) {
        if (pending_ + n > sizeof buffer_) commit();
        return good() ? buffer_ + pending_ : nullptr;
    }
    // Commits unless an object is being written.
    RWvostream& done() {
        if (objectDepth() == 0) commit();
        return *this;
    }
    void writeSigned(long long v);
    void writeUnsigned(unsigned long long v);

    std::streambuf* sb_;
    size_t pending_ = 0;
    char buffer_[4096];
};

#endif  // VFC_RW_RWPOSTREAM_H
