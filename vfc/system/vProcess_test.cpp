#include "vfc/system/vProcess.h"

#include <gtest/gtest.h>

#include <cctype>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>

#include "vfc/app/vApp.h"
#include "vfc/os/platform.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"
#include "vfc/testing/TextMode.h"
#include "vfc/text/vOfstream.h"

// The path of the program built from testdata/vProcessChild.cpp.
#ifndef VFC_PROCESS_CHILD
#error "VFC_PROCESS_CHILD must name the child program"
#endif

using vfc::testing::InTextMode;
using vfc::testing::ScopedEnv;
using vfc::testing::TempDir;

namespace {

const std::string kChild = VFC_PROCESS_CHILD;

std::string Str(const vString& s) {
    return std::string(s.data(), s.length());
}

// A command line running the child program with the given commands (see vProcessChild.cpp).
vString Child(const std::string& commands) {
    return vString(("\"" + kChild + "\" " + commands).c_str());
}

// What the child writes for "out TEXT": its standard output is a text-mode C stream.
std::string Written(const std::string& text) {
    return InTextMode(text);
}

// The exit code of a child that raised SIGTERM: the signal's number above 128 on POSIX; on
// Windows the C runtime's default action ends the program with code 3.
const int kTerminated = vfc::os::kWindows ? 3 : 128 + SIGTERM;

// The state letter of /proc/<pid>/stat ('Z' for a zombie), or 0 when the process is gone.
char ProcState(int pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    if (!std::getline(in, line)) return 0;
    size_t close = line.rfind(')');
    return close != std::string::npos && close + 2 < line.size() ? line[close + 2] : '?';
}

// Whether the system shows processes and their descriptors under /proc (Linux). Under Wine the
// path would reach the Linux host's /proc, which knows nothing of Windows processes.
bool HasProcFs() {
    return !vfc::os::kWindows && std::filesystem::exists("/proc/self/fd");
}

std::string Lower(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

struct CallbackRecord {
    int pid = 0;
    int calls = 0;
    std::string textAtCall;
    const vString* text = nullptr;
};

void RecordStart(int pid, void* data) {
    CallbackRecord* r = static_cast<CallbackRecord*>(data);
    r->pid = pid;
    ++r->calls;
    if (r->text) r->textAtCall = Str(*r->text);
}

class CountingApp : public vApp {
  public:
    CountingApp() : vApp("vfc", "vProcessTest", "1.0") {}
    void fUpdateNoAbort() override { ++updates; }
    int updates = 0;
};

}  // namespace

TEST(vProcessTest, CapturesStdoutAndStderrIntoStringWithExitCodes) {
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe(Child("out out\\n err err\\n out again exit 7"), out))
        << Str(p.aError());
    EXPECT_EQ(Str(out), Written("out\nerr\nagain"));
    EXPECT_EQ(p.aExitCode().value(), 7);
    EXPECT_GT(p.aProcessId(), 0);
    EXPECT_TRUE(p.aError().isNull());

    // Appended unchanged: carriage returns stay, earlier content is kept.
    vString more("x");
    ASSERT_TRUE(p.fReadPipe(Child("out a\\r\\nb\\r\\n"), more));
    EXPECT_EQ(Str(more), "x" + Written("a\r\nb\r\n"));
    EXPECT_EQ(p.aExitCode().value(), 0);

    // A child writing nothing still gives true and its code.
    vString none;
    ASSERT_TRUE(p.fReadPipe(Child("exit 3"), none));
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(p.aExitCode().value(), 3);

    ASSERT_TRUE(p.fReadPipe(Child("signal"), none));
    EXPECT_EQ(p.aExitCode().value(), kTerminated);
}

TEST(vProcessTest, FileCaptureStripsCarriageReturnsOnlyInTextMode) {
    TempDir dir;
    vProcess p;
    const vString line = Child("out one\\r\\ntwo\\r\\n\\r");
    const std::string written = Written("one\r\ntwo\r\n\r");
    {
        vOfstream text;
        ASSERT_TRUE(text.fOpenText(vFile(dir.file("t.txt").c_str())));
        ASSERT_TRUE(p.fExecute(line, &text));
        // Flushed while capturing: the bytes are in the file before the stream closes. The
        // stream itself writes line feeds the text-mode way.
        EXPECT_EQ(TempDir::read(dir.file("t.txt")), InTextMode("one\ntwo\n"));
        EXPECT_TRUE(text.fClose());
    }
    {
        vOfstream bin;
        ASSERT_TRUE(bin.fOpenBinary(vFile(dir.file("b.bin").c_str())));
        ASSERT_TRUE(p.fExecute(line, &bin));
        EXPECT_TRUE(bin.fClose());
        EXPECT_EQ(TempDir::read(dir.file("b.bin")), written);
    }
    {
        // Both targets: only the string receives the output.
        vOfstream text;
        ASSERT_TRUE(text.fOpenText(vFile(dir.file("both.txt").c_str())));
        vString s;
        ASSERT_TRUE(p.fReadPipe_i(line, &s, &text));
        EXPECT_TRUE(text.fClose());
        EXPECT_EQ(Str(s), written);
        EXPECT_EQ(TempDir::read(dir.file("both.txt")), "");
    }
}

TEST(vProcessTest, LargeOutputArrivesCompletely) {
    const size_t size = 10u * 1024u * 1024u;
    // The pattern the child repeats for "bytes N".
    const std::string pattern = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string expected;
    expected.reserve(size + pattern.size());
    while (expected.size() < size)
        expected += pattern;
    expected.resize(size);

    const vString line = Child("bytes " + std::to_string(size) + " exit 4");
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe(line, out));
    EXPECT_EQ(p.aExitCode().value(), 4);
    ASSERT_EQ(out.length(), size);
    EXPECT_TRUE(Str(out) == expected);

    TempDir dir;
    vOfstream file;
    ASSERT_TRUE(file.fOpenBinary(vFile(dir.file("big").c_str())));
    ASSERT_TRUE(p.fExecute(line, &file));
    ASSERT_TRUE(file.fClose());
    std::string got = TempDir::read(dir.file("big"));
    ASSERT_EQ(got.size(), size);
    EXPECT_TRUE(got == expected);
}

TEST(vProcessTest, ChildStillRunningAfterItsOutputIsReapedLater) {
    TempDir dir;
    const std::string done = dir.file("done");
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe(Child("out early close sleep 600 touch \"" + done + "\""), out));
    // The capture ended with the output, not with the child.
    EXPECT_FALSE(std::filesystem::exists(done));
    EXPECT_EQ(Str(out), "early");
    EXPECT_EQ(p.aExitCode().value(), vProcess::kStillActive);
    const int pid = p.aProcessId();
    ASSERT_GT(pid, 0);

    // The child goes on running and ends on its own.
    for (int i = 0; i < 200 && !std::filesystem::exists(done); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_TRUE(std::filesystem::exists(done));

    // Linux shows the ended child as a zombie until the next run reaps it; Windows has no
    // zombies to look at (there the reaping closes the process handle).
    const bool procFs = HasProcFs();
    char state = 0;
    for (int i = 0; procFs && i < 100 && (state = ProcState(pid)) != 'Z'; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (procFs) {
        ASSERT_EQ(state, 'Z');
    }
    vString other;
    ASSERT_TRUE(p.fReadPipe(Child("exit 0"), other));
    EXPECT_EQ(p.aExitCode().value(), 0);
    if (procFs) {
        EXPECT_NE(ProcState(pid), 'Z');
    }
}

TEST(vProcessTest, FailedStartsStartNothing) {
    CallbackRecord record;
    vProcess p(&RecordStart, &record);
    vString out;
    ASSERT_TRUE(p.fReadPipe(Child("exit 7"), out));
    ASSERT_EQ(record.calls, 1);
    const int firstPid = p.aProcessId();

    const vString missing("vfc-no-such-program-4711 \"an arg\"");
    const std::string notFound = "The application was unable to execute the command\n" +
                                 Str(missing) +
                                 "\nbecause the specified file or path was not found.";
    EXPECT_FALSE(p.fReadPipe(missing, out));
    EXPECT_EQ(Str(p.aError()), notFound);
    EXPECT_EQ(p.aExitCode().value(), 7);  // unchanged by the failed start
    EXPECT_EQ(p.aProcessId(), firstPid);

    EXPECT_FALSE(p.fExecute(missing, true, false));
    EXPECT_EQ(Str(p.aError()), notFound);

    // A file that is no program: some other failure. The name ends in ".exe", as Windows would
    // otherwise look for the name with ".exe" added and not find it.
    TempDir dir;
    const vString notProgram(dir.write("data.exe", "not a program\n").c_str());
    EXPECT_FALSE(p.fReadPipe(notProgram, out));
    EXPECT_NE(Str(p.aError()).find(Str(notProgram)), std::string::npos);
    EXPECT_EQ(Str(p.aError()).find("not found"), std::string::npos) << Str(p.aError());

    EXPECT_FALSE(p.fReadPipe("", out));
    EXPECT_FALSE(p.fReadPipe("   ", out));
    EXPECT_FALSE(p.fExecute("", false, false));
    EXPECT_FALSE(p.fReadPipe(Child("out \"unbalanced"), out));
    EXPECT_FALSE(p.aError().isNull());
    EXPECT_TRUE(out.isNull());
    EXPECT_EQ(record.calls, 1);

    // A later success empties the error again.
    ASSERT_TRUE(p.fReadPipe(Child("out ok"), out));
    EXPECT_TRUE(p.aError().isNull());
    EXPECT_EQ(Str(out), "ok");
}

TEST(vProcessTest, StartCallbackSeesThePidBeforeTheOutput) {
    CallbackRecord record;
    vString out;
    record.text = &out;
    vProcess p(&RecordStart, &record);
    ASSERT_TRUE(p.fReadPipe(Child("pid"), out));
    EXPECT_EQ(record.calls, 1);
    EXPECT_EQ(record.textAtCall, "");
    EXPECT_GT(record.pid, 0);
    EXPECT_EQ(record.pid, p.aProcessId());
    // The child can name its own id only through /proc; elsewhere it writes "?".
    if (HasProcFs()) {
        EXPECT_EQ(Str(out), std::to_string(record.pid));
    }
}

TEST(vProcessTest, ExecuteWaitsAndPollsTheApplication) {
    CountingApp app;
    vProcess p;
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(p.fExecute(Child("sleep 500 exit 5"), true, false)) << Str(p.aError());
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    EXPECT_EQ(p.aExitCode().value(), 5);
    EXPECT_GE(app.updates, 1);
    EXPECT_EQ(p.aProcessId(), 0);  // only captured children record their id

    ASSERT_TRUE(p.fExecute(Child("signal"), true, false));
    EXPECT_EQ(p.aExitCode().value(), kTerminated);

    // Without waiting it returns at once and leaves the exit code alone.
    TempDir dir;
    const std::string done = dir.file("done");
    ASSERT_TRUE(p.fExecute(Child("sleep 400 touch \"" + done + "\" exit 9"), false, false));
    EXPECT_FALSE(std::filesystem::exists(done));
    EXPECT_EQ(p.aExitCode().value(), kTerminated);
    for (int i = 0; i < 200 && !std::filesystem::exists(done); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_TRUE(std::filesystem::exists(done));
}

TEST(vProcessTest, ChildReadsNullInputAndInheritsOnlyStandardStreams) {
    vProcess p;
    vString out;
    {
        // This process's own standard input holds data for the time, so that a child handed it
        // would not see the end at once.
        TempDir dir;
        ASSERT_NE(std::freopen(dir.write("input", "data").c_str(), "r", stdin), nullptr);
        ASSERT_TRUE(p.fReadPipe(Child("stdin exit 6"), out));
        std::freopen(vfc::os::kWindows ? "NUL" : "/dev/null", "r", stdin);
    }
    EXPECT_EQ(Str(out), "eof");
    EXPECT_EQ(p.aExitCode().value(), 6);

    // The descriptors the child holds, where /proc lists them; Windows offers a program no
    // standard way to list the handles it inherited.
    if (!HasProcFs()) return;
    // A descriptor this process holds open (not close-on-exec) must not reach the child; the
    // child itself opens one for the listing.
    TempDir dir;
    std::ofstream held(dir.file("held"));
    ASSERT_TRUE(held.good());
    out = vString();
    ASSERT_TRUE(p.fReadPipe(Child("fds"), out));
    std::map<std::string, std::string> fds;
    std::istringstream lines(Str(out));
    for (std::string fd, target; lines >> fd >> target;)
        fds[fd] = target;
    ASSERT_EQ(fds.size(), 4u) << Str(out);
    EXPECT_EQ(fds["0"], "/dev/null");
    EXPECT_EQ(fds["1"], fds["2"]);
    EXPECT_EQ(fds["1"].rfind("pipe:", 0), 0u) << fds["1"];
    EXPECT_EQ(fds.count("3"), 1u);
}

TEST(vProcessTest, IsExecutableSearchesPathForExecutableFiles) {
    // The system's shell, in the real PATH.
    const std::string shell = vfc::os::kWindows ? "cmd" : "sh";
    const std::string shellFile = vfc::os::kNativeSeparator + shell +
                                  (vfc::os::kWindows ? ".exe" : "");
    vFile found;
    ASSERT_TRUE(vProcess::IsExecutable(shell.c_str(), found));
    std::string where = Str(found.fPath());
    // Windows takes the extension's case from PATHEXT and file names in any case.
    const std::string compared = vfc::os::kWindows ? Lower(where) : where;
    ASSERT_GT(compared.size(), shellFile.size());
    EXPECT_EQ(compared.substr(compared.size() - shellFile.size()), shellFile);
    EXPECT_TRUE(std::filesystem::exists(where));

    // A path is taken as it is.
    EXPECT_TRUE(vProcess::IsExecutable(kChild.c_str(), found));
    EXPECT_EQ(Str(found.fPath()), kChild);

    // Programs are files with the execute permission on POSIX, files with an extension of
    // PATHEXT on Windows; the other platform's mark means nothing.
    const std::string exe = vfc::os::kWindows ? ".exe" : "";
    TempDir dir;
    dir.write("plain", "data\n");
    dir.write("tool.bat", "@echo off\r\n");
    dir.write("tool", "#!/bin/sh\n");
    std::filesystem::permissions(dir.file("tool"), std::filesystem::perms::owner_exec,
                                 std::filesystem::perm_options::add);
    const std::string tool = vfc::os::kWindows ? "tool.bat" : "tool";
    std::filesystem::create_directory(dir.file("subdir"));
    std::filesystem::create_directory(dir.file("folder.exe"));

    vFile untouched("unchanged");
    found = untouched;
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("plain").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("subdir").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("folder.exe").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("folder").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable("vfc-no-such-program-4711", found));
    EXPECT_FALSE(vProcess::IsExecutable("", found));
    EXPECT_EQ(Str(found.fPath()), "unchanged");
    if (vfc::os::kWindows) {
        // Without an extension the file is found with one.
        const std::string bare = kChild.substr(0, kChild.size() - exe.size());
        ASSERT_TRUE(vProcess::IsExecutable(bare.c_str(), found));
        EXPECT_EQ(Lower(Str(found.fPath())), Lower(kChild));
    }

    const std::string childDir = std::filesystem::path(kChild).parent_path().string();
    ScopedEnv path("PATH", ("/nonexistent" + std::string(1, vfc::os::kPathListSeparator) +
                            dir.path() + vfc::os::kPathListSeparator + childDir)
                               .c_str());
    // Lower case, so that the names found are predictable; POSIX ignores it.
    ScopedEnv pathExt("PATHEXT", ".com;.bat;.exe");
    ASSERT_TRUE(vProcess::IsExecutable("tool", found));
    EXPECT_EQ(Str(found.fPath()), dir.path() + vfc::os::kNativeSeparator + tool);
    ASSERT_TRUE(vProcess::IsExecutable("vfc_process_child", found));
    EXPECT_EQ(Str(found.fPath()), childDir + vfc::os::kNativeSeparator + "vfc_process_child" + exe);
    EXPECT_FALSE(vProcess::IsExecutable("plain", found));
    EXPECT_FALSE(vProcess::IsExecutable("subdir", found));
    EXPECT_FALSE(vProcess::IsExecutable("folder", found));
    EXPECT_FALSE(vProcess::IsExecutable(shell.c_str(), found));

    // Only the extensions PATHEXT names count.
    pathExt.set(".com;.bat");
    EXPECT_EQ(vProcess::IsExecutable("vfc_process_child", found), !vfc::os::kWindows);
}
