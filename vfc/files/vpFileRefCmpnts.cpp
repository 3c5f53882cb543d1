#include "vfc/files/vpFileRefCmpnts.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vpFileRefCmpnts, vClassID::vpFileRefCmpnts)

vpFileRefCmpnts::vpFileRefCmpnts(const vFile& referrer, const vString& text,
                                 vPathType::TypeEnum notation, const vFile& target)
    : aReferrer(referrer), aText(text), aNotation(notation), aTarget(target) {}

vpFileRefCmpnts::~vpFileRefCmpnts() = default;

bool vpFileRefCmpnts::operator==(const vpFileRefCmpnts& other) const {
    return aNotation == other.aNotation && aReferrer.fIsEqual(other.aReferrer) &&
           aText.fIsEqual(other.aText) && aTarget.fIsEqual(other.aTarget);
}

RWCollectable* vpFileRefCmpnts::newSpecies() const {
    return new vpFileRefCmpnts;
}

RWCollectable* vpFileRefCmpnts::copy() const {
    return new vpFileRefCmpnts(*this);
}

int vpFileRefCmpnts::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const vpFileRefCmpnts* o = static_cast<const vpFileRefCmpnts*>(other);
    int c = aReferrer.compareTo(&o->aReferrer);
    if (c == 0) c = aText.fCompareTo(o->aText);
    if (c == 0 && aNotation != o->aNotation) c = aNotation < o->aNotation ? -1 : 1;
    if (c == 0) c = aTarget.compareTo(&o->aTarget);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

unsigned vpFileRefCmpnts::hash() const {
    return aReferrer.hash() ^ (aText.hash() << 5) ^ (aTarget.hash() << 11) ^
           static_cast<unsigned>(aNotation);
}

bool vpFileRefCmpnts::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && *this == *static_cast<const vpFileRefCmpnts*>(other);
}

void vpFileRefCmpnts::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    vFile referrer, target;
    vString text;
    int notation = 0;
    referrer.restoreGuts(s);
    text.restoreFrom(s);
    s >> notation;
    target.restoreGuts(s);
    if (!s.good()) return;
    if (notation < 0 || notation > vPathType::ePortableUNIXFlagged) {
        s.setstate(RWvios::failbit);
        return;
    }
    aReferrer = referrer;
    aText = text;
    aNotation = static_cast<vPathType::TypeEnum>(notation);
    aTarget = target;
}

// The components persist only through the virtual streams.
void vpFileRefCmpnts::restoreGuts(RWFile&) {}

void vpFileRefCmpnts::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aReferrer.saveGuts(s);
    aText.saveOn(s);
    s << static_cast<int>(aNotation);
    aTarget.saveGuts(s);
}

void vpFileRefCmpnts::saveGuts(RWFile&) const {}
