// RWpostream: writes the portable object format, printable ASCII readable on any platform: every
// item is one token followed by a line feed; characters that are not printable are escaped.
// Writes go straight to a std::streambuf; a buffer that refuses bytes sets fail and bad.
#ifndef VFC_RW_RWPOSTREAM_H
#define VFC_RW_RWPOSTREAM_H

#include <iosfwd>
#include <streambuf>

#include "vfc/base/export.h"
#include "vfc/rw/RWvostream.h"

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
    // Flushes the underlying buffer.
    RWvostream& flush() override;

    std::streambuf* rdbuf() const { return sb_; }

  private:
    void write(const char* p, size_t n);
    void writeSigned(long long v);
    void writeUnsigned(unsigned long long v);

    std::streambuf* sb_;
};

#endif  // VFC_RW_RWPOSTREAM_H
