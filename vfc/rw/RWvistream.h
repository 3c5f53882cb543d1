#ifndef VFC_RW_RWVISTREAM_H
#define VFC_RW_RWVISTREAM_H

#include <cstddef>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/rw/RWvios.h"

class RWCString;

namespace vfc::rw {
struct RestoreTable;
}

/// The abstract input stream of the persistent object format; RWpistream reads the portable text
/// form.
///
/// Reads never trust the data: a malformed or out-of-range item sets fail and leaves the target
/// unchanged, a count or length above kMaxCount sets bad as well, and once the stream has failed
/// every further read does nothing. The object reader of RWCollectable also sets fail and bad for
/// objects nested deeper than kMaxDepth. Check good() after reading. The stream is not copyable; it
/// does not own the objects read through it.
class VFC_API RWvistream : public virtual RWvios {
  public:
    // Counts and lengths above this are taken for corruption.
    static constexpr size_t kMaxCount = size_t{1} << 30;
    // Objects nested deeper than this are taken for corruption.
    static constexpr int kMaxDepth = 256;
    // The object reader's allowance, for a stream and for an RWFile alike. A reference to an
    // object read earlier becomes a copy when an owning collection takes it, so references can
    // nest into exponentially many objects; the objects made and the bytes copied may therefore
    // not exceed these allowances plus the given multiple of the bytes read so far. Beyond that
    // the stream fails with bad. Files without references never come near either.
    static constexpr unsigned long long kObjectAllowance = 4096;
    static constexpr unsigned long long kObjectsPerByteRead = 4;
    static constexpr unsigned long long kCopyAllowance = 1 << 20;
    static constexpr unsigned long long kCopiedBytesPerByteRead = 4;

    RWvistream();
    RWvistream(const RWvistream&) = delete;
    RWvistream& operator=(const RWvistream&) = delete;
    ~RWvistream() override;

    virtual RWvistream& operator>>(char& c) = 0;  // a symbol
    virtual RWvistream& operator>>(bool& v) = 0;
    virtual RWvistream& operator>>(short& v) = 0;
    virtual RWvistream& operator>>(unsigned short& v) = 0;
    virtual RWvistream& operator>>(int& v) = 0;
    virtual RWvistream& operator>>(unsigned& v) = 0;
    virtual RWvistream& operator>>(long& v) = 0;
    virtual RWvistream& operator>>(unsigned long& v) = 0;
    virtual RWvistream& operator>>(long long& v) = 0;
    virtual RWvistream& operator>>(unsigned long long& v) = 0;
    virtual RWvistream& operator>>(float& v) = 0;
    virtual RWvistream& operator>>(double& v) = 0;
    // A character written with put().
    virtual RWvistream& get(char& c) = 0;
    // One string item into s; s is unchanged when the item is malformed.
    virtual RWvistream& getString(RWCString& s) = 0;
    // A collection count: like an unsigned read, but above kMaxCount it fails with bad.
    virtual RWvistream& getCount(size_t& n) = 0;
    // Expect the markers around an object's saved state; fail with bad when they are missing.
    virtual bool getObjectStart() = 0;
    virtual bool getObjectEnd() = 0;

    // The ordinal table of the restore operation under way (for RWCollectable's object reader).
    vfc::rw::RestoreTable& restoreTable();
    // The bytes taken from the data so far, as counted by the implementation (addBytesRead);
    // the object reader's allowance grows with it.
    unsigned long long bytesRead() const noexcept { return bytesRead_; }

  protected:
    // Implementations report every byte they consume here.
    void addBytesRead(size_t n) noexcept { bytesRead_ += n; }

  private:
    std::unique_ptr<vfc::rw::RestoreTable> table_;
    unsigned long long bytesRead_ = 0;
};

#endif  // VFC_RW_RWVISTREAM_H
