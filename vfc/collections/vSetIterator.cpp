#include "vfc/collections/vSetIterator.h"

vSetIterator::vSetIterator(const vSet& set) : RWSetIterator(const_cast<vSet&>(set)) {}

vSetIterator::~vSetIterator() = default;

bool vSetIterator::fReset() {
    reset();
    return true;
}

bool vSetIterator::fAdvance() {
    return (*this)() != nullptr;
}

bool vSetIterator::fLookup(const RWCollectable* key) {
    return findNext(key) != nullptr;
}
