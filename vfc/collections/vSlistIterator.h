#ifndef VFC_COLLECTIONS_VSLISTITERATOR_H
#define VFC_COLLECTIONS_VSLISTITERATOR_H

#include "vfc/base/export.h"
#include "vfc/collections/vSlist.h"
#include "vfc/rw/RWSlistCollectablesIterator.h"

/// Walks a vSlist from its first element to its last.
///
/// Make one on the list, then loop while fAdvance() is true, reading the current element with
/// apKey(). The iterator borrows the list, which must outlive it; apKey() lends an element that the
/// list still owns. The inherited remove() unlinks the current element and hands it to the caller,
/// and the walk goes on after it; changing the list by any other path during a walk leaves the
/// iterator invalid. fAdvance() and the lookups answer false at the end, where the iterator stays
/// until fReset(); a null element (which only the inherited list members can store) also stops
/// fAdvance().
///
/// \code
/// vSlistIterator it(list);
/// while (it.fAdvance())
///     use(it.apKey());
/// \endcode
class VFC_API vSlistIterator : public RWSlistCollectablesIterator {
  public:
    // Positioned before the first element.
    explicit vSlistIterator(const vSlist& list);
    vSlistIterator(const vSlistIterator& other) = default;
    vSlistIterator& operator=(const vSlistIterator& other) = default;
    ~vSlistIterator() override;

    // Back to before the first element; true.
    bool fReset();
    // To the next element; false at the end, where the iterator then stays.
    bool fAdvance() { return (*this)() != nullptr; }
    // The current element; null before the first fAdvance and after the end.
    const RWCollectable* apKey() const { return key(); }
    // Whether the current element is the first (last) of the list.
    bool fAtFirst() const { return atFirst(); }
    bool fAtLast() const { return atLast(); }
    // Moves forward from the current position to the next element isEqual to key (the very
    // pointer p); false, at the end, when there is none.
    bool fLookup(const RWCollectable* key);
    bool fLookupReference(const RWCollectable* p);
};

#endif  // VFC_COLLECTIONS_VSLISTITERATOR_H
