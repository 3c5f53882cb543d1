#ifndef VFC_APP_VAPPSTATUSSTACKDEPTH_H
#define VFC_APP_VAPPSTATUSSTACKDEPTH_H

#include "vfc/base/export.h"

/// A scope mark for the status stack of vApp.
///
/// vApp::fStartStatus(mark, text) records in it the depth before the new level;
/// vApp::fEndStatus(mark) closes every level opened after it, so an operation that leaves
/// early still leaves the stack balanced.
///
/// Ownership: a plain value (the depth, in aDepth) that refers to no application; end it on the
/// application it was started on, since the mark cannot tell.
///
/// Failure: a mark that was never started holds -1, and ending it does nothing.
class VFC_API vAppStatusStackDepth {
  public:
    vAppStatusStackDepth() = default;
    vAppStatusStackDepth(const vAppStatusStackDepth& other) = default;
    vAppStatusStackDepth& operator=(const vAppStatusStackDepth& other) = default;
    virtual ~vAppStatusStackDepth();

    int aDepth = -1;
};

#endif  // VFC_APP_VAPPSTATUSSTACKDEPTH_H
