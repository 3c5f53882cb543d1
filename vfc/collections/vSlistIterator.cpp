#include "vfc/collections/vSlistIterator.h"

vSlistIterator::vSlistIterator(const vSlist& list)
    : RWSlistCollectablesIterator(const_cast<vSlist&>(list)) {}

vSlistIterator::~vSlistIterator() = default;

bool vSlistIterator::fReset() {
    reset();
    return true;
}

bool vSlistIterator::fAdvance() {
    return (*this)() != nullptr;
}
