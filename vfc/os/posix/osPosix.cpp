// POSIX implementation of vfc/os/os.h.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pwd.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utime.h>

#include <atomic>
#include <csignal>
#include <ctime>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "vfc/os/os.h"

namespace vfc {
namespace os {

bool PathExists(const char* path) {
    struct stat st;
    return path && *path && ::stat(path, &st) == 0;
}

bool IsDirectory(const char* path) {
    struct stat st;
    return path && *path && ::stat(path, &st) == 0 && S_ISDIR(st.st_mode);
}

NodeKind KindOfPath(const char* path) {
    struct stat st;
    if (!path || !*path || ::stat(path, &st) != 0) return NodeKind::eMissing;
    if (S_ISREG(st.st_mode)) return NodeKind::eRegular;
    if (S_ISDIR(st.st_mode)) return NodeKind::eDirectory;
    if (S_ISFIFO(st.st_mode)) return NodeKind::eFifo;
    if (S_ISSOCK(st.st_mode)) return NodeKind::eSocket;
    if (S_ISCHR(st.st_mode)) return NodeKind::eCharDevice;
    if (S_ISBLK(st.st_mode)) return NodeKind::eBlockDevice;
    return NodeKind::eOther;
}

namespace {

DirEntry::Kind kindOf(mode_t mode) {
    if (S_ISLNK(mode)) return DirEntry::eLink;
    if (S_ISDIR(mode)) return DirEntry::eDirectory;
    if (S_ISREG(mode)) return DirEntry::eFile;
    return DirEntry::eOther;
}

}  // namespace

bool ListDirectory(const char* path, std::vector<DirEntry>& entries) {
    if (!path || !*path) return false;
    DIR* dir = ::opendir(path);
    if (!dir) return false;
    const std::string prefix = std::string(path) + "/";
    while (struct dirent* e = ::readdir(dir)) {
        const char* name = e->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) continue;
        DirEntry entry;
        entry.name = name;
        struct stat st;
        entry.kind =
            ::lstat((prefix + name).c_str(), &st) == 0 ? kindOf(st.st_mode) : DirEntry::eOther;
        entries.push_back(entry);
    }
    ::closedir(dir);
    return true;
}

bool EntryKind(const char* path, DirEntry::Kind& kind) {
    struct stat st;
    if (!path || !*path || ::lstat(path, &st) != 0) return false;
    kind = kindOf(st.st_mode);
    return true;
}

bool MakeDirectory(const char* path) {
    return path && *path && ::mkdir(path, 0777) == 0;
}

bool RemoveFile(const char* path) {
    return path && *path && ::unlink(path) == 0;
}

bool RemoveEmptyDirectory(const char* path) {
    return path && *path && ::rmdir(path) == 0;
}

bool RenamePath(const char* from, const char* to) {
    return from && to && *from && *to && ::rename(from, to) == 0;
}

bool CopyFileContents(const char* from, const char* to) {
    if (!from || !to || !*from || !*to) return false;
    int in = ::open(from, O_RDONLY | O_CLOEXEC);
    if (in < 0) return false;
    struct stat st;
    if (::fstat(in, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(in);
        return false;
    }
    int out = ::open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, st.st_mode & 07777);
    if (out < 0) {
        ::close(in);
        return false;
    }
    char buffer[64 * 1024];
    bool ok = true;
    for (;;) {
        ssize_t n = ::read(in, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            ok = n == 0;
            break;
        }
        if (!WriteAll(static_cast<FileHandle>(out), buffer, static_cast<size_t>(n))) {
            ok = false;
            break;
        }
    }
    ::close(in);
    if (::close(out) != 0) ok = false;
    return ok;
}

bool ModificationTime(const char* path, long long& seconds) {
    struct stat st;
    if (!path || !*path || ::stat(path, &st) != 0) return false;
    seconds = static_cast<long long>(st.st_mtime);
    return true;
}

bool SetModificationTime(const char* path, long long seconds) {
    struct stat st;
    if (!path || !*path || ::stat(path, &st) != 0) return false;
    struct utimbuf times;
    times.actime = st.st_atime;
    times.modtime = static_cast<time_t>(seconds);
    return ::utime(path, &times) == 0;
}

bool PathFileSize(const char* path, std::uint64_t& size) {
    struct stat st;
    if (!path || !*path || ::stat(path, &st) != 0) return false;
    size = static_cast<std::uint64_t>(st.st_size);
    return true;
}

bool MayRead(const char* path) {
    return path && *path && ::access(path, R_OK) == 0;
}

bool MayWrite(const char* path) {
    return path && *path && ::access(path, W_OK) == 0;
}

std::string TemporaryFolder() {
    const char* dir = std::getenv("TMPDIR");
    std::string path = dir && *dir ? dir : "/tmp";
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

bool CurrentDirectory(std::string& path) {
    std::vector<char> buf(1024);
    while (!::getcwd(buf.data(), buf.size())) {
        if (errno != ERANGE || buf.size() > (1u << 20)) return false;
        buf.resize(buf.size() * 2);
    }
    path = buf.data();
    return true;
}

bool ChangeDirectory(const char* path) {
    return path && *path && ::chdir(path) == 0;
}

FileHandle OpenFile(const char* path, OpenMode mode) {
    if (!path || !*path) return kNoFile;
    int flags = O_CLOEXEC;
    switch (mode) {
        case OpenMode::eReadOnly:
            flags |= O_RDONLY;
            break;
        case OpenMode::eReadWriteKeep:
            flags |= O_RDWR | O_CREAT;
            break;
        case OpenMode::eReadWriteNew:
            flags |= O_RDWR | O_CREAT | O_TRUNC;
            break;
        case OpenMode::eCreateOnly:
            flags |= O_RDWR | O_CREAT | O_EXCL;
            break;
    }
    int fd;
    do {
        fd = ::open(path, flags, 0666);
    } while (fd < 0 && errno == EINTR);
    return fd < 0 ? kNoFile : static_cast<FileHandle>(fd);
}

void CloseFile(FileHandle file) {
    if (file != kNoFile) ::close(static_cast<int>(file));
}

bool FileSize(FileHandle file, std::uint64_t& size) {
    struct stat st;
    if (file == kNoFile || ::fstat(static_cast<int>(file), &st) != 0) return false;
    size = static_cast<std::uint64_t>(st.st_size);
    return true;
}

bool SetFileLength(FileHandle file, std::uint64_t length) {
    if (file == kNoFile) return false;
    int rc;
    do {
        rc = ::ftruncate(static_cast<int>(file), static_cast<off_t>(length));
    } while (rc != 0 && errno == EINTR);
    return rc == 0;
}

bool WriteAll(FileHandle file, const char* data, std::size_t n) {
    if (file == kNoFile) return false;
    while (n > 0) {
        ssize_t w = ::write(static_cast<int>(file), data, n);
        if (w < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data += w;
        n -= static_cast<std::size_t>(w);
    }
    return true;
}

char* MapFile(FileHandle file, std::size_t length, bool readOnly) {
    if (file == kNoFile || length == 0) return nullptr;
    int prot = readOnly ? PROT_READ : PROT_READ | PROT_WRITE;
    void* p = ::mmap(nullptr, length, prot, MAP_SHARED, static_cast<int>(file), 0);
    return p == MAP_FAILED ? nullptr : static_cast<char*>(p);
}

char* MapMemory(const char* name, std::size_t length) {
    if (length == 0) return nullptr;
    if (!name || !*name) {
        void* p =
            ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        return p == MAP_FAILED ? nullptr : static_cast<char*>(p);
    }
    // shm_open wants one leading slash and no other.
    char objectName[256];
    int written = std::snprintf(objectName, sizeof objectName, "/%s", name);
    if (written < 0 || static_cast<std::size_t>(written) >= sizeof objectName) return nullptr;
    for (char* c = objectName + 1; *c; ++c)
        if (*c == '/') *c = '_';
    int fd = ::shm_open(objectName, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) return nullptr;
    ::shm_unlink(objectName);
    char* base = nullptr;
    if (::ftruncate(fd, static_cast<off_t>(length)) == 0) {
        void* p = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (p != MAP_FAILED) base = static_cast<char*>(p);
    }
    ::close(fd);
    return base;
}

void UnmapView(char* base, std::size_t length) {
    if (base && length) ::munmap(base, length);
}

bool ExecutablePath(std::string& path) {
    char buf[PATH_MAX];
    ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf);
    if (n <= 0 || static_cast<size_t>(n) >= sizeof buf) return false;
    path.assign(buf, static_cast<size_t>(n));
    return true;
}

std::string SystemName() {
    struct utsname u;
    return ::uname(&u) == 0 ? std::string(u.sysname) : std::string();
}

std::string MachineArchitecture() {
    struct utsname u;
    return ::uname(&u) == 0 ? std::string(u.machine) : std::string();
}

std::string HostName() {
    char buf[256];
    if (::gethostname(buf, sizeof buf) != 0) return std::string();
    buf[sizeof buf - 1] = '\0';
    return buf;
}

bool SystemLanguageId(unsigned&) {
    return false;
}

namespace {

bool fromEntry(const struct passwd* pw, UserAccount& account) {
    if (!pw) return false;
    account.login = pw->pw_name ? pw->pw_name : "";
    account.home = pw->pw_dir ? pw->pw_dir : "";
    std::string gecos = pw->pw_gecos ? pw->pw_gecos : "";
    account.fullName = gecos.substr(0, gecos.find(','));
    return true;
}

// Runs lookup with a buffer that grows until the entry fits.
template <class Lookup>
bool lookUp(Lookup lookup, UserAccount& account) {
    std::vector<char> buf(1024);
    for (;;) {
        struct passwd entry;
        struct passwd* found = nullptr;
        int rc = lookup(&entry, buf.data(), buf.size(), &found);
        if (rc == ERANGE && buf.size() < (1u << 20)) {
            buf.resize(buf.size() * 2);
            continue;
        }
        return rc == 0 && fromEntry(found, account);
    }
}

}  // namespace

bool CurrentUser(UserAccount& account) {
    uid_t uid = ::geteuid();
    return lookUp([uid](struct passwd* e, char* b, size_t n,
                        struct passwd** r) { return ::getpwuid_r(uid, e, b, n, r); },
                  account);
}

bool LookUpUser(const char* login, UserAccount& account) {
    if (!login || !*login) return false;
    return lookUp([login](struct passwd* e, char* b, size_t n,
                          struct passwd** r) { return ::getpwnam_r(login, e, b, n, r); },
                  account);
}

bool SetEnv(const char* name, const char* value) {
    return name && *name && !std::strchr(name, '=') && ::setenv(name, value ? value : "", 1) == 0;
}

bool RegistryValues(const char*, std::vector<std::pair<std::string, std::string>>&) {
    return false;
}

bool RegistryString(RegistryRoot, const char*, const char*, std::string&) {
    return false;
}

bool SetRegistryString(RegistryRoot, const char*, const char*, const std::string&, bool) {
    return false;
}

bool RemoveRegistryKey(RegistryRoot, const char*) {
    return false;
}

bool ShellFolderPath(int, std::string&) {
    return false;
}

bool LoadStringResource(unsigned, char*, std::size_t) {
    return false;
}

namespace {

std::atomic<AbortHandler> gAbortHandler{nullptr};

// SIGINT, SIGQUIT and SIGHUP stand for the console's Ctrl-C, Ctrl-Break and close. A signal
// the handler does not take gets its default action again and is raised anew (delivered once
// this returns), so the process still stops.
void onConsoleSignal(int signal) {
    int savedErrno = errno;
    ConsoleEvent event = signal == SIGINT    ? ConsoleEvent::eInterrupt
                         : signal == SIGQUIT ? ConsoleEvent::eBreak
                         : signal == SIGHUP  ? ConsoleEvent::eClose
                                             : ConsoleEvent::eOther;
    AbortHandler handler = gAbortHandler.load();
    if (!handler || !handler(event)) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    errno = savedErrno;
}

}  // namespace

bool UnsetEnv(const char* name) {
    return name && *name && !std::strchr(name, '=') && ::unsetenv(name) == 0;
}

void InstallAbortHandler(AbortHandler handler) {
    gAbortHandler.store(handler);
    struct sigaction action;
    std::memset(&action, 0, sizeof action);
    action.sa_handler = onConsoleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : {SIGINT, SIGQUIT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

namespace {

// What a failed start's errno means.
SpawnError spawnErrorOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return SpawnError::eNotFound;
        case ENOMEM:
        case EAGAIN:
            return SpawnError::eNoResources;
        default:
            return SpawnError::eOther;
    }
}

}  // namespace

SpawnError Spawn(const std::string&, const std::vector<std::string>& argv, PipeEnd output,
                 ChildProcess& child, long& processId) {
    const int outputFd = output == kNoPipe ? -1 : static_cast<int>(output);
    if (argv.empty() || argv[0].empty()) return SpawnError::eNotFound;
    std::vector<char*> args;
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0) return SpawnError::eNoResources;
    int rc = posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (rc == 0 && outputFd >= 0) {
        rc = posix_spawn_file_actions_adddup2(&actions, outputFd, 1);
        if (rc == 0) rc = posix_spawn_file_actions_adddup2(&actions, outputFd, 2);
    }
    // Descriptors this process opened without close-on-exec (standard file streams do) must
    // not reach the child either.
    if (rc == 0) rc = posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    pid_t pid = 0;
    if (rc == 0) rc = ::posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc == 0) {
        child = static_cast<ChildProcess>(pid);
        processId = static_cast<long>(pid);
        return SpawnError::eNone;
    }
    return spawnErrorOf(rc);
}

namespace {

// The file argv0 names: itself when it holds a "/" (the exec tells what is wrong with it), else
// the first executable file of that name in a PATH entry, as execvp would find it.
bool programFile(const std::string& argv0, std::string& file) {
    if (argv0.find('/') != std::string::npos) {
        file = argv0;
        return true;
    }
    const char* path = std::getenv("PATH");
    const std::string entries = path ? path : "/bin:/usr/bin";
    size_t start = 0;
    while (start <= entries.size()) {
        size_t end = entries.find(':', start);
        if (end == std::string::npos) end = entries.size();
        std::string dir = entries.substr(start, end - start);
        if (FindExecutableFile((dir.empty() ? "." : dir) + "/" + argv0, file)) return true;
        start = end + 1;
    }
    return false;
}

// The detached program's side of the double fork, after the second fork: only
// async-signal-safe calls, since the parent may have other threads. Reports errno through
// report when the exec fails.
[[noreturn]] void execDetached(const char* file, char* const* args, int report) {
    int null = ::open("/dev/null", O_RDWR);
    if (null >= 0) {
        for (int fd = 0; fd < 3; ++fd)
            if (null != fd) ::dup2(null, fd);
        if (null > 2) ::close(null);
    }
    // Nothing else of this process goes along: every other descriptor closes at the exec (the
    // report pipe too, which is how the parent learns that the exec succeeded).
    if (::close_range(3, ~0u, CLOSE_RANGE_CLOEXEC) != 0)
        for (int fd = 3; fd < 1024; ++fd)
            ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    // Signals come back to their defaults: blocked or ignored ones would stay so after the exec.
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int signal : {SIGINT, SIGQUIT, SIGHUP, SIGPIPE, SIGTERM, SIGCHLD})
        std::signal(signal, SIG_DFL);
    ::execve(file, args, environ);
    int error = errno;
    if (::write(report, &error, sizeof error) < 0) {
    }
    ::_exit(127);
}

}  // namespace

SpawnError SpawnDetached(const std::string&, const std::vector<std::string>& argv) {
    if (argv.empty() || argv[0].empty()) return SpawnError::eNotFound;
    std::string file;
    if (!programFile(argv[0], file)) return SpawnError::eNotFound;
    // Everything the children need is made before the fork: they may not allocate.
    std::vector<char*> args;
    for (const std::string& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0) return SpawnError::eNoResources;

    const pid_t middle = ::fork();
    if (middle < 0) {
        ::close(report[0]);
        ::close(report[1]);
        return SpawnError::eNoResources;
    }
    if (middle == 0) {
        // A session of its own: no terminal, and the terminal's signals do not reach it.
        ::setsid();
        const pid_t program = ::fork();
        if (program == 0) execDetached(file.c_str(), args.data(), report[1]);
        if (program < 0) {
            int error = errno;
            if (::write(report[1], &error, sizeof error) < 0) {
            }
        }
        // The program is init's (or a subreaper's) child from here on.
        ::_exit(0);
    }
    ::close(report[1]);
    int status = 0;
    while (::waitpid(middle, &status, 0) < 0 && errno == EINTR) {
    }
    // Nothing to read: the exec closed the pipe. An errno: it failed.
    int error = 0;
    ssize_t n;
    do {
        n = ::read(report[0], &error, sizeof error);
    } while (n < 0 && errno == EINTR);
    ::close(report[0]);
    if (n == 0) return SpawnError::eNone;
    return n == static_cast<ssize_t>(sizeof error) ? spawnErrorOf(error) : SpawnError::eOther;
}

int ChildExitCode(ChildProcess child, bool wait) {
    if (child <= 0) return -1;
    const pid_t pid = static_cast<pid_t>(child);
    int status = 0;
    pid_t r;
    do {
        r = ::waitpid(pid, &status, wait ? 0 : WNOHANG);
    } while (r < 0 && errno == EINTR);
    if (r == 0) return kStillRunning;
    if (r < 0) return -1;
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
    return -1;
}

int ChildExitCodeWithin(ChildProcess pid, unsigned timeoutMs) {
    int code = ChildExitCode(pid, false);
    if (code != kStillRunning || timeoutMs == 0) return code;
        // A process descriptor becomes readable when the child ends, so the wait ends exactly
        // then; where the system has none, poll with growing sleeps instead.
#if defined(SYS_pidfd_open)
    int fd = static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0));
#else
    int fd = -1;
#endif
    if (fd >= 0) {
        struct pollfd p;
        p.fd = fd;
        p.events = POLLIN;
        p.revents = 0;
        int rc;
        do {
            rc = ::poll(&p, 1, static_cast<int>(timeoutMs));
        } while (rc < 0 && errno == EINTR);
        ::close(fd);
        return ChildExitCode(pid, false);
    }
    unsigned waitedUs = 0;
    for (unsigned stepUs = 10; code == kStillRunning && waitedUs < timeoutMs * 1000u;
         stepUs = stepUs < 2000 ? stepUs * 2 : stepUs) {
        SleepMicroseconds(stepUs);
        waitedUs += stepUs;
        code = ChildExitCode(pid, false);
    }
    return code;
}

bool MakePipe(PipeEnd& readEnd, PipeEnd& writeEnd) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return false;
    readEnd = fds[0];
    writeEnd = fds[1];
    return true;
}

long ReadSome(PipeEnd end, char* buffer, std::size_t n) {
    for (;;) {
        ssize_t r = ::read(static_cast<int>(end), buffer, n);
        if (r >= 0 || errno != EINTR) return static_cast<long>(r);
    }
}

void ClosePipe(PipeEnd end) {
    if (end >= 0) ::close(static_cast<int>(end));
}

bool FindExecutableFile(const std::string& path, std::string& found) {
    struct stat st;
    if (path.empty() || ::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode) ||
        ::access(path.c_str(), X_OK) != 0)
        return false;
    found = path;
    return true;
}

void DispatchPendingMessages() {}

void SleepMicroseconds(unsigned us) {
    struct timespec t;
    t.tv_sec = static_cast<time_t>(us / 1000000);
    t.tv_nsec = static_cast<long>(us % 1000000) * 1000L;
    while (::nanosleep(&t, &t) != 0 && errno == EINTR) {
    }
}

void SleepMilliseconds(unsigned ms) {
    SleepMicroseconds(ms * 1000u);
}

void* OpenLibrary(const char* path) {
    return path && *path ? ::dlopen(path, RTLD_NOW) : nullptr;
}

void* FindSymbol(void* library, const char* name) {
    return library && name ? ::dlsym(library, name) : nullptr;
}

// ---- named mutexes ------------------------------------------------------------------------------

bool UserRuntimeFolder(std::string& path) {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime && runtime[0] == '/' && IsDirectory(runtime)) {
        path = runtime;
        return true;
    }
    std::string dir = TemporaryFolder() + "/vfc-" + std::to_string(::getuid());
    ::mkdir(dir.c_str(), 0700);
    // The temporary folder is shared: a folder someone else made, or a link, is not used.
    struct stat st;
    if (::lstat(dir.c_str(), &st) != 0 || !S_ISDIR(st.st_mode) || st.st_uid != ::getuid() ||
        (st.st_mode & 077) != 0)
        return false;
    path = dir;
    return true;
}

namespace {

// A write lock on the whole file; F_OFD_SETLK locks the open file description, so two
// descriptors of one process exclude each other and closing another descriptor of the file
// keeps the lock. Without it the lock is the process's.
bool lockFile(int fd, bool test, bool& held) {
    struct flock lock;
    std::memset(&lock, 0, sizeof lock);
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
#ifdef F_OFD_SETLK
    const int setCommand = F_OFD_SETLK;
    const int getCommand = F_OFD_GETLK;
#else
    const int setCommand = F_SETLK;
    const int getCommand = F_GETLK;
#endif
    held = false;
    if (test) {
        if (::fcntl(fd, getCommand, &lock) != 0) return false;
        held = lock.l_type != F_UNLCK;
        return true;
    }
    if (::fcntl(fd, setCommand, &lock) == 0) return true;
    held = errno == EACCES || errno == EAGAIN;
    return false;
}

// Whether fd is still the file at path: a holder removes its file on release, and a lock on a
// removed file excludes nobody.
bool stillNamed(int fd, const char* path) {
    struct stat open, named;
    return ::fstat(fd, &open) == 0 && ::stat(path, &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

// Opens and locks the lock file; -1 when it is held or cannot be had.
int lockNamed(const char* path, bool create) {
    if (!path || !*path) return -1;
    // A few rounds at most: each one lost means a holder released in between.
    for (int round = 0; round < 8; ++round) {
        int fd = ::open(path, O_RDWR | O_CLOEXEC | O_NOFOLLOW | (create ? O_CREAT : 0), 0600);
        if (fd < 0) return -1;
        bool held = false;
        if (!lockFile(fd, false, held)) {
            ::close(fd);
            return -1;
        }
        if (stillNamed(fd, path)) return fd;
        ::close(fd);
    }
    return -1;
}

}  // namespace

bool AcquireNamedMutex(const char* name, MutexHandle& handle) {
    int fd = lockNamed(name, true);
    if (fd < 0) return false;
    // The holder's id, for people looking at the folder.
    const std::string pid = std::to_string(::getpid()) + "\n";
    if (::ftruncate(fd, 0) == 0) WriteAll(fd, pid.data(), pid.size());
    handle = fd;
    return true;
}

void ReleaseNamedMutex(const char* name, MutexHandle handle) {
    if (handle == kNoMutex) return;
    // Removed while still locked, so that nobody takes a lock on a file about to go.
    if (name && stillNamed(static_cast<int>(handle), name)) ::unlink(name);
    ::close(static_cast<int>(handle));
}

bool NamedMutexHeld(const char* name) {
    if (!name || !*name) return false;
    int fd = ::open(name, O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) return false;
    bool held = false;
    lockFile(fd, true, held);
    ::close(fd);
    return held;
}

bool RemoveNamedMutex(const char* name) {
    if (!name || !*name) return false;
    if (!PathExists(name)) return true;
    int fd = lockNamed(name, false);
    if (fd < 0) return !PathExists(name);
    ::unlink(name);
    ::close(fd);
    return true;
}

}  // namespace os
}  // namespace vfc
