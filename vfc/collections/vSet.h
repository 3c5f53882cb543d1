// vSet: the library's hashed set of collectable objects, holding no two equal ones (isEqual, placed
// by hash()). It owns what it holds: fInsert stores a copy made by copy(), fInsertReference takes
// the pointer over, and the destructor destroys every element. Iteration order is the order of
// insertion. Walk it with vSetIterator.
#ifndef VFC_COLLECTIONS_VSET_H
#define VFC_COLLECTIONS_VSET_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWSet.h"

class VFC_API vSet : public RWSet {
  public:
    vSet() = default;
    // Copies of all of other's elements, in other's order.
    vSet(const vSet& other);
    // Destroys the own elements, then copies other's; nothing when other is this set.
    vSet& operator=(const vSet& other);
    // Destroys every element.
    ~vSet() override;

    // Stores a copy of x; false, with nothing stored, when an equal element is present.
    bool fInsert(const RWCollectable& x);
    // Stores p itself, which the set now owns; false when p is null or an equal element is
    // present (the caller then keeps p).
    bool fInsertReference(RWCollectable* p);
    bool fContains(const RWCollectable& x) const;
    // The element equal to x (still owned by the set), or null.
    RWCollectable* fFind(const RWCollectable& x) const;
    // Unlinks the element equal to x and hands it to the caller in out; false with out null when
    // there is none.
    bool fRemove(const RWCollectable& x, RWCollectable*& out);
    // Unlinks and destroys the element equal to x; false when there is none.
    bool fDelete(const RWCollectable& x);
    size_t fEntries() const { return entries(); }
    // Unlinks every element without destroying it; true.
    bool fClear();
    // Destroys every element; true.
    bool fClearAndDestroy();
    // Same number of elements, and each of them is in other.
    bool fIsEqual(const vSet& other) const;
    // Union: adds a copy of each element of other that is not present. True.
    bool fOrEquals(const vSet& other);
    // Intersection: destroys each element that other does not contain. True.
    bool fAndEquals(const vSet& other);

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Independent of the order of the elements, so equal sets hash alike.
    unsigned hash() const override;
    // fIsEqual when other is a vSet of the same class; false otherwise.
    bool isEqual(const RWCollectable* other) const override;
    // The number of elements, then each element as an object. Restoring first destroys the own
    // elements; it stops at the first failure of the stream, keeping the elements read
    // completely, and drops nil and repeated elements.
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
};

#endif  // VFC_COLLECTIONS_VSET_H
