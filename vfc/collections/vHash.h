#ifndef VFC_COLLECTIONS_VHASH_H
#define VFC_COLLECTIONS_VHASH_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWHashDictionary.h"

/// The library's hash from collectable keys to collectable values, which owns both.
///
/// A key is held at most once (keys compare by isEqual and are placed by hash()); the first value
/// inserted for a key stays until it is replaced explicitly. Iteration order is the order in which
/// the keys were inserted. Walk it with vHashIterator.
///
/// Ownership: fInsert, fInsertOrReplace and fReplace store copies made by copy(); fInsertReference
/// takes key and value over; fRemove hands the stored key and value to the caller, who then owns
/// them; fDelete, replacing a value, fClearAndDestroy, assignment and the destructor destroy. fFind
/// lends the stored objects, valid until their entry is removed or its value replaced. fClear
/// unlinks without destroying. Copies hold copies of every key and value and are independent.
///
/// Failure: operations answer false for an absent key (fFind and fRemove then set their out
/// pointers to null), and fInsert and fInsertReference for a present one; fInsertReference also
/// refuses null pointers and a key that is its own value, and the caller then keeps both. Restoring
/// first destroys the own entries, keeps the entries read completely before a failure and drops
/// entries with a nil side or a repeated key; check the stream's state.
class VFC_API vHash : public RWHashDictionary {
  public:
    vHash() = default;
    // Copies of all of other's keys and values, in other's order.
    vHash(const vHash& other);
    // Destroys the own keys and values, then copies other's; nothing when other is this hash.
    vHash& operator=(const vHash& other);
    // Destroys every key and value.
    ~vHash() override;

    // Stores copies of key and value; false, with nothing stored, when key is present.
    bool fInsert(const RWCollectable& key, const RWCollectable& value);
    // Stores key and value themselves, which the hash now owns; false when key is present, when
    // either is null or when they are the same object (the caller then keeps both).
    bool fInsertReference(RWCollectable* key, RWCollectable* value);
    // Stores copies of key and value; when key is present, its value is destroyed and replaced by
    // a copy of value, and the stored key stays. True.
    bool fInsertOrReplace(const RWCollectable& key, const RWCollectable& value);
    // When key is present, destroys its value and stores a copy of value; otherwise false.
    bool fReplace(const RWCollectable& key, const RWCollectable& value);
    // Finds key: sets storedKey and value to the stored objects (still owned by the hash); false
    // with both null when key is absent.
    bool fFind(const RWCollectable& key, RWCollectable*& storedKey, RWCollectable*& value) const;
    bool fContains(const RWCollectable& key) const;
    size_t fEntries() const { return entries(); }
    // Unlinks and destroys key's entry, key and value; false when key is absent.
    bool fDelete(const RWCollectable& key);
    // Unlinks key's entry and hands the stored key and value to the caller, who then owns them;
    // false with both null when key is absent.
    bool fRemove(const RWCollectable& key, RWCollectable*& k, RWCollectable*& v);
    // Unlinks every entry without destroying anything; true.
    bool fClear();
    // Destroys every key and value; true.
    bool fClearAndDestroy();
    // Same number of entries, and every key maps to an isEqual value in other.
    bool fIsEqual(const vHash& other) const;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Independent of the order of the entries, so equal hashes hash alike.
    unsigned hash() const override;
    // fIsEqual when other is a vHash of the same class; false otherwise.
    bool isEqual(const RWCollectable* other) const override;
    // The number of entries, then each key and its value as objects. Restoring first destroys
    // the own entries; it stops at the first failure of the stream, keeping the entries read
    // completely, and drops entries with a nil key or value or a repeated key.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // Destroys the value of the entry at position i and stores a copy of value there.
    void replaceValue(size_t i, const RWCollectable& value);
    template <class Out>
    void saveEntries(Out& out) const;
    template <class In>
    void restoreEntries(In& in);
};

#endif  // VFC_COLLECTIONS_VHASH_H
