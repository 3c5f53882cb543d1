#ifndef VFC_COLLECTIONS_VHASHITERATOR_H
#define VFC_COLLECTIONS_VHASHITERATOR_H

#include "vfc/base/export.h"
#include "vfc/collections/vHash.h"
#include "vfc/rw/RWHashDictionaryIterator.h"

/// Walks a vHash in its iteration order (the order in which the keys were inserted).
///
/// Make one on the hash, then loop while fAdvance() is true, reading the current key with apKey()
/// and its value with apValue(). The iterator borrows the hash, which must outlive it; apKey() and
/// apValue() lend objects the hash still owns. Entries may be removed during a walk, but inserting
/// into the hash invalidates it. The inherited remove() unlinks the current entry and returns its
/// key without destroying or keeping the value: take apValue() first, as the caller then owns both.
/// The inherited value(newValue) stores newValue, which the hash then owns, and hands back the old
/// value to the caller. fAdvance() and fLookup() answer false at the end, where the iterator stays
/// until fReset().
///
/// \code
/// vHashIterator it(hash);
/// while (it.fAdvance())
///     use(it.apKey(), it.apValue());
/// \endcode
class VFC_API vHashIterator : public RWHashDictionaryIterator {
  public:
    explicit vHashIterator(const vHash& hash);
    vHashIterator(const vHashIterator& other) = default;
    vHashIterator& operator=(const vHashIterator& other) = default;
    ~vHashIterator() override;

    // Back to before the first entry; true.
    bool fReset();
    // To the next entry; false at the end, where the iterator then stays.
    bool fAdvance();
    // The current key and value (owned by the hash); null when not on an entry.
    const RWCollectable* apKey() const { return key(); }
    RWCollectable* apValue() const { return value(); }
    // Moves forward to the next entry whose key isEqual to key; false (at the end) when none.
    bool fLookup(const RWCollectable* key);
};

#endif  // VFC_COLLECTIONS_VHASHITERATOR_H
