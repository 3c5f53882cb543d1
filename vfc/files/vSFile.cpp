#include "vfc/files/vSFile.h"

#include "vfc/files/vFileOps.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vSFile, vClassID::vSFile)

vSFile::vSFile(const vFile& file, const vString& value) : aFile(file), aValue(value) {}

vSFile::~vSFile() = default;

bool vSFile::fStamp() {
    unsigned long long size = 0;
    vTime time(vTime::kInvalidSecond);
    if (aFile.fKind() != vFile::KindEnum::eRegular || !vcFileSize(aFile, size) ||
        !vcModificationTime(aFile, time)) {
        aSize = 0;
        aTime = vTime(vTime::kInvalidSecond);
        return false;
    }
    aSize = size;
    aTime = time;
    return true;
}

bool vSFile::fIsChanged() const {
    if (!fIsStamped()) return true;
    vSFile now(aFile);
    return !now.fStamp() || now.aSize != aSize || now.aTime != aTime;
}

bool vSFile::operator==(const vSFile& other) const {
    return aSize == other.aSize && aTime == other.aTime && aFile.fIsEqual(other.aFile) &&
           aValue.fIsEqual(other.aValue);
}

RWCollectable* vSFile::newSpecies() const {
    return new vSFile;
}

RWCollectable* vSFile::copy() const {
    return new vSFile(*this);
}

int vSFile::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const vSFile* o = static_cast<const vSFile*>(other);
    int c = aFile.fPath().fCompareTo(o->aFile.fPath());
    if (c == 0) c = aValue.fCompareTo(o->aValue);
    if (c == 0 && aSize != o->aSize) c = aSize < o->aSize ? -1 : 1;
    if (c == 0 && aTime != o->aTime) c = aTime < o->aTime ? -1 : 1;
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

bool vSFile::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && *this == *static_cast<const vSFile*>(other);
}

void vSFile::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    vFile file;
    vString value;
    unsigned long long size = 0;
    vTime time(vTime::kInvalidSecond);
    file.restoreGuts(s);
    value.restoreFrom(s);
    s >> size;
    time.restoreGuts(s);
    if (!s.good()) return;
    aFile = file;
    aValue = value;
    aSize = size;
    aTime = time;
}

// Entries persist only through the virtual streams, like the files they name.
void vSFile::restoreGuts(RWFile&) {}

void vSFile::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aFile.saveGuts(s);
    aValue.saveOn(s);
    s << aSize;
    aTime.saveGuts(s);
}

void vSFile::saveGuts(RWFile&) const {}
