#ifndef VFC_COLLECTIONS_VDYNARRAY_H
#define VFC_COLLECTIONS_VDYNARRAY_H

#include <cstddef>
#include <vector>

#include "vfc/base/export.h"

class RWCollectable;

/// A growable array of collectable pointers that owns what it holds; the storage of vVector.
///
/// Not a collectable itself. Elements are compared with isEqual by fIndex.
///
/// Ownership: fAppend and fInsertAt take the pointer over; fRemoveAt hands the element back to the
/// caller, who then owns it; fClearAndDestroy and the destructor destroy every element, while
/// fClear forgets them without destroying. fAt lends an element the array still owns. Copies hold
/// copies of every element and are independent.
///
/// Failure: fAppend and fInsertAt answer false for a null pointer or a position past the end (the
/// caller then keeps p); fAt and fRemoveAt answer null, and fIndex RW_NPOS, when there is no such
/// element.
class VFC_API vDynArray {
  public:
    vDynArray() = default;
    // Copies of all of other's elements, in order.
    vDynArray(const vDynArray& other);
    // Destroys the own elements, then copies other's; nothing when other is this array.
    vDynArray& operator=(const vDynArray& other);
    // Destroys every element.
    ~vDynArray();

    size_t fEntries() const { return items_.size(); }
    // The element at i (still owned by the array); null when i is out of range.
    RWCollectable* fAt(size_t i) const { return i < items_.size() ? items_[i] : nullptr; }
    // Takes p over, putting it at the end or at position i (i == fEntries() appends); false,
    // with p still the caller's, when p is null or i is past the end.
    bool fAppend(RWCollectable* p);
    bool fInsertAt(size_t i, RWCollectable* p);
    // Unlinks the element at i and hands it back; null when i is out of range.
    RWCollectable* fRemoveAt(size_t i);
    // Position of the first element isEqual to x (that is p itself); RW_NPOS when none.
    size_t fIndex(const RWCollectable& x) const;
    size_t fIndexReference(const RWCollectable* p) const;
    // Forgets every element without destroying it.
    void fClear() { items_.clear(); }
    // Destroys every element.
    void fClearAndDestroy();

  private:
    std::vector<RWCollectable*> items_;
};

#endif  // VFC_COLLECTIONS_VDYNARRAY_H
