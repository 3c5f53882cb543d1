#ifndef VFC_APP_VAPPPROGRESSSTACKDEPTH_H
#define VFC_APP_VAPPPROGRESSSTACKDEPTH_H

#include "vfc/base/export.h"

/// A scope mark for the progress stack of vApp.
///
/// vApp::fStartProgress(mark, n) records in it the depth before the new level;
/// vApp::fEndProgress(mark) closes every level opened after it, so an operation that leaves
/// early still leaves the stack balanced.
///
/// Ownership: a plain value (the depth, in aDepth) that refers to no application; end it on the
/// application it was started on, since the mark cannot tell.
///
/// Failure: a mark that was never started holds -1, and ending it does nothing.
class VFC_API vAppProgressStackDepth {
  public:
    vAppProgressStackDepth() = default;
    vAppProgressStackDepth(const vAppProgressStackDepth& other) = default;
    vAppProgressStackDepth& operator=(const vAppProgressStackDepth& other) = default;
    virtual ~vAppProgressStackDepth();

    int aDepth = -1;
};

#endif  // VFC_APP_VAPPPROGRESSSTACKDEPTH_H
