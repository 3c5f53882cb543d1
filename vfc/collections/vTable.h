// vTable: the library's hash table of collectable objects, where equal objects (isEqual, placed by
// hash()) may be held more than once. It owns what it holds: fInsert stores a copy made by copy(),
// fInsertReference takes the pointer over, and the destructor destroys every element. Iteration
// order is the order of insertion. Walk it with vTableIterator. The operations are those of
// vpOwningHashed.
#ifndef VFC_COLLECTIONS_VTABLE_H
#define VFC_COLLECTIONS_VTABLE_H

#include "vfc/base/export.h"
#include "vfc/collections/internal/vpOwningHashed.h"
#include "vfc/rw/RWHashTable.h"

class vTable;
extern template class VFC_API vpOwningHashed<vTable, RWHashTable, false>;

class VFC_API vTable : public vpOwningHashed<vTable, RWHashTable, false> {
  public:
    vTable() = default;
    vTable(const vTable& other) = default;
    vTable& operator=(const vTable& other) = default;
    ~vTable() override;

    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;
};

#endif  // VFC_COLLECTIONS_VTABLE_H
