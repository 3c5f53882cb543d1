// RWSetIterator: walks an RWSet in its iteration order; see RWHashTableIterator.
#ifndef VFC_RW_RWSETITERATOR_H
#define VFC_RW_RWSETITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWHashTableIterator.h"
#include "vfc/rw/RWSet.h"

class VFC_API RWSetIterator : public RWHashTableIterator {
  public:
    explicit RWSetIterator(RWSet& set) : RWHashTableIterator(set) {}
    ~RWSetIterator() override;
};

#endif  // VFC_RW_RWSETITERATOR_H
