#include "vfc/core/vPair.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vPair, vClassID::vPair)

namespace {

// Members may be missing (null); a missing one orders before any present one.
int compareMembers(const RWCollectable* a, const RWCollectable* b) {
    if (!a || !b) return (a != nullptr) - (b != nullptr);
    return a->compareTo(b);
}

bool equalMembers(const RWCollectable* a, const RWCollectable* b) {
    if (!a || !b) return a == b;
    return a->isEqual(b);
}

}  // namespace

vPair::vPair(RWCollectable* first, RWCollectable* second) {
    // Appended as they are, null included, so that each keeps its position.
    aMembers.append(first);
    aMembers.append(second);
}

vPair::vPair(const vPair& other) : RWCollectable(other) {
    fCopyMembers(other);
}

vPair::~vPair() = default;

vPair& vPair::operator=(const vPair& other) {
    if (&other == this) return *this;
    aMembers.clearAndDestroy();
    fCopyMembers(other);
    return *this;
}

void vPair::fCopyMembers(const vPair& other) {
    for (size_t i = 0, n = other.aMembers.entries(); i < n; ++i) {
        const RWCollectable* member = other.aMembers.at(i);
        aMembers.append(member ? member->copy() : nullptr);
    }
}

RWCollectable* vPair::newSpecies() const {
    return new vPair;
}

RWCollectable* vPair::copy() const {
    return new vPair(*this);
}

int vPair::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const vPair* o = dynamic_cast<const vPair*>(other);
    if (!o) return -1;
    int c = compareMembers(first(), o->first());
    return c != 0 ? c : compareMembers(second(), o->second());
}

unsigned vPair::hash() const {
    return first() ? first()->hash() : 0;
}

bool vPair::isEqual(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return false;
    const vPair* o = dynamic_cast<const vPair*>(other);
    return o && equalMembers(first(), o->first()) && equalMembers(second(), o->second());
}

// The member list is restored in place: the reader fails the stream rather than hand back any
// other object, so nothing else can arrive here. The old members go first, so a nil list leaves
// an empty pair. A list of the wrong length from a damaged stream is kept as it is; first() and
// second() answer null for missing members.
void vPair::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    aMembers.clearAndDestroy();
    recursiveRestoreFrom(s, &aMembers);
}

void vPair::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    aMembers.clearAndDestroy();
    recursiveRestoreFrom(f, &aMembers);
}

void vPair::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aMembers.recursiveSaveOn(s);
}

void vPair::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    aMembers.recursiveSaveOn(f);
}
