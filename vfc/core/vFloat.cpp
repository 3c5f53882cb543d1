#include "vfc/core/vFloat.h"

#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWLocale.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vFloat, vClassID::vFloat)

vFloat::vFloat(const vString& text) {
    RWLocale::global().stringToNum(text, &aValue_);
}

vFloat::~vFloat() = default;

vFloat& vFloat::operator=(const double& value) {
    aValue_ = value;
    return *this;
}

vFloat& vFloat::operator=(const vFloat& other) {
    aValue_ = other.aValue_;
    return *this;
}

vFloat& vFloat::operator=(const vString& text) {
    RWLocale::global().stringToNum(text, &aValue_);
    return *this;
}

vString& vFloat::fAsString(vString& out) const {
    out = RWLocale::global().asString(aValue_);
    return out;
}

RWCollectable* vFloat::newSpecies() const {
    return new vFloat;
}

RWCollectable* vFloat::copy() const {
    return new vFloat(*this);
}

void vFloat::restoreGuts(RWvistream& s) {
    s >> aValue_;
}

void vFloat::restoreGuts(RWFile&) {}

void vFloat::saveGuts(RWvostream& s) const {
    s << aValue_;
}

void vFloat::saveGuts(RWFile&) const {}
