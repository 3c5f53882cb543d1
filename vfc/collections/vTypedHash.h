#ifndef VFC_COLLECTIONS_VTYPEDHASH_H
#define VFC_COLLECTIONS_VTYPEDHASH_H

#include <cstddef>
#include <cstdio>
#include <memory>
#include <type_traits>

#include "vfc/collections/internal/vpTypedIO.h"
#include "vfc/collections/vHash.h"
#include "vfc/collections/vHashIterator.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"

template <class Self, class K, class V>
class vTypedHashIterator;

/// The typed hash of the collection family: a hash from keys of class K to values of class V, kept
/// in a vHash.
///
/// Self is the member class that derives from the template, so that copy() and newSpecies() make
/// that class; K is the key class, V the value class (RWCollectable itself for hashes that take any
/// collectable value) and Id the member's class identifier, which isA() answers. The members are
/// generated in vTypedFamily.h as
/// \code
/// class vHashvStringvString
///     : public vTypedHash<vHashvStringvString, vString, vString, vClassID::vHashvStringvString>
/// \endcode
/// (not final, so that a class such as vArgList can derive from one), and each has an iterator
/// class named after it with "Iter" appended (vHashvStringvStringIter, derived from
/// vTypedHashIterator).
///
/// The hash keeps a current entry: fLookup sets it, aKey() and aValue() return it, and whatever
/// unlinks or destroys that entry (or only its value) leaves nothing current. With nothing current
/// aKey() and aValue() return a default K and V that the hash keeps for the purpose.
///
/// Ownership, as for vHash: fInsert, fInsertOrReplace and fReplace store copies, and a key keeps
/// the first value given until it is replaced; fInsertReference takes both objects over; fRemove
/// hands key and value to the caller, who then owns them; fDelete, replacing a value,
/// fClearAndDestroy, assignment and the destructor destroy; fClear unlinks without destroying.
/// aKey() and aValue() lend: valid while that entry and value stay in the hash. Copies are deep and
/// independent.
///
/// Failure: fInsert and fInsertReference answer false for a present key, fInsertReference also for
/// a null pointer or a key that is its own value (the caller then keeps both); fLookup, fReplace,
/// fDelete and fRemove answer false for an absent key (fRemove then sets both out pointers to
/// null). The persistent form is that of vHash (the count, then a key object and a value object per
/// entry). Restoring destroys the own entries first, keeps those read completely before a failure,
/// skips entries with a nil side or a repeated key and fails the stream on a key or value of a
/// foreign class; check the stream's state.
template <class Self, class K, class V, RWClassID Id>
class vTypedHash : public RWCollectable {
  public:
    vTypedHash() = default;
    // Deep: copies of every key and value; nothing is current in the copy.
    vTypedHash(const vTypedHash& other);
    // Destroys the own entries and copies the other's; nothing when other is this hash.
    vTypedHash& operator=(const vTypedHash& other);
    ~vTypedHash() override;

    // Stores copies of k and v; false, with nothing stored, when k is present already (so the
    // first value for a key wins).
    bool fInsert(const K& k, const V& v) { return aHash.fInsert(k, v); }
    // Like fInsert, but an existing value is destroyed and replaced by a copy of v.
    bool fInsertOrReplace(const K& k, const V& v);
    // Stores k and v themselves, which the hash then owns; false when k is present or either
    // pointer is null (the caller keeps both).
    bool fInsertReference(K* k, V* v) { return k && v && aHash.fInsertReference(k, v); }
    // Replaces the value of a present key by a copy of v; false when k is absent.
    bool fReplace(const K& k, const V& v);

    // Makes the entry of k current and reports whether there is one; when there is none,
    // nothing is current afterwards.
    bool fLookup(const K& k) const;
    const K& aKey() const { return aCurKey ? *aCurKey : fScratchKey(); }
    V& aValue() { return aCurValue ? *aCurValue : fScratchValue(); }
    const V& aValue() const { return aCurValue ? *aCurValue : fScratchValue(); }

    bool fContains(const K& k) const { return aHash.fContains(k); }
    size_t fEntries() const { return aHash.fEntries(); }
    // Same count and every key maps to an equal value in other.
    bool fIsEqual(const Self& other) const { return aHash.fIsEqual(other.aHash); }
    // Unlinks the entry of k and destroys key and value; false when k is absent.
    bool fDelete(const K& k);
    // Unlinks the entry of k and hands key and value back (both null when k is absent).
    bool fRemove(const K& k, K*& key, V*& value);
    // Unlinks every entry without destroying anything; true.
    bool fClear();
    bool fClearAndDestroy();

    // The paired-string form (hashes from vString to vString or vInt): out becomes, for every
    // entry in iteration order, the key with each line feed written as "\nR\n", then "\nP\n",
    // the value as it stands (an integer in decimal), then "\nE\n". Only the key is escaped.
    template <class U = V>
    bool fHashToPairedString(vString& out) const;
    // The form is written only, never read back: this accepts any text and leaves the hash as
    // it is.
    template <class U = V>
    bool fPairedStringToHash(const vString&) {
        static_assert(fHasPairedForm<U>(), "no paired-string form for this hash");
        return true;
    }

    // The generic hash underneath, for reading.
    const vHash& aVHash() const { return aHash; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return Id; }
    // Consistent with isEqual: equal hashes have equal counts.
    unsigned hash() const override;
    // True for a hash of the same member class that fIsEqual this one.
    bool isEqual(const RWCollectable* p) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

  private:
    template <class, class, class>
    friend class vTypedHashIterator;

    // The paired-string form exists for hashes from vString to vString or to vInt.
    template <class U>
    static constexpr bool fHasPairedForm() {
        return std::is_same_v<U, V> && std::is_same_v<K, vString> &&
               (std::is_same_v<U, vString> || std::is_same_v<U, vInt>);
    }
    void fResetCurrent() const {
        aCurKey = nullptr;
        aCurValue = nullptr;
    }
    // Whether the current entry is the one of key k.
    bool fIsCurrent(const K& k) const { return aCurKey && aCurKey->isEqual(&k); }
    K& fScratchKey() const;
    V& fScratchValue() const;
    static void fAppendValue(vString& out, const vString& v) { out.append(v); }
    static void fAppendValue(vString& out, const vInt& v) {
        char digits[16];
        int n = std::snprintf(digits, sizeof digits, "%d", static_cast<int>(v));
        out.append(digits, static_cast<size_t>(n));
    }
    template <class Stream>
    void fRestore(Stream& s);

    vHash aHash;
    mutable K* aCurKey = nullptr;
    mutable V* aCurValue = nullptr;
    mutable std::unique_ptr<K> aScratchKey;  // made on first need
    mutable std::unique_ptr<V> aScratchValue;
};

/// Walks a typed hash in its iteration order (the order in which the keys were inserted); the
/// iterator class of every hash member (vHashvStringvStringIter, ...) derives from it.
///
/// Loop while fAdvance() is true, reading aKey() and aValue() (or apKey() and apValue()). The
/// iterator borrows the hash, which must outlive it, and lends keys and values the hash still owns.
/// Changing the hash during a walk is not allowed. Outside an entry apKey() and apValue() are null
/// and aKey() and aValue() return the hash's default K and V. fAdvance() and fLookup() answer false
/// at the end, where the iterator stays until fReset().
template <class Self, class K, class V>
class vTypedHashIterator {
  public:
    explicit vTypedHashIterator(const Self& hash) : aOwner(&hash), aIter(hash.aVHash()) {}

    bool fReset() { return aIter.fReset(); }
    bool fAdvance() { return aIter.fAdvance(); }
    // Forward to the next entry whose key equals k; false when there is none.
    bool fLookup(const K& k) { return aIter.fLookup(&k); }
    // The current key and value; null before the first fAdvance and after the end.
    const K* apKey() const { return static_cast<const K*>(aIter.apKey()); }
    V* apValue() const { return static_cast<V*>(aIter.apValue()); }
    const K& aKey() const {
        const K* p = apKey();
        return p ? *p : aOwner->fScratchKey();
    }
    V& aValue() const {
        V* p = apValue();
        return p ? *p : aOwner->fScratchValue();
    }

  private:
    const Self* aOwner;
    vHashIterator aIter;
};

// ---- vTypedHash members --------------------------------------------------------------------

template <class Self, class K, class V, RWClassID Id>
vTypedHash<Self, K, V, Id>::vTypedHash(const vTypedHash& other)
    : RWCollectable(other), aHash(other.aHash) {}

template <class Self, class K, class V, RWClassID Id>
vTypedHash<Self, K, V, Id>& vTypedHash<Self, K, V, Id>::operator=(const vTypedHash& other) {
    if (&other == this) return *this;
    fResetCurrent();
    aHash = other.aHash;
    return *this;
}

template <class Self, class K, class V, RWClassID Id>
vTypedHash<Self, K, V, Id>::~vTypedHash() = default;

template <class Self, class K, class V, RWClassID Id>
K& vTypedHash<Self, K, V, Id>::fScratchKey() const {
    if (!aScratchKey) aScratchKey.reset(new K);
    return *aScratchKey;
}

template <class Self, class K, class V, RWClassID Id>
V& vTypedHash<Self, K, V, Id>::fScratchValue() const {
    if (!aScratchValue) aScratchValue.reset(new V);
    return *aScratchValue;
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fInsertOrReplace(const K& k, const V& v) {
    if (fIsCurrent(k)) {
        // Replacing a value by itself: nothing to do, and v must not be read after the old
        // value is gone.
        if (&v == aCurValue) return true;
        fResetCurrent();
    }
    return aHash.fInsertOrReplace(k, v);
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fReplace(const K& k, const V& v) {
    if (fIsCurrent(k)) {
        if (&v == aCurValue) return true;
        fResetCurrent();
    }
    return aHash.fReplace(k, v);
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fLookup(const K& k) const {
    RWCollectable* key = nullptr;
    RWCollectable* value = nullptr;
    if (!aHash.fFind(k, key, value)) {
        fResetCurrent();
        return false;
    }
    aCurKey = static_cast<K*>(key);
    aCurValue = static_cast<V*>(value);
    return true;
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fDelete(const K& k) {
    // Removed first and destroyed here, so k may even be the stored key itself.
    K* key = nullptr;
    V* value = nullptr;
    if (!fRemove(k, key, value)) return false;
    delete key;
    delete value;
    return true;
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fRemove(const K& k, K*& key, V*& value) {
    RWCollectable* rk = nullptr;
    RWCollectable* rv = nullptr;
    bool found = aHash.fRemove(k, rk, rv);
    if (found && rk == static_cast<RWCollectable*>(aCurKey)) fResetCurrent();
    key = found ? static_cast<K*>(rk) : nullptr;
    value = found ? static_cast<V*>(rv) : nullptr;
    return found;
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fClear() {
    fResetCurrent();
    return aHash.fClear();
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::fClearAndDestroy() {
    fResetCurrent();
    return aHash.fClearAndDestroy();
}

template <class Self, class K, class V, RWClassID Id>
template <class U>
bool vTypedHash<Self, K, V, Id>::fHashToPairedString(vString& out) const {
    static_assert(fHasPairedForm<U>(), "no paired-string form for this hash");
    vString text;
    vHashIterator it(aHash);
    while (it.fAdvance()) {
        const vString& key = *static_cast<const vString*>(it.apKey());
        size_t from = 0;
        size_t lf;
        while ((lf = key.index("\n", 1, from, vString::exact)) != RW_NPOS) {
            text.append(key.data() + from, lf - from);
            text.append("\nR\n", 3);
            from = lf + 1;
        }
        text.append(key.data() + from, key.length() - from);
        text.append("\nP\n", 3);
        fAppendValue(text, *static_cast<const U*>(it.apValue()));
        text.append("\nE\n", 3);
    }
    out = text;
    return true;
}

template <class Self, class K, class V, RWClassID Id>
RWCollectable* vTypedHash<Self, K, V, Id>::newSpecies() const {
    return new Self;
}

template <class Self, class K, class V, RWClassID Id>
RWCollectable* vTypedHash<Self, K, V, Id>::copy() const {
    return new Self(static_cast<const Self&>(*this));
}

template <class Self, class K, class V, RWClassID Id>
unsigned vTypedHash<Self, K, V, Id>::hash() const {
    return static_cast<unsigned>(aHash.fEntries()) ^ Id;
}

template <class Self, class K, class V, RWClassID Id>
bool vTypedHash<Self, K, V, Id>::isEqual(const RWCollectable* p) const {
    const Self* other = dynamic_cast<const Self*>(p);
    return other && fIsEqual(*other);
}

template <class Self, class K, class V, RWClassID Id>
template <class Stream>
void vTypedHash<Self, K, V, Id>::fRestore(Stream& s) {
    fClearAndDestroy();
    vpTypedIO::fRestorePairs<K, V>(
        s, [this](K* key, V* value) { return aHash.fInsertReference(key, value); });
}

template <class Self, class K, class V, RWClassID Id>
void vTypedHash<Self, K, V, Id>::restoreGuts(RWvistream& s) {
    fRestore(s);
}

template <class Self, class K, class V, RWClassID Id>
void vTypedHash<Self, K, V, Id>::restoreGuts(RWFile& f) {
    fRestore(f);
}

template <class Self, class K, class V, RWClassID Id>
void vTypedHash<Self, K, V, Id>::saveGuts(RWvostream& s) const {
    aHash.saveGuts(s);
}

template <class Self, class K, class V, RWClassID Id>
void vTypedHash<Self, K, V, Id>::saveGuts(RWFile& f) const {
    aHash.saveGuts(f);
}

#endif  // VFC_COLLECTIONS_VTYPEDHASH_H
