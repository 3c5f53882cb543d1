#ifndef VFC_COLLECTIONS_VVECTOR_H
#define VFC_COLLECTIONS_VVECTOR_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/collections/vDynArray.h"
#include "vfc/rw/RWCollection.h"

/// The library's ordered vector of collectable objects, with positions from 0, which owns what it
/// holds.
///
/// Walk it by position: for i below fEntries(), fAt(i). Elements are compared with isEqual.
///
/// Ownership: fInsert and fInsertAt store copies made by copy(); fInsertReference and the
/// collection interface's insert take the pointer over; fRemove, fRemoveAt and remove hand the
/// element to the caller, who then owns it (fRemoveReference gives p back the same way); the
/// fDelete operations, fClearAndDestroy, assignment and the destructor destroy. fAt and find lend
/// an element the vector still owns. fClear unlinks without destroying. Copies hold copies of every
/// element and are independent.
///
/// Failure: operations answer false, or null, for a missing element, a position out of range or a
/// null pointer, and change nothing; fIndex, fRemove and fRemoveAt then also set their out argument
/// to 0 or null. Restoring first destroys the own elements, keeps those read completely before a
/// failure and drops nil elements; check the stream's state.
class VFC_API vVector : public RWCollection {
  public:
    vVector() = default;
    // Copies of all of other's elements, in order.
    vVector(const vVector& other) : RWCollection(other), items_(other.items_) {}
    // Destroys the own elements, then copies other's; nothing when other is this vector.
    vVector& operator=(const vVector& other);
    // Destroys every element.
    ~vVector() override;

    // Appends a copy of x; true.
    bool fInsert(const RWCollectable& x);
    // Inserts a copy of x so that it stands at position i (i == fEntries() appends); false, with
    // nothing inserted, when i is past the end.
    bool fInsertAt(size_t i, const RWCollectable& x);
    // Appends p itself, which the vector now owns; false when p is null.
    bool fInsertReference(RWCollectable* p);
    // The element at i (still owned by the vector); null when i is out of range.
    RWCollectable* fAt(size_t i) const { return items_.fAt(i); }
    // Sets i to the position of the first element equal to x and answers true; false with i 0
    // when there is none.
    bool fIndex(const RWCollectable& x, size_t& i) const;
    bool fContains(const RWCollectable& x) const;
    // Whether p itself is an element.
    bool fContainsReference(const RWCollectable* p) const;
    // Unlinks the first element equal to x (the element at i) and hands it to the caller in out;
    // false with out null when there is none.
    bool fRemove(const RWCollectable& x, RWCollectable*& out);
    bool fRemoveAt(size_t i, RWCollectable*& out);
    // Unlinks p itself, which the caller then owns again; false when p is not an element.
    bool fRemoveReference(const RWCollectable* p);
    // Unlinks and destroys the first element equal to x (the element at i); false when none.
    bool fDelete(const RWCollectable& x);
    bool fDeleteAt(size_t i);
    size_t fEntries() const { return items_.fEntries(); }
    // Unlinks every element without destroying it; true.
    bool fClear();
    // Destroys every element; true.
    bool fClearAndDestroy();
    // Same number of elements, pairwise isEqual in order.
    bool fIsEqual(const vVector& other) const;

    // The collection interface: insert appends (taking a over), find and remove work on the
    // first equal element.
    size_t entries() const override { return items_.fEntries(); }
    RWCollectable* insert(RWCollectable* a) override;
    RWCollectable* find(const RWCollectable* target) const override;
    RWCollectable* remove(const RWCollectable* target) override;
    void clear() override { items_.fClear(); }
    void clearAndDestroy() override { items_.fClearAndDestroy(); }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Depends on the elements and their order, so equal vectors hash alike.
    unsigned hash() const override;
    // fIsEqual when other is a vVector of the same class; false otherwise.
    bool isEqual(const RWCollectable* other) const override;
    // The number of elements, then each element as an object, in order. Restoring first destroys
    // the own elements; it stops at the first failure of the stream, keeping the elements read
    // completely, and drops nil elements.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    template <class Out>
    void saveElements(Out& out) const;
    template <class In>
    void restoreElements(In& in);

    vDynArray items_;
};

#endif  // VFC_COLLECTIONS_VVECTOR_H
