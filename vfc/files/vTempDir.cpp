#include "vfc/files/vTempDir.h"

#include "vfc/files/vFileOps.h"

vTempDir::vTempDir(const vString& prefix, const vFile& folder) {
    vFile made;
    if (vcMakeTempDirectory(folder, prefix, made)) aDir = made;
}

vTempDir::~vTempDir() {
    if (!aKeep) fRemove();
}

bool vTempDir::fRemove() {
    if (!fOK()) return false;
    bool removed = vcRemoveTree(aDir);
    aDir = vFile();
    return removed;
}
