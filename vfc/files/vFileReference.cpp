#include "vfc/files/vFileReference.h"

#include <string>

#include "vfc/collections/vSlistIterator.h"
#include "vfc/files/vComponentType.h"
#include "vfc/files/vPathAlgebra.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/files/vPathModel.h"
#include "vfc/os/os.h"
#include "vfc/os/platform.h"

constexpr vPathType::TypeEnum vFileReference::kHTMLNotation;

namespace {

using Kind = vComponentType;

// What the text of a reference says, read in its notation.
struct ParsedText {
    vPathComponentList path;    // the part that names a file, without scheme
    vPathComponentList suffix;  // the fragment and query at the end
    bool external = false;      // another scheme, or a host
    bool fileScheme = false;    // written with "file:"
    bool absolute = false;
};

bool isFileScheme(const vString& scheme) {
    return scheme.fIsEqualIgnoreCase(vString("file"));
}

ParsedText parseText(vPathType::TypeEnum notation, const vString& text) {
    ParsedText parsed;
    vPathComponentList all;
    vcListComponents(notation, text, all);
    vPathComponentListIter it(all);
    while (it.fAdvance()) {
        const vPathComponent& c = it.aKey();
        switch (c.fComponentType()) {
            case Kind::eScheme:
                if (isFileScheme(c.aText()))
                    parsed.fileScheme = true;
                else
                    parsed.external = true;
                break;
            case Kind::eHost:
            case Kind::ePort:
                parsed.external = true;
                break;
            case Kind::eFragment:
            case Kind::eQuery:
                parsed.suffix.fInsert(c);
                break;
            default:
                parsed.path.fInsert(c);
                break;
        }
    }
    parsed.path.fSetTrailingSeparator(all.fTrailingSeparator());
    parsed.absolute = parsed.fileScheme || !vcIsRelative(parsed.path);
    return parsed;
}

// Host paths made absolute against the current directory, which is read once per operation.
class HostPaths {
  public:
    HostPaths() {
        std::string cwd;
        if (!vfc::os::CurrentDirectory(cwd) || cwd.empty()) cwd = "/";
        list(vString(cwd.data(), cwd.size()), aCwd);
    }

    // The host path as a list; on Windows "\" separates names like "/".
    static void list(const vString& path, vPathComponentList& out) {
        if (vfc::os::kWindows) {
            std::string text(path.data(), path.length());
            for (char& c : text)
                if (vfc::os::IsPathSeparator(c)) c = '/';
            vcListComponents(vPathType::eHost, vString(text.data(), text.size()), out);
        } else {
            vcListComponents(vPathType::eHost, path, out);
        }
    }

    // The absolute form of a host path, written out and read again so that every component is
    // in the host notation (components of two notations never compare equal).
    void absolute(const vString& path, vPathComponentList& out) const {
        vPathComponentList given;
        list(path, given);
        absoluteList(given, out);
    }

    void absoluteList(const vPathComponentList& given, vPathComponentList& out) const {
        vPathComponentList resolved;
        vcResolvePath(aCwd, given, resolved);
        vString text;
        vcGeneratePath(vPathType::eHost, resolved, text);
        list(text, out);
        out.fSetTrailingSeparator(given.fTrailingSeparator());
    }

    // An absolute list as a host path: relative to the current directory when relative is
    // true (the form a relative referrer was given in), absolute otherwise.
    vString stored(const vPathComponentList& abs, bool relative) const {
        vString text;
        if (!relative) return vcGeneratePath(vPathType::eHost, abs, text);
        vPathComponentList rel;
        vcMakeRelative(false, aCwd, abs, rel);
        return vcGeneratePath(vPathType::eHost, rel, text);
    }

  private:
    vPathComponentList aCwd;
};

bool isRelativeHost(const vString& path) {
    vPathComponentList list;
    HostPaths::list(path, list);
    return vcIsRelative(list);
}

bool sameList(const vPathComponentList& a, const vPathComponentList& b) {
    if (a.fEntries() != b.fEntries()) return false;
    vPathComponentListIter ia(a), ib(b);
    while (ia.fAdvance() && ib.fAdvance())
        if (ia.aKey() != ib.aKey()) return false;
    return true;
}

// The folder a file lies in.
void folderOf(const vPathComponentList& file, vPathComponentList& out) {
    out = file;
    vPathComponent removed;
    vcTrimLastComponent(out, removed);
}

void append(vPathComponentList& list, const vPathComponentList& tail) {
    vPathComponentListIter it(tail);
    while (it.fAdvance())
        list.fInsert(it.aKey());
}

// The text that leads from the file referrer to target (both absolute), in the shape of the
// text parsed before.
vString rewrite(const ParsedText& old, vPathType::TypeEnum notation,
                const vPathComponentList& referrer, const vPathComponentList& target) {
    vPathComponentList out;
    if (old.suffix.fEntries() != 0 && sameList(referrer, target)) {
        out = old.suffix;
    } else {
        if (old.absolute) {
            if (old.fileScheme) out.fInsert(vPathComponent(notation, Kind::eScheme, "file"));
            append(out, target);
        } else {
            vPathComponentList folder;
            folderOf(referrer, folder);
            vcMakeRelative(false, folder, target, out);
        }
        append(out, old.suffix);
    }
    out.fSetTrailingSeparator(old.path.fTrailingSeparator());
    vString text;
    return vcGeneratePath(notation, out, text);
}

// Replaces the front from of path by to when path is from or lies below it.
bool rebase(const vPathComponentList& path, const vPathComponentList& from,
            const vPathComponentList& to, vPathComponentList& out) {
    if (from.fEntries() == 0 || from.fEntries() > path.fEntries()) return false;
    vPathComponentListIter ip(path), ifrom(from);
    while (ifrom.fAdvance()) {
        ip.fAdvance();
        if (ip.aKey() != ifrom.aKey()) return false;
    }
    out = to;
    while (ip.fAdvance())
        out.fInsert(ip.aKey());
    out.fSetTrailingSeparator(path.fTrailingSeparator());
    return true;
}

}  // namespace

vFileReference::vFileReference(const vFile& referrer, const vString& text,
                               vPathType::TypeEnum notation) {
    const ParsedText parsed = parseText(notation, text);
    vFile target;
    if (!parsed.external) {
        const HostPaths paths;
        vPathComponentList from, to;
        paths.absolute(referrer.fPath(), from);
        if (parsed.absolute) {
            paths.absoluteList(parsed.path, to);
        } else if (parsed.path.fEntries() == 0) {
            to = from;  // "#top": the referrer itself
        } else {
            vPathComponentList folder, resolved;
            folderOf(from, folder);
            vcResolvePath(folder, parsed.path, resolved);
            paths.absoluteList(resolved, to);
        }
        // An absolute text gives an absolute target; a relative one a target in the form
        // of the referrer.
        target = vFile(paths.stored(to, !parsed.absolute && isRelativeHost(referrer.fPath())));
    }
    aParts = vpFileRefCmpnts(referrer, text, notation, target);
}

bool vFileReference::fIsExternal() const {
    return parseText(fNotation(), fText()).external;
}

bool vFileReference::fTargetExists() const {
    return !fIsExternal() && fTarget().fKind() != vFile::KindEnum::eMissing;
}

bool vFileReference::fMoveReferrer(const vFile& referrer) {
    return fMove(referrer, fTarget());
}

bool vFileReference::fMoveTarget(const vFile& target) {
    return fMove(fReferrer(), target);
}

bool vFileReference::fMove(const vFile& referrer, const vFile& target) {
    const ParsedText parsed = parseText(fNotation(), fText());
    if (parsed.external) return false;
    const HostPaths paths;
    vPathComponentList from, to;
    paths.absolute(referrer.fPath(), from);
    paths.absolute(target.fPath(), to);
    aParts = vpFileRefCmpnts(referrer, rewrite(parsed, fNotation(), from, to), fNotation(), target);
    return true;
}

int vFileReference::sfFileMoved(vpSlistvpFRefCs& refs, const vFile& from, const vFile& to) {
    const HostPaths paths;
    vPathComponentList fromList, toList;
    paths.absolute(from.fPath(), fromList);
    paths.absolute(to.fPath(), toList);
    int changed = 0;
    vpSlistvpFRefCsIter it(refs);
    while (it.fAdvance()) {
        // Parsed, made absolute and rewritten once, with the one reading of the current folder.
        vpFileRefCmpnts& parts = it.aKey();
        const ParsedText parsed = parseText(parts.fNotation(), parts.fText());
        if (parsed.external) continue;
        vPathComponentList referrer, target, movedReferrer, movedTarget;
        paths.absolute(parts.fReferrer().fPath(), referrer);
        paths.absolute(parts.fTarget().fPath(), target);
        const bool referrerMoved = rebase(referrer, fromList, toList, movedReferrer);
        const bool targetMoved = rebase(target, fromList, toList, movedTarget);
        if (!referrerMoved && !targetMoved) continue;
        const vFile newReferrer =
            referrerMoved
                ? vFile(paths.stored(movedReferrer, isRelativeHost(parts.fReferrer().fPath())))
                : parts.fReferrer();
        const vFile newTarget =
            targetMoved ? vFile(paths.stored(movedTarget, isRelativeHost(parts.fTarget().fPath())))
                        : parts.fTarget();
        const vString text =
            rewrite(parsed, parts.fNotation(), referrerMoved ? movedReferrer : referrer,
                    targetMoved ? movedTarget : target);
        parts = vpFileRefCmpnts(newReferrer, text, parts.fNotation(), newTarget);
        ++changed;
    }
    return changed;
}
