#ifndef VFC_COLLECTIONS_VTABLE_H
#define VFC_COLLECTIONS_VTABLE_H

#include "vfc/base/export.h"
#include "vfc/collections/internal/vpOwningHashed.h"
#include "vfc/rw/RWHashTable.h"

class vTable;
VFC_EXTERN_TEMPLATE(vpOwningHashed<vTable, RWHashTable, false>)

/// The library's hash table of collectable objects, where equal objects may be held more than once,
/// which owns what it holds.
///
/// Elements compare by isEqual and are placed by hash(). Iteration order is the order of insertion.
/// Walk it with vTableIterator. fFind, fRemove and fDelete work on the first equal element found.
///
/// Operations: fInsert, fInsertReference, fContains, fFind, fEntries, fRemove, fDelete, fClear,
/// fClearAndDestroy, fIsEqual (the same elements the same number of times each, in any order),
/// fOrEquals (union: adds copies of the elements of other that are missing) and fAndEquals
/// (intersection: destroys the elements that other does not contain).
///
/// Ownership: fInsert stores a copy made by copy() and fInsertReference takes the pointer over;
/// fRemove hands the element to the caller, who then owns it; fDelete, fAndEquals,
/// fClearAndDestroy, assignment and the destructor destroy; fFind lends an element the table still
/// owns. fClear unlinks without destroying. Copies hold copies of every element and are
/// independent.
///
/// Failure: fInsert always stores; fInsertReference answers false for null. fFind answers null, and
/// fRemove and fDelete false, for a missing element. Restoring first destroys the own elements,
/// keeps those read completely before a failure and drops nil elements; check the stream's state.
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
