#include "vfc/collections/vTableIterator.h"

vTableIterator::vTableIterator(const vTable& table)
    : RWHashTableIterator(const_cast<vTable&>(table)) {}

vTableIterator::~vTableIterator() = default;

bool vTableIterator::fReset() {
    reset();
    return true;
}

bool vTableIterator::fAdvance() {
    return (*this)() != nullptr;
}

bool vTableIterator::fLookup(const RWCollectable* key) {
    return findNext(key) != nullptr;
}
