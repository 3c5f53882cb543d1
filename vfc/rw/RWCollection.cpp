#include "vfc/rw/RWCollection.h"

RWCollection::~RWCollection() = default;

bool RWCollection::contains(const RWCollectable* target) const {
    return find(target) != nullptr;
}

void RWCollection::removeAndDestroy(const RWCollectable* target) {
    delete remove(target);
}
