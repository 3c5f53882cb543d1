#include "vfc/app/vApp.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <ios>
#include <string>

#include "vfc/app/internal/vpAppEnvironment.h"
#include "vfc/app/vpcEnv.h"
#include "vfc/os/platform.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"

namespace {

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

std::string option(const vApp& app, const char* name) {
    vString v("(undeclared)");
    app.fGetOption(name, v);
    return text(v);
}

using vfc::testing::ScopedEnv;

constexpr bool kWindows = vfc::os::kWindows;

// "p1", the platform's PATH separator, "p2".
std::string TwoEntries() {
    return std::string("p1") + vfc::os::kPathListSeparator + "p2";
}

// The host's own form of a path, as the product directory goes into PATH.
std::string Native(const std::string& path) {
    return text(vFile(path.c_str()).fDOSPath());
}

// Every application puts its product directory in front of PATH and reads its options file
// from the configuration folder (a fresh one here: XDG_CONFIG_HOME, or APPDATA on Windows);
// PATH comes back afterwards.
class vAppTest : public ::testing::Test {
  protected:
    vfc::testing::TempDir aDir;
    ScopedEnv aPath{"PATH", TwoEntries().c_str()};
    ScopedEnv aHome{"VORLANDIXHOME", nullptr};
    ScopedEnv aConfig{kWindows ? "APPDATA" : "XDG_CONFIG_HOME", aDir.path().c_str()};
    // The options file as the application names it: the folder, the host's separator, the name.
    std::string OptionsFile(const char* name) const {
        return aDir.path() + vfc::os::kNativeSeparator + name;
    }
};

TEST_F(vAppTest, ProductInformation) {
    vApp a("Vorlandix", "Nimbrook", "8.0");
    EXPECT_EQ(text(a.productUserAgent()), "Vorlandix Nimbrook/8.0");
    EXPECT_EQ(text(a.productVersionMajor()) + text(a.productVersionMinor()), "80");
    vApp b("F", "N", "10.2");  // single characters on purpose
    EXPECT_EQ(text(b.productVersionMajor()) + "|" + text(b.productVersionMinor()), "1|.");
    vApp c("F", "N", "7");
    EXPECT_EQ(text(c.productVersionMajor()) + "|" + text(c.productVersionMinor()), "7|");
}

TEST_F(vAppTest, ProductDirectoryAndPath) {
    aHome.set("");  // empty counts as unset: the executable's directory, which holds this test
    vApp a("F", "N", "1.0");
    EXPECT_TRUE(std::filesystem::exists(text(a.executableDir().fPath()) +
                                        (kWindows ? "/vfc_tests.exe" : "/vfc_tests")));
    EXPECT_EQ(text(a.productDir().fPath()), text(a.executableDir().fPath()));

    // The product directory goes in front of PATH in the host's form, with its separator.
    aHome.set(aDir.path().c_str());
    aPath.set(TwoEntries().c_str());
    vApp b("F", "N", "1.0");
    EXPECT_EQ(text(b.productDir().fPath()), aDir.path());
    const std::string front = Native(aDir.path()) + vfc::os::kPathListSeparator;
    EXPECT_EQ(std::string(std::getenv("PATH")), front + TwoEntries());
    vSlistvString entries;
    vpcGetPathList(entries);
    ASSERT_EQ(entries.fEntries(), 3u);
    EXPECT_EQ(text(entries.fFirst() ? entries.aKey() : vString()), Native(aDir.path()));

    // A missing directory leaves PATH alone; an unset PATH gets no empty (current) entry.
    aHome.set(aDir.file("missing").c_str());
    vApp c("F", "N", "1.0");
    EXPECT_EQ(text(c.productDir().fPath()), aDir.file("missing"));
    EXPECT_EQ(std::string(std::getenv("PATH")), front + TwoEntries());
    aHome.set(aDir.path().c_str());
    aPath.set(nullptr);
    vApp d("F", "N", "1.0");
    EXPECT_EQ(std::string(std::getenv("PATH")), Native(aDir.path()));
}

TEST(vAppLanguage, LocaleVariablesMapToLanguages) {
    struct Row {
        const char *all, *messages, *lang, *want;
    } rows[] = {
        {nullptr, nullptr, nullptr, "en"},
        {"", "", "", "en"},
        {"POSIX", nullptr, nullptr, "en"},
        {"C.UTF-8", nullptr, nullptr, "en"},
        {"de_DE.UTF-8", nullptr, nullptr, "de"},
        {"zh_TW.Big5", nullptr, nullptr, "zh_TW"},
        {"zh_CN", nullptr, nullptr, "zh"},
        {"zh_HK", nullptr, nullptr, "zh"},
        {"fr_CA@euro", nullptr, nullptr, "fr"},
        {"ja", nullptr, nullptr, "ja"},
        {"ko_KR", nullptr, nullptr, "ko"},
        {"es_ES", nullptr, nullptr, "unknown"},
        {"dex_DE", nullptr, nullptr, "unknown"},
        // The first one set and not empty decides.
        {"fr_FR", "ja_JP", "de_DE", "fr"},
        {"", "ja_JP", "de_DE", "ja"},
        {nullptr, "", "ko_KR", "ko"},
        {nullptr, "C", "de_DE", "en"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(text(vpcLanguageFromLocale(r.all, r.messages, r.lang)), r.want)
            << (r.all ? r.all : "-") << " " << (r.messages ? r.messages : "-") << " "
            << (r.lang ? r.lang : "-");
}

TEST(vAppLanguage, WindowsLanguageIdentifiersMapToLanguages) {
    struct Row {
        unsigned langId;
        const char* want;
    } rows[] = {
        {0x0404, "zh_TW"},  {0x0804, "zh"},    {0x0c04, "zh"}, {0x0407, "de"},
        {0x0807, "de"},     {0x0409, "en"},    {0x0809, "en"}, {0x040c, "fr"},
        {0x0411, "ja"},     {0x0412, "ko"},    {0x0c0a, "unknown"},
        {0x0004, "zh"},     {0x0000, "unknown"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(text(vpcLanguageFromLangId(r.langId)), r.want) << std::hex << r.langId;
}

// Windows: the login from USERNAME, the home from HOMEDRIVE and HOMEPATH, owner and
// organisation from the registry, the language from the system's language identifier.
TEST_F(vAppTest, MachineAndUserOnWindows) {
    vHashvStringvString values;
    const bool registry =
        vApp::fRegEnumKeysAndValues("Software\\Microsoft\\Windows NT\\CurrentVersion", values);
    EXPECT_EQ(registry, kWindows);  // POSIX has no registry
    if (!kWindows) GTEST_SKIP() << "the rest is what Windows alone documents";
    EXPECT_TRUE(values.fLookup("SystemRoot"));
    EXPECT_FALSE(values.aValue().isNull());
    EXPECT_FALSE(vApp::fRegEnumKeysAndValues("Software\\No Such Key Here", values));

    ScopedEnv user("USERNAME", "somebody"), drive("HOMEDRIVE", "D:");
    ScopedEnv path("HOMEPATH", "\\Users\\somebody");
    vApp a("F", "N", "1.0");
    EXPECT_EQ(text(a.machineOS()), "winnt");
    EXPECT_EQ(text(a.productGui()), "mswin");
    EXPECT_EQ(a.platformType(), vApp::eWin32);
    EXPECT_EQ(text(a.userLogin()), "somebody");
    EXPECT_EQ(text(a.userDir().fPath()), "D:\\Users\\somebody");
    const char* owner = values.fLookup("RegisteredOwner") ? values.aValue().data() : "";
    EXPECT_EQ(text(a.userName()), owner);
    EXPECT_NE(text(a.machineLanguage()), "");
    EXPECT_FALSE(a.fChangeUser("no-such-user-here"));
}

TEST_F(vAppTest, MachineAndUserFromTheEnvironment) {
    if (kWindows) GTEST_SKIP() << "USER, HOME and the password database are the POSIX mapping";
    ScopedEnv all("LC_ALL", "zh_TW.UTF-8");
    ScopedEnv user("USER", "somebody-not-in-the-database");
    ScopedEnv logname("LOGNAME", "other");
    ScopedEnv home("HOME", "/home/somewhere");
    ScopedEnv org("ORGANIZATION", "Example Org");
    vApp a("F", "N", "1.0");
    EXPECT_EQ(text(a.machineLanguage()), "zh_TW");
    EXPECT_EQ(text(a.productLangName()), "zh_TW");  // langpref "system"
    EXPECT_EQ(text(a.userLogin()), "somebody-not-in-the-database");
    EXPECT_EQ(text(a.userDir().fPath()), "/home/somewhere");
    EXPECT_EQ(text(a.userOrganization()), "Example Org");
    EXPECT_TRUE(a.userName().isNull());  // no database entry for that login

    user.set("");
    vApp b("F", "N", "1.0");
    EXPECT_EQ(text(b.userLogin()), "other");
    ASSERT_TRUE(b.fChangeUser("root"));
    EXPECT_EQ(text(b.userLogin()) + " " + text(b.userDir().fPath()), "root /root");
    EXPECT_FALSE(b.fChangeUser("no-such-user-here"));
    EXPECT_EQ(text(b.userLogin()), "root");
}

const vpOption kTool[] = {
    {"outdir", "%VFC_TEST_BASE%/out", 0},
    {"style", "$VFC_TEST_BASE/s:$VFC_TEST_NONE", 0},
    {"verbose", nullptr, 0},
    {"langpref", "fr", 0},
    {nullptr, nullptr, 0},
};
const vpOption kMore[] = {{"verbose", "1", 0}, {"extra", "x", 0}, {nullptr, nullptr, 0}};

TEST_F(vAppTest, OptionDefaultsAndTheOptionsFile) {
    ScopedEnv base("VFC_TEST_BASE", "/srv/doc");
    ScopedEnv none("VFC_TEST_NONE", nullptr);
    const vpOption* const tables[] = {kTool, kMore, nullptr};
    vApp a("F", "N", "1.0", "tool", tables);
    EXPECT_EQ(option(a, "outdir"), "/srv/doc/out");
    EXPECT_EQ(option(a, "style"), "/srv/doc/s:$VFC_TEST_NONE");
    EXPECT_EQ(option(a, "verbose"), "");  // the first declaration wins
    EXPECT_EQ(option(a, "extra") + option(a, "licenseaddonkeys"), "x");
    EXPECT_EQ(text(a.productLangName()), "fr");  // the tool's table precedes the common one
    EXPECT_EQ(text(a.fOptionsFile().fPath()), OptionsFile("tool.ini"));
    EXPECT_FALSE(a.fSetOption("undeclared", "1"));
    EXPECT_TRUE(a.fSetOption("verbose", "2"));
    EXPECT_EQ(option(a, "verbose"), "2");

    aDir.write("conv.ini",
               "outdir = /from/file\r\nundeclared=1\nlicensekey=K-1\nlicenseuser=top\n"
               "langpref=ja\n[Other]\nverbose=other\n[Conv]\nlicenseuser=product\n");
    vApp b("F", "Conv", "1.0", "conv", kTool);
    EXPECT_EQ(option(b, "outdir"), "/from/file");
    EXPECT_EQ(option(b, "undeclared"), "(undeclared)");
    EXPECT_EQ(option(b, "verbose"), "");
    EXPECT_EQ(text(b.fLicenseKey()) + " " + text(b.fLicenseUser()), "K-1 product");
    EXPECT_EQ(text(b.productLangName()), "ja");

    aDir.write("sys.ini", "langpref=system\n");
    vApp c("F", "N", "1.0", "sys", kTool);
    EXPECT_EQ(text(c.productLangName()), text(c.machineLanguage()));

    std::filesystem::create_directory(aDir.file("dir.ini"));  // there, but not readable
    vApp d("F", "N", "1.0", "dir", kTool);
    EXPECT_FALSE(d.fLoadOptions());
    EXPECT_TRUE(b.fLoadOptions());
}

// "No option table" spelled as users spell it: each literal picks one constructor, none is
// ambiguous between the one-table and the several-tables forms.
TEST_F(vAppTest, NoOptionTableAsALiteral) {
    aDir.write("lit.ini", "langpref=de\n");
    vApp a("F", "N", "1.0", "lit", nullptr);
    vApp b("F", "N", "1.0", "lit", 0, vApp::eNoLicenseCheck);
    vApp c("F", "N", "1.0", "lit", NULL);
    for (const vApp* app : {&a, &b, &c}) {
        EXPECT_EQ(text(app->fOptionsFile().fPath()), OptionsFile("lit.ini"));
        EXPECT_EQ(text(app->productLangName()), "de");  // the common table is still read
        EXPECT_EQ(option(*app, "outdir"), "(undeclared)");
    }
    const vpOption* const noTables[] = {nullptr};
    vApp d("F", "N", "1.0", "lit", noTables);
    EXPECT_EQ(text(d.productLangName()), "de");
}

TEST_F(vAppTest, CurrentApplicationAndCopies) {
    vApp a("F", "First", "1.0");
    EXPECT_EQ(&vAppInfo(), &a);
    {
        vApp b("F", "Second", "2.0", "tool", kTool);
        EXPECT_EQ(&vAppInfo(), &b);
        b.fSetAbort(true);
        b.fInsertThreadId(7);
        vApp c(b);
        EXPECT_EQ(&vAppInfo(), &b);  // a copy does not become current
        EXPECT_EQ(text(c.productUserAgent()), "F Second/2.0");
        EXPECT_TRUE(c.fAbort());
        EXPECT_TRUE(c.options().fIsEqual(b.options()));
        EXPECT_TRUE(c.fThreadSet().fIsEqual(b.fThreadSet()));
        a = c;
        EXPECT_EQ(text(a.productName()) + option(a, "langpref"), "Secondfr");
    }  // c's destruction leaves the current application alone, b's clears it
    EXPECT_NE(&vAppInfo(), &a);
    EXPECT_EQ(text(vAppInfo().productName()), "vfc");
}

// The hook records its call; the child exits with what it saw: per signal, bit 0 the flag,
// bit 1 the hook, bit 2 fUpdateAbort.
class NotifiedApp : public vApp {
  public:
    NotifiedApp() : vApp("F", "Signals", "1.0") {}
    void fNotifyAbort() override { aNotified = 1; }
    volatile std::sig_atomic_t aNotified = 0;
};

// Console events arrive as signals on POSIX only; Windows sends them from the console, which a
// test cannot drive without the system's own console (see the console_abort test of tests/).
#if defined(SIGHUP) && defined(SIGQUIT)
int raiseAndObserve(NotifiedApp& app, int signal) {
    app.aNotified = 0;
    vAppProgressStackDepth mark;
    app.fStartProgress(mark, 10);  // the outermost level starts unaborted
    for (int i = 0; i < 100 && !app.fUpdateAbort(); ++i) {
        if (i == 1) std::raise(signal);
    }
    int code = (app.fAbort() ? 1 : 0) | (app.aNotified ? 2 : 0) | (app.fUpdateAbort() ? 4 : 0);
    app.fEndProgress(mark);
    return code;
}

TEST(vAppAbortDeathTest, InterruptQuitAndHangUpSetTheFlagAndCallTheHook) {
    EXPECT_EXIT(
        {
            NotifiedApp app;
            int code = raiseAndObserve(app, SIGINT) | raiseAndObserve(app, SIGHUP) << 3 |
                       raiseAndObserve(app, SIGQUIT) << 6;
            std::fprintf(stderr, "observed %03o\n", static_cast<unsigned>(code));
            std::_Exit(code == 0777 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    // Without a current application the signal keeps its default action.
    EXPECT_EXIT(
        {
            { NotifiedApp app; }
            vApp::fInitGlobalInfoAbortHandlers();
            std::raise(SIGINT);
            std::_Exit(0);
        },
        ::testing::KilledBySignal(SIGINT), "");
}

#endif  // SIGHUP && SIGQUIT

}  // namespace
