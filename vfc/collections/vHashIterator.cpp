#include "vfc/collections/vHashIterator.h"

vHashIterator::vHashIterator(const vHash& hash)
    : RWHashDictionaryIterator(const_cast<vHash&>(hash)) {}

vHashIterator::~vHashIterator() = default;

bool vHashIterator::fReset() {
    reset();
    return true;
}

bool vHashIterator::fAdvance() {
    return (*this)() != nullptr;
}

bool vHashIterator::fLookup(const RWCollectable* key) {
    return findNext(key) != nullptr;
}
