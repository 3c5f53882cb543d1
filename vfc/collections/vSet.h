#ifndef VFC_COLLECTIONS_VSET_H
#define VFC_COLLECTIONS_VSET_H

#include "vfc/base/export.h"
#include "vfc/collections/internal/vpOwningHashed.h"
#include "vfc/rw/RWSet.h"

class vSet;
VFC_EXTERN_TEMPLATE(vpOwningHashed<vSet, RWSet, true>)

/// The library's hashed set of collectable objects, holding no two equal ones, which owns what it
/// holds.
///
/// Elements compare by isEqual and are placed by hash(). Iteration order is the order of insertion.
/// Walk it with vSetIterator.
///
/// Operations: fInsert, fInsertReference, fContains, fFind, fEntries, fRemove, fDelete, fClear,
/// fClearAndDestroy, fIsEqual (the same elements each once, in any order), fOrEquals (union: adds
/// copies of the elements of other that are missing) and fAndEquals (intersection: destroys the
/// elements that other does not contain).
///
/// Ownership: fInsert stores a copy made by copy() and fInsertReference takes the pointer over;
/// fRemove hands the element to the caller, who then owns it; fDelete, fAndEquals,
/// fClearAndDestroy, assignment and the destructor destroy; fFind lends an element the set still
/// owns. fClear unlinks without destroying. Copies hold copies of every element and are
/// independent.
///
/// Failure: fInsert answers false, storing nothing, when an equal element is present, and
/// fInsertReference also for null (the caller then keeps p); fFind answers null, and fRemove and
/// fDelete false, for a missing element. Restoring first destroys the own elements, keeps those
/// read completely before a failure and drops nil and repeated elements; check the stream's state.
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
