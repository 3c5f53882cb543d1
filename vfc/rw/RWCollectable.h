#ifndef VFC_RW_RWCOLLECTABLE_H
#define VFC_RW_RWCOLLECTABLE_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWClassID.h"

class RWvistream;
class RWvostream;
class RWFile;

/// The root of every object that the library's collections hold and its persistent streams write.
///
/// A subclass overrides the virtual protocol below; the defaults compare, hash and test equality
/// by object identity and persist nothing. The virtual functions are in a fixed slot order (the
/// layout of the virtual table), so their order must not change. A class that is written to
/// streams registers with RWFactory (see RW_DEFINE_COLLECTABLE), so that a reader can make it from
/// its identifier.
///
/// Ownership: newSpecies() and copy() return new objects that the caller owns and deletes.
/// recursiveRestoreFrom() returns a new object that the caller owns, or, for a reference to an
/// object read earlier in the same operation, that earlier object, which stays with whoever owns
/// it; vfc::rw::restoreOwned() always returns an object of the caller's own.
///
/// Failure: nothing throws. On malformed data the readers return null and leave the stream failed
/// (an RWvistream not good(), with fail and bad; an RWFile not good()); a null result from a good
/// stream means the nil object was read. Writers report through the stream's state as well.
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
    // Inline, so that destroying a value object (a string, an integer) on the stack costs no
    // call into the library.
    virtual ~RWCollectable() = default;
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
    // earlier in the same operation (refused as malformed when p is given); nil yields null. On
    // malformed data the stream fails and the result is null (a new object that could not be
    // read completely is destroyed; p stays the caller's, possibly half restored).
    static RWCollectable* recursiveRestoreFrom(RWvistream& s, RWCollectable* p = nullptr);
    static RWCollectable* recursiveRestoreFrom(RWFile& f, RWCollectable* p = nullptr);
};

namespace vfc::rw {
/// Writes p as an object (RWCollectable::recursiveSaveOn()), or the nil form when p is null; the
/// stream's state (RWFile::good()) tells whether it worked. p stays the caller's.
VFC_API void saveObject(RWvostream& s, const RWCollectable* p);
/// As above, for an RWFile.
VFC_API void saveObject(RWFile& f, const RWCollectable* p);
/// Reads an object that the caller will own and delete: a new object as read, a reference to an
/// object read earlier in the operation as a copy of it (an owning collection cannot hold one
/// object twice), null for nil or on failure (tell them apart by the stream's state).
VFC_API RWCollectable* restoreOwned(RWvistream& s);
/// As above, for an RWFile.
VFC_API RWCollectable* restoreOwned(RWFile& f);
/// Destroys an object that restoreOwned() returned and the caller refuses (a repeated element of
/// a set, an entry with a nil side). Inside a restore operation the object lives on until the
/// operation ends, since a later reference in the data may name it and then gets a copy; a
/// reader must never delete such an object itself. Null is ignored.
VFC_API void discardRestored(RWvistream& s, RWCollectable* p);
/// As above, for an RWFile.
VFC_API void discardRestored(RWFile& f, RWCollectable* p);
}  // namespace vfc::rw

#endif  // VFC_RW_RWCOLLECTABLE_H
