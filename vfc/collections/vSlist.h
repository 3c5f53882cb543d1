// vSlist: the library's singly linked list of collectable objects. It owns what it holds: fInsert
// stores a copy made by the element's copy(), fInsertReference takes the pointer over, and the
// destructor destroys every element. Walk it with vSlistIterator.
#ifndef VFC_COLLECTIONS_VSLIST_H
#define VFC_COLLECTIONS_VSLIST_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWSlistCollectables.h"

class VFC_API vSlist : public RWSlistCollectables {
  public:
    vSlist() = default;
    // Copies of all of other's elements, in order.
    vSlist(const vSlist& other);
    // Destroys every element.
    ~vSlist() override;
    // Destroys the own elements, then copies other's; nothing happens when other is this list.
    vSlist& operator=(const vSlist& other);

    // Appends a copy of x; true.
    bool fInsert(const RWCollectable& x);
    // Appends p itself, which the list now owns; true.
    bool fInsertReference(RWCollectable* p);
    size_t fEntries() const { return entries(); }
    // Unlinks every element without destroying it; true.
    bool fClear();
    // Destroys every element; true.
    bool fClearAndDestroy();

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    void fAppendCopies(const vSlist& other);
};

#endif  // VFC_COLLECTIONS_VSLIST_H
