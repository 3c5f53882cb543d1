#ifndef VFC_SYSTEM_VPROCESS_H
#define VFC_SYSTEM_VPROCESS_H

#include "vfc/base/export.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

class vOfstream;

/// Runs another program from a command line, without a shell.
///
/// The line is cut into words by the command-line tokenizer (double quotes group; see
/// vArgList::fParseStringIntoSlist); a line without a word starts nothing. On POSIX the first
/// word is the program, searched in PATH, and the words are its arguments; on Windows the whole
/// line goes unchanged to CreateProcessA, which finds the program its own way. A child runs
/// detached, without a console (optionally waited for), or with its standard output and
/// standard error captured through one pipe into a vString or a vOfstream. A captured child's
/// standard input reads the null device and it inherits nothing but its standard streams.
///
/// \code
/// vProcess p;
/// vString out;
/// if (p.fReadPipe("convert -v \"My Book.mif\"", out) && p.aExitCode().value() == 0) ...;
/// else std::cerr << p.aError();   // "...unable to execute the command\nconvert ...\n..."
/// \endcode
///
/// Ownership: the object keeps the child's id, exit code and last error; the output string or
/// stream is the caller's and must live through the call. A detached child that nobody waits
/// for, and a captured child still running when its output ended, are reaped later by the
/// library (at the next run or when a vProcess is destroyed).
///
/// Failure: nothing throws; the run functions return false when the child could not be
/// started. A line that does not split into words leaves the tokenizer's message in aError();
/// a failed start leaves the message of the application's catalogue (6000 not found, 6001 low
/// on resources, 6003 other) with the command, taken through vAppInfo(), which makes the default
/// application when there is none. aExitCode() is set only when the code is known and otherwise
/// keeps its previous value; a captured child that closed its output but still runs leaves it at
/// kStillActive (259).
class VFC_API vProcess {
  public:
    // The value of aExitCode for a child that closed its output and still runs.
    static constexpr int kStillActive = 259;

    vProcess() = default;
    // callback is called with the child's process id (and data) as soon as a captured child runs,
    // before its output is read.
    vProcess(void (*callback)(int, void*), void* data)
        : mStartCallback(callback), mStartData(data) {}
    virtual ~vProcess();

    // Starts a detached child; with wait, blocks until it ends (looking every 200 ms, then
    // dispatching the thread's pending window messages on Windows and calling the application's
    // fUpdateNoAbort) and stores its exit code. unused has no effect.
    bool fExecute(const vString& commandLine, bool wait, bool unused);
    // Runs the child with its output captured into output (carriage returns removed when the
    // stream was opened in text mode); returns when the output ends.
    bool fExecute(const vString& commandLine, vOfstream* output);
    // The same into a string, unchanged.
    bool fReadPipe(const vString& commandLine, vString& output);
    // Both captures: text takes precedence over file when both are given.
    bool fReadPipe_i(const vString& commandLine, vString* text, vOfstream* file);

    // Waits for the process (its id on POSIX, its process handle on Windows, as a pointer-sized
    // value) to end and returns its exit code; (unsigned long)-1 when it is not an unreaped
    // child of this process.
    static unsigned long sfWaitForTermination(void* processHandle);
    // Whether name can be started: a path to an executable file, or a name found in PATH;
    // found receives the file. On Windows a name without an extension is tried with each
    // extension of PATHEXT.
    static bool IsExecutable(const vString& name, vFile& found);

    // The child's process id (0 until a captured child was started).
    int aProcessId() const { return mProcessId; }
    // The child's exit code once known (128 + N for a child ended by signal N).
    const vInt& aExitCode() const { return mExitCode; }
    // The message of the last failed start, empty otherwise.
    const vString& aError() const { return mError; }

  private:
    int mProcessId = 0;
    vInt mExitCode;
    vString mError;
    void (*mStartCallback)(int, void*) = nullptr;
    void* mStartData = nullptr;
};

#endif  // VFC_SYSTEM_VPROCESS_H
