#ifndef VFC_RW_RWSET_H
#define VFC_RW_RWSET_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWHashTable.h"

/// A hash table that holds no two equal elements.
///
/// Inserting an element equal to one already held adds nothing and answers the element held, so
/// the caller still owns the one it offered when the result differs from it. Like its base it does
/// not own its elements; see RWHashTable for ownership, iteration order and failures. Iterate with
/// RWSetIterator.
class VFC_API RWSet : public RWHashTable {
  public:
    explicit RWSet(size_t n = 0) : RWHashTable(n) {}
    ~RWSet() override;

    // Adds a unless an equal element is held; returns a, the equal element already held, or
    // null when a is null.
    RWCollectable* insert(RWCollectable* a) override;

  protected:
    RWSet(const RWSet& other) = default;
    RWSet& operator=(const RWSet& other) = default;
};

#endif  // VFC_RW_RWSET_H
