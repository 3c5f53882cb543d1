#ifndef VFC_RW_RWHASHDICTIONARYITERATOR_H
#define VFC_RW_RWHASHDICTIONARYITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWHashDictionary.h"
#include "vfc/rw/RWSetIterator.h"

/// Walks an RWHashDictionary in its iteration order, giving each key and its value.
///
/// It steps like RWHashTableIterator (operator() answers the next key, null at the end); value()
/// reads or replaces the value of the current association. The iterator borrows the dictionary,
/// which must outlive it, and owns nothing: the value replaced by value(newValue) and the key
/// unlinked by remove() go to the caller, and remove() drops the value, so read value() first
/// when it is needed.
class VFC_API RWHashDictionaryIterator : public RWSetIterator {
  public:
    explicit RWHashDictionaryIterator(RWHashDictionary& dictionary) : RWSetIterator(dictionary) {}
    ~RWHashDictionaryIterator() override;

    // The value of the current association; null when not on one.
    RWCollectable* value() const;
    // Stores newValue in the current association and returns the value it replaces; null, and
    // nothing stored, when not on an association.
    RWCollectable* value(RWCollectable* newValue);
};

#endif  // VFC_RW_RWHASHDICTIONARYITERATOR_H
