// vTypedTable: the typed table of the collection family. It holds elements of class T (or of a
// class derived from T) in a vTable, where equal elements may be held more than once, and keeps
// its ownership rule: fInsert always stores a copy, fInsertReference takes the object over,
// fRemove hands the first equal element back, fDelete destroys it. The members of the family
// derive from it as
//
//   class vTablevString final : public vTypedTable<vTablevString, vString, vClassID::vTablevString>
//
// and walk it with vTypedTableIterator. The persistent form is that of vTable (the count, then
// every element as an object); restoring rejects an element of a foreign class by failing the
// stream. The typed set and the typed table share one implementation, vpTypedHashed.
#ifndef VFC_COLLECTIONS_VTYPEDTABLE_H
#define VFC_COLLECTIONS_VTYPEDTABLE_H

#include "vfc/collections/internal/vpTypedHashed.h"
#include "vfc/collections/vTable.h"
#include "vfc/collections/vTableIterator.h"

template <class Self, class T, RWClassID Id>
using vTypedTable = vpTypedHashed<Self, T, Id, vTable, vTableIterator>;

template <class Self, class T>
using vTypedTableIterator = vpTypedHashedIterator<Self, T, vTableIterator>;

#endif  // VFC_COLLECTIONS_VTYPEDTABLE_H
