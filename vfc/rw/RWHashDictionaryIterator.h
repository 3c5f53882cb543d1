// RWHashDictionaryIterator: walks an RWHashDictionary in its iteration order, giving each key and
// its value; see RWHashTableIterator.
#ifndef VFC_RW_RWHASHDICTIONARYITERATOR_H
#define VFC_RW_RWHASHDICTIONARYITERATOR_H

#include "vfc/base/export.h"
#include "vfc/rw/RWHashDictionary.h"
#include "vfc/rw/RWSetIterator.h"

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
