// The ordinal tables of one store or restore operation. The outermost object write (read) of an
// operation empties the table; every object gets the next ordinal when it is first written
// (read), before its own state, so writer and reader number the objects in the same order.
#ifndef VFC_RW_INTERNAL_STORETABLE_H
#define VFC_RW_INTERNAL_STORETABLE_H

#include <cstdint>
#include <unordered_map>
#include <vector>

class RWCollectable;

namespace vfc::rw {

struct SaveTable {
    std::unordered_map<const RWCollectable*, uint32_t> ordinals;
    int depth = 0;
};

struct RestoreTable {
    struct Entry {
        RWCollectable* object;
        // False while the object's own state is being read: a reference to it from inside
        // itself would make a cycle, which no owning collection can hold.
        bool complete;
    };
    std::vector<Entry> objects;
    int depth = 0;
};

}  // namespace vfc::rw

#endif  // VFC_RW_INTERNAL_STORETABLE_H
