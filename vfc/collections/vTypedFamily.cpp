// The typed collection family, compiled once: the templates of every member are instantiated
// here (the header declares these instantiations extern), and every member gets its identifier
// and its registration with the factory, so that streams can restore it.
#include "vfc/collections/vTypedFamily.h"

#include "vfc/rw/RWFactory.h"

#define VFC_TYPED_DEFINE_MEMBER(name) \
    name::~name() = default;          \
    RW_DEFINE_COLLECTABLE(name, vClassID::name)

#define VFC_TYPED_LIST(name, element)                         \
    template class vTypedList<name, element, vClassID::name>; \
    template class vTypedListIterator<name, element>;         \
    VFC_TYPED_DEFINE_MEMBER(name)

#define VFC_TYPED_HASHED(name, element, coll)                                          \
    template class vpTypedHashed<name, element, vClassID::name, coll, coll##Iterator>; \
    template class vpTypedHashedIterator<name, element, coll##Iterator>;               \
    VFC_TYPED_DEFINE_MEMBER(name)

#define VFC_TYPED_SET(name, element) VFC_TYPED_HASHED(name, element, vSet)
#define VFC_TYPED_TABLE(name, element) VFC_TYPED_HASHED(name, element, vTable)

#define VFC_TYPED_VECTOR(name, element)                         \
    template class vTypedVector<name, element, vClassID::name>; \
    template class vTypedVectorIterator<name, element>;         \
    VFC_TYPED_DEFINE_MEMBER(name)

#define VFC_TYPED_HASH(name, key, value)                         \
    template class vTypedHash<name, key, value, vClassID::name>; \
    template class vTypedHashIterator<name, key, value>;         \
    VFC_TYPED_DEFINE_MEMBER(name)

VFC_TYPED_FAMILY(VFC_TYPED_LIST, VFC_TYPED_SET, VFC_TYPED_TABLE, VFC_TYPED_VECTOR, VFC_TYPED_HASH)
