// RWSlistCollectablesIterator: walks an RWSlistCollectables from before its first element.
// Each call of operator() steps to the next element; remove() unlinks the current one so that
// the walk goes on with the element after it. Changing the list by other paths during a walk
// leaves the iterator invalid.
#ifndef VFC_RW_RWSLISTCOLLECTABLESITERATOR_H
#define VFC_RW_RWSLISTCOLLECTABLESITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWSlistCollectables.h"

class VFC_API RWSlistCollectablesIterator {
  public:
    explicit RWSlistCollectablesIterator(RWSlistCollectables& list) : list_(&list) {}
    virtual ~RWSlistCollectablesIterator();

    // Steps to the next element and returns it; null (and stays past the end) at the end.
    // Inline: it is the step of every walk over a list.
    RWCollectable* operator()() {
        if (ended_) return nullptr;
        if (cur_) {
            prev_ = cur_;
            cur_ = cur_->next;
        } else {
            cur_ = prev_ ? prev_->next : list_->head_;
        }
        if (!cur_) ended_ = true;
        return key();
    }
    // The current element; null before the first step, after the end and after remove().
    RWCollectable* key() const { return cur_ ? cur_->item : nullptr; }
    void reset();
    bool atFirst() const { return cur_ && cur_ == list_->head_; }
    bool atLast() const { return cur_ && cur_ == list_->tail_; }
    // Steps forward to the next element isEqual to target (the very pointer p); null when none.
    RWCollectable* findNext(const RWCollectable* target);
    RWCollectable* findNextReference(const RWCollectable* p);
    // Unlinks the current element and returns it (null when there is none).
    RWCollectable* remove();

  protected:
    RWSlistCollectables* list_;

  private:
    using Link = RWSlistCollectables::Link;
    Link* prev_ = nullptr;  // the link before the current position
    Link* cur_ = nullptr;   // the current link; null when not on an element
    bool ended_ = false;
};

#endif  // VFC_RW_RWSLISTCOLLECTABLESITERATOR_H
