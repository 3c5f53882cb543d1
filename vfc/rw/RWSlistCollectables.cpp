#include "vfc/rw/RWSlistCollectables.h"

RWSlistCollectables::~RWSlistCollectables() {
    clear();
}

RWCollectable* RWSlistCollectables::append(RWCollectable* a) {
    Link* link = new Link{nullptr, a};
    if (tail_)
        tail_->next = link;
    else
        head_ = link;
    tail_ = link;
    ++count_;
    return a;
}

RWCollectable* RWSlistCollectables::prepend(RWCollectable* a) {
    head_ = new Link{head_, a};
    if (!tail_) tail_ = head_;
    ++count_;
    return a;
}

RWCollectable* RWSlistCollectables::insertAt(size_t i, RWCollectable* a) {
    if (i > count_) return nullptr;
    if (i == 0) return prepend(a);
    if (i == count_) return append(a);
    Link* prev = head_;
    while (--i > 0)
        prev = prev->next;
    prev->next = new Link{prev->next, a};
    ++count_;
    return a;
}

RWCollectable* RWSlistCollectables::at(size_t i) const {
    Link* link = head_;
    for (; link && i > 0; --i)
        link = link->next;
    return link ? link->item : nullptr;
}

RWCollectable* RWSlistCollectables::find(const RWCollectable* target) const {
    for (Link* link = head_; link; link = link->next)
        if (link->item && link->item->isEqual(target)) return link->item;
    return nullptr;
}

RWCollectable* RWSlistCollectables::unlinkAfter(Link* prev) {
    Link* link = prev ? prev->next : head_;
    if (!link) return nullptr;
    (prev ? prev->next : head_) = link->next;
    if (tail_ == link) tail_ = prev;
    --count_;
    RWCollectable* item = link->item;
    delete link;
    return item;
}

RWCollectable* RWSlistCollectables::remove(const RWCollectable* target) {
    Link* prev = nullptr;
    for (Link* link = head_; link; prev = link, link = link->next)
        if (link->item && link->item->isEqual(target)) return unlinkAfter(prev);
    return nullptr;
}

RWCollectable* RWSlistCollectables::removeReference(const RWCollectable* p) {
    Link* prev = nullptr;
    for (Link* link = head_; link; prev = link, link = link->next)
        if (link->item == p) return unlinkAfter(prev);
    return nullptr;
}

bool RWSlistCollectables::containsReference(const RWCollectable* p) const {
    for (Link* link = head_; link; link = link->next)
        if (link->item == p) return true;
    return false;
}

RWCollectable* RWSlistCollectables::removeFirst() {
    return unlinkAfter(nullptr);
}

RWCollectable* RWSlistCollectables::removeLast() {
    if (!head_) return nullptr;
    Link* prev = nullptr;
    for (Link* link = head_; link != tail_; link = link->next)
        prev = link;
    return unlinkAfter(prev);
}

RWCollectable* RWSlistCollectables::removeAt(size_t i) {
    if (i >= count_) return nullptr;
    Link* prev = nullptr;
    for (Link* link = head_; i > 0; --i, link = link->next)
        prev = link;
    return unlinkAfter(prev);
}

void RWSlistCollectables::clear() {
    while (head_) {
        Link* next = head_->next;
        delete head_;
        head_ = next;
    }
    tail_ = nullptr;
    count_ = 0;
}

void RWSlistCollectables::destroyFrom(size_t n) {
    if (n >= count_) return;
    if (n == 0) {
        clearAndDestroy();
        return;
    }
    Link* keep = head_;
    for (size_t i = 1; i < n; ++i)
        keep = keep->next;
    Link* l = keep->next;
    keep->next = nullptr;
    tail_ = keep;
    count_ = n;
    while (l) {
        Link* next = l->next;
        delete l->item;
        delete l;
        l = next;
    }
}

void RWSlistCollectables::clearAndDestroy() {
    while (head_)
        delete unlinkAfter(nullptr);
}
