// What the application object and the environment functions share behind the public interface:
// the current application, the user's folders and the system-language mapping. Exported only
// for the library's tests; not part of vfc.h.
#ifndef VFC_APP_INTERNAL_VPAPPENVIRONMENT_H
#define VFC_APP_INTERNAL_VPAPPENVIRONMENT_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

class vApp;

// The current application, or null when there is none (unlike vAppInfo(), which makes one).
vApp* vpcCurrentApp();

// The product directory as a vApp would compute it now: $VORLANDIXHOME when set and not empty,
// else the directory of the running executable (empty when the system cannot tell).
VFC_API vString vpcCalcProductDir();

// The user's home: $HOME when set and not empty, else the home of the effective user's
// password entry; on Windows HOMEDRIVE followed by HOMEPATH, else the profile folder. Empty
// when none is known.
VFC_API vString vpcUserHome();
// The user's configuration folder: $XDG_CONFIG_HOME when set and not empty, else the home
// followed by "/.config"; empty without a home. On Windows $APPDATA when set and not empty,
// else the roaming application-data folder of the shell (CSIDL_APPDATA).
VFC_API vString vpcUserConfigDir();
// The user's documents folder: the XDG_DOCUMENTS_DIR entry of "user-dirs.dirs" in the
// configuration folder (with a leading "$HOME" replaced by the home), else the home followed
// by "/Documents"; empty without a home. On Windows the shell's CSIDL_PERSONAL folder.
VFC_API vString vpcUserDocumentsDir();

// The folder that a folder name of vpcUserEnvExpand stands for: CSIDL_PERSONAL the documents
// folder, CSIDL_APPDATA the configuration folder; false for CSIDL_WINDOWS, any other name and
// an empty folder. On Windows the three names are asked of SHGetFolderPathA (5, 26, 36). Each call reads the environment and the user-dirs file again, so a change
// of HOME or XDG_CONFIG_HOME takes effect at once.
VFC_API bool vpcUserFolder(const vString& name, vString& path);

// machineLanguage from the locale variables LC_ALL, LC_MESSAGES and LANG (null or empty means
// unset; the first set one counts): "zh_TW" for Chinese of Taiwan, "zh" for other Chinese,
// "de", "en", "fr", "ja", "ko" for those languages, "en" for "C", "POSIX" or none set, and
// "unknown" for anything else. Codeset and modifier ("de_DE.UTF-8@euro") are ignored.
VFC_API vString vpcLanguageFromLocale(const char* lcAll, const char* lcMessages, const char* lang);

// machineLanguage from a Windows language identifier (its primary language in the low ten
// bits, the sub-language above): Chinese gives "zh_TW" with sub-language 1 (Traditional) and
// "zh" otherwise; German, English, French, Japanese and Korean give "de", "en", "fr", "ja",
// "ko"; any other language "unknown".
VFC_API vString vpcLanguageFromLangId(unsigned langId);

#endif  // VFC_APP_INTERNAL_VPAPPENVIRONMENT_H
