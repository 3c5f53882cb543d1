#ifndef VFC_RW_RWCOLLECTION_H
#define VFC_RW_RWCOLLECTION_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"

/// The abstract collection of collectable pointers: the interface that the platform layer's lists
/// and hash tables share.
///
/// Ownership: a collection of the platform layer does not own what it holds. Destroying it or
/// calling clear() leaves the elements alone, remove() hands the element back to the caller, and
/// only removeAndDestroy() and clearAndDestroy() delete elements; an element must stay alive while
/// it is held. The library's collections (vSlist and the others) add ownership on top.
///
/// Failure: lookups and removals answer null (or false) when no element is isEqual() to the
/// target; insert() answers null when it did not add.
class VFC_API RWCollection : public RWCollectable {
  public:
    ~RWCollection() override;

    virtual size_t entries() const = 0;
    bool isEmpty() const { return entries() == 0; }
    // Adds a; returns a, or null when it was not added.
    virtual RWCollectable* insert(RWCollectable* a) = 0;
    // The first element isEqual to target, or null.
    virtual RWCollectable* find(const RWCollectable* target) const = 0;
    virtual bool contains(const RWCollectable* target) const;
    // Unlinks the first element isEqual to target and returns it; null when there is none.
    virtual RWCollectable* remove(const RWCollectable* target) = 0;
    // Unlinks and destroys the first element isEqual to target.
    virtual void removeAndDestroy(const RWCollectable* target);
    // Unlinks everything; clearAndDestroy also destroys every element.
    virtual void clear() = 0;
    virtual void clearAndDestroy() = 0;
};

#endif  // VFC_RW_RWCOLLECTION_H
