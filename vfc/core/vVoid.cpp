#include "vfc/core/vVoid.h"

#include <cstdint>

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vVoid, vClassID::vVoid)

vVoid::~vVoid() = default;

vVoid& vVoid::operator=(const vVoid& other) {
    aValue_ = other.aValue_;
    return *this;
}

RWCollectable* vVoid::newSpecies() const {
    return new vVoid;
}

RWCollectable* vVoid::copy() const {
    return new vVoid(*this);
}

int vVoid::compareTo(const RWCollectable* other) const {
    const vVoid* o = dynamic_cast<const vVoid*>(other);
    if (!o || other->isA() != isA()) return -1;
    std::uintptr_t a = reinterpret_cast<std::uintptr_t>(aValue_);
    std::uintptr_t b = reinterpret_cast<std::uintptr_t>(o->aValue_);
    return a < b ? -1 : (a > b ? 1 : 0);
}

unsigned vVoid::hash() const {
    uint64_t bits = static_cast<uint64_t>(reinterpret_cast<std::uintptr_t>(aValue_));
    return static_cast<unsigned>(bits ^ (bits >> 32));
}

bool vVoid::isEqual(const RWCollectable* other) const {
    return compareTo(other) == 0;
}
