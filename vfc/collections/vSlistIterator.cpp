#include "vfc/collections/vSlistIterator.h"

vSlistIterator::vSlistIterator(const vSlist& list)
    : RWSlistCollectablesIterator(const_cast<vSlist&>(list)) {}

vSlistIterator::~vSlistIterator() = default;

bool vSlistIterator::fReset() {
    reset();
    return true;
}

bool vSlistIterator::fLookup(const RWCollectable* key) {
    // Nothing equals null; the walk still ends past the last element, as for a missing key.
    if (!key) return findNextReference(nullptr) != nullptr;
    return findNext(key) != nullptr;
}

bool vSlistIterator::fLookupReference(const RWCollectable* p) {
    return findNextReference(p) != nullptr;
}
