#include "vfc/system/vProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>

#include "vfc/app/vApp.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"
#include "vfc/text/vOfstream.h"

using vfc::testing::ScopedEnv;
using vfc::testing::TempDir;

namespace {

std::string Str(const vString& s) {
    return std::string(s.data(), s.length());
}

// The state letter of /proc/<pid>/stat ('Z' for a zombie), or 0 when the process is gone.
char ProcState(int pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    if (!std::getline(in, line)) return 0;
    size_t close = line.rfind(')');
    return close != std::string::npos && close + 2 < line.size() ? line[close + 2] : '?';
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
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"echo out; echo err 1>&2; exit 7\"", out))
        << Str(p.aError());
    EXPECT_EQ(Str(out), "out\nerr\n");
    EXPECT_EQ(p.aExitCode().value(), 7);
    EXPECT_GT(p.aProcessId(), 0);
    EXPECT_TRUE(p.aError().isNull());

    // Appended unchanged: carriage returns stay, earlier content is kept.
    vString more("x");
    ASSERT_TRUE(p.fReadPipe("printf \"a\\r\\nb\\r\\n\"", more));
    EXPECT_EQ(Str(more), "xa\r\nb\r\n");
    EXPECT_EQ(p.aExitCode().value(), 0);

    // A child writing nothing still gives true and its code.
    vString none;
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"exit 3\"", none));
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(p.aExitCode().value(), 3);

    // Ended by a signal: 128 + N.
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"kill -9 $$\"", none));
    EXPECT_EQ(p.aExitCode().value(), 128 + 9);
}

TEST(vProcessTest, FileCaptureStripsCarriageReturnsOnlyInTextMode) {
    TempDir dir;
    vProcess p;
    const vString line("printf \"one\\r\\ntwo\\r\\n\\r\"");
    {
        vOfstream text;
        ASSERT_TRUE(text.fOpenText(vFile(dir.file("t.txt").c_str())));
        ASSERT_TRUE(p.fExecute(line, &text));
        // Flushed while capturing: the bytes are in the file before the stream closes.
        EXPECT_EQ(TempDir::read(dir.file("t.txt")), "one\ntwo\n");
        EXPECT_TRUE(text.fClose());
    }
    {
        vOfstream bin;
        ASSERT_TRUE(bin.fOpenBinary(vFile(dir.file("b.bin").c_str())));
        ASSERT_TRUE(p.fExecute(line, &bin));
        EXPECT_TRUE(bin.fClose());
        EXPECT_EQ(TempDir::read(dir.file("b.bin")), "one\r\ntwo\r\n\r");
    }
    {
        // Both targets: only the string receives the output.
        vOfstream text;
        ASSERT_TRUE(text.fOpenText(vFile(dir.file("both.txt").c_str())));
        vString s;
        ASSERT_TRUE(p.fReadPipe_i(line, &s, &text));
        EXPECT_TRUE(text.fClose());
        EXPECT_EQ(Str(s), "one\r\ntwo\r\n\r");
        EXPECT_EQ(TempDir::read(dir.file("both.txt")), "");
    }
}

TEST(vProcessTest, LargeOutputArrivesCompletely) {
    const size_t size = 10u * 1024u * 1024u;
    const std::string pattern = "0123456789abcdef\n";
    std::string expected;
    expected.reserve(size);
    while (expected.size() < size)
        expected += pattern;
    expected.resize(size);

    const vString line("/bin/sh -c \"yes 0123456789abcdef | head -c 10485760\"");
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe(line, out));
    EXPECT_EQ(p.aExitCode().value(), 0);
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
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"echo early; exec >&- 2>&-; sleep 0.4\"", out));
    EXPECT_EQ(Str(out), "early\n");
    EXPECT_EQ(p.aExitCode().value(), vProcess::kStillActive);
    const int pid = p.aProcessId();
    ASSERT_GT(pid, 0);
    EXPECT_NE(ProcState(pid), 0);

    // Once it ended it lingers as a zombie until the next run reaps it.
    char state = 0;
    for (int i = 0; i < 100 && (state = ProcState(pid)) != 'Z'; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_EQ(state, 'Z');
    vString other;
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"exit 0\"", other));
    state = ProcState(pid);
    EXPECT_TRUE(state == 0 || state != 'Z') << state;
}

TEST(vProcessTest, FailedStartsStartNothing) {
    CallbackRecord record;
    vProcess p(&RecordStart, &record);
    vString out;
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"exit 7\"", out));
    ASSERT_EQ(record.calls, 1);
    const int firstPid = p.aProcessId();

    const vString missing("vfc-no-such-program-4711 \"an arg\"");
    EXPECT_FALSE(p.fReadPipe(missing, out));
    EXPECT_EQ(Str(p.aError()), "The application was unable to execute the command\n" +
                                   Str(missing) +
                                   "\nbecause the specified file or path was not found.");
    EXPECT_EQ(p.aExitCode().value(), 7);  // unchanged by the failed start
    EXPECT_EQ(p.aProcessId(), firstPid);

    EXPECT_FALSE(p.fExecute(missing, true, false));
    EXPECT_EQ(Str(p.aError()), "The application was unable to execute the command\n" +
                                   Str(missing) +
                                   "\nbecause the specified file or path was not found.");

    // A path to something that is not a program: some other failure.
    TempDir dir;
    const vString notProgram(dir.path().c_str());
    EXPECT_FALSE(p.fReadPipe(notProgram, out));
    EXPECT_NE(Str(p.aError()).find(dir.path()), std::string::npos);

    EXPECT_FALSE(p.fReadPipe("", out));
    EXPECT_FALSE(p.fReadPipe("   ", out));
    EXPECT_FALSE(p.fExecute("", false, false));
    EXPECT_FALSE(p.fReadPipe("/bin/sh -c \"echo unbalanced", out));
    EXPECT_FALSE(p.aError().isNull());
    EXPECT_TRUE(out.isNull());
    EXPECT_EQ(record.calls, 1);

    // A later success empties the error again.
    ASSERT_TRUE(p.fReadPipe("printf ok", out));
    EXPECT_TRUE(p.aError().isNull());
}

TEST(vProcessTest, StartCallbackSeesThePidBeforeTheOutput) {
    CallbackRecord record;
    vString out;
    record.text = &out;
    vProcess p(&RecordStart, &record);
    ASSERT_TRUE(p.fReadPipe("/bin/sh -c \"echo $$\"", out));
    EXPECT_EQ(record.calls, 1);
    EXPECT_EQ(record.textAtCall, "");
    EXPECT_EQ(record.pid, p.aProcessId());
    EXPECT_EQ(Str(out), std::to_string(record.pid) + "\n");
}

TEST(vProcessTest, ExecuteWaitsAndPollsTheApplication) {
    CountingApp app;
    vProcess p;
    ASSERT_TRUE(p.fExecute("/bin/sh -c \"sleep 0.5; exit 5\"", true, false));
    EXPECT_EQ(p.aExitCode().value(), 5);
    EXPECT_GE(app.updates, 1);
    EXPECT_EQ(p.aProcessId(), 0);  // only captured children record their id

    ASSERT_TRUE(p.fExecute("/bin/sh -c \"kill -9 $$\"", true, false));
    EXPECT_EQ(p.aExitCode().value(), 128 + 9);
}

TEST(vProcessTest, ChildReadsNullInputAndInheritsOnlyStandardStreams) {
    vProcess p;
    vString out;
    ASSERT_TRUE(p.fReadPipe("readlink /proc/self/fd/0", out));
    EXPECT_EQ(Str(out), "/dev/null\n");
    out = vString();
    ASSERT_TRUE(p.fReadPipe("cat", out));
    EXPECT_TRUE(out.isNull());
    EXPECT_EQ(p.aExitCode().value(), 0);

    // A descriptor this process holds open (not close-on-exec) must not reach the child; ls
    // itself opens one for the directory listing.
    TempDir dir;
    std::ofstream held(dir.file("held"));
    ASSERT_TRUE(held.good());
    out = vString();
    ASSERT_TRUE(p.fReadPipe("ls -1 /proc/self/fd", out));
    std::set<std::string> fds;
    std::istringstream lines(Str(out));
    for (std::string fd; std::getline(lines, fd);)
        fds.insert(fd);
    EXPECT_EQ(fds, (std::set<std::string>{"0", "1", "2", "3"})) << Str(out);
}

TEST(vProcessTest, IsExecutableSearchesPathForExecutableFiles) {
    vFile found;
    ASSERT_TRUE(vProcess::IsExecutable("sh", found));
    std::string where = Str(found.fPath());
    EXPECT_EQ(where.substr(where.size() - 3), "/sh");
    EXPECT_TRUE(std::filesystem::exists(where));

    EXPECT_TRUE(vProcess::IsExecutable("/bin/sh", found));
    EXPECT_EQ(Str(found.fPath()), "/bin/sh");

    TempDir dir;
    dir.write("plain", "data\n");
    dir.write("tool", "#!/bin/sh\n");
    std::filesystem::permissions(dir.file("tool"), std::filesystem::perms::owner_exec,
                                 std::filesystem::perm_options::add);
    std::filesystem::create_directory(dir.file("subdir"));

    vFile untouched("unchanged");
    found = untouched;
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("plain").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable(dir.file("subdir").c_str(), found));
    EXPECT_FALSE(vProcess::IsExecutable("vfc-no-such-program-4711", found));
    EXPECT_FALSE(vProcess::IsExecutable("", found));
    EXPECT_EQ(Str(found.fPath()), "unchanged");

    ScopedEnv path("PATH", ("/nonexistent:" + dir.path()).c_str());
    ASSERT_TRUE(vProcess::IsExecutable("tool", found));
    EXPECT_EQ(Str(found.fPath()), dir.file("tool"));
    EXPECT_FALSE(vProcess::IsExecutable("plain", found));
    EXPECT_FALSE(vProcess::IsExecutable("subdir", found));
    EXPECT_FALSE(vProcess::IsExecutable("sh", found));
}
