#ifndef VFC_RW_RWSETITERATOR_H
#define VFC_RW_RWSETITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWHashTableIterator.h"
#include "vfc/rw/RWSet.h"

/// Walks an RWSet in its iteration order; it is an RWHashTableIterator in all but name.
///
/// The iterator borrows the set, which must outlive it, and owns nothing.
class VFC_API RWSetIterator : public RWHashTableIterator {
  public:
    explicit RWSetIterator(RWSet& set) : RWHashTableIterator(set) {}
    ~RWSetIterator() override;
};

#endif  // VFC_RW_RWSETITERATOR_H
