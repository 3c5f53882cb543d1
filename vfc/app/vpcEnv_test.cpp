#include "vfc/app/vpcEnv.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "vfc/app/internal/vpAppEnvironment.h"
#include "vfc/app/vApp.h"
#include "vfc/os/platform.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"

namespace {

using vfc::testing::ScopedEnv;

constexpr bool kWindows = vfc::os::kWindows;

std::string str(const char* s) {
    return s ? s : "";
}

std::string expand(const char* in) {
    vString s(in);
    vpcUserEnvExpand(s);
    return std::string(s.data(), s.length());
}

TEST(vpcEnv, GetPutPathListAndSleep) {
    ScopedEnv var("VFC_TEST_VAR", nullptr);
    vString value("untouched");
    EXPECT_FALSE(vpcGetEnv("VFC_TEST_VAR", value));
    EXPECT_EQ(std::string(value.data()), "untouched");
    vpcPutEnv("VFC_TEST_VAR", "a=b c");
    ASSERT_TRUE(vpcGetEnv("VFC_TEST_VAR", value));
    EXPECT_EQ(std::string(value.data()), "a=b c");

    // Split at the platform's separator (";" on Windows, ":" on POSIX); empty entries vanish.
    const std::string sep(1, vpcPathListSeparator());
    EXPECT_EQ(vpcPathListSeparator(), kWindows ? ';' : ':');
    ScopedEnv path("PATH", ("a" + sep + sep + "b" + sep).c_str());
    vSlistvString list;
    list.fInsert("stale");
    vpcGetPathList(list);
    std::string joined;
    for (vSlistvStringIter it(list); it.fAdvance();)
        joined += std::string(it.aKey().data()) + "|";
    EXPECT_EQ(joined, "a|b|");
    path.set(nullptr);
    vpcGetPathList(list);
    EXPECT_EQ(list.fEntries(), 0u);

    auto start = std::chrono::steady_clock::now();
    vpcSleep(vInt(-3));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    vpcSleep(vInt(1));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
}

TEST(vpcEnv, ExpandsBothReferenceForms) {
    ScopedEnv temp("TEMP", "/var/tmp"), a("A", "1"), x("X", "xv"), v("V", "%X%");
    ScopedEnv unknown("VFC_TEST_UNKNOWN", nullptr);
    const char* rows[][2] = {
        {"%TEMP%\\x", "/var/tmp\\x"},
        {"$TEMP/x", "/var/tmp/x"},
        {"$TEMP\\x$A", "/var/tmp\\x1"},
        {"%%", "%%"},
        {"cost: 5$", "cost: 5$"},
        {"$A:B", "1:B"},
        {"%%A%", "%1"},  // "%%" holds no name; the second "%" opens one
        {"%VFC_TEST_UNKNOWN%/$VFC_TEST_UNKNOWN/x", "%VFC_TEST_UNKNOWN%/$VFC_TEST_UNKNOWN/x"},
        // Names are compared as the C runtime's getenv compares them: with case on POSIX,
        // without on Windows.
        {"%a%", kWindows ? "1" : "%a%"},
        // Values are not scanned again, but the scan goes on after them.
        {"%V%-%X%", "%X%-xv"},
        {"$V$X", "%X%xv"},
    };
    for (auto& r : rows)
        EXPECT_EQ(expand(r[0]), r[1]) << r[0];
}

TEST(vpcEnv, ProductDirectoryIsReservedAndWins) {
    vfc::testing::TempDir dir;
    ScopedEnv path("PATH", "/bin");
    ScopedEnv home("VORLANDIXHOME", dir.path().c_str());
    vApp app("F", "N", "1.0");
    home.set("/somewhere/else");
    // The product directory in the host's form (backslashes on Windows).
    std::string product = dir.path();
    if (kWindows)
        for (char& c : product)
            if (c == '/') c = '\\';
    EXPECT_EQ(expand("%VORLANDIXHOME%/bin"), product + "/bin");
    EXPECT_EQ(expand("$VORLANDIXHOME/bin"), product + "/bin");
}

// Windows asks the shell for the three folders: the roaming application data, the documents
// and the Windows directory, which the system also names in APPDATA, USERPROFILE and SystemRoot.
TEST(vpcEnv, FolderNamesOnWindows) {
    if (!kWindows) {
        EXPECT_EQ(expand("%CSIDL_WINDOWS%"), "%CSIDL_WINDOWS%");  // no counterpart on POSIX
        GTEST_SKIP() << "the shell's folders are Windows's own";
    }
    ScopedEnv appdata("CSIDL_APPDATA", nullptr), personal("CSIDL_PERSONAL", nullptr);
    ScopedEnv windows("CSIDL_WINDOWS", nullptr);
    const std::string roaming = str(std::getenv("APPDATA"));
    ASSERT_FALSE(roaming.empty());
    EXPECT_EQ(expand("%CSIDL_APPDATA%\\tool"), roaming + "\\tool");
    // The shell's folder, not the variable: changing APPDATA changes nothing here.
    {
        ScopedEnv moved("APPDATA", "C:\\elsewhere");
        EXPECT_EQ(expand("%CSIDL_APPDATA%"), roaming);
    }
    EXPECT_EQ(expand("$CSIDL_PERSONAL"), str(std::getenv("USERPROFILE")) + "\\Documents");
    vString windowsDir = expand("%CSIDL_WINDOWS%").c_str();
    windowsDir.fToLower();
    vString systemRoot = str(std::getenv("SystemRoot")).c_str();
    systemRoot.fToLower();
    EXPECT_EQ(std::string(windowsDir.data()), systemRoot.data());
    // A variable of the same name comes first.
    appdata.set("C:\\from\\env");
    EXPECT_EQ(expand("%CSIDL_APPDATA%"), "C:\\from\\env");
}

TEST(vpcEnv, FolderNames) {
    if (kWindows) GTEST_SKIP() << "XDG_CONFIG_HOME, HOME and user-dirs are the POSIX mapping";
    vfc::testing::TempDir dir;
    ScopedEnv config("XDG_CONFIG_HOME", dir.path().c_str()), home("HOME", "/home/u");
    ScopedEnv appdata("CSIDL_APPDATA", nullptr), personal("CSIDL_PERSONAL", nullptr);
    EXPECT_EQ(expand("%CSIDL_APPDATA%/tool"), dir.path() + "/tool");
    EXPECT_EQ(expand("$CSIDL_PERSONAL/a"), "/home/u/Documents/a");
    // Every expansion follows the environment as it is now.
    config.set("/elsewhere");
    home.set("/home/v");
    EXPECT_EQ(expand("%CSIDL_APPDATA%"), "/elsewhere");
    EXPECT_EQ(expand("%CSIDL_PERSONAL%"), "/home/v/Documents");
    home.set("/home/u");
    // A variable of the same name comes first.
    appdata.set("/from/env");
    EXPECT_EQ(expand("%CSIDL_APPDATA%"), "/from/env");

    // The documents folder from the user-dirs file: home-relative, absolute, or ignored.
    config.set(dir.path().c_str());
    const char* files[][2] = {
        {"# desktop\nXDG_DESKTOP_DIR=\"$HOME/D\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dok\"\n",
         "/home/u/Dok"},
        {"  XDG_DOCUMENTS_DIR = \"/data/docs\"\n", "/data/docs"},
        {"XDG_DOCUMENTS_DIR=\"relative\"\n", "/home/u/Documents"},
    };
    for (auto& f : files) {
        dir.write("user-dirs.dirs", f[0]);
        EXPECT_EQ(expand("%CSIDL_PERSONAL%"), f[1]) << f[0];
    }
    appdata.set(nullptr);
    config.set("");
    EXPECT_EQ(expand("%CSIDL_APPDATA%"), "/home/u/.config");
}

}  // namespace
