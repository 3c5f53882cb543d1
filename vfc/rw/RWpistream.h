#ifndef VFC_RW_RWPISTREAM_H
#define VFC_RW_RWPISTREAM_H

#include <iosfwd>
#include <streambuf>

#include "vfc/base/export.h"
#include "vfc/rw/RWvistream.h"

/// Reads the portable object format that RWpostream writes, from a std::streambuf.
///
/// Runs of white space before a token are skipped, so CR LF line ends and blank lines read the
/// same. The stream borrows the buffer (with the std::istream form, the istream's buffer), which
/// must outlive it; the std::istream's own state is not changed.
///
/// Failure: a malformed token, a value out of range for its type or the end of the data sets fail
/// (and eof at the end); a malformed string, count or object marker, and a null buffer, set bad as
/// well. The target of a failed read is left unchanged, and once the stream has failed every
/// further read does nothing. Check good() after reading.
class VFC_API RWpistream : public RWvistream {
  public:
    explicit RWpistream(std::streambuf* sb);
    explicit RWpistream(std::istream& is);
    ~RWpistream() override;

    RWvistream& operator>>(char& c) override;
    RWvistream& operator>>(bool& v) override;
    RWvistream& operator>>(short& v) override;
    RWvistream& operator>>(unsigned short& v) override;
    RWvistream& operator>>(int& v) override;
    RWvistream& operator>>(unsigned& v) override;
    RWvistream& operator>>(long& v) override;
    RWvistream& operator>>(unsigned long& v) override;
    RWvistream& operator>>(long long& v) override;
    RWvistream& operator>>(unsigned long long& v) override;
    RWvistream& operator>>(float& v) override;
    RWvistream& operator>>(double& v) override;
    RWvistream& get(char& c) override;
    RWvistream& getString(RWCString& s) override;
    RWvistream& getCount(size_t& n) override;
    bool getObjectStart() override;
    bool getObjectEnd() override;

    std::streambuf* rdbuf() const { return sb_; }

  private:
    // The next byte, consumed and counted.
    int bump() {
        addBytesRead(1);
        return sb_->sbumpc();
    }
    // The next byte after white space, consumed; -1 (with eof and fail set) at the end.
    int nextToken();
    // Reads an optionally signed decimal integer within [lo, hi].
    bool readInteger(long long lo, unsigned long long hi, bool& negative,
                     unsigned long long& magnitude);
    template <class T>
    RWvistream& readSigned(T& v);
    template <class T>
    RWvistream& readUnsigned(T& v);
    template <class T>
    RWvistream& readFloating(T& v);
    bool readMarker(char closing);
    // Reads the n text bytes of a string item into out; false (with bad set) when malformed.
    bool decodeString(char* out, size_t n);

    std::streambuf* sb_;
};

#endif  // VFC_RW_RWPISTREAM_H
