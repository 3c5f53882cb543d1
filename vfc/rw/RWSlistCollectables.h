#ifndef VFC_RW_RWSLISTCOLLECTABLES_H
#define VFC_RW_RWSLISTCOLLECTABLES_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWCollection.h"

/// A singly linked list of collectable pointers, with constant-time append and prepend.
///
/// Ownership: the list does not own its elements. Destroying it or clear() leaves them alone, the
/// remove functions hand the unlinked element back to the caller, and clearAndDestroy(),
/// destroyFrom() and removeAndDestroy() delete elements. The list cannot be copied. A null
/// pointer is stored like any other element (find() and remove() step over it); an iterator
/// stops at it as at the end.
///
/// Failure: lookups and removals answer null when there is no such element; insertAt() answers
/// null, adding nothing, when the position is past the end. Positional access (at(), insertAt(),
/// removeAt(), removeLast()) walks the list. Iterate with RWSlistCollectablesIterator.
class VFC_API RWSlistCollectables : public RWCollection {
  public:
    RWSlistCollectables() = default;
    // Copying would leave two lists holding the same pointers; subclasses that own their
    // elements define copies that duplicate them.
    RWSlistCollectables(const RWSlistCollectables&) = delete;
    RWSlistCollectables& operator=(const RWSlistCollectables&) = delete;
    ~RWSlistCollectables() override;

    size_t entries() const override { return count_; }
    RWCollectable* insert(RWCollectable* a) override { return append(a); }
    RWCollectable* find(const RWCollectable* target) const override;
    RWCollectable* remove(const RWCollectable* target) override;
    void clear() override;
    void clearAndDestroy() override;

    RWCollectable* append(RWCollectable* a);
    RWCollectable* prepend(RWCollectable* a);
    // Inserts a so that it stands at position i (i == entries() appends); null when i is past
    // the end.
    RWCollectable* insertAt(size_t i, RWCollectable* a);
    // The first, last or i-th element; null when there is none.
    RWCollectable* first() const { return head_ ? head_->item : nullptr; }
    RWCollectable* last() const { return tail_ ? tail_->item : nullptr; }
    RWCollectable* at(size_t i) const;
    // Unlink and return the first, last or i-th element; null when there is none.
    RWCollectable* removeFirst();
    RWCollectable* removeLast();
    RWCollectable* removeAt(size_t i);
    // Destroys the items at positions n and beyond, in one pass.
    void destroyFrom(size_t n);
    // Whether p itself is in the list; removeReference unlinks it and returns it.
    bool containsReference(const RWCollectable* p) const;
    RWCollectable* removeReference(const RWCollectable* p);

  private:
    friend class RWSlistCollectablesIterator;
    struct Link {
        Link* next;
        RWCollectable* item;
    };
    // Unlinks the link after prev (the head when prev is null) and returns its item.
    RWCollectable* unlinkAfter(Link* prev);

    Link* head_ = nullptr;
    Link* tail_ = nullptr;
    size_t count_ = 0;
};

#endif  // VFC_RW_RWSLISTCOLLECTABLES_H
