// vSlistIterator: walks a vSlist. Make one on the list, then loop while fAdvance() is true,
// reading the current element with apKey():
//
//   vSlistIterator it(list);
//   while (it.fAdvance())
//       use(it.apKey());
#ifndef VFC_COLLECTIONS_VSLISTITERATOR_H
#define VFC_COLLECTIONS_VSLISTITERATOR_H

#include "vfc/base/export.h"
#include "vfc/collections/vSlist.h"
#include "vfc/rw/RWSlistCollectablesIterator.h"

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
