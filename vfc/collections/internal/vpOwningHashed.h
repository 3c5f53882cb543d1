// vpOwningHashed: what the owning hashed collections vSet and vTable share. Self is the
// collection's class, Base the platform collection it stands on (RWSet or RWHashTable) and
// Unique whether equal elements are refused (a set) or kept side by side (a table). The
// collection owns what it holds: fInsert stores a copy made by copy(), fInsertReference takes
// the pointer over, and the destructor destroys every element. Iteration order is the order of
// insertion.
//
// The members are compiled once, with vSet and vTable (vpOwningHashedImpl.h holds their
// definitions).
#ifndef VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHED_H
#define VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHED_H

#include <cstddef>

#include "vfc/rw/RWCollectable.h"

template <class Self, class Base, bool Unique>
class vpOwningHashed : public Base {
  public:
    vpOwningHashed() = default;
    // Copies of all of other's elements, in other's order.
    vpOwningHashed(const vpOwningHashed& other) : Base(other) { this->replaceWithCopies(); }
    // Destroys the own elements, then copies other's; nothing when other is this collection.
    vpOwningHashed& operator=(const vpOwningHashed& other);
    // Destroys every element.
    ~vpOwningHashed() override { this->destroyAll(); }

    // Stores a copy of x; in a set false, with nothing stored, when an equal element is present.
    bool fInsert(const RWCollectable& x);
    // Stores p itself, which the collection then owns; false when p is null or, in a set, an
    // equal element is present (the caller then keeps p).
    bool fInsertReference(RWCollectable* p);
    bool fContains(const RWCollectable& x) const { return this->findEntry(&x, x.hash()) != kNone; }
    // The (first) element equal to x, still owned by the collection, or null.
    RWCollectable* fFind(const RWCollectable& x) const { return this->find(&x); }
    // Unlinks the (first) element equal to x and hands it to the caller in out; false with out
    // null when there is none.
    bool fRemove(const RWCollectable& x, RWCollectable*& out) {
        out = this->remove(&x);
        return out != nullptr;
    }
    // Unlinks and destroys the (first) element equal to x; false when there is none.
    bool fDelete(const RWCollectable& x);
    size_t fEntries() const { return this->entries(); }
    // Unlinks every element without destroying it; true.
    bool fClear() {
        this->clear();
        return true;
    }
    // Destroys every element; true.
    bool fClearAndDestroy() {
        this->destroyAll();
        return true;
    }
    // The same elements the same number of times each, in any order.
    bool fIsEqual(const Self& other) const;
    // Union: adds a copy of each element of other that is not present (once). True.
    bool fOrEquals(const Self& other);
    // Intersection: destroys each element that other does not contain. True.
    bool fAndEquals(const Self& other);

    RWCollectable* newSpecies() const override { return new Self; }
    RWCollectable* copy() const override { return new Self(static_cast<const Self&>(*this)); }
    // Independent of the order of the elements, so equal collections hash alike.
    unsigned hash() const override;
    // fIsEqual when other is of the same class; false otherwise.
    bool isEqual(const RWCollectable* other) const override;
    // The number of elements, then each element as an object. Restoring first destroys the own
    // elements; it stops at the first failure of the stream, keeping the elements read
    // completely, and drops nil elements (and, in a set, repeated ones).
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

  private:
    static constexpr size_t kNone = Base::kNone;

    template <class Out>
    void saveElements(Out& out) const;
    template <class In>
    void restoreElements(In& in);
};

#endif  // VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHED_H
