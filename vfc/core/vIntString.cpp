#include "vfc/core/vIntString.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vIntString, vClassID::vIntString)

vIntString::~vIntString() = default;

vIntString& vIntString::operator=(const vIntString& other) {
    aID = other.aID;
    aName = other.aName;
    return *this;
}

RWCollectable* vIntString::newSpecies() const {
    return new vIntString;
}

RWCollectable* vIntString::copy() const {
    return new vIntString(*this);
}
