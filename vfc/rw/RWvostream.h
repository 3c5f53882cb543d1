#ifndef VFC_RW_RWVOSTREAM_H
#define VFC_RW_RWVOSTREAM_H

#include <cstddef>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/rw/RWvios.h"

namespace vfc::rw {
class SaveTable;
}

/// The abstract output stream of the persistent object format; RWpostream writes the portable
/// text form.
///
/// A concrete stream decides how each item is spelled; the object writer of RWCollectable and every
/// saveGuts write through this interface only. Writes report failure through the stream's state
/// (RWvios): check good() after writing. The stream is not copyable and does not own the objects
/// written through it.
class VFC_API RWvostream : public virtual RWvios {
  public:
    RWvostream();
    RWvostream(const RWvostream&) = delete;
    RWvostream& operator=(const RWvostream&) = delete;
    ~RWvostream() override;

    // A character as a symbol: the byte itself when printable, else an escape.
    virtual RWvostream& operator<<(char c) = 0;
    // A zero-terminated byte string, as putString.
    virtual RWvostream& operator<<(const char* s) = 0;
    virtual RWvostream& operator<<(bool v) = 0;
    virtual RWvostream& operator<<(short v) = 0;
    virtual RWvostream& operator<<(unsigned short v) = 0;
    virtual RWvostream& operator<<(int v) = 0;
    virtual RWvostream& operator<<(unsigned v) = 0;
    virtual RWvostream& operator<<(long v) = 0;
    virtual RWvostream& operator<<(unsigned long v) = 0;
    virtual RWvostream& operator<<(long long v) = 0;
    virtual RWvostream& operator<<(unsigned long long v) = 0;
    virtual RWvostream& operator<<(float v) = 0;
    virtual RWvostream& operator<<(double v) = 0;
    // A character as a number rather than a symbol.
    virtual RWvostream& put(char c) = 0;
    // n bytes, zeros included, as one string item.
    virtual RWvostream& putString(const char* s, size_t n) = 0;
    // The markers around an object's saved state.
    virtual RWvostream& putObjectStart() = 0;
    virtual RWvostream& putObjectEnd() = 0;
    virtual RWvostream& flush() = 0;
    // Hands items held back by the stream to its destination. The object writer calls it when
    // an outermost object is complete; a stream may hold back the items of an object until then.
    virtual void commit() {}

    // The ordinal table of the store operation under way (for RWCollectable's object writer).
    vfc::rw::SaveTable& saveTable();
    // How deep the object writer is inside objects on this stream; 0 between objects.
    int objectDepth() const;

  private:
    std::unique_ptr<vfc::rw::SaveTable> table_;
};

#endif  // VFC_RW_RWVOSTREAM_H
