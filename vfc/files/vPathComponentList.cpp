#include "vfc/files/vPathComponentList.h"

#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

template class vTypedList<vPathComponentList, vPathComponent, vClassID::vPathComponentList>;
template class vTypedListIterator<vPathComponentList, vPathComponent>;

RW_DEFINE_COLLECTABLE(vPathComponentList, vClassID::vPathComponentList)

vPathComponentList::~vPathComponentList() = default;

void vPathComponentList::restoreGuts(RWvistream& s) {
    vTypedList::restoreGuts(s);
    bool trailing = false;
    if (s.good()) s >> trailing;
    aTrailingSeparator = s.good() && trailing;
}

void vPathComponentList::restoreGuts(RWFile& f) {
    vTypedList::restoreGuts(f);
    bool trailing = false;
    if (f.good()) f.Read(trailing);
    aTrailingSeparator = f.good() && trailing;
}

void vPathComponentList::saveGuts(RWvostream& s) const {
    vTypedList::saveGuts(s);
    s << aTrailingSeparator;
}

void vPathComponentList::saveGuts(RWFile& f) const {
    vTypedList::saveGuts(f);
    f.Write(aTrailingSeparator);
}
