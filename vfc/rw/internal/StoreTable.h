// The ordinal tables of one store or restore operation. The outermost object write (read) of an
// operation empties the table; every object gets the next ordinal when it is first written
// (read), before its own state, so writer and reader number the objects in the same order.
#ifndef VFC_RW_INTERNAL_STORETABLE_H
#define VFC_RW_INTERNAL_STORETABLE_H

#include <cstdint>
#include <vector>

class RWCollectable;

namespace vfc::rw {

// Pointer to ordinal, open addressing over a power-of-two array; cleared by visiting only the
// slots in use, so the many one-object operations of a stream cost no allocation.
class SaveTable {
  public:
    int depth = 0;

    // Finds p, or records it under the next ordinal; true when it was there before.
    bool findOrAdd(const RWCollectable* p, uint32_t& ordinal) {
        if ((used_.size() + 1) * 2 > slots_.size()) grow();
        size_t mask = slots_.size() - 1;
        for (size_t i = hashOf(p) & mask;; i = (i + 1) & mask) {
            Slot& slot = slots_[i];
            if (slot.key == p) {
                ordinal = slot.ordinal;
                return true;
            }
            if (!slot.key) {
                slot = {p, static_cast<uint32_t>(used_.size())};
                used_.push_back(i);
                ordinal = slot.ordinal;
                return false;
            }
        }
    }

    // Where p's search starts (null while the table is empty), for a writer that knows which
    // objects come next and asks for their slots ahead. The caller prefetches it: a prefetch in
    // a function of its own would be dropped by the compiler as work without an effect.
    const void* slotAddress(const RWCollectable* p) const {
        return slots_.empty() ? nullptr : &slots_[hashOf(p) & (slots_.size() - 1)];
    }

    void clear() {
        for (size_t i : used_) slots_[i] = {};
        used_.clear();
    }

  private:
    struct Slot {
        const RWCollectable* key = nullptr;
        uint32_t ordinal = 0;
    };
    // Objects written one after another were mostly allocated one after another. Within a
    // 64 KiB region the address picks the slot directly (heap objects are 16-byte aligned), so
    // such a run walks the slot array in order instead of missing the cache at every object;
    // the regions themselves are scattered by a multiplicative hash, so no stride of addresses
    // piles objects onto one slot.
    static size_t hashOf(const RWCollectable* p) {
        auto bits = static_cast<uint64_t>(reinterpret_cast<std::uintptr_t>(p));
        uint64_t region = (bits >> 16) * 0x9E3779B97F4A7C15ull >> 20;
        return static_cast<size_t>(((bits >> 4) & 0xFFF) | (region << 12));
    }
    void grow() {
        std::vector<Slot> old(slots_.size() ? slots_.size() * 2 : 16);
        old.swap(slots_);
        std::vector<size_t> oldUsed;
        oldUsed.swap(used_);
        size_t mask = slots_.size() - 1;
        for (size_t i : oldUsed) {
            size_t j = hashOf(old[i].key) & mask;
            while (slots_[j].key) j = (j + 1) & mask;
            slots_[j] = old[i];
            used_.push_back(j);
        }
    }

    std::vector<Slot> slots_;
    std::vector<size_t> used_;  // the slots in use, in ordinal order
};

struct RestoreTable {
    struct Entry {
        RWCollectable* object;
        // False while the object's own state is being read: a reference to it from inside
        // itself would make a cycle, which no owning collection can hold.
        bool complete;
        // What a copy of the object costs: the objects it holds (itself included) and the
        // bytes they stand for, counted while it was read.
        uint64_t objects;
        uint64_t bytes;
    };
    std::vector<Entry> objects;
    // Objects that were read and then refused by the collection they were meant for (a repeated
    // element of a set, an entry with a nil side). They stay alive until the outermost operation
    // ends, because a later reference may still name them; it then gets a copy.
    std::vector<RWCollectable*> retired;
    int depth = 0;
    // The reader's budget over the life of the stream: the objects made (read, or copied for a
    // reference) and the bytes copied for references. Both may grow only in proportion to the
    // bytes read, so a small file of nested references cannot make an exponential tree.
    uint64_t made = 0;
    uint64_t copiedBytes = 0;
    // The ordinal of the reference the last object read resolved to; kNoReference for a new
    // object or nil.
    static constexpr uint64_t kNoReference = ~uint64_t{0};
    uint64_t lastReference = kNoReference;

    RestoreTable() = default;
    RestoreTable(const RestoreTable&) = delete;
    RestoreTable& operator=(const RestoreTable&) = delete;
    // Destroys what is still retired.
    ~RestoreTable();
    void destroyRetired();
};

}  // namespace vfc::rw

#endif  // VFC_RW_INTERNAL_STORETABLE_H
