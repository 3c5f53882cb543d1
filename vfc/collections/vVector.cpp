#include "vfc/collections/vVector.h"

#include "vfc/collections/internal/CollectionIO.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vVector, vClassID::vVector)

vVector& vVector::operator=(const vVector& other) {
    items_ = other.items_;  // vDynArray's assignment destroys, copies, and ignores itself
    return *this;
}

vVector::~vVector() = default;

bool vVector::fInsert(const RWCollectable& x) {
    return items_.fAppend(x.copy());
}

bool vVector::fInsertAt(size_t i, const RWCollectable& x) {
    if (i > items_.fEntries()) return false;
    return items_.fInsertAt(i, x.copy());
}

bool vVector::fInsertReference(RWCollectable* p) {
    return items_.fAppend(p);
}

bool vVector::fIndex(const RWCollectable& x, size_t& i) const {
    size_t at = items_.fIndex(x);
    i = at == RW_NPOS ? 0 : at;
    return at != RW_NPOS;
}

bool vVector::fContains(const RWCollectable& x) const {
    return items_.fIndex(x) != RW_NPOS;
}

bool vVector::fContainsReference(const RWCollectable* p) const {
    return items_.fIndexReference(p) != RW_NPOS;
}

bool vVector::fRemove(const RWCollectable& x, RWCollectable*& out) {
    out = items_.fRemoveAt(items_.fIndex(x));
    return out != nullptr;
}

bool vVector::fRemoveAt(size_t i, RWCollectable*& out) {
    out = items_.fRemoveAt(i);
    return out != nullptr;
}

bool vVector::fRemoveReference(const RWCollectable* p) {
    return items_.fRemoveAt(items_.fIndexReference(p)) != nullptr;
}

bool vVector::fDelete(const RWCollectable& x) {
    return fDeleteAt(items_.fIndex(x));
}

bool vVector::fDeleteAt(size_t i) {
    RWCollectable* p = items_.fRemoveAt(i);
    delete p;
    return p != nullptr;
}

bool vVector::fClear() {
    items_.fClear();
    return true;
}

bool vVector::fClearAndDestroy() {
    items_.fClearAndDestroy();
    return true;
}

bool vVector::fIsEqual(const vVector& other) const {
    if (&other == this) return true;
    if (fEntries() != other.fEntries()) return false;
    for (size_t i = 0; i < fEntries(); ++i)
        if (!fAt(i)->isEqual(other.fAt(i))) return false;
    return true;
}

RWCollectable* vVector::insert(RWCollectable* a) {
    return items_.fAppend(a) ? a : nullptr;
}

RWCollectable* vVector::find(const RWCollectable* target) const {
    return target ? items_.fAt(items_.fIndex(*target)) : nullptr;
}

RWCollectable* vVector::remove(const RWCollectable* target) {
    return target ? items_.fRemoveAt(items_.fIndex(*target)) : nullptr;
}

unsigned vVector::hash() const {
    unsigned h = static_cast<unsigned>(fEntries());
    for (size_t i = 0; i < fEntries(); ++i)
        h = (h ^ fAt(i)->hash()) * 0x01000193u;
    return h;
}

bool vVector::isEqual(const RWCollectable* other) const {
    const auto* o = dynamic_cast<const vVector*>(other);
    return o && o->isA() == isA() && fIsEqual(*o);
}

RWCollectable* vVector::newSpecies() const {
    return new vVector;
}

RWCollectable* vVector::copy() const {
    return new vVector(*this);
}

template <class Out>
void vVector::saveElements(Out& out) const {
    vfc::collections::writeCount(out, fEntries());
    for (size_t i = 0; i < fEntries(); ++i)
        vfc::rw::saveObject(out, fAt(i));
}

template <class In>
void vVector::restoreElements(In& in) {
    items_.fClearAndDestroy();
    vfc::collections::restoreElements(in, [this](RWCollectable* p) { return items_.fAppend(p); });
}

void vVector::saveGuts(RWvostream& s) const {
    saveElements(s);
}

void vVector::saveGuts(RWFile& f) const {
    saveElements(f);
}

void vVector::restoreGuts(RWvistream& s) {
    restoreElements(s);
}

void vVector::restoreGuts(RWFile& f) {
    restoreElements(f);
}
