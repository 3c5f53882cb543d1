#ifndef VFC_APP_VAPP_H
#define VFC_APP_VAPP_H

#include <csignal>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "vfc/app/vAppProgressStackDepth.h"
#include "vfc/app/vAppStatusStackDepth.h"
#include "vfc/app/vpOption.h"
#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

/// A message catalogue: a function that gives the text of a message number, or null when it has
/// none. fLoadString copies at most 4095 bytes of the text at once, so it need only stay valid
/// during the call. The library's own catalogue, vpcLibraryMessages, is the default.
using vpMessageCatalog = const char* (*)(unsigned id);
/// The library's own message catalogue: the texts of 6000-6003 (a command that could not be
/// run, with one "%s" for the command) and 6050, 6051 ("WARNING", "ERROR"); null for any other
/// number. On Windows they are string resources of the library's DLL, read with LoadStringA
/// into a buffer of this thread; on POSIX they are compiled in.
VFC_API const char* vpcLibraryMessages(unsigned id);

/// The application object: every tool creates one near the start of main.
///
/// It gathers once what tools need to know about the product, the user and the machine, loads
/// the tool's options, installs the console abort handler (Ctrl-C, Ctrl-Break and the console
/// closing: SetConsoleCtrlHandler on Windows, SIGINT, SIGQUIT, SIGHUP on POSIX), and is then
/// the one channel for progress, status, busy indication, abort requests and log messages, and
/// the keeper of the content-type tables. The last vApp constructed is the process-wide
/// instance, vAppInfo(). Construction also puts the product directory in front of "PATH" (when
/// it is a directory) and makes the library's catalogue the message catalogue again.
///
/// \code
/// int main() {
///     vApp app("Vorlandix", "Convert", "8.0", "convert", kOptions, vApp::eNoLicenseCheck);
///     vAppProgressStackDepth mark;
///     app.fStartProgress(mark, files);
///     for (...) { if (app.fUpdateAbort()) break; ...; app.fStepProgress(); }
///     app.fEndProgress(mark);
///     app.fLogMsg("3 files converted", 0);
/// }
/// \endcode
///
/// The console form writes log messages to std::cout (level 0) and std::cerr (warnings, errors)
/// and shows no progress; a tool with a face of its own derives and overrides the virtual
/// operations. Messages come from a compiled-in catalogue (fSetHINSTANCE names another).
///
/// Ownership: the object owns copies of everything it gathers and its tables; the references
/// its accessors return stay valid while it lives (fLoadString's and fGenMessage's only until
/// the next such call). It borrows the option tables only during construction and
/// fAddValidOptions. Copies are independent, and a copy does not become the current application
/// and holds none of the named mutexes.
/// When the current application is destroyed, vAppInfo() falls back to the default application,
/// not to an earlier vApp that is still alive.
///
/// Failure: nothing throws. The few operations that can fail return false (fChangeUser,
/// fGetOption, fSetOption, fLoadOptions, the content-type file operations, the named mutexes,
/// opening a URL and starting a mail, which also say why through fLogMsg);
/// missing information (an unknown user, no home) leaves the corresponding value empty.
/// Construction ignores an options file it cannot read; call fLoadOptions() to find out.
class VFC_API vApp {
  public:
    // 0: no licence check.
    enum LicenseType : int { eNoLicenseCheck = 0, eLicenseCheck = 1 };
    // The platform the library runs on: eWin32 on Windows, ePosix elsewhere.
    enum PlatformTypeEnum : int { eUnknownPlatform = 0, eWin16 = 1, eWin32 = 2, ePosix = 3 };
    enum AppTypeEnum : int { eConsoleApp = 0, eWindowApp = 1, eServiceApp = 2 };

    // A tool without an option table.
    vApp(const vString& family, const vString& name, const vString& version,
         LicenseType license = eNoLicenseCheck);
    // The usual form: the options file is named from optionsName; options is the tool's
    // table (may be null).
    vApp(const vString& family, const vString& name, const vString& version,
         const vString& optionsName, const vpOption* options,
         LicenseType license = eNoLicenseCheck);
    // Options from several tables: a null-terminated array of table pointers.
    vApp(const vString& family, const vString& name, const vString& version,
         const vString& optionsName, const vpOption* const* optionTables,
         LicenseType license = eNoLicenseCheck);
    // The usual form with no option table, written as a null pointer constant (nullptr, NULL or
    // 0), which the two pointer forms above would both take. Any integer counts as no table.
    template <class Null,
              std::enable_if_t<std::is_null_pointer_v<Null> || std::is_integral_v<Null>, int> = 0>
    vApp(const vString& family, const vString& name, const vString& version,
         const vString& optionsName, Null, LicenseType license = eNoLicenseCheck)
        : vApp(family, name, version, optionsName, static_cast<const vpOption*>(nullptr),
               license) {}
    // Copies every member but the named mutexes, which stay with other; the copy does not become
    // the current application.
    vApp(const vApp& other);
    vApp& operator=(const vApp& other);
    // Releases the named mutexes; the current application is cleared when it is this one.
    virtual ~vApp();

    // ---- product, machine, user -------------------------------------------------------------
    const vFile& executableDir() const { return aExecutableDir; }
    const vString& productFamily() const { return aProductFamily; }
    const vString& productName() const { return aProductName; }
    const vFile& productDir() const { return aProductDir; }
    const vString& productVersion() const { return aProductVersion; }
    const vString& productGui() const { return aProductGui; }
    const vString& productResBasename() const { return aProductResBasename; }
    const vString& productResPath() const { return aProductResPath; }
    LicenseType productLicenseType() const { return aLicenseType; }
    const vString& productUserAgent() const { return aProductUserAgent; }
    const vString& productVersionMajor() const { return aProductVersionMajor; }
    const vString& productVersionMinor() const { return aProductVersionMinor; }
    const bool& productUsesRegistry() const { return aProductUsesRegistry; }
    const vString& productLangName() const { return aProductLangName; }
    const vString& userOrganization() const { return aUserOrganization; }
    const vString& userLogin() const { return aUserLogin; }
    const vString& userName() const { return aUserName; }
    const vFile& userDir() const { return aUserDir; }
    const vString& machineCPU() const { return aMachineCPU; }
    const vString& machineOS() const { return aMachineOS; }
    const vString& machineName() const { return aMachineName; }
    const vString& machineLanguage() const { return aMachineLanguage; }
    PlatformTypeEnum platformType() const { return aPlatformType; }
    // "unknown", "win16", "win32" or "posix".
    const char* platformTypeString() const;
    AppTypeEnum& appType() { return aAppType; }
    const AppTypeEnum& appType() const { return aAppType; }
    // Recomputes the user information (login, home, full name) for another login; false, with
    // nothing changed, when the system does not know that login (on Windows, which has no user
    // database to ask, any login but the current user's own).
    bool fChangeUser(const vString& login);
    // Reads every value of the registry key under HKEY_LOCAL_MACHINE into values (name to text,
    // numbers in decimal), replacing values of the same name; false when the key cannot be
    // opened, and always on POSIX, which has no registry.
    static bool fRegEnumKeysAndValues(const vString& key, vHashvStringvString& values);

    // ---- options ------------------------------------------------------------------------------
    const vHashvStringvString& options() const { return aOptions; }
    // The value of a declared option; false (value untouched) for an undeclared one.
    bool fGetOption(const vString& name, vString& value) const;
    // Sets a declared option; false for an undeclared one.
    bool fSetOption(const vString& name, const vString& value);
    // The options file: optionsName + ".ini" in the user's configuration folder
    // ($XDG_CONFIG_HOME, else $HOME/.config; on Windows $APPDATA, else the roaming
    // application-data folder); empty for an empty name.
    void fCalcOptionsName(const vString& optionsName);
    const vFile& fOptionsFile() const { return aOptionsFile; }
    // Declares the options of a table with their defaults (expanded); an option declared
    // already keeps its value.
    void fAddValidOptions(const vpOption* table);
    void fAddValidOptionArrays(const vpOption* const* tables);
    // Reads the options file, when there is one: "name=value" lines outside any section, then
    // those of the section "[productName]" (which thus wins), override declared options, with
    // blanks and tabs around name and value dropped; others are ignored. False when the file
    // exists and cannot be read.
    bool fLoadOptions();
    // productLangName from "langpref"; "system" stands for machineLanguage.
    void fSetProductLangName();
    // The library's own option table: licence data and "langpref" (default "system").
    static const vpOption* sfCommonOptions();

    // ---- licence data (handed to a licensing subsystem; options of the same names) -----------
    virtual vString fLicenseUser() const;
    virtual vString fLicenseOrganization() const;
    virtual vString fLicenseKey() const;

    // ---- abort ----------------------------------------------------------------------------------
    // Called by the console abort handler after it set the abort flag; empty here. It runs in
    // a signal handler: an override may only do what is async-signal-safe.
    virtual void fNotifyAbort();
    // fUpdateNoAbort, then the abort flag.
    virtual bool fUpdateAbort();
    // The hook long waits call to keep a face responsive; nothing to do in a console tool.
    virtual void fUpdateNoAbort();
    // fUpdateNoAbort, then true (a console tool never stops; a face may ask the user).
    virtual bool fUpdateContinue(const vString& text);
    void fSetAbort(bool abort) { aAbort = abort ? 1 : 0; }
    bool fAbort() const { return aAbort != 0; }

    // ---- status and progress --------------------------------------------------------------------
    virtual void fStartStatus(vAppStatusStackDepth& mark, const vString& text);
    virtual void fStartStatus(const vString& text);
    virtual void fEndStatus(const vAppStatusStackDepth& mark);
    virtual void fEndStatus();
    virtual void fStartProgress(vAppProgressStackDepth& mark, int count);
    virtual void fStartProgress(int count);
    virtual void fEndProgress(const vAppProgressStackDepth& mark);
    virtual void fEndProgress();
    // Shows a progress value (the innermost level's percentage, 0 to 100); empty here, so the
    // console form shows no figures.
    virtual void fSetProgress(int value);
    virtual void fStartBusy();
    virtual void fEndBusy();
    // Advances the innermost progress level by n (not past its total) and calls fSetProgress
    // with its percentage; nothing without an open level.
    void fStepProgress(int n = 1);
    bool fHasProgress() const { return !aProgressTotals.empty(); }
    int fProgressDepth() const { return static_cast<int>(aProgressTotals.size()); }
    // The innermost level's count and total; 0 without an open level.
    int fProgressCount() const;
    int fProgressTotal() const;
    int fStatusDepth() const { return static_cast<int>(aStatusStack.size()); }
    // The innermost status text; empty without one.
    const vString& fStatusText() const;
    int fBusyCount() const { return aBusyCount; }
    void fEnableStatus() { aStatusEnabled = true; }
    void fDisableStatus() { aStatusEnabled = false; }
    bool fStatusEnabled() const { return aStatusEnabled; }

    // ---- messages ---------------------------------------------------------------------------------
    // Formats with fFormatLogMessageForConsole and writes the result and a line end to std::cout
    // (level 0) or std::cerr (1 warning, 2 error, other: an error code), flushed.
    virtual void fLogMsg(const vString& text, int level);
    // Empty here.
    virtual void fClearLogMsg();
    // The text of message id from the catalogue, or empty; the result stays valid until the
    // next fLoadString or fGenMessage.
    virtual const vString& fLoadString(unsigned id);
    // The text of message id with its first six "%s" replaced by the parameters in order and
    // any further "%s" by nothing; empty when the message is.
    virtual const vString& fGenMessage(unsigned id, const vString& p1 = vString(),
                                       const vString& p2 = vString(),
                                       const vString& p3 = vString(),
                                       const vString& p4 = vString(),
                                       const vString& p5 = vString(),
                                       const vString& p6 = vString());

    // ---- content types and extensions ---------------------------------------------------------
    // Empties both tables, then reads "type=<type>\texts=<ext>,<ext>..." lines from file (other
    // lines are skipped). False when the file cannot be opened or holds no type line.
    bool fLoadContentTypesAndExtensions(const vFile& file);
    // Writes the type table in the same form, one line per type. False only when the file
    // cannot be opened; write errors are not reported. Extensions are written in pairs, so a
    // type with three or more ("a", "b", "c") is written "a,bc" and does not read back the same.
    bool fSaveContentTypesAndExtensions(const vFile& file);
    void fInsertContentTypeAndExtensionList(const vString& type, const vSlistvString& extensions);
    void fDeleteContentType(const vString& type);
    void fInsertExtensionAndContentType(const vString& extension, const vString& type);
    void fDeleteExtension(const vString& extension);
    const vHashvStringvSlvString& fContentTypeHash() const { return aContentTypes; }
    const vHashvStringvString& fExtensionHash() const { return aExtensions; }

    // ---- threads and named mutexes ----------------------------------------------------------
    void fInsertThreadId(int id) { aThreadSet.fInsert(vInt(id)); }
    void fDeleteThreadId(int id) { aThreadSet.fDelete(vInt(id)); }
    const vSetvInt& fThreadSet() const { return aThreadSet; }
    // The names of the named mutexes this object holds.
    const vSetvString& mutexNames() const { return aMutexes.aNames; }
    // Named mutexes keep a tool from running twice on one thing (a project, a folder) at once:
    // each name stands for one thing, and one process at a time may hold it. They belong to the
    // user (to the logon session on Windows) and are never waited for. A holder that ends
    // without releasing, however it ends, blocks nobody: the system drops what it held.
    //
    // On POSIX a mutex is a lock file "mutex-<name>" in the user's runtime folder
    // ($XDG_RUNTIME_DIR, else "vfc-<uid>" in the temporary folder, mode 0700) with an advisory
    // lock the kernel keeps while the holder lives; the file holds the holder's process id for
    // people and is removed on release. On Windows it is the kernel mutex "Local\mutex_<name>",
    // taken by the thread that called fSetMutexes, which must also be the one that releases it;
    // when that thread ends first, the mutex is free for the next taker (a POSIX lock stays with
    // the process).
    // In both, characters other than letters, digits, '.', '_' and '-' are written "%XX", so
    // any name (slashes, backslashes, spaces) gives a valid file and object name, and a very long
    // one is cut and ends in a hash of the whole. Unlike a lock file judged stale by its
    // holder's pid or age, nothing here can be mistaken for free while its holder lives, and
    // unlike a mutex of the process, two holders in one process exclude each other as well.
    //
    // Takes every name (all or none): when one is held elsewhere, or cannot be had, those taken
    // by this call are released again and the result is false. Names this object holds already
    // count as taken; an empty name is refused. The names go to mutexNames().
    bool fSetMutexes(const vSetvString& names);
    // Releases every mutex this object holds; false when it held none. The destructor does it.
    bool fClearMutexes();
    // Sets held to those of names that some holder (this process included) has now, without
    // taking them; true when there is any. On Windows it takes and releases each mutex not held
    // in this process to find out, so a process taking one at that very instant fails.
    bool fQueryMutexes(const vSetvString& names, vSetvString& held) const;
    // Releases those of names this object holds and removes what holders that ended left of the
    // others (POSIX: the lock file; a Windows mutex disappears with its holder, so nothing is
    // left to remove). A mutex a living holder has, in this process or another, is never taken
    // from it, which would let two runs in at once; the result is then false, else true.
    bool fForceClearMutexes(const vSetvString& names);

    // ---- the web browser and the mail program ------------------------------------------------
    // Tools show what they made (HTML pages, help) in the user's web browser and start mails (a
    // report to send) in the user's mail program; the user's settings say which program that is.
    //
    // On POSIX the browser is the first command of $BROWSER, a list of commands separated by
    // ":", whose program exists (a program without "/" is looked for in PATH), else xdg-open in
    // PATH; the mail program is xdg-email in PATH, else xdg-open. A command is cut into words by
    // the command-line tokenizer (double quotes group, no shell runs it); in each word "%s"
    // stands for the URL and "%%" for "%", and a command without "%s" gets the URL as its last
    // word. On Windows the program is the one registered for the URL scheme ("http" for the
    // browser, "mailto" for mail): the default value of "<scheme>\shell\open\command" under
    // "HKEY_CURRENT_USER\Software\Classes", else under "HKEY_CLASSES_ROOT", with "%1" (or "%L")
    // replaced by the URL, or the URL appended in double quotes when it has neither. (The choice
    // Windows keeps per user under "...\Shell\Associations\UrlAssociations" is not read.) Either
    // way the URL goes with its control characters, blanks and double quotes written %XX.
    //
    // The program starts detached and is never waited for: the call returns once it runs, however
    // long it stays open, and leaves nothing to reap or close. On POSIX the program is the
    // grandchild of a double fork in a session of its own, with the null device as its standard
    // streams, so it holds no pipe of the caller either; on Windows it has no console, inherits no
    // handle, and its handles are closed at once.
    //
    // Failure: false, and a warning (level 1) through fLogMsg that says why: no program found,
    // a program that could not be started (the catalogue's texts 6000-6003 with the command; on
    // POSIX a missing, non-executable or unrunnable file is seen, as the failed exec reports back
    // through a close-on-exec pipe), or a local file that is not there. What the program does
    // once it runs (a browser that cannot reach the page) is not seen.
    //
    // Where Qt's QDesktopServices::openUrl hands a "file:" URL to the program associated with the
    // file's type, fOpenURL gives it to the browser too: a page a tool wrote is to be viewed, not
    // edited. Qt leaves the escaping of a mailto query to the caller; fSendMail makes the URL from
    // its fields. POCO's Process::launch throws on failure and hands back a process the caller
    // must wait for; here nothing throws, nothing is left to wait for, and the reason for a
    // failure goes once through the application's log, where a tool with a face shows it.

    // The command line that would show url in the browser (see above; on POSIX its words joined
    // by blanks, a word holding a blank put in double quotes, the program as found in PATH).
    // False when there is no browser.
    static bool sfFindBrowser(const vString& url, vString& commandLine);
    // The same for the program of a URL scheme: on Windows the one registered for scheme; on
    // POSIX the mail program for "mailto" and the browser for any other scheme. False when
    // there is none or scheme is no scheme name (a letter, then letters, digits, "+", "-", ".").
    static bool sfFindURLHandler(const vString& scheme, const vString& url, vString& commandLine);
    // Shows urlOrFile in the browser, as the URL sfMakeBrowserURL makes of it.
    bool fOpenURL(const vString& urlOrFile);
    // The URL fOpenURL hands to the browser. A text that begins with a scheme of two letters or
    // more ("http:", "file:") is a URL and stays as it is; anything else is a local file, which
    // must exist, and becomes the absolute "file:" URL that sfMakeFileURL makes of its path.
    // False for a file that is not there.
    static bool sfMakeBrowserURL(const vString& urlOrFile, vString& url);
    // Starts a mail to the addresses of to (none: the mail program asks for them) with subject
    // and body in the mail program, which gets the URL that sfMakeMailtoURL makes.
    bool fSendMail(const vSlistvString& to, const vString& subject, const vString& body);
    // The "mailto:" URL of RFC 6068: the addresses joined by ",", then "?subject=" and
    // "&body=" with the texts (each left out when empty). Every byte but letters, digits,
    // "-._~" and "!$'()*,;:@" is written "%XX" (upper-case hex), so blanks, "%", "&", "=", "?",
    // "#", "+" and the bytes of non-ASCII characters are escaped (texts are taken as UTF-8 bytes
    // as they stand), and in an address "," as well. A line break of the body (CR LF, a lone LF or
    // a lone CR) is written "%0D%0A".
    static vString sfMakeMailtoURL(const vSlistvString& to, const vString& subject,
                                   const vString& body);
    // The "file:" URL of a local path: made absolute against the current directory, "." and
    // ".." names resolved, separators written "/", and every byte but letters, digits and
    // "-._~!$&'()*+,;=:@" written "%XX": "/home/ann/a b.html" gives
    // "file:///home/ann/a%20b.html"; on Windows "C:\Docs\a b.html" gives
    // "file:///C:/Docs/a%20b.html" and "\\server\share\x" "file://server/share/x". False for an
    // empty path, and for a relative one when the current directory cannot be told.
    static bool sfMakeFileURL(const vString& path, vString& url);

    // ---- process-wide -------------------------------------------------------------------------
    // Installs the console abort handler without (or before) a vApp; it acts on the current
    // application once there is one. While there is none, the signal keeps its default action.
    static void fInitGlobalInfoAbortHandlers();
    // The message catalogue fLoadString reads (null: none, so every message is empty).
    static void fSetHINSTANCE(vpMessageCatalog catalogue);
    static vpMessageCatalog fGetHINSTANCE();
    // Kept for the tools that call them; they do nothing.
    static void fCalcProgramDir(const vString&) {}
    static void fCalcVorlandixHome(const vString&) {}
    static void fForceCalcVorlandixHome(const vString&) {}

  protected:
    // Level 0: the text without carriage returns. Otherwise the leading line feeds, a prefix
    // ("WARNING", "ERROR" or "CODE == N"), ": " and the text with continuation lines indented
    // under its first character.
    virtual void fFormatLogMessageForConsole(const vString& text, int level, vString& result);
    // The bookkeeping behind the virtual operations; true when the level opened is the
    // outermost (which also resets the counter and clears the abort flag).
    bool fSetStartProgress(int count);
    void fSetEndProgress();
    void fSetStartStatus(const vString& text);
    void fSetEndStatus();
    void fSetStartBusy();
    void fSetEndBusy();

  private:
    void fConstruct(const vString& family, const vString& name, const vString& version,
                    const vString& optionsName, const vpOption* const* tables,
                    LicenseType license);
    void fGatherProductInfo(const vString& family, const vString& name, const vString& version);
    void fGatherMachineInfo();
    void fGatherUserInfo();
    void fGatherWindowsUserInfo();

    vFile aExecutableDir;
    vString aProductFamily;
    vString aProductName;
    vFile aProductDir;
    vString aProductVersion;
    vString aProductGui;
    vString aProductResBasename;
    vString aProductResPath;
    LicenseType aLicenseType = eNoLicenseCheck;
    vString aProductUserAgent;
    vString aProductVersionMajor;
    vString aProductVersionMinor;
    bool aProductUsesRegistry = false;
    vString aProductLangName;
    vString aUserOrganization;
    vString aUserLogin;
    vString aUserName;
    vFile aUserDir;
    vString aMachineCPU;
    vString aMachineOS;
    vString aMachineName;
    vString aMachineLanguage;
    PlatformTypeEnum aPlatformType = ePosix;
    AppTypeEnum aAppType = eConsoleApp;
    vHashvStringvString aOptions;
    vFile aOptionsFile;
    std::vector<int> aProgressCounts;  // per open level, innermost last
    std::vector<int> aProgressTotals;
    int aProgressCounter = 0;  // reset when the outermost level starts
    std::vector<vString> aStatusStack;
    bool aStatusEnabled = true;
    int aBusyCount = 0;
    vSlistvString aMessages;
    vString aMessageBuffer;
    // Set by the signal handler, hence a sig_atomic_t.
    volatile std::sig_atomic_t aAbort = 0;
    // What fSetMutexes took: the names, and per name the system's object name and handle. A
    // copy of the application holds none of them: each is released once, by the object that
    // took it, and assigning keeps the target's own.
    struct vpHeldMutexes {
        struct Held {
            vString name;
            std::string object;
            std::intptr_t handle;
        };
        vpHeldMutexes() = default;
        vpHeldMutexes(const vpHeldMutexes&) {}
        vpHeldMutexes& operator=(const vpHeldMutexes&) { return *this; }
        vSetvString aNames;
        std::vector<Held> aHeld;
    };
    vpHeldMutexes aMutexes;
    vHashvStringvSlvString aContentTypes;
    vHashvStringvString aExtensions;
    vSetvInt aThreadSet;
};

/// The current application: the last vApp constructed and not yet destroyed.
///
/// Without one, a default application ("vfc", "vfc", "0.0"), made on first use and kept for the
/// process (never destroyed), becomes current; making it has the side effects of any vApp
/// construction (abort handler, "PATH", catalogue). The reference stays valid while that
/// application lives; do not keep it across the destruction of the application it names.
VFC_API vApp& vAppInfo();

/// A logging entry point kept for the tools that call it: it accepts its text and does nothing.
VFC_API void vlogF(const vString& text);
/// The two-part form of vlogF; it does nothing either.
VFC_API void vlogF(const vString& first, const vString& second);

#endif  // VFC_APP_VAPP_H
