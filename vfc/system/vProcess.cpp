#include "vfc/system/vProcess.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/app/vArgList.h"
#include "vfc/app/vpcEnv.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/os/os.h"
#include "vfc/text/vOfstream.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr int vProcess::kStillActive;

namespace {

// Bytes asked for by the first read of a captured child's output. A read that comes back full
// doubles the next one, up to kMaxReadSize: a child that trickles its output is read (and a file
// flushed) as before, and one that pours it out costs a system call per 64 KiB, not per 256 bytes.
constexpr std::size_t kReadSize = 256;
constexpr std::size_t kMaxReadSize = 64 * 1024;
// Milliseconds between two looks at a child that is waited for.
constexpr unsigned kWaitPollMs = 200;
// A captured child normally ends right after its output does; it is given this long to end
// before it is taken as still running.
constexpr unsigned kExitGraceMs = 20;

// Children this process started and did not reap yet: detached ones nobody waits for and
// captured ones that were still running when their output ended. Reaped without blocking at
// the start of every run and when a vProcess goes, so that ended children do not linger.
class ChildRegistry {
  public:
    void fAdd(vfc::os::ChildProcess pid) {
        std::lock_guard<std::mutex> lock(aMutex);
        aPids.push_back(pid);
    }
    // Forgets pid (someone is about to wait for it).
    void fRemove(vfc::os::ChildProcess pid) {
        std::lock_guard<std::mutex> lock(aMutex);
        for (std::size_t i = 0; i < aPids.size(); ++i) {
            if (aPids[i] == pid) {
                aPids.erase(aPids.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
    }
    // Reaps every child that has ended; a pid that is no longer our child is dropped too.
    void fReapEnded() {
        std::lock_guard<std::mutex> lock(aMutex);
        std::size_t kept = 0;
        for (vfc::os::ChildProcess pid : aPids) {
            if (vfc::os::ChildExitCode(pid, false) == vfc::os::kStillRunning) aPids[kept++] = pid;
        }
        aPids.resize(kept);
    }

  private:
    std::mutex aMutex;
    std::vector<vfc::os::ChildProcess> aPids;
};

// Made on first use and never freed: children may still be reaped from static destructors.
ChildRegistry& Registry() {
    static ChildRegistry* registry = new ChildRegistry;
    return *registry;
}

// Splits the command line into the child's argument vector; the tokenizer's messages go to
// error. False when the line does not split or holds no word.
bool SplitCommand(const vString& commandLine, std::vector<std::string>& argv, vString& error) {
    vSlistvString words;
    vString messages;
    bool ok = vArgList::fParseStringIntoSlist(commandLine, words, messages);
    error.append(messages.data(), messages.length());
    if (!ok || words.fEntries() == 0) return false;
    vSlistvStringIter it(words);
    while (it.fAdvance())
        argv.emplace_back(it.aKey().data(), it.aKey().length());
    return true;
}

// The catalogue message for a failed start, with the command in its first slot.
void StartFailure(vfc::os::SpawnError e, const vString& commandLine, vString& error) {
    unsigned id = 6003;
    if (e == vfc::os::SpawnError::eNotFound) id = 6000;
    if (e == vfc::os::SpawnError::eNoResources) id = 6001;
    error = vAppInfo().fGenMessage(id, commandLine);
}

// Writes the bytes to the stream, without carriage returns unless it is binary, and flushes.
void WriteCaptured(vOfstream& file, const char* data, std::size_t n) {
    if (file.fBinary()) {
        file.fWrite(data, static_cast<unsigned>(n));
    } else {
        // Runs between carriage returns go out as they stand.
        const char* end = data + n;
        for (const char* run = data; run < end;) {
            const char* cr = static_cast<const char*>(std::memchr(run, '\r', end - run));
            const char* stop = cr ? cr : end;
            if (stop > run) file.fWrite(run, static_cast<unsigned>(stop - run));
            run = stop + (cr ? 1 : 0);
        }
    }
    file.flush();
}

}  // namespace

vProcess::~vProcess() {
    Registry().fReapEnded();
}

bool vProcess::fExecute(const vString& commandLine, bool wait, bool /*unused*/) {
    Registry().fReapEnded();
    mError = vString();
    std::vector<std::string> argv;
    if (!SplitCommand(commandLine, argv, mError)) return false;

    vfc::os::ChildProcess child = vfc::os::kNoChild;
    long processId = 0;
    vfc::os::SpawnError e = vfc::os::Spawn(std::string(commandLine.data(), commandLine.length()),
                                           argv, vfc::os::kNoPipe, child, processId);
    if (e != vfc::os::SpawnError::eNone) {
        StartFailure(e, commandLine, mError);
        return false;
    }
    if (wait) {
        mExitCode = static_cast<int>(sfWaitForTermination(reinterpret_cast<void*>(child)));
    } else {
        Registry().fAdd(child);
    }
    return true;
}

bool vProcess::fExecute(const vString& commandLine, vOfstream* output) {
    return fReadPipe_i(commandLine, nullptr, output);
}

bool vProcess::fReadPipe(const vString& commandLine, vString& output) {
    return fReadPipe_i(commandLine, &output, nullptr);
}

bool vProcess::fReadPipe_i(const vString& commandLine, vString* text, vOfstream* file) {
    Registry().fReapEnded();
    mError = vString();
    std::vector<std::string> argv;
    if (!SplitCommand(commandLine, argv, mError)) return false;

    vfc::os::PipeEnd readEnd = vfc::os::kNoPipe;
    vfc::os::PipeEnd writeEnd = vfc::os::kNoPipe;
    if (!vfc::os::MakePipe(readEnd, writeEnd)) {
        StartFailure(vfc::os::SpawnError::eNoResources, commandLine, mError);
        return false;
    }
    vfc::os::ChildProcess child = vfc::os::kNoChild;
    long processId = 0;
    vfc::os::SpawnError e = vfc::os::Spawn(std::string(commandLine.data(), commandLine.length()),
                                           argv, writeEnd, child, processId);
    // Only the child keeps a write end, so the pipe ends when the child's output does.
    vfc::os::ClosePipe(writeEnd);
    if (e != vfc::os::SpawnError::eNone) {
        vfc::os::ClosePipe(readEnd);
        StartFailure(e, commandLine, mError);
        return false;
    }
    mProcessId = static_cast<int>(processId);
    if (mStartCallback) mStartCallback(mProcessId, mStartData);

    // Read until the end of the data. Interrupted reads are retried below this level; any
    // other read error cannot go away by trying again on a pipe, so it ends the output too.
    std::unique_ptr<char[]> buffer;  // for a file only: text is read into its own end
    if (!text) buffer.reset(new char[kMaxReadSize]);
    std::size_t ask = kReadSize;
    for (;;) {
        long n = 0;
        if (text) {
            const std::size_t had = text->length();
            text->resizeAndOverwrite(had + ask, [&](char* p, std::size_t) {
                n = vfc::os::ReadSome(readEnd, p + had, ask);
                return had + (n > 0 ? static_cast<std::size_t>(n) : 0);
            });
        } else {
            n = vfc::os::ReadSome(readEnd, buffer.get(), ask);
            if (n > 0 && file) WriteCaptured(*file, buffer.get(), static_cast<std::size_t>(n));
        }
        if (n <= 0) break;
        if (static_cast<std::size_t>(n) == ask && ask < kMaxReadSize) ask *= 2;
    }
    vfc::os::ClosePipe(readEnd);

    int code = vfc::os::ChildExitCodeWithin(child, kExitGraceMs);
    if (code == vfc::os::kStillRunning) {
        mExitCode = kStillActive;
        Registry().fAdd(child);
    } else if (code >= 0) {
        mExitCode = code;
    }
    return true;
}

unsigned long vProcess::sfWaitForTermination(void* processHandle) {
    auto pid = reinterpret_cast<vfc::os::ChildProcess>(processHandle);
    // Whoever waits owns the child now; the registry must not reap it in between.
    Registry().fRemove(pid);
    int code = vfc::os::ChildExitCode(pid, false);
    while (code == kStillActive) {
        vfc::os::SleepMilliseconds(kWaitPollMs);
        vfc::os::DispatchPendingMessages();
        vAppInfo().fUpdateNoAbort();
        code = vfc::os::ChildExitCode(pid, false);
    }
    return static_cast<unsigned long>(code);
}

bool vProcess::IsExecutable(const vString& name, vFile& found) {
    if (name.isNull()) return false;
    std::string file;
    const std::string given(name.data(), name.length());
    if (given.find_first_of(vfc::os::kPathSeparators) != std::string::npos) {
        if (!vfc::os::FindExecutableFile(given, file)) return false;
        found = vFile(vString(file.data(), file.size()));
        return true;
    }
    vSlistvString path;
    vpcGetPathList(path);
    vSlistvStringIter it(path);
    while (it.fAdvance()) {
        std::string candidate(it.aKey().data(), it.aKey().length());
        if (!vfc::os::IsPathSeparator(candidate.back())) candidate += vfc::os::kNativeSeparator;
        candidate += given;
        if (vfc::os::FindExecutableFile(candidate, file)) {
            found = vFile(vString(file.data(), file.size()));
            return true;
        }
    }
    return false;
}
