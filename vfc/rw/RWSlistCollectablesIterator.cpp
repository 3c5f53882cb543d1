#include "vfc/rw/RWSlistCollectablesIterator.h"

RWSlistCollectablesIterator::~RWSlistCollectablesIterator() = default;

void RWSlistCollectablesIterator::reset() {
    prev_ = cur_ = nullptr;
    ended_ = false;
}

RWCollectable* RWSlistCollectablesIterator::findNext(const RWCollectable* target) {
    while (RWCollectable* item = (*this)())
        if (item->isEqual(target)) return item;
    return nullptr;
}

RWCollectable* RWSlistCollectablesIterator::findNextReference(const RWCollectable* p) {
    while (RWCollectable* item = (*this)())
        if (item == p) return item;
    return nullptr;
}

RWCollectable* RWSlistCollectablesIterator::remove() {
    if (!cur_) return nullptr;
    cur_ = nullptr;
    return list_->unlinkAfter(prev_);
}
