// vTypedSet: the typed set of the collection family. It holds elements of class T (or of a class
// derived from T) in a vSet, never two equal ones, and keeps its ownership rule: fInsert stores a
// copy unless an equal element is present, fInsertReference takes the object over, fRemove hands
// an element back, fDelete destroys it. The members of the family derive from it as
//
//   class vSetvString final : public vTypedSet<vSetvString, vString, vClassID::vSetvString>
//
// and walk it with vTypedSetIterator. The persistent form is that of vSet (the count, then every
// element as an object); restoring rejects an element of a foreign class by failing the stream.
// The typed set and the typed table share one implementation, vpTypedHashed.
#ifndef VFC_COLLECTIONS_VTYPEDSET_H
#define VFC_COLLECTIONS_VTYPEDSET_H

#include "vfc/collections/internal/vpTypedHashed.h"
#include "vfc/collections/vSet.h"
#include "vfc/collections/vSetIterator.h"

template <class Self, class T, RWClassID Id>
using vTypedSet = vpTypedHashed<Self, T, Id, vSet, vSetIterator>;

template <class Self, class T>
using vTypedSetIterator = vpTypedHashedIterator<Self, T, vSetIterator>;

#endif  // VFC_COLLECTIONS_VTYPEDSET_H
