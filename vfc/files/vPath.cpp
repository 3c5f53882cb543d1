#include "vfc/files/vPath.h"

#include <ostream>

#include "vfc/files/internal/vpNotation.h"
#include "vfc/files/vPathModel.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vPath, vClassID::vPath)

vPath::vPath(vPathType::TypeEnum notation, const vString& path) {
    vPathComponentList list;
    vcListComponents(notation, path, list);
    vString normalized;
    vcGeneratePath(notation, list, normalized);
    fConstructFromNormalized(notation, normalized);
}

vPath::~vPath() = default;

void vPath::fConstructFromNormalized(vPathType::TypeEnum notation, const vString& normalized) {
    aPathType = notation;
    aPath = normalized;
}

bool vPath::fIsInHier(const vPath& dir) const {
    vPathComponentList mine;
    vPathComponentList theirs;
    vcListComponents(aPathType, aPath, mine);
    vcListComponents(dir.aPathType, dir.aPath, theirs);
    if (theirs.fEntries() == 0 || theirs.fEntries() > mine.fEntries()) return false;
    vPathComponentListIter a(mine);
    vPathComponentListIter b(theirs);
    while (b.fAdvance()) {
        a.fAdvance();
        if (a.aKey() != b.aKey()) return false;
    }
    return true;
}

RWCollectable* vPath::newSpecies() const {
    return new vPath;
}

RWCollectable* vPath::copy() const {
    return new vPath(*this);
}

int vPath::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    int c = aPath.fCompareTo(static_cast<const vPath*>(other)->aPath);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

bool vPath::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && fIsEqual(*static_cast<const vPath*>(other));
}

void vPath::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    int notation = 0;
    vString path;
    s >> notation;
    path.restoreFrom(s);
    if (!s.good()) return;
    if (notation < 0 || notation > vPathType::ePortableUNIXFlagged) {
        s.setstate(RWvios::failbit);
        return;
    }
    fConstructFromNormalized(static_cast<vPathType::TypeEnum>(notation), path);
}

// Paths persist only through the virtual streams.
void vPath::restoreGuts(RWFile&) {}

void vPath::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << static_cast<int>(aPathType);
    aPath.saveOn(s);
}

void vPath::saveGuts(RWFile&) const {}

std::ostream& operator<<(std::ostream& out, const vPath& path) {
    return out.write(path.fString().data(), static_cast<std::streamsize>(path.fString().length()));
}
