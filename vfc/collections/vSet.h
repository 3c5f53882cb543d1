// vSet: the library's hashed set of collectable objects, holding no two equal ones (isEqual, placed
// by hash()). It owns what it holds: fInsert stores a copy made by copy(), fInsertReference takes
// the pointer over, and the destructor destroys every element. Iteration order is the order of
// insertion. Walk it with vSetIterator. The operations are those of vpOwningHashed.
#ifndef VFC_COLLECTIONS_VSET_H
#define VFC_COLLECTIONS_VSET_H

#include "vfc/base/export.h"
#include "vfc/collections/internal/vpOwningHashed.h"
#include "vfc/rw/RWSet.h"

class vSet;
extern template class VFC_API vpOwningHashed<vSet, RWSet, true>;

class VFC_API vSet : public vpOwningHashed<vSet, RWSet, true> {
  public:
    vSet() = default;
    vSet(const vSet& other) = default;
    vSet& operator=(const vSet& other) = default;
    ~vSet() override;

    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;
};

#endif  // VFC_COLLECTIONS_VSET_H
