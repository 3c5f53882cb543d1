#ifndef VFC_COLLECTIONS_VTYPEDSET_H
#define VFC_COLLECTIONS_VTYPEDSET_H

#include "vfc/collections/internal/vpTypedHashed.h"
#include "vfc/collections/vSet.h"
#include "vfc/collections/vSetIterator.h"

/// The typed set of the collection family: a set of elements of class T (or of classes derived from
/// T), never two equal ones, kept in a vSet.
///
/// Self is the member class that derives from the template, so that copy() and newSpecies() make
/// that class; T is the element class and Id the member's class identifier, which isA() answers.
/// The members are generated in vTypedFamily.h as
/// \code
/// class vSetvString final : public vTypedSet<vSetvString, vString, vClassID::vSetvString>
/// \endcode
/// and each has an iterator class named after it with "Iter" appended (vSetvStringIter, derived
/// from vTypedSetIterator).
///
/// Operations: fInsert, fInsertReference, fContains, fFind, fEntries, fIsEqual (the same elements,
/// in any order), fDelete, fRemove, fClear, fClearAndDestroy, fOrEquals (union: adds copies of the
/// elements of other that are missing), fAndEquals (intersection: destroys the elements that other
/// does not contain) and aCollection() (the vSet underneath, for reading). Elements are handed out
/// as const, because changing one in place would change its hash value behind the set's back.
///
/// Ownership, as for vSet: fInsert stores a copy; fInsertReference takes the object over; fRemove
/// hands an element to the caller, who then owns it; fDelete, fAndEquals, fClearAndDestroy,
/// assignment and the destructor destroy; fClear unlinks without destroying. fFind lends an element
/// the set still owns. Copies are deep and independent.
///
/// Failure: fInsert answers false, storing nothing, when an equal element is present, and
/// fInsertReference also for null (the caller then keeps p); fFind answers null, and fDelete and
/// fRemove false (out null), for a missing element. The persistent form is that of vSet (the count,
/// then every element as an object). Restoring destroys the own elements first, keeps those read
/// completely before a failure, skips nil and repeated elements and fails the stream on an element
/// of a foreign class; check the stream's state.
template <class Self, class T, RWClassID Id>
using vTypedSet = vpTypedHashed<Self, T, Id, vSet, vSetIterator>;

/// Walks a typed set in its iteration order (the order of insertion); the iterator class of every
/// set member (vSetvStringIter, ...) derives from it.
///
/// Loop while fAdvance() is true, reading aKey() or apKey(); fLookup(x) moves on to the next
/// element equal to x. The iterator borrows the set, which must outlive it, and lends elements the
/// set still owns. Changing the set during a walk is not allowed. Outside an element apKey() is
/// null and aKey() returns the set's default T. fAdvance() and fLookup() answer false at the end,
/// where the iterator stays until fReset().
template <class Self, class T>
using vTypedSetIterator = vpTypedHashedIterator<Self, T, vSetIterator>;

#endif  // VFC_COLLECTIONS_VTYPEDSET_H
