// The members of vpOwningHashed, for the two files that instantiate it (vSet.cpp, vTable.cpp).
#ifndef VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHEDIMPL_H
#define VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHEDIMPL_H

#include "vfc/collections/internal/CollectionIO.h"
#include "vfc/collections/internal/vpOwningHashed.h"

template <class Self, class Base, bool Unique>
vpOwningHashed<Self, Base, Unique>& vpOwningHashed<Self, Base, Unique>::operator=(
    const vpOwningHashed& other) {
    if (&other == this) return *this;
    this->destroyAll();
    Base::operator=(other);
    this->replaceWithCopies();
    return *this;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fInsert(const RWCollectable& x) {
    unsigned h = x.hash();
    if (Unique && this->findEntry(&x, h) != kNone) return false;
    this->addEntry(x.copy(), nullptr, h);
    return true;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fInsertReference(RWCollectable* p) {
    if (!p) return false;
    unsigned h = p->hash();
    if (Unique && this->findEntry(p, h) != kNone) return false;
    return this->addEntry(p, nullptr, h) != kNone;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fDelete(const RWCollectable& x) {
    RWCollectable* p = this->remove(&x);
    delete p;
    return p != nullptr;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fIsEqual(const Self& other) const {
    if (&other == this) return true;
    if (this->entries() != other.entries()) return false;
    for (size_t i = 0; i < this->entrySpan(); ++i) {
        const auto& e = this->entryAt(i);
        if (!e.key) continue;
        // In a set every element is there once, so being found is being there as often.
        if (Unique ? other.findEntry(e.key, e.hash) == kNone
                   : this->occurrencesOf(e.key) != other.occurrencesOf(e.key))
            return false;
    }
    return true;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fOrEquals(const Self& other) {
    if (&other == this) return true;
    for (size_t i = 0; i < other.entrySpan(); ++i) {
        const auto& e = other.entryAt(i);
        if (e.key && this->findEntry(e.key, e.hash) == kNone)
            this->addEntry(e.key->copy(), nullptr, e.hash);
    }
    return true;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::fAndEquals(const Self& other) {
    if (&other == this) return true;
    for (size_t i = 0; i < this->entrySpan(); ++i) {
        const auto& e = this->entryAt(i);
        if (!e.key || other.findEntry(e.key, e.hash) != kNone) continue;
        RWCollectable* doomed = e.key;
        this->removeEntry(i);
        delete doomed;
    }
    return true;
}

template <class Self, class Base, bool Unique>
unsigned vpOwningHashed<Self, Base, Unique>::hash() const {
    unsigned sum = static_cast<unsigned>(this->entries());
    for (size_t i = 0; i < this->entrySpan(); ++i)
        if (this->entryAt(i).key) sum += this->entryAt(i).hash;
    return sum;
}

template <class Self, class Base, bool Unique>
bool vpOwningHashed<Self, Base, Unique>::isEqual(const RWCollectable* other) const {
    const auto* o = dynamic_cast<const Self*>(other);
    return o && o->isA() == this->isA() && fIsEqual(*o);
}

template <class Self, class Base, bool Unique>
template <class Out>
void vpOwningHashed<Self, Base, Unique>::saveElements(Out& out) const {
    vfc::collections::saveLiveEntries(
        out, this->entries(), this->entrySpan(),
        [this](size_t i) -> decltype(auto) { return this->entryAt(i); }, false);
}

template <class Self, class Base, bool Unique>
template <class In>
void vpOwningHashed<Self, Base, Unique>::restoreElements(In& in) {
    this->destroyAll();
    vfc::collections::restoreElements(in, [this](RWCollectable* p) { return fInsertReference(p); });
}

template <class Self, class Base, bool Unique>
void vpOwningHashed<Self, Base, Unique>::restoreGuts(RWvistream& s) {
    restoreElements(s);
}

template <class Self, class Base, bool Unique>
void vpOwningHashed<Self, Base, Unique>::restoreGuts(RWFile& f) {
    restoreElements(f);
}

template <class Self, class Base, bool Unique>
void vpOwningHashed<Self, Base, Unique>::saveGuts(RWvostream& s) const {
    saveElements(s);
}

template <class Self, class Base, bool Unique>
void vpOwningHashed<Self, Base, Unique>::saveGuts(RWFile& f) const {
    saveElements(f);
}

#endif  // VFC_COLLECTIONS_INTERNAL_VPOWNINGHASHEDIMPL_H
