#ifndef VFC_RW_RWHASHTABLE_H
#define VFC_RW_RWHASHTABLE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vfc/base/export.h"
#include "vfc/rw/RWCollection.h"

/// A hash table of collectable pointers: elements are placed by their hash() and found by
/// isEqual(); equal elements may be held more than once.
///
/// Ownership: the table does not own its elements. Destroying it or clear() leaves them alone,
/// remove() hands the element back to the caller, and clearAndDestroy() (or removeAndDestroy())
/// is the way to destroy them. Null is never held. Hash values are computed once, on insertion,
/// so an element must not change its hash() while it is held. Copying is left to subclasses.
///
/// The elements sit in a dense array in insertion order, so iteration order depends only on the
/// sequence of insertions and removals; an open-addressed index of (hash, position) pairs finds
/// them. Removing leaves a hole that iteration skips, so an element may be removed during a walk;
/// inserting during a walk invalidates the walk (see RWHashTableIterator).
///
/// Failure: lookups answer null (or 0) when no element is isEqual() to the target; insert()
/// answers null when a is null.
class VFC_API RWHashTable : public RWCollection {
  public:
    // An empty table with room for about n elements before it first grows.
    explicit RWHashTable(size_t n = 0);
    ~RWHashTable() override;

    size_t entries() const override { return live_; }
    // Adds a, even when an equal element is present; returns a, or null (adding nothing) when a
    // is null or the table cannot take more (about four billion entries).
    RWCollectable* insert(RWCollectable* a) override;
    // The first element (in insertion order) isEqual to target, or null.
    RWCollectable* find(const RWCollectable* target) const override;
    // Unlinks the first element isEqual to target and returns it; null when there is none.
    RWCollectable* remove(const RWCollectable* target) override;
    void clear() override;
    void clearAndDestroy() override;

    // How many elements are isEqual to target.
    size_t occurrencesOf(const RWCollectable* target) const;
    // Makes room for n elements so that inserting up to that many does not grow the index.
    void resize(size_t n);
    // The number of buckets of the index (a power of two, or 0 while nothing was inserted).
    size_t buckets() const { return slots_.size(); }

  protected:
    friend class RWHashTableIterator;
    static constexpr size_t kNone = static_cast<size_t>(-1);

    struct Entry {
        RWCollectable* key;    // null for a hole left by a removal
        RWCollectable* value;  // used by dictionaries only
        unsigned hash;
    };

    // Shallow copies: the same pointers in the same order. Owning subclasses follow them with
    // replaceWithCopies().
    RWHashTable(const RWHashTable& other);
    RWHashTable& operator=(const RWHashTable& other);

    // Position of the first live entry isEqual to target with hash h, or kNone.
    size_t findEntry(const RWCollectable* target, unsigned h) const;
    // Appends an entry for key (not null) and returns its position; kNone when the table is full.
    size_t addEntry(RWCollectable* key, RWCollectable* value, unsigned h);
    // Unlinks the live entry at position i; nothing is destroyed.
    void removeEntry(size_t i);
    // Positions run from 0 to entrySpan(); holes have a null key.
    size_t entrySpan() const { return entries_.size(); }
    Entry& entryAt(size_t i) { return entries_[i]; }
    const Entry& entryAt(size_t i) const { return entries_[i]; }
    // Replaces every key and value with a copy of it (for owning subclasses after a copy).
    void replaceWithCopies();
    // Destroys every key and value (a value that is its own key once) and empties the table.
    void destroyAll();

  private:
    struct Slot {
        unsigned hash;
        uint32_t entry;  // entry position + 1; 0 marks an empty slot
    };

    size_t home(unsigned h) const { return (h * 0x9E3779B9u) >> shift_; }
    // Sizes the index for at least n live entries and rebuilds it.
    void rehash(size_t n);
    // Drops the holes from the entry array, keeping the order.
    void compact();
    void placeAll();
    size_t slotOf(size_t entry) const;

    std::vector<Entry> entries_;
    std::vector<Slot> slots_;
    size_t live_ = 0;
    unsigned shift_ = 32;
};

#endif  // VFC_RW_RWHASHTABLE_H
