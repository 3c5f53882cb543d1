#include "vfc/files/vFileOps.h"

#include <chrono>
#include <cstdio>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "vfc/os/os.h"

namespace os = vfc::os;

namespace {

std::string pathOf(const vFile& file) {
    return std::string(file.fPath().data(), file.fPath().length());
}

std::string child(const std::string& dir, const std::string& name) {
    if (!dir.empty() && os::IsPathSeparator(dir.back())) return dir + name;
    return dir + "/" + name;
}

// The parent of path, trailing separators ignored; "" when it has none.
std::string parentOf(std::string path) {
    while (path.size() > 1 && os::IsPathSeparator(path.back()))
        path.pop_back();
    size_t slash = path.find_last_of(os::kPathSeparators);
    if (slash == std::string::npos) return std::string();
    if (slash == 0) return path.substr(0, 1);
    return path.substr(0, slash);
}

bool makeTree(const std::string& dir) {
    if (dir.empty()) return false;
    if (os::IsDirectory(dir.c_str())) return true;
    if (os::PathExists(dir.c_str())) return false;  // something else is in the way
    std::string parent = parentOf(dir);
    if (!parent.empty() && parent != dir && !makeTree(parent)) return false;
    // Another process may make it meanwhile: a directory afterwards is what was asked for.
    return os::MakeDirectory(dir.c_str()) || os::IsDirectory(dir.c_str());
}

// Removes one entry that is known to be there; recursion only into real directories.
bool removeEntry(const std::string& path, os::DirEntry::Kind kind) {
    switch (kind) {
        case os::DirEntry::eDirectory: {
            std::vector<os::DirEntry> entries;
            bool ok = os::ListDirectory(path.c_str(), entries);
            for (const os::DirEntry& e : entries)
                ok = removeEntry(child(path, e.name), e.kind) && ok;
            return os::RemoveEmptyDirectory(path.c_str()) && ok;
        }
        case os::DirEntry::eLink:
            // A link to a directory is a directory entry of its own on Windows.
            return os::RemoveFile(path.c_str()) || os::RemoveEmptyDirectory(path.c_str());
        default:
            return os::RemoveFile(path.c_str());
    }
}

bool copyFile(const std::string& from, const std::string& to) {
    long long seconds = 0;
    return os::ModificationTime(from.c_str(), seconds) &&
           os::CopyFileContents(from.c_str(), to.c_str()) &&
           os::SetModificationTime(to.c_str(), seconds);
}

bool copyTree(const std::string& from, const std::string& to) {
    std::vector<os::DirEntry> entries;
    if (!os::ListDirectory(from.c_str(), entries) || !makeTree(to)) return false;
    bool ok = true;
    for (const os::DirEntry& e : entries) {
        const std::string source = child(from, e.name);
        const std::string target = child(to, e.name);
        switch (e.kind) {
            case os::DirEntry::eDirectory:
                ok = copyTree(source, target) && ok;
                break;
            case os::DirEntry::eLink:
                // Followed to a file only: a directory link could lead out of the tree or in a
                // circle.
                if (!os::IsDirectory(source.c_str())) ok = copyFile(source, target) && ok;
                break;
            case os::DirEntry::eFile:
                ok = copyFile(source, target) && ok;
                break;
            case os::DirEntry::eOther:
                ok = false;
                break;
        }
    }
    long long seconds = 0;
    if (os::ModificationTime(from.c_str(), seconds)) os::SetModificationTime(to.c_str(), seconds);
    return ok;
}

// Eight random hexadecimal digits; the generator is shared, so it is locked.
std::string randomName(const vString& prefix) {
    static std::mutex lock;
    static std::mt19937_64 random([] {
        std::random_device device;
        auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        return static_cast<std::mt19937_64::result_type>(device()) ^
               static_cast<std::mt19937_64::result_type>(now);
    }());
    unsigned long long value;
    {
        std::lock_guard<std::mutex> guard(lock);
        value = random() & 0xffffffffULL;
    }
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08llx", value);
    return std::string(prefix.data(), prefix.length()) + digits;
}

// Tries fresh names in folder with make until one is made.
template <class Make>
bool makeUnique(const vFile& folder, const vString& prefix, vFile& made, Make make) {
    std::string dir = pathOf(folder);
    if (dir.empty()) dir = os::TemporaryFolder();
    if (dir.empty()) return false;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string path = child(dir, randomName(prefix));
        if (make(path)) {
            made = vFile(vString(path.data(), path.size()));
            return true;
        }
        if (!os::IsDirectory(dir.c_str())) return false;  // no use trying again
    }
    return false;
}

}  // namespace

bool vcMakeDirectoryTree(const vFile& dir) {
    return makeTree(pathOf(dir));
}

bool vcRemoveFile(const vFile& file) {
    os::DirEntry::Kind kind;
    const std::string path = pathOf(file);
    if (!os::EntryKind(path.c_str(), kind) || kind == os::DirEntry::eDirectory) return false;
    return removeEntry(path, kind);
}

bool vcRemoveDirectory(const vFile& dir) {
    os::DirEntry::Kind kind;
    const std::string path = pathOf(dir);
    return os::EntryKind(path.c_str(), kind) && kind == os::DirEntry::eDirectory &&
           os::RemoveEmptyDirectory(path.c_str());
}

bool vcRemoveTree(const vFile& path) {
    os::DirEntry::Kind kind;
    const std::string p = pathOf(path);
    return os::EntryKind(p.c_str(), kind) && removeEntry(p, kind);
}

bool vcCopyFile(const vFile& from, const vFile& to) {
    const std::string source = pathOf(from);
    return os::KindOfPath(source.c_str()) == os::NodeKind::eRegular && copyFile(source, pathOf(to));
}

bool vcCopyTree(const vFile& from, const vFile& to) {
    const std::string source = pathOf(from);
    return os::IsDirectory(source.c_str()) && copyTree(source, pathOf(to));
}

bool vcRenameFile(const vFile& from, const vFile& to) {
    return os::RenamePath(pathOf(from).c_str(), pathOf(to).c_str());
}

bool vcIsReadable(const vFile& file) {
    return os::MayRead(pathOf(file).c_str());
}

bool vcIsWritable(const vFile& file) {
    return os::MayWrite(pathOf(file).c_str());
}

bool vcFileSize(const vFile& file, unsigned long long& size) {
    std::uint64_t n = 0;
    if (!os::PathFileSize(pathOf(file).c_str(), n)) return false;
    size = n;
    return true;
}

bool vcModificationTime(const vFile& file, vTime& time) {
    long long seconds = 0;
    if (!os::ModificationTime(pathOf(file).c_str(), seconds)) return false;
    time = vTime(seconds);
    return true;
}

bool vcSetModificationTime(const vFile& file, const vTime& time) {
    return os::SetModificationTime(pathOf(file).c_str(), time.seconds());
}

vFile vcTempFolder() {
    const std::string dir = os::TemporaryFolder();
    return vFile(vString(dir.data(), dir.size()));
}

bool vcMakeTempFile(const vFile& folder, const vString& prefix, vFile& made) {
    return makeUnique(folder, prefix, made, [](const std::string& path) {
        os::FileHandle h = os::OpenFile(path.c_str(), os::OpenMode::eCreateOnly);
        if (h == os::kNoFile) return false;
        os::CloseFile(h);
        return true;
    });
}

bool vcMakeTempDirectory(const vFile& folder, const vString& prefix, vFile& made) {
    return makeUnique(folder, prefix, made,
                      [](const std::string& path) { return os::MakeDirectory(path.c_str()); });
}
