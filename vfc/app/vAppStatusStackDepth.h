// vAppStatusStackDepth: a scope mark for the status stack of vApp. fStartStatus(mark, text)
// records in it the depth before the new level; fEndStatus(mark) closes every level opened
// after it, so an operation that leaves early still leaves the stack balanced. A mark that was
// never started holds -1 and ends nothing.
#ifndef VFC_APP_VAPPSTATUSSTACKDEPTH_H
#define VFC_APP_VAPPSTATUSSTACKDEPTH_H

#include "vfc/base/export.h"

class VFC_API vAppStatusStackDepth {
  public:
    vAppStatusStackDepth() = default;
    vAppStatusStackDepth(const vAppStatusStackDepth& other) = default;
    vAppStatusStackDepth& operator=(const vAppStatusStackDepth& other) = default;
    virtual ~vAppStatusStackDepth();

    int aDepth = -1;
};

#endif  // VFC_APP_VAPPSTATUSSTACKDEPTH_H
