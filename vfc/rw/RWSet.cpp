#include "vfc/rw/RWSet.h"

RWSet::~RWSet() = default;

RWCollectable* RWSet::insert(RWCollectable* a) {
    if (!a) return nullptr;
    unsigned h = a->hash();
    size_t i = findEntry(a, h);
    if (i != kNone) return entryAt(i).key;
    return addEntry(a, nullptr, h) == kNone ? nullptr : a;
}
