// Windows implementation of vfc/os/os.h, on the Win32 API (ANSI forms, as the library's paths
// are byte strings in the user's code page).
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "vfc/os/os.h"

namespace vfc {
namespace os {

namespace {

HANDLE asHandle(std::intptr_t h) {
    return reinterpret_cast<HANDLE>(h);
}

std::intptr_t fromHandle(HANDLE h) {
    return reinterpret_cast<std::intptr_t>(h);
}

bool usable(std::intptr_t h) {
    return h != -1 && h != 0;
}

DWORD attributesOf(const char* path) {
    return path && *path ? ::GetFileAttributesA(path) : INVALID_FILE_ATTRIBUTES;
}

}  // namespace

// ---- file status ------------------------------------------------------------------------------

bool PathExists(const char* path) {
    return attributesOf(path) != INVALID_FILE_ATTRIBUTES;
}

bool IsDirectory(const char* path) {
    DWORD a = attributesOf(path);
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
}

NodeKind KindOfPath(const char* path) {
    DWORD a = attributesOf(path);
    if (a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY)) return NodeKind::eDirectory;
    if (!path || !*path) return NodeKind::eMissing;
    // Devices ("NUL", "CON", in any folder and with any extension) and pipes may or may not
    // show attributes; their handle tells what they are. Opened without any access, so nothing
    // is read or written and no writer is waited for.
    HANDLE h = ::CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                             nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return a != INVALID_FILE_ATTRIBUTES ? NodeKind::eRegular : NodeKind::eMissing;
    DWORD type = ::GetFileType(h);
    ::CloseHandle(h);
    switch (type) {
        case FILE_TYPE_CHAR:
            return NodeKind::eCharDevice;
        case FILE_TYPE_PIPE:
            return NodeKind::eFifo;
        case FILE_TYPE_DISK:
            return NodeKind::eRegular;
        default:
            return NodeKind::eOther;
    }
}

// ---- directories and file operations ---------------------------------------------------------

namespace {

DirEntry::Kind kindOf(DWORD attributes) {
    if (attributes & FILE_ATTRIBUTE_REPARSE_POINT) return DirEntry::eLink;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return DirEntry::eDirectory;
    return DirEntry::eFile;
}

// Seconds since 1970 and FILETIME (100 ns since 1601).
constexpr long long kEpochDifference = 11644473600LL;

long long secondsOf(const FILETIME& t) {
    ULARGE_INTEGER u;
    u.LowPart = t.dwLowDateTime;
    u.HighPart = t.dwHighDateTime;
    return static_cast<long long>(u.QuadPart / 10000000ULL) - kEpochDifference;
}

FILETIME fileTimeOf(long long seconds) {
    ULARGE_INTEGER u;
    u.QuadPart = static_cast<ULONGLONG>(seconds + kEpochDifference) * 10000000ULL;
    FILETIME t;
    t.dwLowDateTime = u.LowPart;
    t.dwHighDateTime = u.HighPart;
    return t;
}

}  // namespace

bool ListDirectory(const char* path, std::vector<DirEntry>& entries) {
    if (!path || !*path) return false;
    std::string pattern(path);
    if (pattern.back() != '/' && pattern.back() != '\\') pattern += '\\';
    pattern += '*';
    WIN32_FIND_DATAA data;
    HANDLE find = ::FindFirstFileA(pattern.c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return ::GetLastError() == ERROR_FILE_NOT_FOUND;
    do {
        if (std::strcmp(data.cFileName, ".") == 0 || std::strcmp(data.cFileName, "..") == 0)
            continue;
        DirEntry entry;
        entry.name = data.cFileName;
        entry.kind = kindOf(data.dwFileAttributes);
        entries.push_back(entry);
    } while (::FindNextFileA(find, &data));
    ::FindClose(find);
    return true;
}

bool EntryKind(const char* path, DirEntry::Kind& kind) {
    DWORD a = attributesOf(path);
    if (a == INVALID_FILE_ATTRIBUTES) return false;
    kind = kindOf(a);
    return true;
}

bool MakeDirectory(const char* path) {
    return path && *path && ::CreateDirectoryA(path, nullptr);
}

bool RemoveFile(const char* path) {
    if (!path || !*path) return false;
    if (::DeleteFileA(path)) return true;
    // A read-only file is removed as the user asked, as POSIX would in a writable folder.
    DWORD a = ::GetFileAttributesA(path);
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_READONLY) &&
           ::SetFileAttributesA(path, a & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY)) &&
           ::DeleteFileA(path);
}

bool RemoveEmptyDirectory(const char* path) {
    return path && *path && ::RemoveDirectoryA(path);
}

bool RenamePath(const char* from, const char* to) {
    return from && to && *from && *to &&
           ::MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED);
}

bool CopyFileContents(const char* from, const char* to) {
    if (!from || !to || !*from || !*to) return false;
    if (attributesOf(from) & FILE_ATTRIBUTE_DIRECTORY) return false;
    return ::CopyFileA(from, to, FALSE);
}

bool ModificationTime(const char* path, long long& seconds) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!path || !*path || !::GetFileAttributesExA(path, GetFileExInfoStandard, &data))
        return false;
    seconds = secondsOf(data.ftLastWriteTime);
    return true;
}

bool SetModificationTime(const char* path, long long seconds) {
    if (!path || !*path) return false;
    // FILE_FLAG_BACKUP_SEMANTICS opens a directory too.
    HANDLE h = ::CreateFileA(path, FILE_WRITE_ATTRIBUTES,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    FILETIME t = fileTimeOf(seconds);
    bool ok = ::SetFileTime(h, nullptr, nullptr, &t);
    ::CloseHandle(h);
    return ok;
}

bool PathFileSize(const char* path, std::uint64_t& size) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!path || !*path || !::GetFileAttributesExA(path, GetFileExInfoStandard, &data))
        return false;
    size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return true;
}

namespace {

bool mayOpen(const char* path, DWORD access) {
    DWORD a = attributesOf(path);
    if (a == INVALID_FILE_ATTRIBUTES) return false;
    if ((access & GENERIC_WRITE) && (a & FILE_ATTRIBUTE_READONLY)) return false;
    HANDLE h = ::CreateFileA(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(h);
    return true;
}

}  // namespace

bool MayRead(const char* path) {
    return mayOpen(path, GENERIC_READ);
}

bool MayWrite(const char* path) {
    return mayOpen(path, GENERIC_WRITE);
}

std::string TemporaryFolder() {
    char buf[MAX_PATH + 1];
    DWORD n = ::GetTempPathA(sizeof buf, buf);
    if (n == 0 || n > MAX_PATH) return std::string();
    std::string path(buf, n);
    while (path.size() > 3 && (path.back() == '\\' || path.back() == '/'))
        path.pop_back();
    return path;
}

bool CurrentDirectory(std::string& path) {
    DWORD n = ::GetCurrentDirectoryA(0, nullptr);
    if (n == 0) return false;
    std::vector<char> buf(n + 1);
    DWORD got = ::GetCurrentDirectoryA(static_cast<DWORD>(buf.size()), buf.data());
    if (got == 0 || got >= buf.size()) return false;
    path.assign(buf.data(), got);
    return true;
}

bool ChangeDirectory(const char* path) {
    return path && *path && ::SetCurrentDirectoryA(path);
}

// ---- files and mappings ----------------------------------------------------------------------

FileHandle OpenFile(const char* path, OpenMode mode) {
    if (!path || !*path) return kNoFile;
    DWORD access = GENERIC_READ;
    DWORD disposition = OPEN_EXISTING;
    switch (mode) {
        case OpenMode::eReadOnly:
            break;
        case OpenMode::eReadWriteKeep:
            access |= GENERIC_WRITE;
            disposition = OPEN_ALWAYS;
            break;
        case OpenMode::eReadWriteNew:
            access |= GENERIC_WRITE;
            disposition = CREATE_ALWAYS;
            break;
        case OpenMode::eCreateOnly:
            access |= GENERIC_WRITE;
            disposition = CREATE_NEW;
            break;
    }
    // Other processes may read and write the file meanwhile.
    HANDLE h = ::CreateFileA(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return h == INVALID_HANDLE_VALUE ? kNoFile : fromHandle(h);
}

void CloseFile(FileHandle file) {
    if (usable(file)) ::CloseHandle(asHandle(file));
}

bool FileSize(FileHandle file, std::uint64_t& size) {
    LARGE_INTEGER n;
    if (!usable(file) || !::GetFileSizeEx(asHandle(file), &n)) return false;
    size = static_cast<std::uint64_t>(n.QuadPart);
    return true;
}

bool SetFileLength(FileHandle file, std::uint64_t length) {
    if (!usable(file)) return false;
    HANDLE h = asHandle(file);
    // The end is set at the file pointer; the pointer is put back afterwards, as ftruncate
    // leaves it alone.
    LARGE_INTEGER zero, current, target;
    zero.QuadPart = 0;
    if (!::SetFilePointerEx(h, zero, &current, FILE_CURRENT)) return false;
    target.QuadPart = static_cast<LONGLONG>(length);
    bool ok = ::SetFilePointerEx(h, target, nullptr, FILE_BEGIN) && ::SetEndOfFile(h);
    ::SetFilePointerEx(h, current, nullptr, FILE_BEGIN);
    return ok;
}

bool WriteAll(FileHandle file, const char* data, std::size_t n) {
    if (!usable(file)) return false;
    while (n > 0) {
        DWORD chunk = n > 0x40000000u ? 0x40000000u : static_cast<DWORD>(n);
        DWORD written = 0;
        if (!::WriteFile(asHandle(file), data, chunk, &written, nullptr) || written == 0)
            return false;
        data += written;
        n -= written;
    }
    return true;
}

namespace {

// Maps a view of the mapping object and closes the object: the view keeps it alive.
char* viewOf(HANDLE mapping, DWORD access, std::size_t length) {
    if (!mapping) return nullptr;
    void* p = ::MapViewOfFile(mapping, access, 0, 0, length);
    ::CloseHandle(mapping);
    return static_cast<char*>(p);
}

DWORD high(std::uint64_t n) {
    return static_cast<DWORD>(n >> 32);
}

DWORD low(std::uint64_t n) {
    return static_cast<DWORD>(n & 0xffffffffu);
}

}  // namespace

char* MapFile(FileHandle file, std::size_t length, bool readOnly) {
    if (!usable(file) || length == 0) return nullptr;
    HANDLE mapping =
        ::CreateFileMappingA(asHandle(file), nullptr, readOnly ? PAGE_READONLY : PAGE_READWRITE,
                             high(length), low(length), nullptr);
    return viewOf(mapping, readOnly ? FILE_MAP_READ : FILE_MAP_READ | FILE_MAP_WRITE, length);
}

char* MapMemory(const char* name, std::size_t length) {
    if (length == 0) return nullptr;
    std::string objectName;
    if (name && *name) {
        // A backslash is reserved for the kernel namespaces ("Local\", "Global\").
        objectName = name;
        for (char& c : objectName)
            if (c == '\\') c = '_';
    }
    HANDLE mapping =
        ::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, high(length),
                             low(length), objectName.empty() ? nullptr : objectName.c_str());
    return viewOf(mapping, FILE_MAP_ALL_ACCESS, length);
}

void UnmapView(char* base, std::size_t length) {
    if (base && length) ::UnmapViewOfFile(base);
}

// ---- process, machine, user --------------------------------------------------------------------

bool ExecutablePath(std::string& path) {
    // The documented buffer: 1023 characters and the terminating zero.
    char buf[1024];
    DWORD n = ::GetModuleFileNameA(nullptr, buf, 1023);
    if (n == 0 || n >= 1023) return false;
    path.assign(buf, n);
    return true;
}

std::string SystemName() {
    OSVERSIONINFOA info;
    std::memset(&info, 0, sizeof info);
    info.dwOSVersionInfoSize = sizeof info;
    if (!::GetVersionExA(&info)) return std::string();
    switch (info.dwPlatformId) {
        case 0:
            return "win32s";
        case 1:
            return "win95";
        case 2:
            return "winnt";
        default:
            return std::string();
    }
}

std::string MachineArchitecture() {
    SYSTEM_INFO info;
    ::GetNativeSystemInfo(&info);
    switch (info.wProcessorArchitecture) {
        case PROCESSOR_ARCHITECTURE_AMD64:
            return "x86_64";
        case PROCESSOR_ARCHITECTURE_INTEL:
            return "x86";
        case PROCESSOR_ARCHITECTURE_ARM:
            return "arm";
        case 12:
            return "arm64";  // PROCESSOR_ARCHITECTURE_ARM64, missing from older headers
        default:
            return std::string();
    }
}

std::string HostName() {
    char buf[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD n = sizeof buf;
    if (!::GetComputerNameA(buf, &n)) return std::string();
    return std::string(buf, n);
}

bool SystemLanguageId(unsigned& langId) {
    langId = ::GetSystemDefaultLangID();
    return true;
}

namespace {

std::string environmentValue(const char* name) {
    const char* v = std::getenv(name);
    return v ? v : "";
}

}  // namespace

bool CurrentUser(UserAccount& account) {
    char buf[257];
    DWORD n = sizeof buf;
    if (!::GetUserNameA(buf, &n) || n == 0) return false;
    account.login.assign(buf, n - 1);  // n counts the terminating zero
    account.home = environmentValue("HOMEDRIVE") + environmentValue("HOMEPATH");
    if (account.home.empty()) account.home = environmentValue("USERPROFILE");
    account.fullName.clear();
    return true;
}

bool LookUpUser(const char* login, UserAccount& account) {
    UserAccount current;
    if (!login || !*login || !CurrentUser(current)) return false;
    if (::lstrcmpiA(login, current.login.c_str()) != 0) return false;
    account = current;
    return true;
}

bool RegistryValues(const char* key, std::vector<std::pair<std::string, std::string>>& values) {
    HKEY k;
    if (!key || ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &k) != ERROR_SUCCESS)
        return false;
    DWORD maxName = 0, maxData = 0;
    if (::RegQueryInfoKeyA(k, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           &maxName, &maxData, nullptr, nullptr) != ERROR_SUCCESS) {
        ::RegCloseKey(k);
        return false;
    }
    std::vector<char> name(maxName + 1);
    std::vector<BYTE> data(maxData + 1);
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = static_cast<DWORD>(name.size());
        DWORD dataLength = static_cast<DWORD>(data.size());
        DWORD type = 0;
        LONG rc = ::RegEnumValueA(k, i, name.data(), &nameLength, nullptr, &type, data.data(),
                                  &dataLength);
        if (rc == ERROR_NO_MORE_ITEMS) break;
        if (rc != ERROR_SUCCESS) continue;  // a value that grew meanwhile: skipped
        std::string text;
        const char* bytes = reinterpret_cast<const char*>(data.data());
        if (type == REG_SZ || type == REG_EXPAND_SZ) {
            text.assign(bytes, ::strnlen(bytes, dataLength));
        } else if (type == REG_DWORD && dataLength >= 4) {
            DWORD v;
            std::memcpy(&v, bytes, sizeof v);
            text = std::to_string(v);
        } else if (type == REG_QWORD && dataLength >= 8) {
            unsigned long long v;
            std::memcpy(&v, bytes, sizeof v);
            text = std::to_string(v);
        } else {
            continue;
        }
        values.emplace_back(std::string(name.data(), nameLength), text);
    }
    ::RegCloseKey(k);
    return true;
}

namespace {

HKEY rootKey(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::eCurrentUser:
            return HKEY_CURRENT_USER;
        case RegistryRoot::eClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RegistryRoot::eLocalMachine:
            break;
    }
    return HKEY_LOCAL_MACHINE;
}

}  // namespace

bool RegistryString(RegistryRoot root, const char* key, const char* name, std::string& value) {
    HKEY k;
    if (!key || ::RegOpenKeyExA(rootKey(root), key, 0, KEY_QUERY_VALUE, &k) != ERROR_SUCCESS)
        return false;
    const char* valueName = name && *name ? name : nullptr;
    DWORD type = 0;
    DWORD size = 0;
    std::vector<char> data;
    LONG rc = ::RegQueryValueExA(k, valueName, nullptr, &type, nullptr, &size);
    if (rc == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ)) {
        data.resize(size + 1);
        rc = ::RegQueryValueExA(k, valueName, nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                                &size);
    }
    ::RegCloseKey(k);
    if (rc != ERROR_SUCCESS || data.empty() || (type != REG_SZ && type != REG_EXPAND_SZ))
        return false;
    // The stored text need not end in a zero.
    std::string text(data.data(), ::strnlen(data.data(), size));
    if (type == REG_EXPAND_SZ) {
        DWORD n = ::ExpandEnvironmentStringsA(text.c_str(), nullptr, 0);
        if (n == 0) return false;
        std::vector<char> expanded(n + 1);
        if (::ExpandEnvironmentStringsA(text.c_str(), expanded.data(), n + 1) == 0) return false;
        text = expanded.data();
    }
    value = text;
    return true;
}

bool SetRegistryString(RegistryRoot root, const char* key, const char* name,
                       const std::string& value, bool expand) {
    HKEY k;
    if (!key || ::RegCreateKeyExA(rootKey(root), key, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                  KEY_SET_VALUE, nullptr, &k, nullptr) != ERROR_SUCCESS)
        return false;
    LONG rc = ::RegSetValueExA(
        k, name && *name ? name : nullptr, 0, expand ? REG_EXPAND_SZ : REG_SZ,
        reinterpret_cast<const BYTE*>(value.c_str()), static_cast<DWORD>(value.size() + 1));
    ::RegCloseKey(k);
    return rc == ERROR_SUCCESS;
}

bool RemoveRegistryKey(RegistryRoot root, const char* key) {
    // With a subkey named, the subkey itself goes too.
    return key && *key && ::RegDeleteTreeA(rootKey(root), key) == ERROR_SUCCESS;
}

namespace {

using GetFolderPath = HRESULT(WINAPI*)(HWND, int, HANDLE, DWORD, LPSTR);

// Loaded once per process and kept; null when "SHFolder.dll" or its entry is missing.
GetFolderPath folderService() {
    static const GetFolderPath service = []() -> GetFolderPath {
        HMODULE module = ::LoadLibraryA("SHFolder.dll");
        if (!module) return nullptr;
        FARPROC entry = ::GetProcAddress(module, "SHGetFolderPathA");
        GetFolderPath f = nullptr;
        static_assert(sizeof f == sizeof entry, "function pointers of one size");
        std::memcpy(&f, &entry, sizeof f);
        return f;
    }();
    return service;
}

}  // namespace

bool ShellFolderPath(int csidl, std::string& path) {
    GetFolderPath service = folderService();
    if (!service) return false;
    char buf[MAX_PATH + 1];
    buf[0] = '\0';
    if (service(nullptr, csidl, nullptr, 0, buf) != S_OK) return false;
    path = buf;
    return true;
}

bool LoadStringResource(unsigned id, char* buffer, std::size_t size) {
    if (!buffer || size < 2) return false;
    // The module this function lives in: the library's DLL (or the program it is linked into).
    HMODULE self = nullptr;
    if (!::GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCSTR>(&LoadStringResource), &self))
        return false;
    int cap = size > 0x7fffffff ? 0x7fffffff : static_cast<int>(size);
    return ::LoadStringA(self, id, buffer, cap) > 0;
}

bool SetEnv(const char* name, const char* value) {
    if (!name || !*name || std::strchr(name, '=')) return false;
    // The runtime keeps the pointer it is given: the text is never freed.
    std::string* entry = new std::string(name);
    entry->append("=").append(value ? value : "");
    return ::_putenv(entry->c_str()) == 0;
}

bool UnsetEnv(const char* name) {
    if (!name || !*name || std::strchr(name, '=')) return false;
    std::string entry(name);
    entry += '=';
    return ::_putenv(entry.c_str()) == 0;  // "name=" removes the variable
}

namespace {

std::atomic<AbortHandler> gAbortHandler{nullptr};
std::atomic<bool> gControlHandlerAdded{false};

BOOL WINAPI onConsoleControl(DWORD type) {
    ConsoleEvent event = type == CTRL_C_EVENT       ? ConsoleEvent::eInterrupt
                         : type == CTRL_BREAK_EVENT ? ConsoleEvent::eBreak
                         : type == CTRL_CLOSE_EVENT ? ConsoleEvent::eClose
                                                    : ConsoleEvent::eOther;
    AbortHandler handler = gAbortHandler.load();
    return handler && handler(event) ? TRUE : FALSE;
}

}  // namespace

void InstallAbortHandler(AbortHandler handler) {
    gAbortHandler.store(handler);
    if (!gControlHandlerAdded.exchange(true)) ::SetConsoleCtrlHandler(onConsoleControl, TRUE);
}

// ---- child processes ----------------------------------------------------------------------

namespace {

SpawnError spawnErrorOf(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return SpawnError::eNotFound;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
            return SpawnError::eNoResources;
        default:
            return SpawnError::eOther;
    }
}

HANDLE inheritableCopy(HANDLE h) {
    HANDLE copy = nullptr;
    HANDLE self = ::GetCurrentProcess();
    if (!::DuplicateHandle(self, h, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS)) return nullptr;
    return copy;
}

// Closes the handles it holds when it goes.
struct HandleSet {
    std::vector<HANDLE> handles;
    ~HandleSet() {
        for (HANDLE h : handles)
            if (h && h != INVALID_HANDLE_VALUE) ::CloseHandle(h);
    }
};

}  // namespace

SpawnError Spawn(const std::string& commandLine, const std::vector<std::string>&, PipeEnd output,
                 ChildProcess& child, long& processId) {
    if (commandLine.empty()) return SpawnError::eNotFound;
    std::vector<char> line(commandLine.begin(), commandLine.end());
    line.push_back('\0');
    PROCESS_INFORMATION pi;
    std::memset(&pi, 0, sizeof pi);
    BOOL created;
    DWORD error = 0;

    if (output == kNoPipe) {
        // Detached: no console, nothing inherited.
        STARTUPINFOA si;
        std::memset(&si, 0, sizeof si);
        si.cb = sizeof si;
        created = ::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                                   nullptr, nullptr, &si, &pi);
        if (!created) error = ::GetLastError();
    } else {
        // Standard output and standard error on two inheritable copies of the pipe's write
        // end, standard input on the null device; the child inherits exactly these three.
        HandleSet held;
        SECURITY_ATTRIBUTES inherit;
        inherit.nLength = sizeof inherit;
        inherit.lpSecurityDescriptor = nullptr;
        inherit.bInheritHandle = TRUE;
        HANDLE in = ::CreateFileA("NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                                  OPEN_EXISTING, 0, nullptr);
        HANDLE out = inheritableCopy(asHandle(output));
        HANDLE err = inheritableCopy(asHandle(output));
        held.handles = {in, out, err};
        if (in == INVALID_HANDLE_VALUE || !out || !err) return SpawnError::eNoResources;

        STARTUPINFOEXA si;
        std::memset(&si, 0, sizeof si);
        si.StartupInfo.cb = sizeof si;
        si.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
        si.StartupInfo.hStdInput = in;
        si.StartupInfo.hStdOutput = out;
        si.StartupInfo.hStdError = err;
        DWORD flags = DETACHED_PROCESS;
        // Limit inheritance to the three handles where the system allows it; without the list
        // every inheritable handle of this process would reach the child.
        SIZE_T attributeSize = 0;
        ::InitializeProcThreadAttributeList(nullptr, 1, 0, &attributeSize);
        std::vector<char> attributeStore(attributeSize ? attributeSize : 1);
        auto* attributes = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributeStore.data());
        HANDLE inherited[3] = {in, out, err};
        bool listed =
            attributeSize && ::InitializeProcThreadAttributeList(attributes, 1, 0, &attributeSize);
        if (listed) {
            if (::UpdateProcThreadAttribute(attributes, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                            inherited, sizeof inherited, nullptr, nullptr)) {
                si.lpAttributeList = attributes;
                flags |= EXTENDED_STARTUPINFO_PRESENT;
            }
        }
        created = ::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                                   nullptr, &si.StartupInfo, &pi);
        if (!created) error = ::GetLastError();
        if (listed) ::DeleteProcThreadAttributeList(attributes);
    }
    if (!created) return spawnErrorOf(error);
    ::CloseHandle(pi.hThread);
    child = fromHandle(pi.hProcess);
    processId = static_cast<long>(pi.dwProcessId);
    return SpawnError::eNone;
}

SpawnError SpawnDetached(const std::string& commandLine, const std::vector<std::string>&) {
    if (commandLine.empty()) return SpawnError::eNotFound;
    std::vector<char> line(commandLine.begin(), commandLine.end());
    line.push_back('\0');
    STARTUPINFOA si;
    std::memset(&si, 0, sizeof si);
    si.cb = sizeof si;
    PROCESS_INFORMATION pi;
    std::memset(&pi, 0, sizeof pi);
    // No console and no handle of this process; a group of its own keeps Ctrl-C in this
    // process's console from reaching it.
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE,
                          DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &si, &pi))
        return spawnErrorOf(::GetLastError());
    ::CloseHandle(pi.hThread);
    ::CloseHandle(pi.hProcess);
    return SpawnError::eNone;
}

int ChildExitCode(ChildProcess child, bool wait) {
    if (child == kNoChild) return -1;
    HANDLE h = asHandle(child);
    DWORD state = ::WaitForSingleObject(h, wait ? INFINITE : 0);
    if (state == WAIT_TIMEOUT) return kStillRunning;
    if (state != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    if (!::GetExitCodeProcess(h, &code)) return -1;
    ::CloseHandle(h);
    return static_cast<int>(code);
}

int ChildExitCodeWithin(ChildProcess child, unsigned timeoutMs) {
    if (child == kNoChild) return -1;
    DWORD state = ::WaitForSingleObject(asHandle(child), timeoutMs);
    if (state == WAIT_TIMEOUT) return kStillRunning;
    return ChildExitCode(child, false);
}

bool MakePipe(PipeEnd& readEnd, PipeEnd& writeEnd) {
    HANDLE r = nullptr;
    HANDLE w = nullptr;
    // Neither end is inheritable; Spawn hands the child copies of its own.
    if (!::CreatePipe(&r, &w, nullptr, 64 * 1024)) return false;
    readEnd = fromHandle(r);
    writeEnd = fromHandle(w);
    return true;
}

long ReadSome(PipeEnd end, char* buffer, std::size_t n) {
    DWORD got = 0;
    DWORD want = n > 0x40000000u ? 0x40000000u : static_cast<DWORD>(n);
    if (::ReadFile(asHandle(end), buffer, want, &got, nullptr)) return static_cast<long>(got);
    return ::GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;
}

void ClosePipe(PipeEnd end) {
    if (usable(end)) ::CloseHandle(asHandle(end));
}

namespace {

bool isRegularFile(const std::string& path) {
    DWORD a = attributesOf(path.c_str());
    return a != INVALID_FILE_ATTRIBUTES && !(a & FILE_ATTRIBUTE_DIRECTORY);
}

bool hasExtension(const std::string& path) {
    size_t dot = path.find_last_of('.');
    size_t separator = path.find_last_of("/\\:");
    return dot != std::string::npos && (separator == std::string::npos || dot > separator);
}

}  // namespace

bool FindExecutableFile(const std::string& path, std::string& found) {
    if (path.empty()) return false;
    if (hasExtension(path)) {
        if (!isRegularFile(path)) return false;
        found = path;
        return true;
    }
    std::string extensions = environmentValue("PATHEXT");
    if (extensions.empty()) extensions = ".COM;.EXE;.BAT;.CMD";
    size_t start = 0;
    while (start <= extensions.size()) {
        size_t end = extensions.find(';', start);
        if (end == std::string::npos) end = extensions.size();
        if (end > start) {
            std::string candidate = path + extensions.substr(start, end - start);
            if (isRegularFile(candidate)) {
                found = candidate;
                return true;
            }
        }
        start = end + 1;
    }
    return false;
}

void DispatchPendingMessages() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

void SleepMilliseconds(unsigned ms) {
    ::Sleep(ms);
}

void SleepMicroseconds(unsigned us) {
    ::Sleep((us + 999) / 1000);
}

// ---- dynamic libraries --------------------------------------------------------------------------

void* OpenLibrary(const char* path) {
    return path && *path ? static_cast<void*>(::LoadLibraryA(path)) : nullptr;
}

void* FindSymbol(void* library, const char* name) {
    if (!library || !name) return nullptr;
    FARPROC entry = ::GetProcAddress(static_cast<HMODULE>(library), name);
    void* address;
    static_assert(sizeof address == sizeof entry, "function and data pointers of one size");
    std::memcpy(&address, &entry, sizeof address);
    return address;
}

// ---- named mutexes ------------------------------------------------------------------------------

bool UserRuntimeFolder(std::string&) {
    return false;
}

namespace {

// Waits for the mutex with no time: true when it is now this thread's, also when its holder
// ended without releasing it (abandoned).
bool takeNow(HANDLE mutex) {
    DWORD result = ::WaitForSingleObject(mutex, 0);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

}  // namespace

bool AcquireNamedMutex(const char* name, MutexHandle& handle) {
    if (!name || !*name) return false;
    HANDLE mutex = ::CreateMutexA(nullptr, FALSE, name);
    if (!mutex) return false;
    if (!takeNow(mutex)) {
        ::CloseHandle(mutex);
        return false;
    }
    handle = fromHandle(mutex);
    return true;
}

void ReleaseNamedMutex(const char*, MutexHandle handle) {
    if (handle == kNoMutex || !usable(handle)) return;
    ::ReleaseMutex(asHandle(handle));
    ::CloseHandle(asHandle(handle));
}

// Takes and releases at once: Windows has no way to look at a mutex's owner without taking it.
bool NamedMutexHeld(const char* name) {
    if (!name || !*name) return false;
    HANDLE mutex = ::OpenMutexA(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, name);
    if (!mutex) return ::GetLastError() == ERROR_ACCESS_DENIED;
    bool held = !takeNow(mutex);
    if (!held) ::ReleaseMutex(mutex);
    ::CloseHandle(mutex);
    return held;
}

bool RemoveNamedMutex(const char* name) {
    return !NamedMutexHeld(name);
}

}  // namespace os
}  // namespace vfc
