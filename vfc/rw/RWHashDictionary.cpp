#include "vfc/rw/RWHashDictionary.h"

RWHashDictionary::~RWHashDictionary() = default;

size_t RWHashDictionary::findAssociation(const RWCollectable* target) const {
    return target ? findEntry(target, target->hash()) : kNone;
}

RWCollectable* RWHashDictionary::insertKeyAndValue(RWCollectable* key, RWCollectable* value) {
    if (!key) return nullptr;
    unsigned h = key->hash();
    if (findEntry(key, h) != kNone) return nullptr;
    return addEntry(key, value, h) == kNone ? nullptr : key;
}

RWCollectable* RWHashDictionary::insert(RWCollectable* key) {
    return insertKeyAndValue(key, nullptr);
}

RWCollectable* RWHashDictionary::findKeyAndValue(const RWCollectable* target,
                                                 RWCollectable*& value) const {
    size_t i = findAssociation(target);
    if (i == kNone) {
        value = nullptr;
        return nullptr;
    }
    value = entryAt(i).value;
    return entryAt(i).key;
}

RWCollectable* RWHashDictionary::findValue(const RWCollectable* target) const {
    size_t i = findAssociation(target);
    return i == kNone ? nullptr : entryAt(i).value;
}

RWCollectable* RWHashDictionary::findValue(const RWCollectable* target, RWCollectable* newValue) {
    size_t i = findAssociation(target);
    if (i == kNone) return nullptr;
    RWCollectable* old = entryAt(i).value;
    entryAt(i).value = newValue;
    return old;
}

RWCollectable* RWHashDictionary::removeKeyAndValue(const RWCollectable* target,
                                                   RWCollectable*& value) {
    size_t i = findAssociation(target);
    if (i == kNone) {
        value = nullptr;
        return nullptr;
    }
    RWCollectable* key = entryAt(i).key;
    value = entryAt(i).value;
    removeEntry(i);
    return key;
}

void RWHashDictionary::removeAndDestroy(const RWCollectable* target) {
    RWCollectable* value = nullptr;
    RWCollectable* key = removeKeyAndValue(target, value);
    if (value != key) delete value;
    delete key;
}
