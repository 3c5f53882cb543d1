#ifndef VFC_APP_VPDEBUG_H
#define VFC_APP_VPDEBUG_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

/// The debug channel: lines of diagnostic text that cost nothing while it is off, which it is
/// unless the environment variable VFC_DEBUG switches it on.
///
/// VFC_DEBUG unset, empty or "0": off. "1" or "stderr": each line goes to standard error.
/// Anything else names a file that each line is appended to (created when missing).
///
/// \code
/// if (vpDebug::sfOn()) vpDebug::sfPrint("resolved " + path);
/// \endcode
///
/// The variable is read on first use and kept; sfReset() reads it again. Lines are written
/// whole, under a lock, and a file is flushed after each line, so a crash loses nothing that was
/// printed. Like Qt's categorised logging switched by QT_LOGGING_RULES, but with one channel and
/// no levels: the application's log (vApp::fLogMsg) is for users, this is for developers.
///
/// Failure: a file that cannot be opened leaves the channel off (sfOn() false); nothing throws.
class VFC_API vpDebug {
  public:
    // Whether lines are written anywhere.
    static bool sfOn();
    // Writes text followed by a line feed when the channel is on; nothing otherwise.
    static void sfPrint(const vString& text);
    // Reads VFC_DEBUG again (closing a file the channel had open).
    static void sfReset();
};

#endif  // VFC_APP_VPDEBUG_H
