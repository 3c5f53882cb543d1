#include "vfc/rw/RWCollectable.h"

#include <cstdint>
#include <functional>

RWCollectable::~RWCollectable() = default;

RWCollectable* RWCollectable::newSpecies() const {
    return new RWCollectable;
}

RWCollectable* RWCollectable::copy() const {
    return new RWCollectable(*this);
}

RWClassID RWCollectable::isA() const {
    return classIsA();
}

size_t RWCollectable::binaryStoreSize() const {
    return 0;
}

int RWCollectable::compareTo(const RWCollectable* other) const {
    // std::less gives a total order on unrelated pointers, where the built-in < does not.
    if (this == other) return 0;
    return std::less<const RWCollectable*>()(this, other) ? -1 : 1;
}

unsigned RWCollectable::hash() const {
    // Heap objects are at least 16-byte aligned: drop the bits that never vary.
    uint64_t bits = static_cast<uint64_t>(reinterpret_cast<std::uintptr_t>(this)) >> 4;
    return static_cast<unsigned>(bits ^ (bits >> 32));
}

bool RWCollectable::isEqual(const RWCollectable* other) const {
    return this == other;
}

void RWCollectable::restoreGuts(RWvistream&) {}
void RWCollectable::restoreGuts(RWFile&) {}
void RWCollectable::saveGuts(RWvostream&) const {}
void RWCollectable::saveGuts(RWFile&) const {}
