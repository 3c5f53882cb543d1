#ifndef VFC_COLLECTIONS_VTYPEDLIST_H
#define VFC_COLLECTIONS_VTYPEDLIST_H

#include <cstddef>
#include <memory>
#include <type_traits>

#include "vfc/collections/internal/vpTypedIO.h"
#include "vfc/collections/vSlist.h"
#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/text/vSeRe.h"
#include "vfc/text/vTemplates.h"

template <class Self, class T>
class vTypedListIterator;

/// The typed list of the collection family: a list of elements of class T (or of classes derived
/// from T), kept in a vSlist.
///
/// Self is the member class that derives from the template, so that copy() and newSpecies() make
/// that class; T is the element class and Id the member's class identifier, which isA() answers.
/// The members (vSlistvString, vSlistvInt, ...) are generated in vTypedFamily.h as
/// \code
/// class vSlistvString final : public vTypedList<vSlistvString, vString, vClassID::vSlistvString>
/// \endcode
/// and each has an iterator class named after it with "Iter" appended (vSlistvStringIter, derived
/// from vTypedListIterator).
///
/// The list keeps a current element: fAt, fFirst, fLast, fLookup and fLookupReference set it,
/// aKey() returns it, and whatever unlinks or destroys that element leaves nothing current. With
/// nothing current aKey() returns a default T that the list keeps for the purpose, never an element
/// of another list or freed memory.
///
/// Ownership, as for vSlist: fInsert and fInsertAt store a copy; fInsertReference takes the object
/// over; fRemove... and fRemoveReference hand an element to the caller, who then owns it;
/// fDelete..., fDestroyFrom, fAndEquals, fClearAndDestroy, assignment and the destructor destroy;
/// fClear unlinks without destroying. aKey() lends: its reference stays valid while that element
/// stays in the list (the default T, while the list lives). Copies are deep and independent.
///
/// Failure: operations answer false for a missing element, a null pointer or a position out of
/// range (negative ones included); positioning then leaves nothing current. The persistent form is
/// that of vSlist (the count, then every element as an object). Restoring destroys the own elements
/// first, keeps those read completely before a failure, skips nil elements and fails the stream on
/// an element of a foreign class; check the stream's state.
template <class Self, class T, RWClassID Id>
class vTypedList : public RWCollectable {
  public:
    vTypedList() = default;
    // Deep: copies of the other's elements, in order; nothing is current in the copy.
    vTypedList(const vTypedList& other);
    // Destroys the own elements and copies the other's; nothing when other is this list.
    vTypedList& operator=(const vTypedList& other);
    ~vTypedList() override;

    // Positioning. Each makes the element found current and reports whether there was one;
    // when there is none, nothing is current afterwards.
    bool fAt(const vInt& i) const;
    bool fFirst() const;
    bool fLast() const;
    bool fLookup(const T& x) const;  // the first element equal to x
    bool fLookupReference(const T* p) const;
    // The current element (see above for the case that nothing is current).
    T& aKey() { return aCurrent ? *aCurrent : fScratch(); }
    const T& aKey() const { return aCurrent ? *aCurrent : fScratch(); }

    // Appends a copy of x; true.
    bool fInsert(const T& x) { return aList.fInsert(x); }
    // Inserts a copy of x at position i (0 <= i <= entries); otherwise false.
    bool fInsertAt(const vInt& i, const T& x) { return aList.fInsertAt(i, x); }
    // Appends p itself, which the list then owns; false (nothing stored) for null.
    bool fInsertReference(T* p) { return p && aList.fInsertReference(p); }

    bool fContains(const T& x) const { return aList.fContains(x); }
    bool fContainsReference(const T* p) const { return aList.fContainsReference(p); }
    // Position of the first element equal to x; false (and i 0) when there is none.
    bool fIndex(const T& x, vInt& i) const { return aList.fIndex(x, i); }
    size_t fEntries() const { return aList.fEntries(); }
    // Same count and pairwise equal elements in order.
    bool fIsEqual(const Self& other) const { return aList.fIsEqual(other.aList); }

    // Unlink and destroy: the first element equal to x, the one at i, the first, the last.
    bool fDelete(const T& x);
    bool fDeleteAt(const vInt& i);
    bool fDeleteFirst();
    bool fDeleteLast();
    // Unlink and hand back; out is null after a failed fRemove or fRemoveAt and untouched after
    // a failed fRemoveFirst or fRemoveLast.
    bool fRemove(const T& x, T*& out);
    bool fRemoveAt(const vInt& i, T*& out);
    bool fRemoveFirst(T*& out);
    bool fRemoveLast(T*& out);
    bool fRemoveReference(const T* p);
    // Unlinks every element without destroying it (they are then owned elsewhere); true.
    bool fClear();
    bool fClearAndDestroy();
    // Destroys the elements from position n on, in one pass; nothing is current afterwards.
    void fDestroyFrom(size_t n) {
        aCurrent = nullptr;
        aList.destroyFrom(n);
    }

    // Intersection and union with the list operators' semantics: fAndEquals destroys the
    // elements that other does not contain, fOrEquals appends copies of other's elements that
    // this list lacks; both do nothing when other is this list.
    bool fAndEquals(const Self& other);
    bool fOrEquals(const Self& other);

    // Text form, for lists of vString. fConstruct destroys the elements, then appends one
    // element per maximal run of characters other than CR and LF, so empty lines vanish.
    // fTranslate replaces out with every element followed by vString::EOL(), in order.
    template <class U = T>
    bool fConstruct(const vString& text);
    template <class U = T>
    bool fTranslate(vString& out) const;

    // The generic list underneath, for reading.
    const vSlist& aSlist() const { return aList; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return Id; }
    // Consistent with isEqual: equal lists have equal counts.
    unsigned hash() const override;
    // True for a list of the same member class that fIsEqual this one.
    bool isEqual(const RWCollectable* p) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

  private:
    template <class, class>
    friend class vTypedListIterator;

    static T* fCast(RWCollectable* p) { return static_cast<T*>(p); }
    // Makes p (found in the list, or null) current; true when it is an element.
    bool fSetCurrent(RWCollectable* p) const {
        aCurrent = fCast(p);
        return p != nullptr;
    }
    // Called with every element that leaves the list.
    void fForget(const RWCollectable* p) {
        if (p && p == static_cast<const RWCollectable*>(aCurrent)) aCurrent = nullptr;
    }
    T& fScratch() const;
    template <class Stream>
    void fSave(Stream& s) const;
    template <class Stream>
    void fRestore(Stream& s);

    vSlist aList;
    mutable T* aCurrent = nullptr;
    mutable std::unique_ptr<T> aScratch;  // made on first need
};

/// Walks a typed list from its first element to its last; the iterator class of every list member
/// (vSlistvStringIter, ...) derives from it.
///
/// Loop while fAdvance() is true, reading aKey() or apKey(). The iterator borrows the list, which
/// must outlive it, and lends elements the list still owns. Changing the list during a walk is not
/// allowed. Before the first fAdvance() and after the end apKey() is null and aKey() returns the
/// list's default T. fAdvance() and the lookups answer false at the end, where the iterator stays
/// until fReset().
template <class Self, class T>
class vTypedListIterator {
  public:
    explicit vTypedListIterator(const Self& list) : aOwner(&list), aIter(list.aSlist()) {}

    bool fReset() { return aIter.fReset(); }
    bool fAdvance() { return aIter.fAdvance(); }
    // Forward to the next element equal to x (that is p itself); false when there is none.
    bool fLookup(const T& x) { return aIter.fLookup(&x); }
    bool fLookupReference(const T* p) { return aIter.fLookupReference(p); }
    bool fAtFirst() const { return aIter.fAtFirst(); }
    bool fAtLast() const { return aIter.fAtLast(); }
    // The current element; null before the first fAdvance and after the end.
    T* apKey() const { return static_cast<T*>(const_cast<RWCollectable*>(aIter.apKey())); }
    T& aKey() const {
        T* p = apKey();
        return p ? *p : aOwner->fScratch();
    }

  private:
    const Self* aOwner;
    vSlistIterator aIter;
};

// ---- vTypedList members --------------------------------------------------------------------

template <class Self, class T, RWClassID Id>
vTypedList<Self, T, Id>::vTypedList(const vTypedList& other)
    : RWCollectable(other), aList(other.aList) {}

template <class Self, class T, RWClassID Id>
vTypedList<Self, T, Id>& vTypedList<Self, T, Id>::operator=(const vTypedList& other) {
    if (&other == this) return *this;
    aCurrent = nullptr;
    aList = other.aList;
    return *this;
}

template <class Self, class T, RWClassID Id>
vTypedList<Self, T, Id>::~vTypedList() = default;

template <class Self, class T, RWClassID Id>
T& vTypedList<Self, T, Id>::fScratch() const {
    if (!aScratch) aScratch.reset(new T);
    return *aScratch;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fAt(const vInt& i) const {
    unsigned at = static_cast<unsigned>(static_cast<int>(i));
    return fSetCurrent(at < aList.fEntries() ? aList.at(at) : nullptr);
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fFirst() const {
    return fSetCurrent(aList.first());
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fLast() const {
    return fSetCurrent(aList.last());
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fLookup(const T& x) const {
    return fSetCurrent(aList.find(&x));
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fLookupReference(const T* p) const {
    return fSetCurrent(p && aList.fContainsReference(p) ? const_cast<T*>(p) : nullptr);
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fDelete(const T& x) {
    RWCollectable* p = nullptr;
    if (!aList.fRemove(x, p)) return false;
    fForget(p);
    delete p;
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fDeleteAt(const vInt& i) {
    RWCollectable* p = nullptr;
    if (!aList.fRemoveAt(i, p)) return false;
    fForget(p);
    delete p;
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fDeleteFirst() {
    RWCollectable* p = nullptr;
    if (!aList.fRemoveFirst(p)) return false;
    fForget(p);
    delete p;
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fDeleteLast() {
    RWCollectable* p = nullptr;
    if (!aList.fRemoveLast(p)) return false;
    fForget(p);
    delete p;
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fRemove(const T& x, T*& out) {
    RWCollectable* p = nullptr;
    bool found = aList.fRemove(x, p);
    fForget(p);
    out = fCast(p);
    return found;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fRemoveAt(const vInt& i, T*& out) {
    RWCollectable* p = nullptr;
    bool found = aList.fRemoveAt(i, p);
    fForget(p);
    out = fCast(p);
    return found;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fRemoveFirst(T*& out) {
    RWCollectable* p = nullptr;
    if (!aList.fRemoveFirst(p)) return false;
    fForget(p);
    out = fCast(p);
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fRemoveLast(T*& out) {
    RWCollectable* p = nullptr;
    if (!aList.fRemoveLast(p)) return false;
    fForget(p);
    out = fCast(p);
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fRemoveReference(const T* p) {
    if (!p || !aList.fRemoveReference(p)) return false;
    fForget(p);
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fClear() {
    aCurrent = nullptr;
    return aList.fClear();
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fClearAndDestroy() {
    aCurrent = nullptr;
    return aList.fClearAndDestroy();
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fAndEquals(const Self& other) {
    if (&other.aList == &aList) return true;
    // The current element survives exactly when other contains an element equal to it.
    if (aCurrent && !other.aList.fContains(*aCurrent)) aCurrent = nullptr;
    aList &= other.aList;
    return true;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::fOrEquals(const Self& other) {
    aList |= other.aList;
    return true;
}

template <class Self, class T, RWClassID Id>
template <class U>
bool vTypedList<Self, T, Id>::fConstruct(const vString& text) {
    static_assert(std::is_same_v<U, T> && std::is_same_v<T, vString>, "a list of vString only");
    // A copy shares the bytes; it keeps the text alive should it be one of our own elements.
    const vString source(text);
    if (aList.fEntries() != 0) fClearAndDestroy();
    vSeRe cursor(source);
    while (cursor.fFind(vNotEolTemplate())) {
        aList.fInsertReference(new vString(cursor.fSubString()));
        cursor.fAdvance();
    }
    return true;
}

template <class Self, class T, RWClassID Id>
template <class U>
bool vTypedList<Self, T, Id>::fTranslate(vString& out) const {
    static_assert(std::is_same_v<U, T> && std::is_same_v<T, vString>, "a list of vString only");
    const vString& eol = vString::EOL();
    vString text;
    vSlistIterator it(aList);
    while (it.fAdvance()) {
        text.append(*static_cast<const vString*>(it.apKey()));
        text.append(eol);
    }
    out = text;
    return true;
}

template <class Self, class T, RWClassID Id>
RWCollectable* vTypedList<Self, T, Id>::newSpecies() const {
    return new Self;
}

template <class Self, class T, RWClassID Id>
RWCollectable* vTypedList<Self, T, Id>::copy() const {
    return new Self(static_cast<const Self&>(*this));
}

template <class Self, class T, RWClassID Id>
unsigned vTypedList<Self, T, Id>::hash() const {
    return static_cast<unsigned>(aList.fEntries()) ^ Id;
}

template <class Self, class T, RWClassID Id>
bool vTypedList<Self, T, Id>::isEqual(const RWCollectable* p) const {
    const Self* other = dynamic_cast<const Self*>(p);
    return other && fIsEqual(*other);
}

template <class Self, class T, RWClassID Id>
template <class Stream>
void vTypedList<Self, T, Id>::fSave(Stream& s) const {
    vpTypedIO::fWriteCount(s, aList.fEntries());
    vSlistIterator it(aList);
    while (it.fAdvance())
        vfc::rw::saveObject(s, it.apKey());
}

template <class Self, class T, RWClassID Id>
template <class Stream>
void vTypedList<Self, T, Id>::fRestore(Stream& s) {
    fClearAndDestroy();
    vpTypedIO::fRestoreElements<T>(s, [this](T* p) { return aList.fInsertReference(p); });
}

template <class Self, class T, RWClassID Id>
void vTypedList<Self, T, Id>::restoreGuts(RWvistream& s) {
    fRestore(s);
}

template <class Self, class T, RWClassID Id>
void vTypedList<Self, T, Id>::restoreGuts(RWFile& f) {
    fRestore(f);
}

template <class Self, class T, RWClassID Id>
void vTypedList<Self, T, Id>::saveGuts(RWvostream& s) const {
    fSave(s);
}

template <class Self, class T, RWClassID Id>
void vTypedList<Self, T, Id>::saveGuts(RWFile& f) const {
    fSave(f);
}

#endif  // VFC_COLLECTIONS_VTYPEDLIST_H
