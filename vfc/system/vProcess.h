// vProcess: runs another program from a command line, without a shell: the line is cut into
// words by the command-line tokenizer (double quotes group) and the first word is the program,
// searched in PATH. A child runs detached (optionally waited for) or with its standard output
// and standard error captured through one pipe into a vString or a vOfstream.
//
//   vProcess p;
//   vString out;
//   if (p.fReadPipe("convert -v \"My Book.mif\"", out) && p.aExitCode().value() == 0) ...;
//   else std::cerr << p.aError();   // "...unable to execute the command\nconvert ...\n..."
//
// A failed start returns false and leaves the message of the library's catalogue (6000 not
// found, 6001 low on resources, 6003 other) with the command in aError. A captured child that
// closed its output but still runs leaves aExitCode at 259; it is reaped later. The child's
// standard input reads /dev/null and it inherits no descriptor but its standard streams.
#ifndef VFC_SYSTEM_VPROCESS_H
#define VFC_SYSTEM_VPROCESS_H

#include "vfc/base/export.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

class vOfstream;

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

    // Starts a detached child; with wait, blocks until it ends (polling every 200 ms and calling
    // the application's fUpdateNoAbort) and stores its exit code. unused has no effect.
    bool fExecute(const vString& commandLine, bool wait, bool unused);
    // Runs the child with its output captured into output (carriage returns removed when the
    // stream was opened in text mode); returns when the output ends.
    bool fExecute(const vString& commandLine, vOfstream* output);
    // The same into a string, unchanged.
    bool fReadPipe(const vString& commandLine, vString& output);
    // Both captures: text takes precedence over file when both are given.
    bool fReadPipe_i(const vString& commandLine, vString* text, vOfstream* file);

    // Waits for the process (its id, as a pointer-sized value) to end and returns its exit code.
    static unsigned long sfWaitForTermination(void* processHandle);
    // Whether name can be started: a path to an executable file, or a name found in PATH;
    // found receives the file.
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
