#include "vfc/collections/vHash.h"

#include "vfc/collections/internal/CollectionIO.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vHash, vClassID::vHash)

vHash::vHash(const vHash& other) : RWHashDictionary(other) {
    replaceWithCopies();
}

vHash& vHash::operator=(const vHash& other) {
    if (&other == this) return *this;
    destroyAll();
    RWHashDictionary::operator=(other);
    replaceWithCopies();
    return *this;
}

vHash::~vHash() {
    destroyAll();
}

bool vHash::fInsert(const RWCollectable& key, const RWCollectable& value) {
    unsigned h = key.hash();
    if (findEntry(&key, h) != kNone) return false;
    addEntry(key.copy(), value.copy(), h);
    return true;
}

bool vHash::fInsertReference(RWCollectable* key, RWCollectable* value) {
    if (!key || !value || key == value) return false;
    return insertKeyAndValue(key, value) != nullptr;
}

void vHash::replaceValue(size_t i, const RWCollectable& value) {
    // Copy first: value may be the very object being replaced.
    RWCollectable* fresh = value.copy();
    delete entryAt(i).value;
    entryAt(i).value = fresh;
}

bool vHash::fInsertOrReplace(const RWCollectable& key, const RWCollectable& value) {
    unsigned h = key.hash();
    size_t i = findEntry(&key, h);
    if (i == kNone)
        addEntry(key.copy(), value.copy(), h);
    else
        replaceValue(i, value);
    return true;
}

bool vHash::fReplace(const RWCollectable& key, const RWCollectable& value) {
    size_t i = findAssociation(&key);
    if (i == kNone) return false;
    replaceValue(i, value);
    return true;
}

bool vHash::fFind(const RWCollectable& key, RWCollectable*& storedKey,
                  RWCollectable*& value) const {
    storedKey = findKeyAndValue(&key, value);
    return storedKey != nullptr;
}

bool vHash::fContains(const RWCollectable& key) const {
    return findAssociation(&key) != kNone;
}

bool vHash::fDelete(const RWCollectable& key) {
    RWCollectable* k = nullptr;
    RWCollectable* v = nullptr;
    if (!fRemove(key, k, v)) return false;
    delete v;
    delete k;
    return true;
}

bool vHash::fRemove(const RWCollectable& key, RWCollectable*& k, RWCollectable*& v) {
    k = removeKeyAndValue(&key, v);
    return k != nullptr;
}

bool vHash::fClear() {
    clear();
    return true;
}

bool vHash::fClearAndDestroy() {
    destroyAll();
    return true;
}

bool vHash::fIsEqual(const vHash& other) const {
    if (&other == this) return true;
    if (entries() != other.entries()) return false;
    for (size_t i = 0; i < entrySpan(); ++i) {
        const Entry& e = entryAt(i);
        if (!e.key) continue;
        size_t j = other.findEntry(e.key, e.hash);
        if (j == kNone) return false;
        const RWCollectable* theirs = other.entryAt(j).value;
        if (e.value != theirs && (!e.value || !theirs || !e.value->isEqual(theirs))) return false;
    }
    return true;
}

unsigned vHash::hash() const {
    unsigned sum = static_cast<unsigned>(entries());
    for (size_t i = 0; i < entrySpan(); ++i) {
        const Entry& e = entryAt(i);
        if (e.key) sum += e.hash * 0x9E3779B1u + (e.value ? e.value->hash() : 0);
    }
    return sum;
}

bool vHash::isEqual(const RWCollectable* other) const {
    const auto* o = dynamic_cast<const vHash*>(other);
    return o && o->isA() == isA() && fIsEqual(*o);
}

RWCollectable* vHash::newSpecies() const {
    return new vHash;
}

RWCollectable* vHash::copy() const {
    return new vHash(*this);
}

template <class Out>
void vHash::saveEntries(Out& out) const {
    vfc::collections::saveLiveEntries(
        out, entries(), entrySpan(), [this](size_t i) -> const Entry& { return entryAt(i); },
        true);
}

template <class In>
void vHash::restoreEntries(In& in) {
    destroyAll();
    vfc::collections::restorePairs(in, [this](RWCollectable* key, RWCollectable* value) {
        return fInsertReference(key, value);
    });
}

void vHash::saveGuts(RWvostream& s) const {
    saveEntries(s);
}

void vHash::saveGuts(RWFile& f) const {
    saveEntries(f);
}

void vHash::restoreGuts(RWvistream& s) {
    restoreEntries(s);
}

void vHash::restoreGuts(RWFile& f) {
    restoreEntries(f);
}
