#include "vfc/collections/vSet.h"

#include "vfc/collections/internal/CollectionIO.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vSet, vClassID::vSet)

vSet::vSet(const vSet& other) : RWSet(other) {
    replaceWithCopies();
}

vSet& vSet::operator=(const vSet& other) {
    if (&other == this) return *this;
    destroyAll();
    RWSet::operator=(other);
    replaceWithCopies();
    return *this;
}

vSet::~vSet() {
    destroyAll();
}

bool vSet::fInsert(const RWCollectable& x) {
    unsigned h = x.hash();
    if (findEntry(&x, h) != kNone) return false;
    addEntry(x.copy(), nullptr, h);
    return true;
}

bool vSet::fInsertReference(RWCollectable* p) {
    if (!p) return false;
    unsigned h = p->hash();
    if (findEntry(p, h) != kNone) return false;
    return addEntry(p, nullptr, h) != kNone;
}

bool vSet::fContains(const RWCollectable& x) const {
    return findEntry(&x, x.hash()) != kNone;
}

RWCollectable* vSet::fFind(const RWCollectable& x) const {
    return find(&x);
}

bool vSet::fRemove(const RWCollectable& x, RWCollectable*& out) {
    out = remove(&x);
    return out != nullptr;
}

bool vSet::fDelete(const RWCollectable& x) {
    RWCollectable* p = remove(&x);
    delete p;
    return p != nullptr;
}

bool vSet::fClear() {
    clear();
    return true;
}

bool vSet::fClearAndDestroy() {
    destroyAll();
    return true;
}

bool vSet::fIsEqual(const vSet& other) const {
    if (&other == this) return true;
    if (entries() != other.entries()) return false;
    for (size_t i = 0; i < entrySpan(); ++i) {
        const Entry& e = entryAt(i);
        if (e.key && other.findEntry(e.key, e.hash) == kNone) return false;
    }
    return true;
}

bool vSet::fOrEquals(const vSet& other) {
    if (&other == this) return true;
    for (size_t i = 0; i < other.entrySpan(); ++i) {
        const Entry& e = other.entryAt(i);
        if (e.key && findEntry(e.key, e.hash) == kNone) addEntry(e.key->copy(), nullptr, e.hash);
    }
    return true;
}

bool vSet::fAndEquals(const vSet& other) {
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

unsigned vSet::hash() const {
    unsigned sum = static_cast<unsigned>(entries());
    for (size_t i = 0; i < entrySpan(); ++i)
        if (entryAt(i).key) sum += entryAt(i).hash;
    return sum;
}

bool vSet::isEqual(const RWCollectable* other) const {
    const auto* o = dynamic_cast<const vSet*>(other);
    return o && o->isA() == isA() && fIsEqual(*o);
}

RWCollectable* vSet::newSpecies() const {
    return new vSet;
}

RWCollectable* vSet::copy() const {
    return new vSet(*this);
}

template <class Out>
void vSet::saveElements(Out& out) const {
    vfc::collections::writeCount(out, entries());
    for (size_t i = 0; i < entrySpan(); ++i)
        if (entryAt(i).key) vfc::rw::saveObject(out, entryAt(i).key);
}

template <class In>
void vSet::restoreElements(In& in) {
    destroyAll();
    vfc::collections::restoreElements(in, [this](RWCollectable* p) { return fInsertReference(p); });
}

void vSet::saveGuts(RWvostream& s) const {
    saveElements(s);
}

void vSet::saveGuts(RWFile& f) const {
    saveElements(f);
}

void vSet::restoreGuts(RWvistream& s) {
    restoreElements(s);
}

void vSet::restoreGuts(RWFile& f) {
    restoreElements(f);
}
