// POSIX implementation of vfc/os/os.h.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>

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

UserLocaleScope::UserLocaleScope() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (current && std::strlen(current) < sizeof aSaved) {
        std::strcpy(aSaved, current);
        aRestore = true;
    }
    std::setlocale(LC_CTYPE, "");
}

UserLocaleScope::~UserLocaleScope() {
    if (aRestore) std::setlocale(LC_CTYPE, aSaved);
}

FileHandle OpenFile(const char* path, OpenMode mode) {
    if (!path || !*path) return kNoFile;
    int flags = O_CLOEXEC;
    switch (mode) {
        case OpenMode::eReadOnly: flags |= O_RDONLY; break;
        case OpenMode::eReadWriteKeep: flags |= O_RDWR | O_CREAT; break;
        case OpenMode::eReadWriteNew: flags |= O_RDWR | O_CREAT | O_TRUNC; break;
    }
    int fd;
    do {
        fd = ::open(path, flags, 0666);
    } while (fd < 0 && errno == EINTR);
    return fd < 0 ? kNoFile : fd;
}

void CloseFile(FileHandle file) {
    if (file != kNoFile) ::close(file);
}

bool FileSize(FileHandle file, std::uint64_t& size) {
    struct stat st;
    if (file == kNoFile || ::fstat(file, &st) != 0) return false;
    size = static_cast<std::uint64_t>(st.st_size);
    return true;
}

bool SetFileLength(FileHandle file, std::uint64_t length) {
    if (file == kNoFile) return false;
    int rc;
    do {
        rc = ::ftruncate(file, static_cast<off_t>(length));
    } while (rc != 0 && errno == EINTR);
    return rc == 0;
}

bool WriteAll(FileHandle file, const char* data, std::size_t n) {
    if (file == kNoFile) return false;
    while (n > 0) {
        ssize_t w = ::write(file, data, n);
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
    void* p = ::mmap(nullptr, length, prot, MAP_SHARED, file, 0);
    return p == MAP_FAILED ? nullptr : static_cast<char*>(p);
}

char* MapMemory(const char* name, std::size_t length) {
    if (length == 0) return nullptr;
    if (!name || !*name) {
        void* p = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
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

}  // namespace os
}  // namespace vfc
