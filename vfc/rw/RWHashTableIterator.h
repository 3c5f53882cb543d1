#ifndef VFC_RW_RWHASHTABLEITERATOR_H
#define VFC_RW_RWHASHTABLEITERATOR_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWHashTable.h"

/// Walks an RWHashTable in its iteration order: the order of insertion, with removed elements
/// left out.
///
/// A new iterator, or one after reset(), stands before the first element. Each call of operator()
/// steps to the next element and returns it; at the end it returns null and stays there until
/// reset(). Removing elements during a walk, through remove() or through the table, is allowed;
/// inserting into the table invalidates the walk (reset() makes the iterator usable again).
///
/// Ownership: the iterator borrows the table, which must outlive it, and owns nothing; remove()
/// hands the unlinked element to the caller.
/// \code
/// RWHashTableIterator it(table);
/// while (RWCollectable* item = it()) {
///     // ... use item ...
/// }
/// \endcode
class VFC_API RWHashTableIterator {
  public:
    explicit RWHashTableIterator(RWHashTable& table) : table_(&table) {}
    virtual ~RWHashTableIterator();

    // Steps to the next element and returns it; null (and stays past the end) at the end.
    RWCollectable* operator()();
    // The current element; null before the first step, after the end and after remove().
    RWCollectable* key() const;
    void reset();
    // Steps forward to the next element isEqual to target; null when there is none.
    RWCollectable* findNext(const RWCollectable* target);
    // Unlinks the current element and returns it (null when there is none); the walk goes on
    // with the element after it.
    RWCollectable* remove();

  protected:
    static constexpr size_t kNone = RWHashTable::kNone;
    // The position of the current entry, or kNone when not on an element.
    size_t current() const;
    // The value slot of the current entry (for dictionary iterators); null when not on one.
    RWCollectable** currentValue() const;

    RWHashTable* table_;

  private:
    size_t next_ = 0;     // the position to look at next
    size_t cur_ = kNone;  // the current position
    bool ended_ = false;
};

#endif  // VFC_RW_RWHASHTABLEITERATOR_H
