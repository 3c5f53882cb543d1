#include <gtest/gtest.h>

#include <algorithm>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/core/vStringUtils.h"
#include "vfc/files/vChangeDir.h"
#include "vfc/os/os.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"

// The path of the program built from testdata/vAppOpenChild.cpp.
#ifndef VFC_OPEN_CHILD
#error "VFC_OPEN_CHILD must name the recording child program"
#endif

using vfc::testing::ScopedEnv;
using vfc::testing::TempDir;
namespace fs = std::filesystem;

namespace {

const std::string kChild = VFC_OPEN_CHILD;

std::string Str(const vString& s) {
    return std::string(s.data(), s.length());
}

vSlistvString List(std::initializer_list<const char*> items) {
    vSlistvString list;
    for (const char* item : items)
        list.fInsert(vString(item));
    return list;
}

vString Mailto(std::initializer_list<const char*> to, const vString& subject, const vString& body) {
    return vApp::sfMakeMailtoURL(List(to), subject, body);
}

std::string FileURL(const char* path) {
    vString url;
    return vApp::sfMakeFileURL(path, url) ? Str(url) : "(false)";
}

// An application that keeps what it logs.
class LoggingApp : public vApp {
  public:
    LoggingApp() : vApp("vfc", "OpenTest", "1.0") {}
    void fLogMsg(const vString& text, int level) override { aLog.emplace_back(level, Str(text)); }
    // Whether a warning holding part was logged.
    bool Warned(const std::string& part) const {
        for (const auto& entry : aLog)
            if (entry.first == 1 && entry.second.find(part) != std::string::npos) return true;
        return false;
    }
    std::vector<std::pair<int, std::string>> aLog;
};

// The children of this process as /proc lists them (none where there is no /proc).
std::vector<std::string> ChildrenOfThisProcess() {
    std::vector<std::string> children;
    std::error_code error;
    for (fs::directory_iterator task("/proc/self/task", error), end; !error && task != end;
         task.increment(error)) {
        std::ifstream in(task->path() / "children");
        std::string pid;
        while (in >> pid)
            children.push_back(pid);
    }
    return children;
}

// The key under HKEY_CURRENT_USER that names the program of a URL scheme (Windows).
std::string CommandKey(const std::string& scheme) {
    return "Software\\Classes\\" + scheme + "\\shell\\open\\command";
}

// Makes command the program of scheme for the current user (Windows).
bool Register(const std::string& scheme, const std::string& command, bool expand = false) {
    return vfc::os::SetRegistryString(vfc::os::RegistryRoot::eCurrentUser,
                                      CommandKey(scheme).c_str(), "", command, expand);
}

bool Unregister(const std::string& scheme) {
    return vfc::os::RemoveRegistryKey(vfc::os::RegistryRoot::eCurrentUser,
                                      ("Software\\Classes\\" + scheme).c_str());
}

}  // namespace

TEST(vAppMailto, EscapesEveryFieldToTheByte) {
    EXPECT_EQ(Str(Mailto({"ann@example.org"}, "Re: a b & c? #1 = 100%", "")),
              "mailto:ann@example.org?subject=Re:%20a%20b%20%26%20c%3F%20%231%20%3D%20100%25");
    // Every kind of line break becomes CR LF, empty lines included.
    EXPECT_EQ(Str(Mailto({}, "", "one\r\ntwo\nthree\rfour\n\n")),
              "mailto:?body=one%0D%0Atwo%0D%0Athree%0D%0Afour%0D%0A%0D%0A");
    // UTF-8 bytes one by one, upper-case hex; a zero byte is a byte like any other.
    EXPECT_EQ(Str(Mailto({"b@x.org"},
                         "Gr\xC3\xBC\xC3\x9F"
                         "e \xE2\x82\xAC",
                         vString("a\0b", 3))),
              "mailto:b@x.org?subject=Gr%C3%BC%C3%9Fe%20%E2%82%AC&body=a%00b");
    // The delimiters a value may hold stand as they are; "+" (read as a blank by some programs),
    // "/", brackets and the like do not.
    EXPECT_EQ(Str(Mailto({}, "a!$'()*,;:@-._~b", "x+y/z[1]\"<>\\^`{|}")),
              "mailto:?subject=a!$'()*,;:@-._~b&body=x%2By%2Fz%5B1%5D%22%3C%3E%5C%5E%60%7B%7C%7D");
    // "," separates addresses, so one inside an address is escaped, as are "+", "?" and "&".
    EXPECT_EQ(Str(Mailto({"a+b@x.org", "odd,name@y.org", "q?&=@z.org"}, "", "")),
              "mailto:a%2Bb@x.org,odd%2Cname@y.org,q%3F%26%3D@z.org");
    EXPECT_EQ(Str(Mailto({"a@b"}, "s", "t")), "mailto:a@b?subject=s&body=t");
    EXPECT_EQ(Str(Mailto({}, "", "")), "mailto:");
}

TEST(vAppFileURL, AbsoluteEscapedAndWithoutDotNames) {
    if (vfc::os::kWindows) {
        EXPECT_EQ(FileURL("C:\\Docs\\Release Notes\\a#1.html"),
                  "file:///C:/Docs/Release%20Notes/a%231.html");
        EXPECT_EQ(FileURL("C:/a/./b/../c.htm"), "file:///C:/a/c.htm");
        EXPECT_EQ(FileURL("D:\\out\\"), "file:///D:/out/");
        EXPECT_EQ(FileURL("\\\\server\\share\\x y.htm"), "file://server/share/x%20y.htm");
    } else {
        EXPECT_EQ(FileURL("/home/ann/Release Notes/a#1?.html"),
                  "file:///home/ann/Release%20Notes/a%231%3F.html");
        // Names keep the delimiters a path may hold; "%" is escaped, ".." climbs, "." goes.
        EXPECT_EQ(FileURL("/srv/www/./docs/../100%/x&y=z;v+w,@:~.html"),
                  "file:///srv/www/100%25/x&y=z;v+w,@:~.html");
        EXPECT_EQ(FileURL("/tmp/\xC3\xA9t\xC3\xA9/"), "file:///tmp/%C3%A9t%C3%A9/");
        EXPECT_EQ(FileURL("/../x"), "file:///x");
        EXPECT_EQ(FileURL("//x//y"), "file:///x/y");
    }
    EXPECT_EQ(FileURL(""), "(false)");

    // A relative path is taken from the current directory.
    TempDir dir;
    vChangeDir into(vFile(dir.path().c_str()));
    ASSERT_TRUE(into.fOK());
    vString url;
    ASSERT_TRUE(vApp::sfMakeFileURL("sub/../p q.html", url));
    std::string text = Str(url);
    ASSERT_EQ(text.compare(0, 8, "file:///"), 0) << text;
    EXPECT_NE(text.find("/p%20q.html"), std::string::npos) << text;
    vString path(text.c_str() + (vfc::os::kWindows ? 8 : 7));
    vStringUtils::sfURLDecode(path);
    EXPECT_EQ(Str(path), fs::current_path().generic_string() + "/p q.html");
}

TEST(vAppFileURL, URLsStayFilesMustExist) {
    LoggingApp app;
    TempDir dir;
    vString url;
    for (const char* given : {"HTTP://h/x y", "mailto:a@b", "a+b.c-d:x"}) {
        EXPECT_TRUE(vApp::sfMakeBrowserURL(given, url));
        EXPECT_EQ(Str(url), given);
    }
    const std::string page = dir.write("p.html", "");
    EXPECT_TRUE(vApp::sfMakeBrowserURL(page.c_str(), url));
    EXPECT_EQ(Str(url), FileURL(page.c_str()));
    EXPECT_FALSE(vApp::sfMakeBrowserURL(dir.file("none.html").c_str(), url));
    EXPECT_FALSE(app.fOpenURL(dir.file("no such page.html").c_str()));
    EXPECT_TRUE(app.Warned("no such file"));
    // Without a scheme of two letters or more it is a file name, never a URL.
    EXPECT_FALSE(app.fOpenURL("www.example.com/index.html"));
    EXPECT_FALSE(app.fOpenURL("x:/no/such/file"));
    EXPECT_EQ(app.aLog.size(), 3u);
}

// The tests that start the recording child as the browser and the mail program. On POSIX it is
// named by BROWSER and found as xdg-email and xdg-open in a PATH of the test's own; on Windows it
// is registered for "http" and "mailto" under HKEY_CURRENT_USER\Software\Classes, which these
// tests share with the tool's test (ctest runs them one at a time).
class vAppOpen : public ::testing::Test {
  protected:
    vAppOpen()
        : aRecord(aDir.file("record")),
          aRecordEnv("VFC_OPEN_RECORD", aRecord.c_str()),
          aSleep("VFC_OPEN_SLEEP", nullptr),
          aBrowser("BROWSER", nullptr),
          aPath("PATH", std::getenv("PATH")) {}

    void SetUp() override {
        if (vfc::os::kWindows) {
            // A program the user registered is not replaced.
            std::string command;
            for (const char* scheme : {"http", "mailto"})
                if (vfc::os::RegistryString(vfc::os::RegistryRoot::eCurrentUser,
                                            CommandKey(scheme).c_str(), "", command))
                    GTEST_SKIP() << "HKEY_CURRENT_USER has a program of its own for " << scheme;
            aRegistered = true;
            ASSERT_TRUE(Register("http", "\"" + kChild + "\" \"%1\""));
            ASSERT_TRUE(Register("mailto", "\"" + kChild + "\" %1"));
        } else {
            fs::create_directory(aDir.file("bin"));
            fs::create_symlink(kChild, aDir.file("bin/xdg-email"));
            fs::create_symlink(kChild, aDir.file("bin/xdg-open"));
            aPath.set(aDir.file("bin").c_str());
        }
    }
    void TearDown() override {
        if (aRegistered) {
            EXPECT_TRUE(Unregister("http"));
            EXPECT_TRUE(Unregister("mailto"));
        }
    }

    // What the child recorded: its name and arguments; waits up to 30 s for it. The record is
    // taken away, so that the next start writes a new one.
    std::vector<std::string> Recorded() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!fs::exists(aRecord) && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::vector<std::string> lines;
        std::ifstream in(aRecord, std::ios::binary);
        for (std::string line; std::getline(in, line);)
            lines.push_back(line);
        in.close();
        fs::remove(aRecord);
        return lines;
    }
    // True when no record came within a second (a start that failed writes none).
    bool NothingRecorded() const {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        return !fs::exists(aRecord);
    }

    TempDir aDir;
    LoggingApp aApp;
    std::string aRecord;
    ScopedEnv aRecordEnv, aSleep, aBrowser, aPath;
    bool aRegistered = false;
};

using Lines = std::vector<std::string>;

TEST_F(vAppOpen, ShowsURLsAndFilesInTheBrowser) {
    const std::string url = "http://www.example.com/a%20b?x=1&y=2#top";
    const std::string name = "vfc_open_child";
    vString line;
    if (!vfc::os::kWindows) {
        // "%s" is the URL, "%%" a percent sign; the first command whose program exists wins.
        aBrowser.set(("no-such-vfc-browser %s:" + kChild + " --new 100%% %s").c_str());
        ASSERT_TRUE(vApp::sfFindBrowser(url.c_str(), line));
        EXPECT_EQ(Str(line), kChild + " --new 100% " + url);
        ASSERT_TRUE(aApp.fOpenURL(url.c_str()));
        EXPECT_EQ(Recorded(), (Lines{name, "--new", "100%", url}));
        // Without "%s" the URL comes last; blanks of a URL are escaped, as they split no word.
        aBrowser.set((kChild + " -x").c_str());
        ASSERT_TRUE(aApp.fOpenURL("http://h/a b\"c"));
        EXPECT_EQ(Recorded(), (Lines{name, "-x", "http://h/a%20b%22c"}));
    } else {
        ASSERT_TRUE(vApp::sfFindBrowser(url.c_str(), line));
        EXPECT_EQ(Str(line), "\"" + kChild + "\" \"" + url + "\"");
        ASSERT_TRUE(aApp.fOpenURL(url.c_str()));
        EXPECT_EQ(Recorded(), (Lines{name, url}));
        // Without "%1" the URL comes last, in double quotes.
        ASSERT_TRUE(Register("http", "\"" + kChild + "\" -x"));
        ASSERT_TRUE(aApp.fOpenURL("http://h/a b\"c"));
        EXPECT_EQ(Recorded(), (Lines{name, "-x", "http://h/a%20b%22c"}));
    }
    // A local file goes to the browser as its absolute file URL.
    const std::string page = aDir.write("page one.html", "<html></html>");
    vString fileURL;
    ASSERT_TRUE(vApp::sfMakeFileURL(page.c_str(), fileURL));
    ASSERT_TRUE(aApp.fOpenURL(page.c_str()));
    const Lines got = Recorded();
    ASSERT_FALSE(got.empty());
    EXPECT_EQ(got.back(), Str(fileURL));
    EXPECT_TRUE(aApp.aLog.empty());
}

TEST_F(vAppOpen, MailGoesToTheMailProgram) {
    // Not to the browser: BROWSER names the child under another name.
    aBrowser.set((kChild + " browser").c_str());
    const vSlistvString to = List({"ann@example.org", "bo+b@example.org"});
    const vString subject("Build 7 & 8: 100% done?");
    const vString body("Hello,\nall \xE2\x9C\x93.\n");
    const std::string url = Str(vApp::sfMakeMailtoURL(to, subject, body));
    ASSERT_TRUE(aApp.fSendMail(to, subject, body));
    if (vfc::os::kWindows) {
        EXPECT_EQ(Recorded(), (Lines{"vfc_open_child", url}));
    } else {
        EXPECT_EQ(Recorded(), (Lines{"xdg-email", url}));
        // Without xdg-email, xdg-open takes it.
        fs::remove(aDir.file("bin/xdg-email"));
        ASSERT_TRUE(aApp.fSendMail(to, subject, body));
        EXPECT_EQ(Recorded(), (Lines{"xdg-open", url}));
    }
    EXPECT_TRUE(aApp.aLog.empty());
}

TEST_F(vAppOpen, ReturnsWhileTheBrowserStaysOpen) {
    if (!vfc::os::kWindows) aBrowser.set(kChild.c_str());
    aSleep.set("30");
    // Children of earlier tests in the same process may still be running; none may be added.
    const std::vector<std::string> before = ChildrenOfThisProcess();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(aApp.fOpenURL("http://www.example.com/"));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_LT(took, std::chrono::seconds(10));
    // The child runs on (it records, then waits), and none of it is this process's to reap.
    for (int i = 0; i < 1500 && !fs::exists(aRecord); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_TRUE(fs::exists(aRecord));
    for (const std::string& pid : ChildrenOfThisProcess())
        EXPECT_NE(std::find(before.begin(), before.end(), pid), before.end()) << "child " << pid;
    aDir.write("record.end", "");
}

TEST_F(vAppOpen, WithoutAProgramFailsWithAWarning) {
    if (vfc::os::kWindows) {
        // A registered program that is not there.
        ASSERT_TRUE(Register("http", "\"" + aDir.file("no-such-browser.exe") + "\" \"%1\""));
        EXPECT_FALSE(aApp.fOpenURL("http://www.example.com/"));
        EXPECT_TRUE(aApp.Warned("because the specified file or path was not found"));
        EXPECT_TRUE(NothingRecorded());
        return;
    }
    // Neither BROWSER nor xdg-open, xdg-email.
    aPath.set(aDir.path().c_str());
    vString line;
    EXPECT_FALSE(vApp::sfFindBrowser("http://h/", line));
    EXPECT_FALSE(aApp.fOpenURL("http://h/"));
    EXPECT_TRUE(aApp.Warned("xdg-open"));
    EXPECT_FALSE(aApp.fSendMail(List({"a@b"}), "s", "b"));
    EXPECT_TRUE(aApp.Warned("xdg-email"));
    // A BROWSER whose programs do not exist, or are not executable files.
    const std::string plain = aDir.write("plain", "#!/bin/sh\n");
    aBrowser.set(("no-such-vfc-browser:" + plain + ":" + aDir.path()).c_str());
    EXPECT_FALSE(vApp::sfFindBrowser("http://h/", line));
    EXPECT_FALSE(aApp.fOpenURL("http://h/"));
    // One that exists but is no program: the failed exec is reported back.
    const std::string garbage = aDir.write("garbage", "\x7f\x01\x02 not a program\n");
    fs::permissions(garbage, fs::perms::owner_all);
    aBrowser.set((garbage + " %s").c_str());
    EXPECT_TRUE(vApp::sfFindBrowser("http://h/", line));
    aApp.aLog.clear();
    EXPECT_FALSE(aApp.fOpenURL("http://h/"));
    EXPECT_TRUE(aApp.Warned("because of an unknown error")) << aApp.aLog.size();
    EXPECT_TRUE(aApp.Warned(garbage + " http://h/"));
    EXPECT_TRUE(NothingRecorded());
}

TEST(vAppURLHandler, FindsTheProgramOfAScheme) {
    TempDir dir;
    vString line;
    for (const char* bad : {"", "1x", "a b", "x\\y"})
        EXPECT_FALSE(vApp::sfFindURLHandler(bad, "x:y", line)) << bad;
    if (!vfc::os::kWindows) {
        // The mail program for mailto (any case), the browser for the rest.
        fs::create_directory(dir.file("bin"));
        fs::create_symlink(kChild, dir.file("bin/xdg-email"));
        ScopedEnv path("PATH", dir.file("bin").c_str());
        ScopedEnv browser("BROWSER", (kChild + " --browse").c_str());
        ASSERT_TRUE(vApp::sfFindURLHandler("MailTo", "mailto:a@b", line));
        EXPECT_EQ(Str(line), dir.file("bin/xdg-email") + " mailto:a@b");
        ASSERT_TRUE(vApp::sfFindURLHandler("ftp", "ftp://h/x y", line));
        EXPECT_EQ(Str(line), kChild + " --browse ftp://h/x%20y");
        return;
    }
    // A scheme of the test's own: not registered, then registered as REG_SZ and REG_EXPAND_SZ.
    const std::string scheme = fs::path(dir.path()).filename().string();
    EXPECT_FALSE(vApp::sfFindURLHandler(scheme.c_str(), "x:y", line));
    ASSERT_TRUE(Register(scheme, "  \"" + kChild + "\" --go \"%1\" "));
    EXPECT_TRUE(vApp::sfFindURLHandler(scheme.c_str(), (scheme + ":a b").c_str(), line));
    EXPECT_EQ(Str(line), "\"" + kChild + "\" --go \"" + scheme + ":a%20b\"");
    // A REG_EXPAND_SZ value has its variables expanded.
    ScopedEnv program("VFC_TEST_HANDLER", kChild.c_str());
    ASSERT_TRUE(Register(scheme, "%VFC_TEST_HANDLER% -x", true));
    EXPECT_TRUE(vApp::sfFindURLHandler(scheme.c_str(), "u", line));
    EXPECT_EQ(Str(line), kChild + " -x \"u\"");
    // A blank value names no program; the scheme's name is looked up in any case.
    ASSERT_TRUE(Register(scheme, " \t"));
    EXPECT_FALSE(vApp::sfFindURLHandler(scheme.c_str(), "u", line));
    ASSERT_TRUE(Register(scheme, "\"%1\""));
    vString upper(scheme.c_str());
    upper.fToUpper();
    EXPECT_TRUE(vApp::sfFindURLHandler(upper, "u", line));
    EXPECT_EQ(Str(line), "\"u\"");
    EXPECT_TRUE(Unregister(scheme));
    EXPECT_FALSE(vApp::sfFindURLHandler(scheme.c_str(), "x:y", line));
}
