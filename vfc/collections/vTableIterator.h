#ifndef VFC_COLLECTIONS_VTABLEITERATOR_H
#define VFC_COLLECTIONS_VTABLEITERATOR_H

#include "vfc/base/export.h"
#include "vfc/collections/vTable.h"
#include "vfc/rw/RWHashTableIterator.h"

/// Walks a vTable in its iteration order (the order of insertion).
///
/// Make one on the table, then loop while fAdvance() is true, reading the current element with
/// apKey(). The iterator borrows the table, which must outlive it; apKey() lends an element the
/// table still owns. Elements may be removed during a walk, but inserting invalidates it. The
/// inherited remove() unlinks the current element and hands it to the caller, who then owns it.
/// fAdvance() and fLookup() answer false at the end, where the iterator stays until fReset().
class VFC_API vTableIterator : public RWHashTableIterator {
  public:
    explicit vTableIterator(const vTable& table);
    vTableIterator(const vTableIterator& other) = default;
    vTableIterator& operator=(const vTableIterator& other) = default;
    ~vTableIterator() override;

    // Back to before the first element; true.
    bool fReset();
    // To the next element; false at the end, where the iterator then stays.
    bool fAdvance();
    // The current element (owned by the table); null when not on an element.
    const RWCollectable* apKey() const { return key(); }
    // Moves forward to the next element isEqual to key; false (at the end) when none.
    bool fLookup(const RWCollectable* key);
};

#endif  // VFC_COLLECTIONS_VTABLEITERATOR_H
