#ifndef VFC_FILES_VCHANGEDIR_H
#define VFC_FILES_VCHANGEDIR_H

#include "vfc/base/export.h"
#include "vfc/files/vFile.h"

/// Changes the current directory for its lifetime and changes it back when it goes.
///
/// \code
/// {
///     vChangeDir in(vFile("build/site"));
///     if (!in.fOK()) return false;
///     ...                       // relative paths now start in build/site
/// }                             // the directory of before is current again
/// \endcode
///
/// Like Qt's and POCO's callers, who pair a setter with a restore by hand, but scoped: an early
/// return restores too. The current directory belongs to the whole process, so objects are
/// meant to nest on one thread; the library itself never changes it.
///
/// Failure: fOK() is false when the directory could not be changed (or the current one could
/// not be told, which there would be no way back to); nothing changed then, and the destructor
/// does nothing. Changing back cannot report a failure (the directory of before may be gone).
class VFC_API vChangeDir {
  public:
    explicit vChangeDir(const vFile& dir);
    ~vChangeDir();
    vChangeDir(const vChangeDir&) = delete;
    vChangeDir& operator=(const vChangeDir&) = delete;

    // Whether dir became the current directory.
    bool fOK() const { return !aPrevious.fPath().isNull(); }
    // The directory that was current before (empty when fOK() is false).
    const vFile& fPrevious() const { return aPrevious; }

  private:
    // The directory to change back to; empty when nothing was changed.
    vFile aPrevious;
};

#endif  // VFC_FILES_VCHANGEDIR_H
