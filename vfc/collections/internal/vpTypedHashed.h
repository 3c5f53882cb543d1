// vpTypedHashed: the implementation shared by the typed set (over vSet) and the typed table (over
// vTable), whose generic collections have the same interface and differ only in whether equal
// elements may be held twice. See vTypedSet.h and vTypedTable.h, which name it per kind.
//
// Elements are handed out as const: changing an element in place would change its hash value
// behind the collection's back.
#ifndef VFC_COLLECTIONS_INTERNAL_VPTYPEDHASHED_H
#define VFC_COLLECTIONS_INTERNAL_VPTYPEDHASHED_H

#include <cstddef>
#include <memory>

#include "vfc/collections/internal/vpTypedIO.h"
#include "vfc/rw/RWCollectable.h"

template <class Self, class T, class CollIter>
class vpTypedHashedIterator;

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
class vpTypedHashed : public RWCollectable {
  public:
    vpTypedHashed() = default;
    // Deep: copies of the other's elements.
    vpTypedHashed(const vpTypedHashed& other) : RWCollectable(other), aColl(other.aColl) {}
    // Destroys the own elements and copies the other's; nothing when other is this collection.
    vpTypedHashed& operator=(const vpTypedHashed& other);
    ~vpTypedHashed() override;

    // Stores a copy of x. A set refuses (false, nothing stored) when an equal element is
    // present; a table always stores.
    bool fInsert(const T& x) { return aColl.fInsert(x); }
    // Stores p itself, which the collection then owns; false for null, and in a set when an
    // equal element is present (the caller then keeps p).
    bool fInsertReference(T* p) { return p && aColl.fInsertReference(p); }
    bool fContains(const T& x) const { return aColl.fContains(x); }
    // The (first) element equal to x, still owned by the collection; null when there is none.
    const T* fFind(const T& x) const { return static_cast<const T*>(aColl.fFind(x)); }
    size_t fEntries() const { return aColl.fEntries(); }
    // The same elements (as many times each, for a table), in any order.
    bool fIsEqual(const Self& other) const { return aColl.fIsEqual(other.aColl); }

    // Unlink and destroy (the first) element equal to x; false when there is none.
    bool fDelete(const T& x) { return aColl.fDelete(x); }
    // Unlink and hand back; out is null when there is none.
    bool fRemove(const T& x, T*& out);
    // Unlinks every element without destroying it (they are then owned elsewhere); true.
    bool fClear() { return aColl.fClear(); }
    bool fClearAndDestroy() { return aColl.fClearAndDestroy(); }

    // Union (adds copies of other's elements that are missing) and intersection (destroys the
    // elements that other does not contain); both do nothing when other is this collection.
    bool fOrEquals(const Self& other);
    bool fAndEquals(const Self& other);

    // The generic collection underneath, for reading.
    const Coll& aCollection() const { return aColl; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return Id; }
    // Consistent with isEqual: equal collections have equal counts.
    unsigned hash() const override;
    // True for a collection of the same member class that fIsEqual this one.
    bool isEqual(const RWCollectable* p) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

  private:
    template <class, class, class>
    friend class vpTypedHashedIterator;

    // A default T for iterators that are not on an element; made on first need.
    const T& fScratch() const {
        if (!aScratch) aScratch.reset(new T);
        return *aScratch;
    }
    template <class Stream>
    void fSave(Stream& s) const;
    template <class Stream>
    void fRestore(Stream& s);

    Coll aColl;
    mutable std::unique_ptr<T> aScratch;
};

// Walks a typed set or table in its iteration order: loop while fAdvance() is true, reading
// aKey(). Changing the collection during a walk is not allowed. aKey() outside an element
// returns the collection's default T.
template <class Self, class T, class CollIter>
class vpTypedHashedIterator {
  public:
    explicit vpTypedHashedIterator(const Self& c) : aOwner(&c), aIter(c.aCollection()) {}

    bool fReset() { return aIter.fReset(); }
    bool fAdvance() { return aIter.fAdvance(); }
    // Forward to the next element equal to x; false when there is none.
    bool fLookup(const T& x) { return aIter.fLookup(&x); }
    // The current element; null before the first fAdvance and after the end.
    const T* apKey() const { return static_cast<const T*>(aIter.apKey()); }
    const T& aKey() const {
        const T* p = apKey();
        return p ? *p : aOwner->fScratch();
    }

  private:
    const Self* aOwner;
    CollIter aIter;
};

// ---- vpTypedHashed members -----------------------------------------------------------------

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
vpTypedHashed<Self, T, Id, Coll, CollIter>& vpTypedHashed<Self, T, Id, Coll, CollIter>::operator=(
    const vpTypedHashed& other) {
    if (&other != this) aColl = other.aColl;
    return *this;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
vpTypedHashed<Self, T, Id, Coll, CollIter>::~vpTypedHashed() = default;

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
bool vpTypedHashed<Self, T, Id, Coll, CollIter>::fRemove(const T& x, T*& out) {
    RWCollectable* p = nullptr;
    bool found = aColl.fRemove(x, p);
    out = found ? static_cast<T*>(p) : nullptr;
    return found;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
bool vpTypedHashed<Self, T, Id, Coll, CollIter>::fOrEquals(const Self& other) {
    if (&other.aColl != &aColl) aColl.fOrEquals(other.aColl);
    return true;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
bool vpTypedHashed<Self, T, Id, Coll, CollIter>::fAndEquals(const Self& other) {
    if (&other.aColl != &aColl) aColl.fAndEquals(other.aColl);
    return true;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
RWCollectable* vpTypedHashed<Self, T, Id, Coll, CollIter>::newSpecies() const {
    return new Self;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
RWCollectable* vpTypedHashed<Self, T, Id, Coll, CollIter>::copy() const {
    return new Self(static_cast<const Self&>(*this));
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
unsigned vpTypedHashed<Self, T, Id, Coll, CollIter>::hash() const {
    return static_cast<unsigned>(aColl.fEntries()) ^ Id;
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
bool vpTypedHashed<Self, T, Id, Coll, CollIter>::isEqual(const RWCollectable* p) const {
    const Self* other = dynamic_cast<const Self*>(p);
    return other && fIsEqual(*other);
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
template <class Stream>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::fSave(Stream& s) const {
    vpTypedIO::fWriteCount(s, aColl.fEntries());
    CollIter it(aColl);
    while (it.fAdvance())
        vfc::rw::saveObject(s, it.apKey());
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
template <class Stream>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::fRestore(Stream& s) {
    aColl.fClearAndDestroy();
    // A set refuses a repeated element; it is then destroyed.
    vpTypedIO::fRestoreElements<T>(s, [this](T* p) { return aColl.fInsertReference(p); });
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::restoreGuts(RWvistream& s) {
    fRestore(s);
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::restoreGuts(RWFile& f) {
    fRestore(f);
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::saveGuts(RWvostream& s) const {
    fSave(s);
}

template <class Self, class T, RWClassID Id, class Coll, class CollIter>
void vpTypedHashed<Self, T, Id, Coll, CollIter>::saveGuts(RWFile& f) const {
    fSave(f);
}

#endif  // VFC_COLLECTIONS_INTERNAL_VPTYPEDHASHED_H
