// The named mutexes of vApp: object names, the process's own bookkeeping, all-or-none taking.
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <set>
#include <string>

#include "vfc/app/vApp.h"
#include "vfc/os/os.h"

namespace {

// The object names some vApp of this process holds. The system alone would not keep two holders
// in one process apart (a Windows mutex is recursive for its thread, a POSIX record lock
// without open file descriptions is the process's), so the process keeps count itself.
std::mutex gHeldLock;
std::set<std::string>& heldInProcess() {
    static std::set<std::string>* held = new std::set<std::string>;
    return *held;
}

bool heldHere(const std::string& object) {
    std::lock_guard<std::mutex> guard(gHeldLock);
    return heldInProcess().count(object) != 0;
}

// Longest escaped name kept whole; longer ones keep a head and a hash of the whole, so that the
// file name stays under 255 bytes and the object name under MAX_PATH.
constexpr std::size_t kLongestName = 200;

bool keptAsIs(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '_' || c == '-';
}

// name with every other byte as "%XX": one-to-one, and valid in a file name and in a kernel
// object name (no separators, no backslash).
std::string escaped(const vString& name) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (std::size_t i = 0; i < name.length(); ++i) {
        const char c = name.data()[i];
        if (keptAsIs(c)) {
            out += c;
        } else {
            const unsigned char u = static_cast<unsigned char>(c);
            out += '%';
            out += kHex[u >> 4];
            out += kHex[u & 15];
        }
    }
    if (out.size() <= kLongestName) return out;
    // FNV-1a over the whole name; '~' never appears in an escaped name, so a cut name cannot
    // meet a whole one.
    std::uint64_t hash = 14695981039346656037ull;
    for (std::size_t i = 0; i < name.length(); ++i) {
        hash ^= static_cast<unsigned char>(name.data()[i]);
        hash *= 1099511628211ull;
    }
    char tail[18];
    std::snprintf(tail, sizeof tail, "~%016llx", static_cast<unsigned long long>(hash));
    return out.substr(0, kLongestName - 17) + tail;
}

// The system's name for the mutex: the lock file's path on POSIX, the kernel object's name on
// Windows. False for an empty name and where no runtime folder can be had.
bool objectName(const vString& name, std::string& object) {
    if (name.isNull()) return false;
    if (vfc::os::kWindows) {
        object = "Local\\mutex_" + escaped(name);
        return true;
    }
    std::string folder;
    if (!vfc::os::UserRuntimeFolder(folder)) return false;
    object = folder + "/mutex-" + escaped(name);
    return true;
}

// Takes one mutex for the process; false when this process or another has it.
bool acquire(const std::string& object, std::intptr_t& handle) {
    std::lock_guard<std::mutex> guard(gHeldLock);
    if (heldInProcess().count(object)) return false;
    vfc::os::MutexHandle h = vfc::os::kNoMutex;
    if (!vfc::os::AcquireNamedMutex(object.c_str(), h)) return false;
    heldInProcess().insert(object);
    handle = h;
    return true;
}

void release(const std::string& object, std::intptr_t handle) {
    std::lock_guard<std::mutex> guard(gHeldLock);
    vfc::os::ReleaseNamedMutex(object.c_str(), handle);
    heldInProcess().erase(object);
}

}  // namespace

bool vApp::fSetMutexes(const vSetvString& names) {
    std::vector<vpHeldMutexes::Held> taken;
    bool all = true;
    vSetvStringIter it(names);
    while (all && it.fAdvance()) {
        const vString& name = it.aKey();
        if (aMutexes.aNames.fContains(name)) continue;
        vpHeldMutexes::Held held{name, std::string(), vfc::os::kNoMutex};
        all = objectName(name, held.object) && acquire(held.object, held.handle);
        if (all) taken.push_back(held);
    }
    if (!all) {
        for (const vpHeldMutexes::Held& held : taken)
            release(held.object, held.handle);
        return false;
    }
    for (const vpHeldMutexes::Held& held : taken) {
        aMutexes.aNames.fInsert(held.name);
        aMutexes.aHeld.push_back(held);
    }
    return true;
}

bool vApp::fClearMutexes() {
    if (aMutexes.aHeld.empty()) return false;
    for (const vpHeldMutexes::Held& held : aMutexes.aHeld)
        release(held.object, held.handle);
    aMutexes.aHeld.clear();
    aMutexes.aNames.fClearAndDestroy();
    return true;
}

bool vApp::fQueryMutexes(const vSetvString& names, vSetvString& held) const {
    held.fClearAndDestroy();
    vSetvStringIter it(names);
    while (it.fAdvance()) {
        std::string object;
        if (!objectName(it.aKey(), object)) continue;
        // What this process holds is answered here: looking at it through the system would
        // take a Windows mutex recursively, or drop a POSIX process lock when closing.
        if (heldHere(object) || vfc::os::NamedMutexHeld(object.c_str())) held.fInsert(it.aKey());
    }
    return held.fEntries() != 0;
}

bool vApp::fForceClearMutexes(const vSetvString& names) {
    bool clear = true;
    vSetvStringIter it(names);
    while (it.fAdvance()) {
        const vString& name = it.aKey();
        std::string object;
        if (!objectName(name, object)) {
            clear = false;
            continue;
        }
        bool mine = false;
        for (auto held = aMutexes.aHeld.begin(); held != aMutexes.aHeld.end(); ++held) {
            if (held->object != object) continue;
            release(held->object, held->handle);
            aMutexes.aHeld.erase(held);
            aMutexes.aNames.fDelete(name);
            mine = true;
            break;
        }
        if (mine) continue;
        std::lock_guard<std::mutex> guard(gHeldLock);
        if (heldInProcess().count(object) || !vfc::os::RemoveNamedMutex(object.c_str()))
            clear = false;
    }
    return clear;
}
