#include "vfc/collections/vDynArray.h"

#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWCollectable.h"

vDynArray::vDynArray(const vDynArray& other) {
    items_.reserve(other.items_.size());
    for (const RWCollectable* p : other.items_)
        items_.push_back(p->copy());
}

vDynArray& vDynArray::operator=(const vDynArray& other) {
    if (&other == this) return *this;
    fClearAndDestroy();
    items_.reserve(other.items_.size());
    for (const RWCollectable* p : other.items_)
        items_.push_back(p->copy());
    return *this;
}

vDynArray::~vDynArray() {
    fClearAndDestroy();
}

bool vDynArray::fAppend(RWCollectable* p) {
    if (!p) return false;
    items_.push_back(p);
    return true;
}

bool vDynArray::fInsertAt(size_t i, RWCollectable* p) {
    if (!p || i > items_.size()) return false;
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(i), p);
    return true;
}

RWCollectable* vDynArray::fRemoveAt(size_t i) {
    if (i >= items_.size()) return nullptr;
    RWCollectable* p = items_[i];
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(i));
    return p;
}

size_t vDynArray::fIndex(const RWCollectable& x) const {
    for (size_t i = 0; i < items_.size(); ++i)
        if (items_[i]->isEqual(&x)) return i;
    return RW_NPOS;
}

size_t vDynArray::fIndexReference(const RWCollectable* p) const {
    for (size_t i = 0; i < items_.size(); ++i)
        if (items_[i] == p) return i;
    return RW_NPOS;
}

void vDynArray::fClearAndDestroy() {
    // Unlink first, so that the array is consistent while the elements are destroyed.
    std::vector<RWCollectable*> doomed;
    doomed.swap(items_);
    for (RWCollectable* p : doomed)
        delete p;
}
