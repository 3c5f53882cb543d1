#ifndef VFC_APP_VOUTPUTAPPEND_H
#define VFC_APP_VOUTPUTAPPEND_H

#include "vfc/app/vOutputStack.h"
#include "vfc/base/export.h"

/// A vOutputStack into a file that keeps what the file holds and appends the output: a log that
/// grows run after run.
///
/// \code
/// vOutputAppend log(vFile("convert.log"), true);  // messages, warnings and errors
/// \endcode
///
/// Failure: fOK() is false when the file could not be opened for appending.
class VFC_API vOutputAppend : public vOutputStack {
  public:
    explicit vOutputAppend(const vFile& file, bool errorsToo = false);
    ~vOutputAppend() override;
};

#endif  // VFC_APP_VOUTPUTAPPEND_H
