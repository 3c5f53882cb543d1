#include "vfc/rw/RWHashTableIterator.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr size_t RWHashTableIterator::kNone;

RWHashTableIterator::~RWHashTableIterator() = default;

RWCollectable* RWHashTableIterator::operator()() {
    cur_ = kNone;
    if (ended_) return nullptr;
    size_t span = table_->entrySpan();
    while (next_ < span && !table_->entryAt(next_).key)
        ++next_;
    if (next_ >= span) {
        ended_ = true;
        return nullptr;
    }
    cur_ = next_++;
    return table_->entryAt(cur_).key;
}

size_t RWHashTableIterator::current() const {
    // The entry may have been removed through the table since the step.
    if (cur_ == kNone || cur_ >= table_->entrySpan() || !table_->entryAt(cur_).key) return kNone;
    return cur_;
}

RWCollectable** RWHashTableIterator::currentValue() const {
    size_t i = current();
    return i == kNone ? nullptr : &table_->entryAt(i).value;
}

RWCollectable* RWHashTableIterator::key() const {
    size_t i = current();
    return i == kNone ? nullptr : table_->entryAt(i).key;
}

void RWHashTableIterator::reset() {
    next_ = 0;
    cur_ = kNone;
    ended_ = false;
}

RWCollectable* RWHashTableIterator::findNext(const RWCollectable* target) {
    while (RWCollectable* item = (*this)())
        if (target && item->isEqual(target)) return item;
    return nullptr;
}

RWCollectable* RWHashTableIterator::remove() {
    size_t i = current();
    if (i == kNone) return nullptr;
    RWCollectable* item = table_->entryAt(i).key;
    table_->removeEntry(i);
    cur_ = kNone;
    return item;
}
