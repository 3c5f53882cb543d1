#include "vfc/files/vDirHierFilter.h"

#include <algorithm>
#include <string>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vString.h"
#include "vfc/os/os.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vDirHierFilter, vClassID::vDirHierFilter)

namespace os = vfc::os;

namespace {

std::string textOf(const vString& s) {
    return std::string(s.data(), s.length());
}

vString stringOf(const std::string& s) {
    return vString(s.data(), s.size());
}

// Patterns first, then the flag; lists that agree on a prefix order by length.
int compareLists(const vMatchList& a, const vMatchList& b) {
    vSlistvStringIter ia(a.fPatterns()), ib(b.fPatterns());
    for (;;) {
        const bool moreA = ia.fAdvance(), moreB = ib.fAdvance();
        if (!moreA || !moreB) {
            if (moreA != moreB) return moreA ? 1 : -1;
            break;
        }
        const int c = ia.aKey().compareTo(&ib.aKey());
        if (c != 0) return c < 0 ? -1 : 1;
    }
    if (a.fIgnoreCase() != b.fIgnoreCase()) return a.fIgnoreCase() ? 1 : -1;
    return 0;
}

// One walk over the tree: the settings, the visitor and whether it asked to stop.
struct Walker {
    const vDirHierFilter& filter;
    vDirHierFilter::Visitor visit;
    void* data;
    bool stopped = false;

    // Yields path when name is included. False when the visitor asked to stop.
    bool offer(const std::string& path, const vString& name) {
        if (filter.fInclude().fEntries() != 0 && !filter.fInclude().fCheckForMatch(name))
            return true;
        if (visit(vFile(stringOf(path)), data)) return true;
        stopped = true;
        return false;
    }

    // Walks the listed entries of a folder, which lie on level; prefix is the folder's path
    // with a separator at the end.
    void walk(const std::string& prefix, std::vector<os::DirEntry>& entries, int level) {
        // Byte order whatever the locale: std::string compares as unsigned char.
        std::sort(entries.begin(), entries.end(),
                  [](const os::DirEntry& a, const os::DirEntry& b) { return a.name < b.name; });
        const int depth = filter.fDepth();
        for (const os::DirEntry& e : entries) {
            const vString name = stringOf(e.name);
            if (filter.fExclude().fCheckForMatch(name)) continue;
            const std::string path = prefix + e.name;
            switch (e.kind) {
                case os::DirEntry::eFile:
                    if (!offer(path, name)) return;
                    continue;
                case os::DirEntry::eDirectory:
                    break;
                case os::DirEntry::eLink: {
                    // Followed only to see what it names: a folder behind a link is never
                    // entered, so loops and trees outside cannot be reached.
                    const os::NodeKind kind = os::KindOfPath(path.c_str());
                    if (kind == os::NodeKind::eDirectory) {
                        if (filter.fDirectories() && !offer(path, name)) return;
                    } else if (kind == os::NodeKind::eRegular) {
                        if (!offer(path, name)) return;
                    }
                    continue;
                }
                default:
                    continue;  // pipes, sockets, devices, entries that vanished
            }
            if (filter.fDirectories() && !offer(path, name)) return;
            if (depth >= 0 && level >= depth) continue;
            std::vector<os::DirEntry> inner;
            if (!os::ListDirectory(path.c_str(), inner)) {
                vAppInfo().fLogMsg(stringOf("cannot read folder \"" + path + "\"; skipped"), 1);
                continue;
            }
            walk(path + "/", inner, level + 1);
            if (stopped) return;
        }
    }
};

bool appendTo(const vFile& file, void* data) {
    static_cast<vSlistvFile*>(data)->fInsert(file);
    return true;
}

}  // namespace

vDirHierFilter::vDirHierFilter(const vFile& root) : aRoot(root) {}

vDirHierFilter::vDirHierFilter(const vFile& root, const vMatchList& include,
                               const vMatchList& exclude, int depth, bool directories)
    : aRoot(root), aInclude(include), aExclude(exclude), aDepth(depth), aDirectories(directories) {}

vDirHierFilter::~vDirHierFilter() = default;

bool vDirHierFilter::fWalk(Visitor visit, void* data) const {
    std::string root = textOf(aRoot.fPath());
    std::vector<os::DirEntry> entries;
    if (!visit || !os::ListDirectory(root.c_str(), entries)) return false;
    // "/" and "C:\" end in a separator already: their children are "/a" and "C:\a".
    if (!os::IsPathSeparator(root.back())) root += '/';
    Walker walker{*this, visit, data, false};
    walker.walk(root, entries, 0);
    return !walker.stopped;
}

bool vDirHierFilter::fCollect(vSlistvFile& out) const {
    return fWalk(appendTo, &out);
}

RWCollectable* vDirHierFilter::newSpecies() const {
    return new vDirHierFilter;
}

RWCollectable* vDirHierFilter::copy() const {
    return new vDirHierFilter(*this);
}

int vDirHierFilter::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const vDirHierFilter* o = static_cast<const vDirHierFilter*>(other);
    int c = aRoot.compareTo(&o->aRoot);
    if (c != 0) return c < 0 ? -1 : 1;
    if (aDepth != o->aDepth) return aDepth < o->aDepth ? -1 : 1;
    if (aDirectories != o->aDirectories) return aDirectories ? 1 : -1;
    c = compareLists(aInclude, o->aInclude);
    return c != 0 ? c : compareLists(aExclude, o->aExclude);
}

unsigned vDirHierFilter::hash() const {
    return aRoot.hash() ^ (aInclude.hash() << 3) ^ (aExclude.hash() << 7) ^
           (static_cast<unsigned>(aDepth) << 11) ^ (aDirectories ? 1u : 0u);
}

bool vDirHierFilter::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && compareTo(other) == 0;
}

void vDirHierFilter::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    vFile root;
    vMatchList include, exclude;
    int depth = 0;
    bool directories = false;
    root.restoreGuts(s);
    include.restoreGuts(s);
    exclude.restoreGuts(s);
    s >> depth >> directories;
    if (!s.good()) return;
    aRoot = root;
    aInclude = include;
    aExclude = exclude;
    aDepth = depth;
    aDirectories = directories;
}

// The filter persists only through the virtual streams.
void vDirHierFilter::restoreGuts(RWFile&) {}

void vDirHierFilter::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aRoot.saveGuts(s);
    aInclude.saveGuts(s);
    aExclude.saveGuts(s);
    s << aDepth << aDirectories;
}

void vDirHierFilter::saveGuts(RWFile&) const {}
