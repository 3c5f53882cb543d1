#ifndef VFC_RW_RWHASHDICTIONARY_H
#define VFC_RW_RWHASHDICTIONARY_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWSet.h"

/// A hash table of associations of a key with a value, both collectable pointers, with at most one
/// association per key (keys are compared by isEqual()).
///
/// Keys may not be null; values may. As a collection its elements are the keys: insert(key) adds
/// key with a null value, and find() and remove() work on keys and answer the stored key (remove()
/// does not give the value back: use removeKeyAndValue() for that). Iterate with
/// RWHashDictionaryIterator; see RWHashTable for the iteration order.
///
/// Ownership: the dictionary owns neither keys nor values. Destroying it or clear() leaves them
/// alone; removeKeyAndValue() and findValue(target, newValue) hand pointers back to the caller;
/// removeAndDestroy() and clearAndDestroy() delete key and value (once, when the value is its own
/// key). A key must not change its hash() while it is stored.
///
/// Failure: lookups answer null when the key is absent; insertKeyAndValue() answers null, adding
/// nothing, when key is null or an equal key is present.
class VFC_API RWHashDictionary : public RWSet {
  public:
    explicit RWHashDictionary(size_t n = 0) : RWSet(n) {}
    ~RWHashDictionary() override;

    // Adds key (not null) with value; returns key, or null (adding nothing) when an equal key is
    // present.
    RWCollectable* insertKeyAndValue(RWCollectable* key, RWCollectable* value);
    // The stored key equal to target, with its value in value; null (and value null) when absent.
    RWCollectable* findKeyAndValue(const RWCollectable* target, RWCollectable*& value) const;
    // The value stored under target; null when absent (or when the stored value is null).
    RWCollectable* findValue(const RWCollectable* target) const;
    // Stores newValue under target and returns the value it replaces; when target is absent
    // nothing is stored and the result is null.
    RWCollectable* findValue(const RWCollectable* target, RWCollectable* newValue);
    // Unlinks the association of target: returns its key and puts its value into value; null
    // (and value null) when absent. Nothing is destroyed.
    RWCollectable* removeKeyAndValue(const RWCollectable* target, RWCollectable*& value);

    // insert(key) is insertKeyAndValue(key, nullptr).
    RWCollectable* insert(RWCollectable* key) override;
    // Unlinks the association of target and destroys its key and value.
    void removeAndDestroy(const RWCollectable* target) override;

  protected:
    RWHashDictionary(const RWHashDictionary& other) = default;
    RWHashDictionary& operator=(const RWHashDictionary& other) = default;
    // Position of the association of target, or kNone.
    size_t findAssociation(const RWCollectable* target) const;
};

#endif  // VFC_RW_RWHASHDICTIONARY_H
