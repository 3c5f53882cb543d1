#ifndef VFC_APP_VOUTPUTSTACK_H
#define VFC_APP_VOUTPUTSTACK_H

#include <iosfwd>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

/// Sends the console output of the application object (and of anything else that writes to
/// std::cout) into a string or a file for its lifetime, and back to where it went before when
/// it goes. Redirections nest: the innermost one receives the output.
///
/// \code
/// vString report;
/// {
///     vOutputStack capture(report);
///     vAppInfo().fLogMsg("3 files converted", 0);  // into report, not onto the console
/// }
/// // report == "3 files converted\n"
/// \endcode
///
/// With errorsToo, std::cerr (warnings and errors of the log) goes to the same place. The
/// streams are the process's, so redirections belong to one thread at a time and must end in
/// the reverse order of their beginning, as scoped objects do by themselves. Unlike redirecting
/// the standard descriptors (freopen, dup2), this changes only what goes through the C++
/// streams; child processes keep the real console.
///
/// Failure: fOK() is false when the file could not be opened; nothing is redirected then.
/// Output to a file is flushed when the object goes; a write that fails there is reported by
/// fClose().
class VFC_API vOutputStack {
  public:
    // Into text (appended to what it holds).
    explicit vOutputStack(vString& text, bool errorsToo = false);
    // Into file, created or truncated (vOutputAppend appends).
    explicit vOutputStack(const vFile& file, bool errorsToo = false);
    // Restores the streams (see fClose).
    virtual ~vOutputStack();
    vOutputStack(const vOutputStack&) = delete;
    vOutputStack& operator=(const vOutputStack&) = delete;

    bool fOK() const { return aOK; }
    // Restores the streams now (the destructor then does nothing) and reports whether every
    // byte reached the string or the file.
    bool fClose();

  protected:
    vOutputStack(const vFile& file, bool errorsToo, bool append);

  private:
    struct Target;
    void fRedirect(bool errorsToo);

    std::unique_ptr<Target> aTarget;
    std::streambuf* aOldOut = nullptr;
    std::streambuf* aOldErr = nullptr;
    bool aOK = false;
};

#endif  // VFC_APP_VOUTPUTSTACK_H
