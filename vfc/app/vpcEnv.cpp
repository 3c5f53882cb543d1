#include "vfc/app/vpcEnv.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include "vfc/app/internal/vpAppEnvironment.h"
#include "vfc/app/vApp.h"
#include "vfc/os/os.h"
#include "vfc/text/vTemplates.h"

namespace {

vString fromStd(const std::string& s) {
    return vString(s.data(), s.size());
}

// The variable's value when it is set and not empty.
bool nonEmptyEnv(const char* name, vString& value) {
    const char* v = std::getenv(name);
    if (!v || !*v) return false;
    value = v;
    return true;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The value of XDG_DOCUMENTS_DIR in a user-dirs file: lines `XDG_DOCUMENTS_DIR="$HOME/Docs"`
// or with an absolute path; "#" starts a comment line. A leading "$HOME" becomes home; a
// value that is neither absolute nor home-relative is not used.
bool documentsFromUserDirs(const std::string& file, const vString& home, vString& dir) {
    std::ifstream in(file);
    if (!in) return false;
    static const std::string key = "XDG_DOCUMENTS_DIR";
    std::string line;
    while (std::getline(in, line)) {
        size_t i = 0;
        while (i < line.size() && isBlank(line[i]))
            ++i;
        if (line.compare(i, key.size(), key) != 0) continue;
        i += key.size();
        while (i < line.size() && isBlank(line[i]))
            ++i;
        if (i >= line.size() || line[i] != '=') continue;
        std::string value = line.substr(i + 1);
        while (!value.empty() && (isBlank(value.back()) || value.back() == '\r'))
            value.pop_back();
        size_t start = value.find_first_not_of(" \t");
        value.erase(0, start == std::string::npos ? value.size() : start);
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        if (value.compare(0, 5, "$HOME") == 0) {
            if (home.isNull()) return false;
            dir = home;
            dir.append(value.data() + 5, value.size() - 5);
            return true;
        }
        if (!value.empty() && value[0] == '/') {
            dir = fromStd(value);
            return true;
        }
        return false;
    }
    return false;
}

}  // namespace

// The CSIDL numbers of the shell folders a reference may name.
constexpr int kCsidlPersonal = 5;
constexpr int kCsidlAppData = 26;
constexpr int kCsidlWindows = 36;

// A shell folder of Windows; false elsewhere and when the folder service fails.
bool shellFolder(int csidl, vString& dir) {
    std::string path;
    if (!vfc::os::ShellFolderPath(csidl, path) || path.empty()) return false;
    dir = fromStd(path);
    return true;
}

vString vpcUserHome() {
    vString home;
    if (vfc::os::kWindows) {
        vString drive;
        vString path;
        const bool hasDrive = nonEmptyEnv("HOMEDRIVE", drive);
        const bool hasPath = nonEmptyEnv("HOMEPATH", path);
        if (hasDrive || hasPath) return drive + path;
    } else if (nonEmptyEnv("HOME", home)) {
        return home;
    }
    vfc::os::UserAccount account;
    if (vfc::os::CurrentUser(account)) return fromStd(account.home);
    return vString();
}

vString vpcUserConfigDir() {
    vString dir;
    if (vfc::os::kWindows) {
        // The variable first, as XDG_CONFIG_HOME on POSIX, so that a tool (or a test) can
        // point it elsewhere; Windows sets it to the roaming application-data folder.
        if (nonEmptyEnv("APPDATA", dir) || shellFolder(kCsidlAppData, dir)) return dir;
        return vString();
    }
    if (nonEmptyEnv("XDG_CONFIG_HOME", dir)) return dir;
    dir = vpcUserHome();
    if (!dir.isNull()) dir.append("/.config");
    return dir;
}

vString vpcUserDocumentsDir() {
    if (vfc::os::kWindows) {
        vString dir;
        return shellFolder(kCsidlPersonal, dir) ? dir : vString();
    }
    vString home = vpcUserHome();
    vString config = vpcUserConfigDir();
    vString dir;
    if (!config.isNull()) {
        std::string file(config.data(), config.length());
        file += "/user-dirs.dirs";
        if (documentsFromUserDirs(file, home, dir)) return dir;
    }
    if (home.isNull()) return vString();
    home.append("/Documents");
    return home;
}

bool vpcUserFolder(const vString& name, vString& path) {
    if (vfc::os::kWindows) {
        int csidl = name.fIsEqual("CSIDL_PERSONAL")  ? kCsidlPersonal
                    : name.fIsEqual("CSIDL_APPDATA") ? kCsidlAppData
                    : name.fIsEqual("CSIDL_WINDOWS") ? kCsidlWindows
                                                     : 0;
        return csidl && shellFolder(csidl, path);
    }
    bool personal = name.fIsEqual("CSIDL_PERSONAL");
    if (!personal && !name.fIsEqual("CSIDL_APPDATA")) return false;
    // Asked afresh each time: a tool may change HOME or XDG_CONFIG_HOME while it runs.
    vString dir = personal ? vpcUserDocumentsDir() : vpcUserConfigDir();
    if (dir.isNull()) return false;
    path = dir;
    return true;
}

bool vpcGetEnv(const vString& name, vString& value) {
    const char* v = std::getenv(name.data());
    if (!v) return false;
    value = v;
    return true;
}

void vpcPutEnv(const vString& name, const vString& value) {
    vfc::os::SetEnv(name.data(), value.data());
}

char vpcPathListSeparator() {
    return vfc::os::kPathListSeparator;
}

void vpcGetPathList(vSlistvString& list) {
    list.fClearAndDestroy();
    vString path;
    if (!vpcGetEnv("PATH", path)) return;
    const vRegExp& entry = vfc::os::kWindows ? vNotSemicolonTemplate() : vNotColonTemplate();
    size_t extent = 0;
    size_t pos = 0;
    while ((pos = entry.index(path, &extent, pos)) != RW_NPOS && extent > 0) {
        list.fInsert(vString(path.data() + pos, extent));
        pos += extent;
    }
}

void vpcSleep(const vInt& seconds) {
    for (int s = seconds.value(); s > 0; --s)
        vfc::os::SleepMilliseconds(1000);
}

void vpcUserEnvExpand(vString& text) {
    const vRegExp& reference = vDOSEnvVarTemplate();
    size_t extent = 0;
    size_t pos = 0;
    while ((pos = reference.index(text, &extent, pos)) != RW_NPOS && extent > 0) {
        // "%name%" or "$name".
        bool percent = text.data()[pos] == '%';
        vString name(text.data() + pos + 1, extent - (percent ? 2 : 1));
        vString value;
        bool found = false;
        if (name.fIsEqual("VORLANDIXHOME")) {
            const vApp* app = vpcCurrentApp();
            value = app ? app->productDir().fDOSPath() : vpcCalcProductDir();
            found = true;
        } else {
            found = vpcGetEnv(name, value) || vpcUserFolder(name, value);
        }
        if (found) {
            text.replace(pos, extent, value);
            pos += value.length();
        } else {
            pos += extent;
        }
    }
}
