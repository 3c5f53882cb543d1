// vTable: the library's hash table of collectable objects, where equal objects (isEqual, placed by
// hash()) may be held more than once. It owns what it holds: fInsert stores a copy made by copy(),
// fInsertReference takes the pointer over, and the destructor destroys every element. Iteration
// order is the order of insertion. Walk it with vTableIterator.
#ifndef VFC_COLLECTIONS_VTABLE_H
#define VFC_COLLECTIONS_VTABLE_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWHashTable.h"

class VFC_API vTable : public RWHashTable {
  public:
    vTable() = default;
    // Copies of all of other's elements, in other's order.
    vTable(const vTable& other);
    // Destroys the own elements, then copies other's; nothing when other is this table.
    vTable& operator=(const vTable& other);
    // Destroys every element.
    ~vTable() override;

    // Stores a copy of x, even when an equal element is present; true.
    bool fInsert(const RWCollectable& x);
    // Stores p itself, which the table now owns; false only when p is null.
    bool fInsertReference(RWCollectable* p);
    bool fContains(const RWCollectable& x) const;
    // The first element equal to x (still owned by the table), or null.
    RWCollectable* fFind(const RWCollectable& x) const;
    // Unlinks the first element equal to x and hands it to the caller in out; false with out null
    // when there is none.
    bool fRemove(const RWCollectable& x, RWCollectable*& out);
    // Unlinks and destroys the first element equal to x; false when there is none.
    bool fDelete(const RWCollectable& x);
    size_t fEntries() const { return entries(); }
    // Unlinks every element without destroying it; true.
    bool fClear();
    // Destroys every element; true.
    bool fClearAndDestroy();
    // The same elements the same number of times each, in any order.
    bool fIsEqual(const vTable& other) const;
    // Union: adds a copy of each element of other that is not present (once). True.
    bool fOrEquals(const vTable& other);
    // Intersection: destroys each element that other does not contain. True.
    bool fAndEquals(const vTable& other);

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Independent of the order of the elements, so equal tables hash alike.
    unsigned hash() const override;
    // fIsEqual when other is a vTable of the same class; false otherwise.
    bool isEqual(const RWCollectable* other) const override;
    // The number of elements, then each element as an object. Restoring first destroys the own
    // elements; it stops at the first failure of the stream, keeping the elements read
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
};

#endif  // VFC_COLLECTIONS_VTABLE_H
