#include "vfc/collections/vSlist.h"

#include "vfc/collections/vSlistIterator.h"
#include "vfc/persist/vClassIds.h"

const RWClassID vSlist::myAtom = vClassID::vSlist;

RWClassID vSlist::classIsA() {
    return myAtom;
}

vSlist::vSlist(const vSlist& other) : RWSlistCollectables() {
    fAppendCopies(other);
}

vSlist::~vSlist() {
    clearAndDestroy();
}

vSlist& vSlist::operator=(const vSlist& other) {
    if (&other == this) return *this;
    clearAndDestroy();
    fAppendCopies(other);
    return *this;
}

void vSlist::fAppendCopies(const vSlist& other) {
    vSlistIterator it(other);
    while (it.fAdvance())
        append(it.apKey()->copy());
}

bool vSlist::fInsert(const RWCollectable& x) {
    append(x.copy());
    return true;
}

bool vSlist::fInsertReference(RWCollectable* p) {
    append(p);
    return true;
}

bool vSlist::fClear() {
    clear();
    return true;
}

bool vSlist::fClearAndDestroy() {
    clearAndDestroy();
    return true;
}

RWCollectable* vSlist::newSpecies() const {
    return new vSlist;
}

RWCollectable* vSlist::copy() const {
    return new vSlist(*this);
}
