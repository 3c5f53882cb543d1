#ifndef VFC_COLLECTIONS_VTYPEDTABLE_H
#define VFC_COLLECTIONS_VTYPEDTABLE_H

#include "vfc/collections/internal/vpTypedHashed.h"
#include "vfc/collections/vTable.h"
#include "vfc/collections/vTableIterator.h"

/// The typed table of the collection family: a hash table of elements of class T (or of classes
/// derived from T), where equal elements may be held more than once, kept in a vTable.
///
/// Self is the member class that derives from the template, so that copy() and newSpecies() make
/// that class; T is the element class and Id the member's class identifier, which isA() answers.
/// The members are generated in vTypedFamily.h as
/// \code
/// class vTablevString final : public vTypedTable<vTablevString, vString, vClassID::vTablevString>
/// \endcode
/// and each has an iterator class named after it with "Iter" appended (vTablevStringIter, derived
/// from vTypedTableIterator).
///
/// Operations: fInsert, fInsertReference, fContains, fFind, fEntries, fIsEqual (the same elements
/// the same number of times each, in any order), fDelete, fRemove, fClear, fClearAndDestroy,
/// fOrEquals (union: adds copies of the elements of other that are missing), fAndEquals
/// (intersection: destroys the elements that other does not contain) and aCollection() (the vTable
/// underneath, for reading). Elements are handed out as const, because changing one in place would
/// change its hash value behind the table's back.
///
/// Ownership, as for vTable: fInsert stores a copy; fInsertReference takes the object over; fRemove
/// hands an element to the caller, who then owns it; fDelete, fAndEquals, fClearAndDestroy,
/// assignment and the destructor destroy; fClear unlinks without destroying. fFind lends an element
/// the table still owns. Copies are deep and independent.
///
/// Failure: fInsert always stores; fInsertReference answers false for null (the caller then keeps
/// p). fFind answers null, and fDelete and fRemove false (out null), for a missing element; they
/// work on the first equal element found. The persistent form is that of vTable (the count, then
/// every element as an object). Restoring destroys the own elements first, keeps those read
/// completely before a failure, skips nil elements and fails the stream on an element of a foreign
/// class; check the stream's state.
template <class Self, class T, RWClassID Id>
using vTypedTable = vpTypedHashed<Self, T, Id, vTable, vTableIterator>;

/// Walks a typed table in its iteration order (the order of insertion); the iterator class of every
/// table member (vTablevStringIter, ...) derives from it.
///
/// Loop while fAdvance() is true, reading aKey() or apKey(); fLookup(x) moves on to the next
/// element equal to x. The iterator borrows the table, which must outlive it, and lends elements
/// the table still owns. Changing the table during a walk is not allowed. Outside an element
/// apKey() is null and aKey() returns the table's default T. fAdvance() and fLookup() answer false
/// at the end, where the iterator stays until fReset().
template <class Self, class T>
using vTypedTableIterator = vpTypedHashedIterator<Self, T, vTableIterator>;

#endif  // VFC_COLLECTIONS_VTYPEDTABLE_H
