#include "vfc/collections/vSet.h"

#include "vfc/collections/internal/vpOwningHashedImpl.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

template class vpOwningHashed<vSet, RWSet, true>;

RW_DEFINE_COLLECTABLE(vSet, vClassID::vSet)

vSet::~vSet() = default;
