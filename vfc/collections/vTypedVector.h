#ifndef VFC_COLLECTIONS_VTYPEDVECTOR_H
#define VFC_COLLECTIONS_VTYPEDVECTOR_H

#include <cstddef>
#include <memory>

#include "vfc/collections/internal/vpTypedIO.h"
#include "vfc/collections/vVector.h"
#include "vfc/core/vInt.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWCollectable.h"

template <class Self, class T>
class vTypedVectorIterator;

/// The typed vector of the collection family: a vector of elements of class T (or of classes
/// derived from T), kept in a vVector.
///
/// Self is the member class that derives from the template, so that copy() and newSpecies() make
/// that class; T is the element class and Id the member's class identifier, which isA() answers.
/// Positions are zero-based vInts; a negative position is out of range. The members are generated
/// in vTypedFamily.h as
/// \code
/// class vVectorvString final
///     : public vTypedVector<vVectorvString, vString, vClassID::vVectorvString>
/// \endcode
/// and each has an iterator class named after it with "Iter" appended (vVectorvStringIter, derived
/// from vTypedVectorIterator).
///
/// Ownership, as for vVector: fInsert and fInsertAt store a copy; fInsertReference takes the object
/// over; fRemove, fRemoveAt and fRemoveReference hand an element to the caller, who then owns it;
/// fDelete, fDeleteAt, fClearAndDestroy, assignment and the destructor destroy; fClear unlinks
/// without destroying. fAt lends an element the vector still owns. Copies are deep and independent.
///
/// Failure: operations answer false, or null, for a missing element, a null pointer or a position
/// out of range; fIndex then sets i to 0 and fRemove and fRemoveAt set out to null. The persistent
/// form is that of vVector (the count, then every element as an object). Restoring destroys the own
/// elements first, keeps those read completely before a failure, skips nil elements and fails the
/// stream on an element of a foreign class; check the stream's state.
template <class Self, class T, RWClassID Id>
class vTypedVector : public RWCollectable {
  public:
    vTypedVector() = default;
    // Deep: copies of the other's elements, in order.
    vTypedVector(const vTypedVector& other) : RWCollectable(other), aVector(other.aVector) {}
    // Destroys the own elements and copies the other's; nothing when other is this vector.
    vTypedVector& operator=(const vTypedVector& other);
    ~vTypedVector() override;

    // Appends a copy of x; true.
    bool fInsert(const T& x) { return aVector.fInsert(x); }
    // Inserts a copy of x at position i (0 <= i <= entries); otherwise false.
    bool fInsertAt(const vInt& i, const T& x) { return aVector.fInsertAt(fPosition(i), x); }
    // Appends p itself, which the vector then owns; false (nothing stored) for null.
    bool fInsertReference(T* p) { return p && aVector.fInsertReference(p); }

    // The element at i, still owned by the vector; null when i is out of range.
    T* fAt(const vInt& i) const { return fCast(aVector.fAt(fPosition(i))); }
    bool fContains(const T& x) const { return aVector.fContains(x); }
    bool fContainsReference(const T* p) const { return aVector.fContainsReference(p); }
    // Position of the first element equal to x; false (and i 0) when there is none.
    bool fIndex(const T& x, vInt& i) const;
    size_t fEntries() const { return aVector.fEntries(); }
    // Same count and pairwise equal elements in order.
    bool fIsEqual(const Self& other) const { return aVector.fIsEqual(other.aVector); }

    // Unlink and destroy the first element equal to x, or the one at i.
    bool fDelete(const T& x) { return aVector.fDelete(x); }
    bool fDeleteAt(const vInt& i) { return aVector.fDeleteAt(fPosition(i)); }
    // Unlink and hand back; out is null when there is no such element.
    bool fRemove(const T& x, T*& out);
    bool fRemoveAt(const vInt& i, T*& out);
    bool fRemoveReference(const T* p) { return p && aVector.fRemoveReference(p); }
    // Unlinks every element without destroying it (they are then owned elsewhere); true.
    bool fClear() { return aVector.fClear(); }
    bool fClearAndDestroy() { return aVector.fClearAndDestroy(); }

    // The generic vector underneath, for reading.
    const vVector& aVVector() const { return aVector; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return Id; }
    // Consistent with isEqual: equal vectors have equal counts.
    unsigned hash() const override;
    // True for a vector of the same member class that fIsEqual this one.
    bool isEqual(const RWCollectable* p) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

  private:
    template <class, class>
    friend class vTypedVectorIterator;

    static T* fCast(RWCollectable* p) { return static_cast<T*>(p); }
    // A default T for iterators that are not on an element; made on first need.
    T& fScratch() const {
        if (!aScratch) aScratch.reset(new T);
        return *aScratch;
    }
    // A negative position becomes a huge one, which every range check refuses.
    static size_t fPosition(const vInt& i) { return static_cast<unsigned>(static_cast<int>(i)); }
    template <class Stream>
    void fSave(Stream& s) const;
    template <class Stream>
    void fRestore(Stream& s);

    vVector aVector;
    mutable std::unique_ptr<T> aScratch;
};

/// Walks a typed vector by position, from 0 up; the iterator class of every vector member
/// (vVectorvStringIter, ...) derives from it.
///
/// Loop while fAdvance() is true, reading aKey() or apKey(). The iterator borrows the vector, which
/// must outlive it, and lends elements the vector still owns. Changing the vector during a walk is
/// not allowed. Before the first fAdvance() and after the end apKey() is null and aKey() returns
/// the vector's default T. fAdvance() and the lookups answer false at the end, where the iterator
/// stays until fReset().
template <class Self, class T>
class vTypedVectorIterator {
  public:
    explicit vTypedVectorIterator(const Self& vector)
        : aOwner(&vector), aVector(&vector.aVVector()) {}

    bool fReset() {
        aPosition = RW_NPOS;
        return true;
    }
    // To the next element; false at the end, where the iterator then stays.
    bool fAdvance() {
        size_t n = aVector->fEntries();
        if (aPosition == RW_NPOS)
            aPosition = 0;
        else if (aPosition < n)
            ++aPosition;
        return aPosition < n;
    }
    // Forward to the next element equal to x (that is p itself); false when there is none.
    bool fLookup(const T& x) {
        while (fAdvance())
            if (apKey()->isEqual(&x)) return true;
        return false;
    }
    bool fLookupReference(const T* p) {
        while (fAdvance())
            if (apKey() == p) return true;
        return false;
    }
    // The current element; null before the first fAdvance and after the end.
    T* apKey() const {
        return aPosition == RW_NPOS ? nullptr : static_cast<T*>(aVector->fAt(aPosition));
    }
    T& aKey() const {
        T* p = apKey();
        return p ? *p : aOwner->fScratch();
    }

  private:
    const Self* aOwner;
    const vVector* aVector;
    size_t aPosition = RW_NPOS;  // RW_NPOS: before the first element
};

// ---- vTypedVector members ------------------------------------------------------------------

template <class Self, class T, RWClassID Id>
vTypedVector<Self, T, Id>& vTypedVector<Self, T, Id>::operator=(const vTypedVector& other) {
    if (&other != this) aVector = other.aVector;
    return *this;
}

template <class Self, class T, RWClassID Id>
vTypedVector<Self, T, Id>::~vTypedVector() = default;

template <class Self, class T, RWClassID Id>
bool vTypedVector<Self, T, Id>::fIndex(const T& x, vInt& i) const {
    size_t at = 0;
    bool found = aVector.fIndex(x, at);
    i = static_cast<int>(at);
    return found;
}

template <class Self, class T, RWClassID Id>
bool vTypedVector<Self, T, Id>::fRemove(const T& x, T*& out) {
    RWCollectable* p = nullptr;
    bool found = aVector.fRemove(x, p);
    out = found ? fCast(p) : nullptr;
    return found;
}

template <class Self, class T, RWClassID Id>
bool vTypedVector<Self, T, Id>::fRemoveAt(const vInt& i, T*& out) {
    RWCollectable* p = nullptr;
    bool found = aVector.fRemoveAt(fPosition(i), p);
    out = found ? fCast(p) : nullptr;
    return found;
}

template <class Self, class T, RWClassID Id>
RWCollectable* vTypedVector<Self, T, Id>::newSpecies() const {
    return new Self;
}

template <class Self, class T, RWClassID Id>
RWCollectable* vTypedVector<Self, T, Id>::copy() const {
    return new Self(static_cast<const Self&>(*this));
}

template <class Self, class T, RWClassID Id>
unsigned vTypedVector<Self, T, Id>::hash() const {
    return static_cast<unsigned>(aVector.fEntries()) ^ Id;
}

template <class Self, class T, RWClassID Id>
bool vTypedVector<Self, T, Id>::isEqual(const RWCollectable* p) const {
    const Self* other = dynamic_cast<const Self*>(p);
    return other && fIsEqual(*other);
}

template <class Self, class T, RWClassID Id>
template <class Stream>
void vTypedVector<Self, T, Id>::fSave(Stream& s) const {
    size_t n = aVector.fEntries();
    vpTypedIO::fWriteCount(s, n);
    for (size_t i = 0; i < n; ++i)
        vfc::rw::saveObject(s, aVector.fAt(i));
}

template <class Self, class T, RWClassID Id>
template <class Stream>
void vTypedVector<Self, T, Id>::fRestore(Stream& s) {
    aVector.fClearAndDestroy();
    vpTypedIO::fRestoreElements<T>(s, [this](T* p) { return aVector.fInsertReference(p); });
}

template <class Self, class T, RWClassID Id>
void vTypedVector<Self, T, Id>::restoreGuts(RWvistream& s) {
    fRestore(s);
}

template <class Self, class T, RWClassID Id>
void vTypedVector<Self, T, Id>::restoreGuts(RWFile& f) {
    fRestore(f);
}

template <class Self, class T, RWClassID Id>
void vTypedVector<Self, T, Id>::saveGuts(RWvostream& s) const {
    fSave(s);
}

template <class Self, class T, RWClassID Id>
void vTypedVector<Self, T, Id>::saveGuts(RWFile& f) const {
    fSave(f);
}

#endif  // VFC_COLLECTIONS_VTYPEDVECTOR_H
