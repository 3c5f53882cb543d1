// The library's one door to the operating system. Everything above vfc/os/ reaches files,
// mappings and the process locale only through these functions, so a port replaces one
// implementation file (posix/osPosix.cpp today) and nothing else. Nothing here is exported:
// the functions serve the library's own classes.
#ifndef VFC_OS_OS_H
#define VFC_OS_OS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vfc {
namespace os {

// ---- file status -----------------------------------------------------------------------------

// True when something exists at path (a file, a directory, anything stat can see).
bool PathExists(const char* path);
// True when path names a directory.
bool IsDirectory(const char* path);

// What a path names, links followed.
enum class NodeKind { eMissing, eRegular, eDirectory, eFifo, eSocket, eCharDevice, eBlockDevice,
                      eOther };
// Asks the system now; eMissing when nothing is there or the path cannot be examined.
NodeKind KindOfPath(const char* path);

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

// A file handle: -1 is no file.
using FileHandle = int;
constexpr FileHandle kNoFile = -1;

enum class OpenMode {
    eReadOnly,      // read access, the file must exist
    eReadWriteKeep, // read and write, created when missing, kept when present
    eReadWriteNew   // read and write, created or truncated
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
// shared-memory object (unlinked again at once, so it never outlives the process); an empty
// or null name an anonymous mapping. Null on failure.
char* MapMemory(const char* name, std::size_t length);
void UnmapView(char* base, std::size_t length);

// ---- process, machine, user --------------------------------------------------------------------

// The running executable's full path; false when the system cannot tell.
bool ExecutablePath(std::string& path);
// The operating system's name ("Linux") and the machine's architecture ("x86_64").
std::string SystemName();
std::string MachineArchitecture();
// The machine's network name as the system reports it.
std::string HostName();

// An entry of the user database.
struct UserAccount {
    std::string login;
    std::string home;
    std::string fullName;  // the first comma-separated field of the comment (GECOS) field
};
// The account of the effective user, or of the given login.
bool CurrentUser(UserAccount& account);
bool LookUpUser(const char* login, UserAccount& account);

// Sets an environment variable (copied by the system); false on failure.
bool SetEnv(const char* name, const char* value);

// Installs handler for the console's interrupt, quit and hang-up signals (SIGINT, SIGQUIT,
// SIGHUP); interrupted system calls restart. The handler must be async-signal-safe.
void InstallAbortHandler(void (*handler)(int));

// ---- child processes ----------------------------------------------------------------------

// Why a child could not be started.
enum class SpawnError { eNone, eNotFound, eNoResources, eOther };

// Starts argv[0] (searched in PATH when it holds no "/") with argv as its arguments, in this
// process's environment and directory, without a shell. Its standard input reads /dev/null;
// with outputFd >= 0 its standard output and standard error both go to outputFd, otherwise it
// keeps this process's. It inherits no other descriptor. On success pid is the child's id.
SpawnError Spawn(const std::vector<std::string>& argv, int outputFd, int& pid);

// The exit code of a child (128 + N for a child ended by signal N); kStillRunning when it has
// not ended (wait false) and -1 when pid is no child of this process. wait true blocks until the
// child ends. A child whose code was read is gone (reaped).
constexpr int kStillRunning = 259;
int ChildExitCode(int pid, bool wait);
// The same, waiting at most timeoutMs for the child to end (kStillRunning after that).
int ChildExitCodeWithin(int pid, unsigned timeoutMs);

// A pipe whose ends are closed on exec; false on failure.
bool MakePipe(int& readEnd, int& writeEnd);
// Reads up to n bytes, retrying interrupted reads: the count read, 0 at the end, -1 on error.
long ReadSome(int fd, char* buffer, std::size_t n);
void CloseDescriptor(int fd);
// True when path names a regular file this process may execute.
bool IsExecutableFile(const char* path);
// Sleeps for ms milliseconds, or us microseconds.
void SleepMilliseconds(unsigned ms);
void SleepMicroseconds(unsigned us);

// ---- dynamic libraries --------------------------------------------------------------------------

// Loads a shared library (all symbols resolved now); null on failure. Never unloaded.
void* LoadLibrary(const char* path);
// The address of an exported symbol, or null.
void* FindSymbol(void* library, const char* name);

}  // namespace os
}  // namespace vfc

#endif  // VFC_OS_OS_H
