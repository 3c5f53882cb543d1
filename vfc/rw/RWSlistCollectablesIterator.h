#ifndef VFC_RW_RWSLISTCOLLECTABLESITERATOR_H
#define VFC_RW_RWSLISTCOLLECTABLESITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWSlistCollectables.h"

/// Walks an RWSlistCollectables from before its first element.
///
/// Each call of operator() steps to the next element and returns it; at the end it returns null
/// and stays there until reset(). remove() unlinks the current element so that the walk goes on
/// with the element after it. Changing the list by other paths during a walk leaves the iterator
/// invalid.
///
/// Ownership: the iterator borrows the list, which must outlive it, and owns nothing; remove()
/// hands the unlinked element to the caller.
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
    // Steps forward to the next element isEqual to target; null (at the end) when there is none.
    RWCollectable* findNext(const RWCollectable* target);
    // Steps forward to the very pointer p; null (at the end) when it does not follow.
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
