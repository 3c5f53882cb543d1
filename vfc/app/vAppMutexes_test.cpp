#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/os/platform.h"
#include "vfc/system/vProcess.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"

// The path of the program built from testdata/vAppMutexChild.cpp.
#ifndef VFC_MUTEX_CHILD
#error "VFC_MUTEX_CHILD must name the mutex child program"
#endif

using vfc::testing::ScopedEnv;
using vfc::testing::TempDir;
namespace fs = std::filesystem;

namespace {

vSetvString Names(const std::vector<std::string>& names) {
    vSetvString set;
    for (const std::string& n : names)
        set.fInsert(vString(n.c_str()));
    return set;
}

bool Holds(const vSetvString& set, const std::string& name) {
    return set.fContains(vString(name.c_str()));
}

// Polls until done() is true, for at most 30 seconds.
bool WaitFor(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

// Every test works in a fresh folder: on POSIX it is the runtime folder, which holds the lock
// files; Windows mutexes live in the session, so names carry the folder's random part, and
// tests running at once never meet.
class vAppMutexTest : public ::testing::Test {
  protected:
    vAppMutexTest() : aRuntime("XDG_RUNTIME_DIR", aDir.path().c_str()) {}

    std::string Name(const std::string& n) const {
        return n + " " + fs::path(aDir.path()).filename().string();
    }
    vSetvString Set(const std::vector<std::string>& names) const {
        std::vector<std::string> full;
        for (const std::string& n : names)
            full.push_back(Name(n));
        return Names(full);
    }
    // The entries of the runtime folder (POSIX), the child's files left out.
    std::vector<std::string> LockFiles() const {
        std::vector<std::string> files;
        for (const auto& e : fs::directory_iterator(aDir.path())) {
            std::string n = e.path().filename().string();
            if (n.rfind("mutex-", 0) == 0) files.push_back(n);
        }
        return files;
    }
    // Starts the child holding name; true once it reports holding it.
    bool StartHolder(const std::string& name, const std::string& how) {
        aReady = aDir.file("ready");
        aGo = aDir.file("go");
        fs::remove(aReady);
        fs::remove(aGo);
        const std::string cmd = "\"" + std::string(VFC_MUTEX_CHILD) + "\" \"" + name + "\" \"" +
                                aReady + "\" \"" + aGo + "\" " + how;
        vProcess p;
        if (!p.fExecute(vString(cmd.c_str()), false, false)) return false;
        if (!WaitFor([&] { return fs::exists(aReady); })) return false;
        return TempDir::read(aReady) == "held";
    }
    // Tells the child to end and waits until it has seen it, so that it never outlives the
    // test's folder (and holds the test's output open) waiting for a file that is gone.
    void EndHolder() const {
        aDir.write("go", "");
        EXPECT_TRUE(WaitFor([&] { return !fs::exists(aReady); }));
    }

    TempDir aDir;
    ScopedEnv aRuntime;
    std::string aReady, aGo;
};

}  // namespace

TEST_F(vAppMutexTest, TakesQueriesAndReleasesWithinTheProcess) {
    const std::string a = Name("a"), b = Name("b"), c = Name("c");
    vApp other("vfc", "MutexOther", "1.0");
    {
        vApp app("vfc", "MutexTest", "1.0");
        ASSERT_TRUE(app.fSetMutexes(Set({"a", "b"})));
        EXPECT_EQ(app.mutexNames().fEntries(), 2u);
        EXPECT_TRUE(Holds(app.mutexNames(), a) && Holds(app.mutexNames(), b));

        vSetvString held;
        EXPECT_TRUE(other.fQueryMutexes(Set({"a", "b", "c"}), held));
        EXPECT_EQ(held.fEntries(), 2u);
        EXPECT_TRUE(Holds(held, a) && Holds(held, b) && !Holds(held, c));
        // The holder's own question gives the same answer, and asking takes nothing.
        EXPECT_TRUE(app.fQueryMutexes(Set({"b"}), held));
        EXPECT_TRUE(other.fSetMutexes(Set({"c"})));
        EXPECT_FALSE(other.fSetMutexes(Set({"a"})));
        // Taking again what this object holds is no conflict.
        EXPECT_TRUE(app.fSetMutexes(Set({"a"})));

        if (!vfc::os::kWindows) {
            std::vector<std::string> files = LockFiles();
            EXPECT_EQ(files.size(), 3u);
            for (const std::string& f : files)
                EXPECT_FALSE(TempDir::read(aDir.file(f)).empty()) << f;
        }

        // A copy holds nothing, and its end releases nothing.
        {
            vApp copy(app);
            EXPECT_EQ(copy.mutexNames().fEntries(), 0u);
            EXPECT_FALSE(copy.fClearMutexes());
        }
        EXPECT_FALSE(other.fSetMutexes(Set({"b"})));

        EXPECT_TRUE(app.fClearMutexes());
        EXPECT_EQ(app.mutexNames().fEntries(), 0u);
        EXPECT_FALSE(app.fClearMutexes());
        EXPECT_FALSE(other.fQueryMutexes(Set({"a", "b"}), held));
        EXPECT_EQ(held.fEntries(), 0u);
        if (!vfc::os::kWindows) {
            EXPECT_EQ(LockFiles().size(), 1u);  // c's, still held
        }

        // The destructor releases what it holds.
        ASSERT_TRUE(app.fSetMutexes(Set({"a"})));
    }
    EXPECT_TRUE(other.fSetMutexes(Set({"a", "b"})));
    EXPECT_EQ(other.mutexNames().fEntries(), 3u);
    // The empty name is refused.
    EXPECT_FALSE(other.fSetMutexes(Names({""})));
}

TEST_F(vAppMutexTest, TakesAllOrNone) {
    vApp app("vfc", "MutexTest", "1.0");
    vApp other("vfc", "MutexOther", "1.0");
    ASSERT_TRUE(other.fSetMutexes(Set({"b"})));
    ASSERT_TRUE(app.fSetMutexes(Set({"x"})));

    EXPECT_FALSE(app.fSetMutexes(Set({"a", "b", "c", "d"})));
    // Only what it held before stays.
    EXPECT_EQ(app.mutexNames().fEntries(), 1u);
    EXPECT_TRUE(Holds(app.mutexNames(), Name("x")));
    vSetvString held;
    other.fQueryMutexes(Set({"a", "b", "c", "d", "x"}), held);
    EXPECT_EQ(held.fEntries(), 2u);
    EXPECT_TRUE(Holds(held, Name("b")) && Holds(held, Name("x")));
    EXPECT_TRUE(other.fSetMutexes(Set({"a", "c", "d"})));

    // Forcing takes nothing from a living holder in this process; it releases its own.
    EXPECT_FALSE(app.fForceClearMutexes(Set({"b"})));
    EXPECT_TRUE(other.fQueryMutexes(Set({"b"}), held));
    EXPECT_TRUE(other.fForceClearMutexes(Set({"a", "b", "never taken"})));
    EXPECT_EQ(other.mutexNames().fEntries(), 2u);
    EXPECT_TRUE(app.fSetMutexes(Set({"a", "b"})));
}

TEST_F(vAppMutexTest, OddNamesAreDistinctAndValid) {
    const std::string longA(500, 'a');
    const std::vector<std::string> odd = {"dir/sub",
                                          "dir\\sub",
                                          "dir%2Fsub",
                                          "with space",
                                          " ",
                                          "..",
                                          "/",
                                          "\\",
                                          "C:\\Proj\\a.prj",
                                          "\xc3\xa9t\xc3\xa9",
                                          longA + "1",
                                          longA + "2",
                                          "~x",
                                          "%7Ex",
                                          "Case",
                                          "case"};
    vApp app("vfc", "MutexTest", "1.0");
    vApp other("vfc", "MutexOther", "1.0");
    ASSERT_TRUE(app.fSetMutexes(Set(odd)));
    EXPECT_EQ(app.mutexNames().fEntries(), odd.size());
    // Each is a mutex of its own: held one by one, free one by one.
    vSetvString held;
    EXPECT_TRUE(other.fQueryMutexes(Set(odd), held));
    EXPECT_EQ(held.fEntries(), odd.size());
    if (!vfc::os::kWindows) {
        std::vector<std::string> files = LockFiles();
        EXPECT_EQ(files.size(), odd.size());
        for (const std::string& f : files)
            EXPECT_LE(f.size(), 255u) << f;
        // Directly in the folder: no name made a subfolder.
        for (const auto& e : fs::directory_iterator(aDir.path()))
            EXPECT_FALSE(e.is_directory()) << e.path();
    }
    for (const std::string& n : odd) {
        ASSERT_TRUE(app.fForceClearMutexes(Set({n}))) << n;
        EXPECT_TRUE(other.fSetMutexes(Set({n}))) << n;
        EXPECT_EQ(other.mutexNames().fEntries() + app.mutexNames().fEntries(), odd.size()) << n;
    }
}

TEST_F(vAppMutexTest, AnotherProcessHoldsUntilItEnds) {
    const std::string name = Name("proj/x y\\z");
    const vSetvString names = Names({name});
    vApp app("vfc", "MutexTest", "1.0");
    ASSERT_TRUE(StartHolder(name, "release"));

    EXPECT_FALSE(app.fSetMutexes(names));
    vSetvString held;
    EXPECT_TRUE(app.fQueryMutexes(names, held));
    EXPECT_TRUE(Holds(held, name));
    // Not taken from a living holder.
    EXPECT_FALSE(app.fForceClearMutexes(names));
    EXPECT_FALSE(app.fSetMutexes(names));
    // The child learns the other way round: this process holds, it is refused.
    const std::string mine = Name("mine");
    ASSERT_TRUE(app.fSetMutexes(Names({mine})));
    EndHolder();
    EXPECT_TRUE(WaitFor([&] { return app.fSetMutexes(names); }));
    EXPECT_FALSE(StartHolder(mine, "release"));
    EXPECT_EQ(TempDir::read(aReady), "refused");
}

TEST_F(vAppMutexTest, AHolderThatEndsWithoutReleasingBlocksNobody) {
    std::vector<std::string> ways = {"exit"};
    // A Windows abort may stop for a report; POSIX's ends by signal at once.
    if (!vfc::os::kWindows) ways.push_back("abort");
    vApp app("vfc", "MutexTest", "1.0");
    for (const std::string& how : ways) {
        const std::string name = Name("crash " + how);
        const vSetvString names = Names({name});
        ASSERT_TRUE(StartHolder(name, how)) << how;
        EXPECT_FALSE(app.fSetMutexes(names)) << how;
        EndHolder();
        vSetvString held;
        EXPECT_TRUE(WaitFor([&] { return !app.fQueryMutexes(names, held); })) << how;
        if (!vfc::os::kWindows) {
            // The file stays behind, with the dead holder's id, until forced away.
            EXPECT_EQ(LockFiles().size(), 1u) << how;
            EXPECT_TRUE(app.fForceClearMutexes(names)) << how;
            EXPECT_EQ(LockFiles().size(), 0u) << how;
        }
        EXPECT_TRUE(app.fSetMutexes(names)) << how;
        EXPECT_TRUE(app.fClearMutexes());
    }
}

// A Windows mutex belongs to the thread that took it: when that thread ends, it is abandoned and
// free for the next taker, although the process lives on. A POSIX lock is the process's.
TEST_F(vAppMutexTest, AMutexWhoseThreadEndedIsFreeOnlyOnWindows) {
    const std::string name = Name("thread");
    const vSetvString names = Names({name});
    vApp app("vfc", "MutexTest", "1.0");
    ASSERT_TRUE(StartHolder(name, "thread"));
    EXPECT_EQ(app.fSetMutexes(names), vfc::os::kWindows);
    EndHolder();
    EXPECT_TRUE(WaitFor([&] { return app.fSetMutexes(names); }));
    vSetvString held;
    EXPECT_TRUE(app.fQueryMutexes(names, held));
}

// Without $XDG_RUNTIME_DIR the lock files go to a folder of the user's own in the temporary
// folder, which is used only while nobody else may enter it.
TEST_F(vAppMutexTest, RuntimeFolderFallsBackToAPrivateTemporaryFolder) {
    if (vfc::os::kWindows) GTEST_SKIP() << "Windows mutexes need no folder";
    TempDir tmp;
    ScopedEnv noRuntime("XDG_RUNTIME_DIR", nullptr);
    ScopedEnv tmpdir("TMPDIR", tmp.path().c_str());
    vApp app("vfc", "MutexTest", "1.0");
    ASSERT_TRUE(app.fSetMutexes(Set({"a"})));
    std::vector<fs::path> folders;
    for (const auto& e : fs::directory_iterator(tmp.path()))
        folders.push_back(e.path());
    ASSERT_EQ(folders.size(), 1u);
    EXPECT_EQ(folders[0].filename().string().rfind("vfc-", 0), 0u);
    EXPECT_EQ(fs::status(folders[0]).permissions() & fs::perms::all, fs::perms::owner_all);
    EXPECT_EQ(std::distance(fs::directory_iterator(folders[0]), fs::directory_iterator()), 1);
    EXPECT_TRUE(app.fClearMutexes());

    fs::permissions(folders[0], fs::perms::all);
    EXPECT_FALSE(app.fSetMutexes(Set({"a"})));
    fs::permissions(folders[0], fs::perms::owner_all);
    EXPECT_TRUE(app.fSetMutexes(Set({"a"})));
}
