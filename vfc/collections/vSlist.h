#ifndef VFC_COLLECTIONS_VSLIST_H
#define VFC_COLLECTIONS_VSLIST_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/core/vInt.h"
#include "vfc/rw/RWSlistCollectables.h"

class vString;

/// The library's singly linked list of collectable objects, which owns what it holds.
///
/// Positions are zero-based vInts; a negative position is out of range. Walk the list with
/// vSlistIterator. Elements are compared with isEqual.
///
/// Ownership: fInsert and fInsertAt store a copy made by the element's copy(); fInsertReference
/// takes the pointer over; the fRemove... operations unlink an element and hand it to the caller,
/// who then owns it (fRemoveReference hands p back the same way); the fDelete... operations and the
/// destructor destroy elements. fClear unlinks without destroying, for elements the caller owns
/// elsewhere. Copies (copy constructor, assignment, copy()) hold copies of every element and are
/// independent. Elements added through the inherited RWSlistCollectables members are owned and
/// destroyed all the same.
///
/// Failure: operations answer false (and change nothing) for a missing element or a position out of
/// range; fRemove sets its out pointer to null then. Restoring first destroys the own elements and
/// keeps the elements read completely before a failure; check the stream's state.
class VFC_API vSlist : public RWSlistCollectables {
  public:
    vSlist() = default;
    // Copies of all of other's elements, in order.
    vSlist(const vSlist& other);
    // Destroys every element.
    ~vSlist() override;
    // Destroys the own elements, then copies other's; nothing happens when other is this list.
    vSlist& operator=(const vSlist& other);
    // Appends copies of all of other's elements, duplicates included. Appending a list to itself
    // does nothing.
    vSlist& operator+=(const vSlist& other);
    // Union: appends, in order, a copy of each element of other that this list does not contain
    // yet (by isEqual). Nothing happens when other is this list.
    vSlist& operator|=(const vSlist& other);
    // Intersection: destroys each element that other does not contain (by isEqual); the
    // survivors keep their order. Nothing happens when other is this list.
    vSlist& operator&=(const vSlist& other);

    // Appends a copy of x; true.
    bool fInsert(const RWCollectable& x);
    // Appends p itself, which the list now owns; true. A null pointer is refused (false).
    bool fInsertReference(RWCollectable* p);
    // Inserts a copy of x so that it stands at position i; i equal to fEntries() appends. False,
    // and nothing changes, when i is negative or past the end.
    bool fInsertAt(const vInt& i, const RWCollectable& x);

    // Whether some element isEqual to x; whether p itself is in the list.
    bool fContains(const RWCollectable& x) const;
    bool fContainsReference(const RWCollectable* p) const;
    // The position of the first element equal to x in i, and true; i is 0 when there is none.
    bool fIndex(const RWCollectable& x, vInt& i) const;
    size_t fEntries() const { return entries(); }

    // The fRemove... operations unlink an element and hand it to the caller, who then owns it.
    // The first element equal to x; out is null when there is none.
    bool fRemove(const RWCollectable& x, RWCollectable*& out);
    // The element at i; out is untouched when i is out of range.
    bool fRemoveAt(const vInt& i, RWCollectable*& out);
    // The first (last) element; out is untouched when the list is empty.
    bool fRemoveFirst(RWCollectable*& out);
    bool fRemoveLast(RWCollectable*& out);
    // Unlinks p itself; true when it was in the list.
    bool fRemoveReference(const RWCollectable* p);

    // The fDelete... operations unlink an element and destroy it; false when there is none.
    bool fDelete(const RWCollectable& x);
    bool fDeleteAt(const vInt& i);
    bool fDeleteFirst();
    bool fDeleteLast();

    // Unlinks every element without destroying it (for elements owned elsewhere); true.
    bool fClear();
    // Destroys every element; true.
    bool fClearAndDestroy();

    // Same count and pairwise isEqual elements, in order.
    bool fIsEqual(const vSlist& other) const;

    // Appends to list one new vString per line of text; lines end at "\n" (a "\r" before it
    // stays at the end of its line), and empty lines are skipped. list is not cleared first.
    static void fStringToSlist(const vString& text, vSlist& list);

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // fIsEqual with other taken as a list of any kind; false when other is not a list.
    bool isEqual(const RWCollectable* other) const override;
    // The collection form: the count, then each element as an object. Restoring destroys the
    // own elements first; on damaged data it keeps the elements read completely.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    void fAppendCopies(const RWSlistCollectables& other);
};

#endif  // VFC_COLLECTIONS_VSLIST_H
