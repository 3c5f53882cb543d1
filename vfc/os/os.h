// The library's one door to the operating system. Everything above vfc/os/ reaches files,
// mappings, processes, libraries and the machine's settings only through these functions; each
// platform has one implementation file (posix/osPosix.cpp, win32/osWin32.cpp). Handles are
// opaque pointer-sized integers, so no system header leaks out. Nothing here is exported: the
// functions serve the library's own classes (the few marked VFC_TEST_API serve its tests too).
#ifndef VFC_OS_OS_H
#define VFC_OS_OS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "vfc/base/export.h"
#include "vfc/os/platform.h"

namespace vfc {
namespace os {

// ---- file status -----------------------------------------------------------------------------

// True when something exists at path (a file, a directory, anything stat can see).
bool PathExists(const char* path);
// True when path names a directory.
bool IsDirectory(const char* path);

// What a path names, links followed.
enum class NodeKind {
    eMissing,
    eRegular,
    eDirectory,
    eFifo,
    eSocket,
    eCharDevice,
    eBlockDevice,
    eOther
};
// Asks the system now; eMissing when nothing is there or the path cannot be examined.
NodeKind KindOfPath(const char* path);

// ---- directories and file operations ---------------------------------------------------------

// An entry of a directory: its name and what it is, links not followed (a symbolic link, or on
// Windows a reparse point such as a junction, is eLink whatever it points to).
struct DirEntry {
    enum Kind { eFile, eDirectory, eLink, eOther };
    std::string name;
    Kind kind;
};
// The entries of the directory path, without "." and ".."; false when it cannot be read.
bool ListDirectory(const char* path, std::vector<DirEntry>& entries);
// What path is without following a link: eLink for a link, else as DirEntry says; false when
// nothing is there.
bool EntryKind(const char* path, DirEntry::Kind& kind);
// Makes one directory; false when it exists already or cannot be made.
bool MakeDirectory(const char* path);
// Removes a file or a link (never what it points to); false on failure.
bool RemoveFile(const char* path);
// Removes an empty directory (or a link to one, on Windows a junction); false on failure.
bool RemoveEmptyDirectory(const char* path);
// Renames from to to, replacing a file at to: atomically on POSIX (rename), with
// MoveFileExA(MOVEFILE_REPLACE_EXISTING) on Windows, which moves across volumes too by copying.
bool RenamePath(const char* from, const char* to);
// Copies the bytes of the file from into to (created or truncated, with from's permissions on
// POSIX); false on failure, which may leave to incomplete.
bool CopyFileContents(const char* from, const char* to);
// The modification time in seconds since 1970 UTC; false when it cannot be read.
bool ModificationTime(const char* path, long long& seconds);
bool SetModificationTime(const char* path, long long seconds);
// The size of the file at path; false when it cannot be read.
bool PathFileSize(const char* path, std::uint64_t& size);
// Whether this process may read (write) path: access() on POSIX; on Windows an open for that
// access, which also honours the read-only attribute and the file's security.
bool MayRead(const char* path);
bool MayWrite(const char* path);
// The folder for temporary files: $TMPDIR, else "/tmp" on POSIX; GetTempPathA on Windows
// (without a separator at the end).
std::string TemporaryFolder();
// The current directory; false when it cannot be told.
bool CurrentDirectory(std::string& path);
// Changes the current directory; false on failure.
bool ChangeDirectory(const char* path);

// ---- process locale --------------------------------------------------------------------------

// Switches the character-type locale to the user's environment default for its lifetime and
// restores the previous one afterwards; file names are converted in the user's code page
// while a file is opened.
class UserLocaleScope {
  public:
    UserLocaleScope();
    ~UserLocaleScope();
    UserLocaleScope(const UserLocaleScope&) = delete;
    UserLocaleScope& operator=(const UserLocaleScope&) = delete;

  private:
    char aSaved[256];
    bool aRestore = false;
};

// ---- files and mappings ----------------------------------------------------------------------

// A file handle (a descriptor, or a Windows HANDLE); kNoFile is none.
using FileHandle = std::intptr_t;
constexpr FileHandle kNoFile = -1;

enum class OpenMode {
    eReadOnly,       // read access, the file must exist
    eReadWriteKeep,  // read and write, created when missing, kept when present
    eReadWriteNew,   // read and write, created or truncated
    eCreateOnly      // read and write, created; fails when something is there already
};

FileHandle OpenFile(const char* path, OpenMode mode);
void CloseFile(FileHandle file);
// The file's size in bytes; false when it cannot be read.
bool FileSize(FileHandle file, std::uint64_t& size);
// Sets the file's length (shortening or extending it with zero bytes).
bool SetFileLength(FileHandle file, std::uint64_t length);
// Writes all n bytes (retrying short writes); false on any failure.
bool WriteAll(FileHandle file, const char* data, std::size_t n);

// Maps length bytes of the file from its start, shared, read-only or read-write; null on failure.
char* MapFile(FileHandle file, std::size_t length, bool readOnly);
// Maps length bytes of zeroed memory with no file behind it. A non-empty name gives a named
// shared-memory object (on POSIX unlinked again at once, so it never outlives the process; on
// Windows a named file mapping that lives as long as a view of it); an empty or null name an
// anonymous mapping. Null on failure.
char* MapMemory(const char* name, std::size_t length);
void UnmapView(char* base, std::size_t length);

// ---- process, machine, user --------------------------------------------------------------------

// The running executable's full path; false when the system cannot tell.
bool ExecutablePath(std::string& path);
// The operating system's name: uname's ("Linux") on POSIX; on Windows "win32s", "win95" or
// "winnt" by the platform of the version information.
std::string SystemName();
// The machine's architecture ("x86_64").
std::string MachineArchitecture();
// The machine's network name as the system reports it.
std::string HostName();
// The system's default language as a Windows language identifier; false where the system has
// none (POSIX, where the locale variables stand for it).
bool SystemLanguageId(unsigned& langId);

// An entry of the user database.
struct UserAccount {
    std::string login;
    std::string home;
    std::string fullName;  // the first comma-separated field of the comment (GECOS) field
};
// The account of the effective user, or of the given login. Windows has no user database to
// ask for another user: there only the current user's own login is found.
bool CurrentUser(UserAccount& account);
bool LookUpUser(const char* login, UserAccount& account);

// Every value of the registry key under HKEY_LOCAL_MACHINE, as name and text (numbers in
// decimal); false when the key cannot be opened, and always on POSIX.
bool RegistryValues(const char* key, std::vector<std::pair<std::string, std::string>>& values);

// Where RegistryString looks: HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or HKEY_CLASSES_ROOT.
enum class RegistryRoot { eLocalMachine, eCurrentUser, eClassesRoot };
// The string value name of the key under root (an empty or null name: the key's default value):
// a REG_SZ value as stored, a REG_EXPAND_SZ value with its "%NAME%" references expanded. False
// when the key or the value is missing or holds no string, and always on POSIX.
VFC_TEST_API bool RegistryString(RegistryRoot root, const char* key, const char* name,
                                 std::string& value);
// Stores value as the string value name (empty or null: the default value) of the key under
// root, made with its parents when missing; a REG_EXPAND_SZ value when expand. Removes the key
// under root with everything below it. False on failure, and always on POSIX. These three are
// exported for the library's tests, which register programs for URL schemes.
VFC_TEST_API bool SetRegistryString(RegistryRoot root, const char* key, const char* name,
                                    const std::string& value, bool expand);
VFC_TEST_API bool RemoveRegistryKey(RegistryRoot root, const char* key);

// The shell folder with the CSIDL number (5 documents, 26 roaming application data, 36 the
// Windows directory) through SHGetFolderPathA, loaded from "SHFolder.dll" on first use and
// kept; false when the library or its entry is missing or the lookup fails, and always on
// POSIX.
bool ShellFolderPath(int csidl, std::string& path);

// The text of string resource id of the library's own module, cut to size - 1 bytes and
// terminated; false when there is none (and always on POSIX, where the library compiles its
// texts in).
bool LoadStringResource(unsigned id, char* buffer, std::size_t size);

// Sets an environment variable; false on failure. On Windows through _putenv with a copy that
// is never freed (the runtime keeps pointing at it), so an empty value removes the variable.
// Exported for the library's tests, which set and restore variables on both platforms.
VFC_TEST_API bool SetEnv(const char* name, const char* value);
// Removes an environment variable; false on failure.
VFC_TEST_API bool UnsetEnv(const char* name);

// The console events an abort handler hears: Ctrl-C (SIGINT), Ctrl-Break (SIGQUIT) and the
// console closing (SIGHUP) as 0, 1 and 2; others (log-off, shut-down) as eOther.
enum class ConsoleEvent { eInterrupt = 0, eBreak = 1, eClose = 2, eOther = 3 };
// Returns true when it handled the event; false lets the default action follow (the process
// ends). It runs in a signal handler on POSIX and on a thread of the system on Windows, so it
// may only do async-signal-safe work.
using AbortHandler = bool (*)(ConsoleEvent event);
// Installs handler for the console's events (sigaction with restarting system calls on POSIX,
// SetConsoleCtrlHandler on Windows). Installing it again changes nothing.
void InstallAbortHandler(AbortHandler handler);

// ---- child processes ----------------------------------------------------------------------

// A child process (its pid on POSIX, its process HANDLE on Windows); kNoChild is none.
using ChildProcess = std::intptr_t;
constexpr ChildProcess kNoChild = 0;
// One end of a pipe (a descriptor or a HANDLE); kNoPipe is none.
using PipeEnd = std::intptr_t;
constexpr PipeEnd kNoPipe = -1;

// Why a child could not be started.
enum class SpawnError { eNone, eNotFound, eNoResources, eOther };

// Starts a child in this process's environment and directory, without a shell, with no
// console of its own, and its standard input on the null device; with output other than
// kNoPipe its standard output and standard error both go to output, otherwise it keeps this
// process's. It inherits nothing else. POSIX runs argv[0] (searched in PATH when it holds no
// "/") with argv; Windows hands commandLine unchanged to CreateProcessA, which finds the
// program its own way. On success child is the child and processId its process id.
SpawnError Spawn(const std::string& commandLine, const std::vector<std::string>& argv,
                 PipeEnd output, ChildProcess& child, long& processId);

// Starts a program that this process never waits for and that may outlive it (a web browser, a
// mail program); it inherits no descriptor or handle, and nothing of it stays with this
// process. The result says whether it started. On POSIX argv[0] (searched in PATH when it holds
// no "/") runs with argv, this process's environment and the null device as its standard
// streams, as the grandchild of a double fork, in a session of its own; the child between them
// ends at once and is reaped here, so no zombie and no child remains, and an exec that fails (no
// such file, not executable, no program) is reported back through a close-on-exec pipe, which
// the exec closes when it succeeds. On Windows commandLine goes to CreateProcessA without a
// console, in a process group of its own, and both handles are closed at once. Never waits for
// the program.
SpawnError SpawnDetached(const std::string& commandLine, const std::vector<std::string>& argv);

// The exit code of a child (on POSIX 128 + N for one ended by signal N); kStillRunning when it
// has not ended (wait false) and -1 when child is no child of this process. wait true blocks
// until the child ends. A child whose code was read is gone (reaped, its handle closed). On
// Windows a child that ended with the code 259 itself reads as still running once and as no
// child (-1) after that, since 259 is the system's own STILL_ACTIVE.
constexpr int kStillRunning = 259;
int ChildExitCode(ChildProcess child, bool wait);
// The same, waiting at most timeoutMs for the child to end (kStillRunning after that).
int ChildExitCodeWithin(ChildProcess child, unsigned timeoutMs);

// A pipe neither of whose ends a child inherits unless Spawn hands it over; false on failure.
bool MakePipe(PipeEnd& readEnd, PipeEnd& writeEnd);
// Reads up to n bytes, retrying interrupted reads: the count read, 0 at the end (every
// writer gone: EOF, or ERROR_BROKEN_PIPE on Windows), -1 on another error.
long ReadSome(PipeEnd end, char* buffer, std::size_t n);
void ClosePipe(PipeEnd end);
// The executable file that path names: path itself when it is an executable regular file;
// on Windows, when path has no extension, also path with each extension of PATHEXT
// (".COM;.EXE;.BAT;.CMD" when unset). False when there is none.
bool FindExecutableFile(const std::string& path, std::string& found);
// Dispatches every window message waiting for the calling thread (peeked with removal,
// translated, dispatched), so that a window stays responsive while its thread waits. A quit
// message is posted again and ends the round, so that the thread's own loop still sees it.
// Nothing to do on POSIX, which has no message queue.
void DispatchPendingMessages();
// Sleeps for ms milliseconds, or us microseconds (Sleep on Windows, whole milliseconds).
void SleepMilliseconds(unsigned ms);
void SleepMicroseconds(unsigned us);

// ---- dynamic libraries --------------------------------------------------------------------------

// Loads a shared library (dlopen with every symbol resolved now; LoadLibraryA); null on
// failure. Never unloaded.
void* OpenLibrary(const char* path);
// The address of an exported symbol, or null.
void* FindSymbol(void* library, const char* name);

// ---- named mutexes ------------------------------------------------------------------------------

// A named mutex this process holds (a locked descriptor on POSIX, a mutex HANDLE on Windows);
// kNoMutex is none.
using MutexHandle = std::intptr_t;
constexpr MutexHandle kNoMutex = -1;
// The folder for the user's lock files: $XDG_RUNTIME_DIR when it names a directory, else
// "vfc-<uid>" in the temporary folder, made with mode 0700 when missing and used only when it is
// a real directory of this user that nobody else may enter. False when there is none, and always
// on Windows, whose named mutexes are kernel objects.
bool UserRuntimeFolder(std::string& path);
// Takes the named mutex without waiting; false when another holder has it or on failure. name is
// the path of a lock file on POSIX: the file is created (mode 0600), locked with a write lock of
// its open file description where the system has those (Linux), else of the process, and gets
// this process's id; the kernel drops the lock when the holder ends, however it ends. On Windows
// name is a kernel object name ("Local\..."): the mutex is created or opened and waited for with
// no time; one abandoned by a holder that ended without releasing it counts as taken. A mutex is
// not taken twice in one process: the caller keeps track of what the process holds.
bool AcquireNamedMutex(const char* name, MutexHandle& handle);
// Releases a mutex taken with the same name: POSIX removes the lock file while still holding it,
// then closes it; Windows releases the mutex, which only the thread that took it may do, and
// closes the handle.
void ReleaseNamedMutex(const char* name, MutexHandle handle);
// Whether some process other than this one holds the named mutex now. POSIX tests the lock
// without taking it. Windows cannot: it takes the mutex and releases it at once, so a process
// trying to take it at that instant fails.
bool NamedMutexHeld(const char* name);
// Removes what remains of a named mutex nobody holds: POSIX takes the lock and removes the file
// (a holder that crashed leaves it); on Windows a mutex vanishes with its last handle and there
// is nothing to remove. False when another process holds it, which is left alone.
bool RemoveNamedMutex(const char* name);

}  // namespace os
}  // namespace vfc

#endif  // VFC_OS_OS_H
