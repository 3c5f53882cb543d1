#include "vfc/app/vApp.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "vfc/app/internal/vpAppEnvironment.h"
#include "vfc/app/vpcEnv.h"
#include "vfc/os/os.h"
#include "vfc/text/vIfstream.h"

namespace {

// The current application. The abort handler reads it, so it must be lock-free.
std::atomic<vApp*> gCurrentApp{nullptr};
static_assert(std::atomic<vApp*>::is_always_lock_free,
              "the abort handler needs a lock-free pointer");

const vpOption kCommonOptions[] = {
    {"licenseuser", nullptr, 0}, {"licenseorganization", nullptr, 0},
    {"licensekey", nullptr, 0},  {"licenseaddonkeys", nullptr, 0},
    {"langpref", "system", 0},   {nullptr, nullptr, 0},
};

vString fromStd(const std::string& s) {
    return vString(s.data(), s.size());
}

vString lowerCase(const std::string& s) {
    vString v = fromStd(s);
    v.fToLower();
    return v;
}

// The variable's value when it is set and not empty.
bool nonEmptyEnv(const char* name, vString& value) {
    const char* v = std::getenv(name);
    if (!v || !*v) return false;
    value = v;
    return true;
}

// The directory of the running executable; empty when the system cannot tell.
vString executableDirectory() {
    std::string path;
    if (!vfc::os::ExecutablePath(path)) return vString();
    size_t slash = path.find_last_of(vfc::os::kPathSeparators);
    if (slash == std::string::npos) return vString();
    return fromStd(slash == 0 ? path.substr(0, 1) : path.substr(0, slash));
}

vString versionCharacter(const vString& version, size_t i) {
    return i < version.length() ? vString(version.data() + i, 1) : vString();
}

// Ctrl-C, Ctrl-Break and the console closing (SIGINT, SIGQUIT, SIGHUP on POSIX): the current
// application's abort flag is set and its hook is called, and the event counts as handled.
// Other events, and any event without an application, are left to the default action, so a
// process without one still stops on Ctrl-C. Only async-signal-safe work here: a lock-free
// load and a sig_atomic_t store.
bool abortHandler(vfc::os::ConsoleEvent event) {
    vApp* app = gCurrentApp.load();
    if (!app || event == vfc::os::ConsoleEvent::eOther) return false;
    app->fSetAbort(true);
    app->fNotifyAbort();
    return true;
}

// The registry keys that hold the registered owner and organisation.
constexpr const char* kWinNtVersionKey = "Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* kWin95VersionKey = "Software\\Microsoft\\Windows\\CurrentVersion";

}  // namespace

// ---- shared with the environment functions ------------------------------------------------------

vApp* vpcCurrentApp() {
    return gCurrentApp.load();
}

vString vpcCalcProductDir() {
    vString home;
    if (nonEmptyEnv("VORLANDIXHOME", home)) return home;
    return executableDirectory();
}

vString vpcLanguageFromLangId(unsigned langId) {
    const unsigned primary = langId & 0x3ffu;
    const unsigned sub = langId >> 10;
    switch (primary) {
        case 0x04: return sub == 1 ? "zh_TW" : "zh";  // Chinese; 1 is Traditional Chinese
        case 0x07: return "de";
        case 0x09: return "en";
        case 0x0c: return "fr";
        case 0x11: return "ja";
        case 0x12: return "ko";
        default: return "unknown";
    }
}

vString vpcLanguageFromLocale(const char* lcAll, const char* lcMessages, const char* lang) {
    const char* chosen = nullptr;
    for (const char* v : {lcAll, lcMessages, lang}) {
        if (v && *v) {
            chosen = v;
            break;
        }
    }
    if (!chosen) return "en";
    std::string name(chosen);
    name.erase(std::min(name.find_first_of(".@"), name.size()));
    if (name == "C" || name == "POSIX") return "en";
    size_t underscore = name.find('_');
    std::string language = name.substr(0, underscore);
    std::string territory = underscore == std::string::npos ? "" : name.substr(underscore + 1);
    if (language == "zh") return territory == "TW" ? "zh_TW" : "zh";
    for (const char* known : {"de", "en", "fr", "ja", "ko"}) {
        if (language == known) return known;
    }
    return "unknown";
}

// ---- construction ---------------------------------------------------------------------------

vApp::vApp(const vString& family, const vString& name, const vString& version,
           LicenseType license) {
    fConstruct(family, name, version, vString(), nullptr, license);
}

vApp::vApp(const vString& family, const vString& name, const vString& version,
           const vString& optionsName, const vpOption* options, LicenseType license) {
    const vpOption* const tables[] = {options, nullptr};
    fConstruct(family, name, version, optionsName, tables, license);
}

vApp::vApp(const vString& family, const vString& name, const vString& version,
           const vString& optionsName, const vpOption* const* optionTables, LicenseType license) {
    fConstruct(family, name, version, optionsName, optionTables, license);
}

vApp::vApp(const vApp& other) = default;

vApp& vApp::operator=(const vApp& other) = default;

vApp::~vApp() {
    fClearMutexes();
    vApp* self = this;
    gCurrentApp.compare_exchange_strong(self, nullptr);
}

void vApp::fConstruct(const vString& family, const vString& name, const vString& version,
                      const vString& optionsName, const vpOption* const* tables,
                      LicenseType license) {
    aPlatformType = vfc::os::kWindows ? eWin32 : ePosix;
    aAbort = 0;
    aLicenseType = license;

    gCurrentApp.store(this);
    fSetHINSTANCE(vpcLibraryMessages);

    fGatherProductInfo(family, name, version);
    fGatherMachineInfo();
    fGatherUserInfo();

    fCalcOptionsName(optionsName);
    fAddValidOptionArrays(tables);
    fAddValidOptions(sfCommonOptions());
    fLoadOptions();
    fSetProductLangName();

    vfc::os::InstallAbortHandler(abortHandler);
}

void vApp::fGatherProductInfo(const vString& family, const vString& name, const vString& version) {
    aProductFamily = family;
    aProductName = name;
    aProductVersion = version;
    aProductUserAgent = family;
    aProductUserAgent.append(" ").append(name).append("/").append(version);
    // Versions are digit, point, digit: single characters on purpose.
    aProductVersionMajor = versionCharacter(version, 0);
    aProductVersionMinor = versionCharacter(version, 2);
    aProductResBasename = vString();
    aProductResPath = vString();
    aProductUsesRegistry = false;
    aProductGui = vfc::os::kWindows ? "mswin" : "unix";

    aExecutableDir = vFile(executableDirectory());
    vString home;
    aProductDir = nonEmptyEnv("VORLANDIXHOME", home) ? vFile(home) : aExecutableDir;

    // Programs of the product are found first. An empty PATH is not kept as an empty entry,
    // which would stand for the current directory.
    if (aProductDir.fIsDirectory()) {
        vString path = aProductDir.fDOSPath();
        vString old;
        if (vpcGetEnv("PATH", old) && !old.isNull()) {
            path.append(vpcPathListSeparator());
            path.append(old);
        }
        vpcPutEnv("PATH", path);
    }
}

void vApp::fGatherMachineInfo() {
    aMachineOS = lowerCase(vfc::os::SystemName());
    aMachineName = lowerCase(vfc::os::HostName());
    aMachineCPU = fromStd(vfc::os::MachineArchitecture());
    // Windows names the system's language; POSIX leaves it to the locale variables.
    unsigned langId = 0;
    aMachineLanguage = vfc::os::SystemLanguageId(langId)
                           ? vpcLanguageFromLangId(langId)
                           : vpcLanguageFromLocale(std::getenv("LC_ALL"),
                                                   std::getenv("LC_MESSAGES"), std::getenv("LANG"));
}

void vApp::fGatherUserInfo() {
    if (vfc::os::kWindows) {
        fGatherWindowsUserInfo();
        return;
    }
    vString login;
    if (!nonEmptyEnv("USER", login)) nonEmptyEnv("LOGNAME", login);
    vfc::os::UserAccount account;
    bool known;
    if (login.isNull()) {
        known = vfc::os::CurrentUser(account);
        if (known) login = fromStd(account.login);
    } else {
        known = vfc::os::LookUpUser(login.data(), account);
    }
    aUserLogin = login;

    vString home;
    if (!nonEmptyEnv("HOME", home) && known) home = fromStd(account.home);
    aUserDir = vFile(home);
    aUserName = known ? fromStd(account.fullName) : vString();

    vString organization;
    aUserOrganization = vpcGetEnv("ORGANIZATION", organization) ? organization : vString();
}

// The login from USERNAME, the home from HOMEDRIVE and HOMEPATH, owner and organisation from
// the registry key of the system's family.
void vApp::fGatherWindowsUserInfo() {
    vString login;
    aUserLogin = nonEmptyEnv("USERNAME", login) ? login : vString();
    vString drive;
    vString path;
    vpcGetEnv("HOMEDRIVE", drive);
    vpcGetEnv("HOMEPATH", path);
    aUserDir = vFile(drive + path);
    aUserName = vString();
    aUserOrganization = vString();
    const char* key = aMachineOS.fIsEqual("winnt")   ? kWinNtVersionKey
                      : aMachineOS.fIsEqual("win95") ? kWin95VersionKey
                                                     : nullptr;
    vHashvStringvString values;
    if (!key || !fRegEnumKeysAndValues(key, values)) return;
    if (values.fLookup("RegisteredOwner")) aUserName = values.aValue();
    if (values.fLookup("RegisteredOrganization")) aUserOrganization = values.aValue();
}

bool vApp::fRegEnumKeysAndValues(const vString& key, vHashvStringvString& values) {
    std::vector<std::pair<std::string, std::string>> read;
    if (!vfc::os::RegistryValues(key.data(), read)) return false;
    for (const auto& entry : read) {
        vString name = fromStd(entry.first);
        vString value = fromStd(entry.second);
        values.fInsertOrReplace(name, value);
    }
    return true;
}

bool vApp::fChangeUser(const vString& login) {
    vfc::os::UserAccount account;
    if (!vfc::os::LookUpUser(login.data(), account)) return false;
    aUserLogin = fromStd(account.login);
    aUserDir = vFile(fromStd(account.home));
    aUserName = fromStd(account.fullName);
    return true;
}

const char* vApp::platformTypeString() const {
    switch (aPlatformType) {
        case eWin16:
            return "win16";
        case eWin32:
            return "win32";
        case ePosix:
            return "posix";
        case eUnknownPlatform:
            break;
    }
    return "unknown";
}

// ---- options --------------------------------------------------------------------------------

bool vApp::fGetOption(const vString& name, vString& value) const {
    if (!aOptions.fLookup(name)) return false;
    value = aOptions.aValue();
    return true;
}

bool vApp::fSetOption(const vString& name, const vString& value) {
    return aOptions.fReplace(name, value);
}

void vApp::fCalcOptionsName(const vString& optionsName) {
    aOptionsFile = vFile();
    if (optionsName.isNull()) return;
    vString dir = vpcUserConfigDir();
    if (dir.isNull()) return;
    dir.append(vfc::os::kNativeSeparator).append(optionsName).append(".ini");
    aOptionsFile = vFile(dir);
}

void vApp::fAddValidOptions(const vpOption* table) {
    if (!table) return;
    for (const vpOption* o = table; o->name; ++o) {
        vString name(o->name);
        if (aOptions.fContains(name)) continue;
        vString value(o->defaultValue);
        vpcUserEnvExpand(value);
        aOptions.fInsert(name, value);
    }
}

void vApp::fAddValidOptionArrays(const vpOption* const* tables) {
    if (!tables) return;
    for (; *tables; ++tables)
        fAddValidOptions(*tables);
}

// Reads the options file as INI text: the keys before any section, then those of the section
// "[productName]" (so the product's own section wins), each trimmed of blanks and tabs around
// key and value. Only declared options take a value; values are used as written.
bool vApp::fLoadOptions() {
    if (aOptionsFile.fPath().isNull() || !aOptionsFile.QueryStat()) return true;
    vIfstream in;
    if (!in.fOpenText(aOptionsFile)) return false;
    vHashvStringvHvSvS sections;
    in.fParseAsINI(sections);
    vString productSection("[");
    productSection.append(aProductName).append("]");
    for (const vString& section : {vString(), productSection}) {
        if (!sections.fLookup(section)) continue;
        vHashvStringvStringIter it(sections.aValue());
        while (it.fAdvance()) {
            vString key = it.aKey();
            vString value = it.aValue();
            key.fTrim();
            value.fTrim();
            if (aOptions.fContains(key)) aOptions.fReplace(key, value);
        }
    }
    return true;
}

void vApp::fSetProductLangName() {
    vString lang;
    if (!fGetOption("langpref", lang) || lang.isNull() || lang.fIsEqual("system"))
        lang = aMachineLanguage;
    aProductLangName = lang;
}

const vpOption* vApp::sfCommonOptions() {
    return kCommonOptions;
}

vString vApp::fLicenseUser() const {
    vString value;
    fGetOption("licenseuser", value);
    return value;
}

vString vApp::fLicenseOrganization() const {
    vString value;
    fGetOption("licenseorganization", value);
    return value;
}

vString vApp::fLicenseKey() const {
    vString value;
    fGetOption("licensekey", value);
    return value;
}

// ---- abort ----------------------------------------------------------------------------------

void vApp::fNotifyAbort() {}

bool vApp::fUpdateAbort() {
    fUpdateNoAbort();
    return aAbort != 0;
}

void vApp::fUpdateNoAbort() {}

bool vApp::fUpdateContinue(const vString&) {
    fUpdateNoAbort();
    return true;
}

void vApp::fInitGlobalInfoAbortHandlers() {
    vfc::os::InstallAbortHandler(abortHandler);
}

// ---- the current application ------------------------------------------------------------------

vApp& vAppInfo() {
    if (vApp* app = gCurrentApp.load()) return *app;
    // Made once and kept; it becomes current again whenever no other application is.
    static vApp* fallback = new vApp("vfc", "vfc", "0.0");
    gCurrentApp.store(fallback);
    return *fallback;
}
