#include "vfc/collections/vTable.h"

#include "vfc/collections/internal/CollectionIO.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vTable, vClassID::vTable)

vTable::vTable(const vTable& other) : RWHashTable(other) {
    replaceWithCopies();
}

vTable& vTable::operator=(const vTable& other) {
    if (&other == this) return *this;
    destroyAll();
    RWHashTable::operator=(other);
    replaceWithCopies();
    return *this;
}

vTable::~vTable() {
    destroyAll();
}

bool vTable::fInsert(const RWCollectable& x) {
    addEntry(x.copy(), nullptr, x.hash());
    return true;
}

bool vTable::fInsertReference(RWCollectable* p) {
    return insert(p) != nullptr;
}

bool vTable::fContains(const RWCollectable& x) const {
    return findEntry(&x, x.hash()) != kNone;
}

RWCollectable* vTable::fFind(const RWCollectable& x) const {
    return find(&x);
}

bool vTable::fRemove(const RWCollectable& x, RWCollectable*& out) {
    out = remove(&x);
    return out != nullptr;
}

bool vTable::fDelete(const RWCollectable& x) {
    RWCollectable* p = remove(&x);
    delete p;
    return p != nullptr;
}

bool vTable::fClear() {
    clear();
    return true;
}

bool vTable::fClearAndDestroy() {
    destroyAll();
    return true;
}

bool vTable::fIsEqual(const vTable& other) const {
    if (&other == this) return true;
    if (entries() != other.entries()) return false;
    for (size_t i = 0; i < entrySpan(); ++i) {
        const RWCollectable* key = entryAt(i).key;
        if (key && occurrencesOf(key) != other.occurrencesOf(key)) return false;
    }
    return true;
}

bool vTable::fOrEquals(const vTable& other) {
    if (&other == this) return true;
    for (size_t i = 0; i < other.entrySpan(); ++i) {
        const Entry& e = other.entryAt(i);
        if (e.key && findEntry(e.key, e.hash) == kNone) addEntry(e.key->copy(), nullptr, e.hash);
    }
    return true;
}

bool vTable::fAndEquals(const vTable& other) {
    if (&other == this) return true;
    for (size_t i = 0; i < entrySpan(); ++i) {
        const Entry& e = entryAt(i);
        if (!e.key || other.findEntry(e.key, e.hash) != kNone) continue;
        RWCollectable* doomed = e.key;
        removeEntry(i);
        delete doomed;
    }
    return true;
}

unsigned vTable::hash() const {
    unsigned sum = static_cast<unsigned>(entries());
    for (size_t i = 0; i < entrySpan(); ++i)
        if (entryAt(i).key) sum += entryAt(i).hash;
    return sum;
}

bool vTable::isEqual(const RWCollectable* other) const {
    const auto* o = dynamic_cast<const vTable*>(other);
    return o && o->isA() == isA() && fIsEqual(*o);
}

RWCollectable* vTable::newSpecies() const {
    return new vTable;
}

RWCollectable* vTable::copy() const {
    return new vTable(*this);
}

template <class Out>
void vTable::saveElements(Out& out) const {
    vfc::collections::writeCount(out, entries());
    for (size_t i = 0; i < entrySpan(); ++i)
        if (entryAt(i).key) vfc::rw::saveObject(out, entryAt(i).key);
}

template <class In>
void vTable::restoreElements(In& in) {
    destroyAll();
    vfc::collections::restoreElements(in, [this](RWCollectable* p) { return fInsertReference(p); });
}

void vTable::saveGuts(RWvostream& s) const {
    saveElements(s);
}

void vTable::saveGuts(RWFile& f) const {
    saveElements(f);
}

void vTable::restoreGuts(RWvistream& s) {
    restoreElements(s);
}

void vTable::restoreGuts(RWFile& f) {
    restoreElements(f);
}
