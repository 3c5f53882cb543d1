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
};

#endif  // VFC_RW_RWCOLLECTABLE_H
