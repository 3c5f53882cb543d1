// vAppProgressStackDepth: a scope mark for the progress stack of vApp. fStartProgress(mark, n)
// records in it the depth before the new level; fEndProgress(mark) closes every level opened
// after it, so an operation that leaves early still leaves the stack balanced. A mark that was
// never started holds -1 and ends nothing.
#ifndef VFC_APP_VAPPPROGRESSSTACKDEPTH_H
#define VFC_APP_VAPPPROGRESSSTACKDEPTH_H

#include "vfc/base/export.h"

class VFC_API vAppProgressStackDepth {
  public:
    vAppProgressStackDepth() = default;
    vAppProgressStackDepth(const vAppProgressStackDepth& other) = default;
    vAppProgressStackDepth& operator=(const vAppProgressStackDepth& other) = default;
    virtual ~vAppProgressStackDepth();

    int aDepth = -1;
};

#endif  // VFC_APP_VAPPPROGRESSSTACKDEPTH_H
