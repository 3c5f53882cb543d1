#ifndef VFC_FILES_VTEMPDIR_H
#define VFC_FILES_VTEMPDIR_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

/// A new, empty, uniquely named folder that is removed with everything in it when the object
/// goes, unless it is kept: the place where a tool builds its output before moving it into
/// place.
///
/// \code
/// vTempDir work("site-", vFile("out"));       // out/site-1f3a9c0b, say
/// if (!work.fOK()) return false;
/// ...                                         // write into work.fDir()
/// if (vcRenameFile(work.fDir(), vFile("out/site"))) work.fKeep();
/// \endcode
///
/// As Qt's QTemporaryDir (auto-removal that can be switched off) rather than POCO's
/// TemporaryFile (which removes at the end of the process): the owner's scope decides. The
/// removal never follows a symbolic link out of the folder (see vcRemoveTree).
///
/// Failure: fOK() is false when no folder could be made (fDir() is then empty and nothing is
/// removed later); fRemove() reports whether everything went.
class VFC_API vTempDir {
  public:
    // Makes the folder: prefix and eight random hexadecimal digits, in folder (the system's
    // temporary folder when folder's path is empty).
    explicit vTempDir(const vString& prefix = "vfc-", const vFile& folder = vFile());
    // Removes the folder and its contents unless fKeep() was called or fRemove() did it.
    ~vTempDir();
    vTempDir(const vTempDir&) = delete;
    vTempDir& operator=(const vTempDir&) = delete;

    bool fOK() const { return !aDir.fPath().isNull(); }
    const vFile& fDir() const { return aDir; }
    // Leaves the folder where it is when the object goes.
    void fKeep() { aKeep = true; }
    // Removes the folder now; the object then owns nothing. False when something could not be
    // removed (or there was no folder).
    bool fRemove();

  private:
    vFile aDir;
    bool aKeep = false;
};

#endif  // VFC_FILES_VTEMPDIR_H
