#include "vfc/collections/vTable.h"

#include "vfc/collections/internal/vpOwningHashedImpl.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

template class vpOwningHashed<vTable, RWHashTable, false>;

RW_DEFINE_COLLECTABLE(vTable, vClassID::vTable)

vTable::~vTable() = default;
