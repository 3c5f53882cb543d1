#include "vfc/files/vSFileDict.h"

#include <algorithm>
#include <cstring>

#include "vfc/collections/vSlistIterator.h"
#include "vfc/os/platform.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vSFileDict, vClassID::vSFileDict)

namespace {

// Byte order, whatever the locale.
int comparePaths(const vString& a, const vString& b) {
    const size_t n = std::min(a.length(), b.length());
    const int c = n == 0 ? 0 : std::memcmp(a.data(), b.data(), n);
    if (c != 0) return c;
    return a.length() < b.length() ? -1 : (a.length() > b.length() ? 1 : 0);
}

bool entryBefore(const vSFile& entry, const vString& path) {
    return comparePaths(entry.fPath(), path) < 0;
}

// True when path is folder or lies below it.
bool isAtOrBelow(const vString& path, const vString& folder) {
    const size_t n = folder.length();
    if (path.length() < n || std::memcmp(path.data(), folder.data(), n) != 0) return false;
    if (path.length() == n) return true;
    // "docs/" already ends in a separator; "docs" needs one next.
    return (n > 0 && vfc::os::IsPathSeparator(folder.data()[n - 1])) ||
           vfc::os::IsPathSeparator(path.data()[n]);
}

}  // namespace

vSFileDict::~vSFileDict() = default;

bool vSFileDict::fInsert(const vSFile& entry) {
    return insert(entry, true);
}

bool vSFileDict::fInsert(const vFile& file, const vString& value) {
    return insert(vSFile(file, value), true);
}

size_t vSFileDict::fInsertAll(const vSlistvFile& files, const vString& value) {
    size_t added = 0;
    vSlistvFileIter it(files);
    while (it.fAdvance())
        added += insert(vSFile(it.aKey(), value), false);
    return added;
}

bool vSFileDict::insert(const vSFile& entry, bool replace) {
    const vString& path = entry.fPath();
    // Appending in order is the common case: a walk yields sorted paths.
    if (aEntries.empty() || comparePaths(aEntries.back().fPath(), path) < 0) {
        aEntries.push_back(entry);
        return true;
    }
    auto it = std::lower_bound(aEntries.begin(), aEntries.end(), path, entryBefore);
    if (it != aEntries.end() && comparePaths(it->fPath(), path) == 0) {
        if (replace) *it = entry;
        return false;
    }
    aEntries.insert(it, entry);
    return true;
}

const vSFile* vSFileDict::fFind(const vFile& file) const {
    const size_t i = fIndexOf(file);
    if (i == aEntries.size() || comparePaths(aEntries[i].fPath(), file.fPath()) != 0)
        return nullptr;
    return &aEntries[i];
}

vSFile* vSFileDict::fFind(const vFile& file) {
    return const_cast<vSFile*>(static_cast<const vSFileDict*>(this)->fFind(file));
}

bool vSFileDict::fLookup(const vFile& file, vString& value) const {
    const vSFile* entry = fFind(file);
    if (!entry) return false;
    value = entry->fValue();
    return true;
}

bool vSFileDict::fRemove(const vFile& file) {
    const vSFile* entry = fFind(file);
    if (!entry) return false;
    aEntries.erase(aEntries.begin() + (entry - aEntries.data()));
    return true;
}

size_t vSFileDict::fRemoveBelow(const vFile& folder) {
    const size_t before = aEntries.size();
    const auto [first, end] = prefixRun(folder.fPath());
    auto kept =
        std::remove_if(aEntries.begin() + first, aEntries.begin() + end,
                       [&](const vSFile& e) { return isAtOrBelow(e.fPath(), folder.fPath()); });
    aEntries.erase(kept, aEntries.begin() + end);
    return before - aEntries.size();
}

const vSFile* vSFileDict::fAt(size_t index) const {
    return index < aEntries.size() ? &aEntries[index] : nullptr;
}

size_t vSFileDict::fIndexOf(const vFile& file) const {
    auto it = std::lower_bound(aEntries.begin(), aEntries.end(), file.fPath(), entryBefore);
    return static_cast<size_t>(it - aEntries.begin());
}

size_t vSFileDict::fFindBelow(const vFile& folder, vSlistvFile& out) const {
    size_t found = 0;
    const auto [first, end] = prefixRun(folder.fPath());
    for (size_t i = first; i < end; ++i) {
        if (!isAtOrBelow(aEntries[i].fPath(), folder.fPath())) continue;
        out.fInsert(aEntries[i].fFile());
        ++found;
    }
    return found;
}

std::pair<size_t, size_t> vSFileDict::prefixRun(const vString& path) const {
    // Everything below "docs" starts with "docs", so it lies in one run from the lower bound;
    // inside that run "docs-old" and "docsx" are still to be told apart by the caller.
    const size_t first = fIndexOf(vFile(path));
    size_t end = first;
    while (end < aEntries.size() && aEntries[end].fPath().length() >= path.length() &&
           std::memcmp(aEntries[end].fPath().data(), path.data(), path.length()) == 0)
        ++end;
    return {first, end};
}

size_t vSFileDict::fStampAll() {
    size_t failed = 0;
    for (vSFile& e : aEntries)
        if (!e.fStamp()) ++failed;
    return failed;
}

size_t vSFileDict::fCollectChanged(vSlistvFile& out) const {
    size_t changed = 0;
    for (const vSFile& e : aEntries) {
        if (!e.fIsChanged()) continue;
        out.fInsert(e.fFile());
        ++changed;
    }
    return changed;
}

RWCollectable* vSFileDict::newSpecies() const {
    return new vSFileDict;
}

RWCollectable* vSFileDict::copy() const {
    return new vSFileDict(*this);
}

int vSFileDict::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const vSFileDict* o = static_cast<const vSFileDict*>(other);
    const size_t n = std::min(aEntries.size(), o->aEntries.size());
    for (size_t i = 0; i < n; ++i) {
        const int c = aEntries[i].compareTo(&o->aEntries[i]);
        if (c != 0) return c;
    }
    if (aEntries.size() == o->aEntries.size()) return 0;
    return aEntries.size() < o->aEntries.size() ? -1 : 1;
}

unsigned vSFileDict::hash() const {
    unsigned h = static_cast<unsigned>(aEntries.size());
    for (const vSFile& e : aEntries)
        h = h * 31u + e.hash();
    return h;
}

bool vSFileDict::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && compareTo(other) == 0;
}

void vSFileDict::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    unsigned count = 0;
    s >> count;
    if (!s.good()) return;
    // The count comes from the stream: entries are read one by one, never reserved up front,
    // so a forged count ends at the end of the data instead of in a huge allocation.
    std::vector<vSFile> entries;
    for (unsigned i = 0; i < count; ++i) {
        vSFile entry;
        entry.restoreGuts(s);
        if (!s.good()) return;
        if (!entries.empty() && comparePaths(entries.back().fPath(), entry.fPath()) >= 0) {
            s.setstate(RWvios::failbit);
            return;
        }
        entries.push_back(entry);
    }
    aEntries.swap(entries);
}

// The dictionary persists only through the virtual streams, like the files it holds.
void vSFileDict::restoreGuts(RWFile&) {}

void vSFileDict::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << static_cast<unsigned>(aEntries.size());
    for (const vSFile& e : aEntries)
        e.saveGuts(s);
}

void vSFileDict::saveGuts(RWFile&) const {}
