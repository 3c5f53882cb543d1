// RWCollectable: the root of every object that the library's collections hold and its persistent
// streams write. The virtual protocol below is in its fixed slot order; the defaults compare, hash
// and test equality by object identity and persist nothing.
#ifndef VFC_RW_RWCOLLECTABLE_H
#define VFC_RW_RWCOLLECTABLE_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWClassID.h"

class RWvistream;
class RWvostream;
class RWFile;

class VFC_API RWCollectable {
  public:
    RWCollectable() = default;
    RWCollectable(const RWCollectable&) = default;
    RWCollectable& operator=(const RWCollectable&) = default;

    // A new default-constructed object of the same class; the caller owns it.
    virtual RWCollectable* newSpecies() const;
    // A new copy of this object; the caller owns it.
    virtual RWCollectable* copy() const;
    virtual RWClassID isA() const;
    virtual ~RWCollectable();
    // Bytes that saveGuts(RWFile&) writes; nothing for RWCollectable itself.
    virtual size_t binaryStoreSize() const;
    // Negative, zero or positive; by default the order of the objects' addresses.
    virtual int compareTo(const RWCollectable* other) const;
    // By default derived from the object's address.
    virtual unsigned hash() const;
    // By default true only for the very same object.
    virtual bool isEqual(const RWCollectable* other) const;
    // Read and write the object's own state; RWCollectable itself has none.
    virtual void restoreGuts(RWvistream&);
    virtual void restoreGuts(RWFile&);
    virtual void saveGuts(RWvostream&) const;
    virtual void saveGuts(RWFile&) const;

    static RWClassID classIsA() { return RW_COLLECTABLE_ID; }

    // The object writer: the class identifier, then saveGuts between object markers; an object
    // already written in the same store operation is written as a reference to its ordinal.
    // Nested calls (from inside saveGuts) belong to the operation of the outermost call.
    void recursiveSaveOn(RWvostream& s) const;
    void recursiveSaveOn(RWFile& f) const;
    // The object reader. Reads the next object: a new one is made by the factory, or, when p is
    // given and the identifiers agree, restored into p; a reference yields the object read
    // earlier in the same operation; nil yields null. On malformed data the stream fails and the
    // result is null (a new object that could not be read completely is destroyed).
    static RWCollectable* recursiveRestoreFrom(RWvistream& s, RWCollectable* p = nullptr);
    static RWCollectable* recursiveRestoreFrom(RWFile& f, RWCollectable* p = nullptr);
};

namespace vfc::rw {
// Writes p as an object, or the nil form when p is null.
VFC_API void saveObject(RWvostream& s, const RWCollectable* p);
VFC_API void saveObject(RWFile& f, const RWCollectable* p);
// Reads an object that the caller will own: a new object as read, a reference to an object read
// earlier in the operation as a copy of it (an owning collection cannot hold one object twice),
// null for nil or on failure (tell them apart by the stream's state).
VFC_API RWCollectable* restoreOwned(RWvistream& s);
VFC_API RWCollectable* restoreOwned(RWFile& f);
}  // namespace vfc::rw

#endif  // VFC_RW_RWCOLLECTABLE_H
