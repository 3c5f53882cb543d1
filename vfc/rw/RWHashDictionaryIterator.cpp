#include "vfc/rw/RWHashDictionaryIterator.h"

RWHashDictionaryIterator::~RWHashDictionaryIterator() = default;

RWCollectable* RWHashDictionaryIterator::value() const {
    RWCollectable** slot = currentValue();
    return slot ? *slot : nullptr;
}

RWCollectable* RWHashDictionaryIterator::value(RWCollectable* newValue) {
    RWCollectable** slot = currentValue();
    if (!slot) return nullptr;
    RWCollectable* old = *slot;
    *slot = newValue;
    return old;
}
