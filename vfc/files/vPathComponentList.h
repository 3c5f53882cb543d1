#ifndef VFC_FILES_VPATHCOMPONENTLIST_H
#define VFC_FILES_VPATHCOMPONENTLIST_H

#include "vfc/base/export.h"
#include "vfc/collections/vTypedList.h"
#include "vfc/files/vPathComponent.h"
#include "vfc/persist/vClassIds.h"

class vPathComponentList;

VFC_EXTERN_TEMPLATE(vTypedList<vPathComponentList, vPathComponent, vClassID::vPathComponentList>)
VFC_EXTERN_TEMPLATE(vTypedListIterator<vPathComponentList, vPathComponent>)

/// The components of one path, first component first, as vcListComponents makes them and
/// vcGeneratePath writes them, plus a flag that says the path was written with a separator at
/// its end (a directory, "dir/").
///
/// It is the typed list of vPathComponent: fInsert appends a copy, fAt/fFirst/fLast/fLookup set
/// the current element that aKey returns. Equality (isEqual, fIsEqual) compares the components
/// only; the flag is persisted after them.
///
/// Ownership: the list owns its components. fInsertReference takes the pointer over; the
/// fRemove... operations hand an element to the caller, who then owns it; fDelete... destroys
/// it. The reference aKey() returns stays valid until that element is removed or destroyed.
/// Copies are deep and independent.
///
/// Failure: nothing throws; positioning and removal answer false when there is no such element.
/// Restoring destroys the own elements first, keeps those read completely before a failure and
/// fails the stream on an element of another class; the flag, read after the elements, is false
/// unless the stream is still good. Check the stream's state.
class VFC_API vPathComponentList
    : public vTypedList<vPathComponentList, vPathComponent, vClassID::vPathComponentList> {
  public:
    vPathComponentList() = default;
    vPathComponentList(const vPathComponentList& other) = default;
    vPathComponentList& operator=(const vPathComponentList& other) = default;
    ~vPathComponentList() override;

    bool fTrailingSeparator() const { return aTrailingSeparator; }
    void fSetTrailingSeparator(bool on) { aTrailingSeparator = on; }

    RWClassID isA() const override { return classIsA(); }
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    bool aTrailingSeparator = false;
};

/// Walks a component list from its first component: while (it.fAdvance()) use(it.aKey());
///
/// The iterator borrows the list, which must outlive it and must not change during the walk;
/// aKey() lends the element reached by the last fAdvance() that returned true.
class VFC_API vPathComponentListIter final
    : public vTypedListIterator<vPathComponentList, vPathComponent> {
  public:
    explicit vPathComponentListIter(const vPathComponentList& list) : vTypedListIterator(list) {}
};

#endif  // VFC_FILES_VPATHCOMPONENTLIST_H
