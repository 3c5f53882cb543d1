#include "vfc/files/vPathAlgebra.h"

#include <cstddef>

#include "vfc/files/vComponentType.h"
#include "vfc/files/vPathModel.h"
#include "vfc/text/vTemplates.h"

namespace {

using Kind = vComponentType;

vPathComponent vpcHostComponent(vComponentType::TypeEnum kind) {
    return vPathComponent(vPathType::eHost, kind, vString());
}

// Kind of the first component, read without moving the list's current element; false for an
// empty list.
bool vpcFirstKind(const vPathComponentList& list, vComponentType::TypeEnum& kind) {
    vPathComponentListIter it(list);
    if (!it.fAdvance()) return false;
    kind = it.aKey().fComponentType();
    return true;
}

// Kind of the last component; false for an empty list.
bool vpcLastKind(const vPathComponentList& list, vComponentType::TypeEnum& kind) {
    if (!list.fLast()) return false;
    kind = list.aKey().fComponentType();
    return true;
}

// True when re matches the whole of text (a match that starts at 0 and covers everything).
bool vpcWholeMatch(const vString& text, const vRegExp& re) {
    size_t length = 0;
    return text.index(re, &length, 0) == 0 && length == text.length();
}

// A directory (or server, share) name of DOS: at most eight allowed characters, no dot.
bool vpcValidDOSDirectory(const vString& text) {
    return text.length() < 9 && vpcWholeMatch(text, aDOSDirectoryTemplate());
}

// A last name of DOS: a directory name, or an 8.3 name with a lower-case extension.
bool vpcValidDOSFile(const vString& text) {
    if (vpcValidDOSDirectory(text)) return true;
    if (text.length() >= 13 || !vpcWholeMatch(text, aDOSFileTemplate())) return false;
    size_t extension = 0;
    text.index(aDOSExtensionTemplate(), &extension, 0);
    return extension <= 3;
}

}  // namespace

void vpUpOneLevel(vPathComponentList& list) {
    for (;;) {
        vComponentType::TypeEnum kind;
        if (!vpcLastKind(list, kind)) {
            list.fInsert(vpcHostComponent(Kind::eUp));
            return;
        }
        switch (kind) {
            case Kind::eName:
                list.fDeleteLast();
                return;
            case Kind::eUp:
                list.fInsert(vpcHostComponent(Kind::eUp));
                return;
            case Kind::eCurrent:
                if (list.fEntries() == 1) {
                    list.fDeleteLast();
                    list.fInsert(vpcHostComponent(Kind::eUp));
                }
                return;
            case Kind::eFragment:
            case Kind::eQuery:
                list.fDeleteLast();
                break;  // look at the new last component
            default:
                return;  // an anchor, share or port: there is nothing above it to go to
        }
    }
}

void vpNameRange(const vPathComponentList& list, int& first, int& last) {
    first = -1;
    last = -1;
    int index = 0;
    vPathComponentListIter it(list);
    for (; it.fAdvance(); ++index) {
        vComponentType::TypeEnum kind = it.aKey().fComponentType();
        if (kind != Kind::eName && kind != Kind::eUp && kind != Kind::eCurrent) continue;
        if (first == -1) first = index;
        if (index > last) last = index;
    }
}

bool vcTrimLastComponent(vPathComponentList& list, vPathComponent& removed) {
    vComponentType::TypeEnum kind;
    while (vpcLastKind(list, kind)) {
        if (kind == Kind::eName) {
            removed = list.aKey();
            list.fDeleteLast();
            break;
        }
        if (kind != Kind::eFragment && kind != Kind::eQuery) break;
        list.fDeleteLast();
    }
    // Deliberately false in every case: callers look at the list.
    return false;
}

void vcResolvePath(const vPathComponentList& base, const vPathComponentList& rel,
                   vPathComponentList& out) {
    // An absolute rel or an empty one is the answer as it stands, its flag included.
    if (!vcIsRelative(rel)) {
        out = rel;
        return;
    }
    if (rel.fEntries() == 0) {
        out = base;
        return;
    }
    // Built aside so that out may be base or rel.
    vPathComponentList result;
    vComponentType::TypeEnum firstKind = Kind::eName;
    vpcFirstKind(rel, firstKind);
    if (firstKind == Kind::eCurrentRoot) {
        // From the root of the base's drive or host: keep only the base's anchors.
        vPathComponentListIter it(base);
        while (it.fAdvance()) {
            switch (it.aKey().fComponentType()) {
                case Kind::eScheme:
                case Kind::eHost:
                case Kind::eRoot:
                case Kind::eDrive:
                case Kind::eServer:
                case Kind::eShare:
                case Kind::ePort:
                    result.fInsert(it.aKey());
                    break;
                default:
                    break;
            }
        }
    } else {
        result = base;
    }
    vPathComponent removed;
    vPathComponentListIter it(rel);
    while (it.fAdvance()) {
        switch (it.aKey().fComponentType()) {
            case Kind::eName:
            case Kind::eShare:
            case Kind::ePort:
            case Kind::eFragment:
            case Kind::eQuery:
                result.fInsert(it.aKey());
                break;
            case Kind::eUp:
                vcTrimLastComponent(result, removed);
                break;
            default:
                break;  // current directory, root of the host, misplaced anchors
        }
    }
    result.fSetTrailingSeparator(rel.fTrailingSeparator());
    out = result;
}

void vcMakeRelative(bool /*flag*/, const vPathComponentList& from, const vPathComponentList& to,
                    vPathComponentList& out) {
    vPathComponentList result;
    if (!vcIsRelative(from) && !vcIsRelative(to)) {
        // Skip the common beginning.
        vPathComponentListIter fromIt(from);
        vPathComponentListIter toIt(to);
        bool moreFrom = fromIt.fAdvance();
        bool moreTo = toIt.fAdvance();
        while (moreFrom && moreTo && fromIt.aKey() == toIt.aKey()) {
            moreFrom = fromIt.fAdvance();
            moreTo = toIt.fAdvance();
        }
        // Climb out of what is left of from: one up per name.
        for (bool climbing = true; moreFrom && climbing; moreFrom = fromIt.fAdvance()) {
            switch (fromIt.aKey().fComponentType()) {
                case Kind::eName:
                    vpUpOneLevel(result);
                    break;
                case Kind::eCurrent:
                case Kind::ePort:
                case Kind::eFragment:
                case Kind::eQuery:
                    break;
                default:
                    climbing = false;  // an anchor, up or share ends the climb
                    break;
            }
        }
        // Then descend along what is left of to.
        for (; moreTo; moreTo = toIt.fAdvance()) {
            const vPathComponent& c = toIt.aKey();
            switch (c.fComponentType()) {
                case Kind::eScheme:
                case Kind::eHost:
                case Kind::eRoot:
                case Kind::eCurrentRoot:
                case Kind::eDrive:
                case Kind::eServer:
                    // An anchor in the target: the result is absolute from here on.
                    result.fClearAndDestroy();
                    result.fInsert(c);
                    break;
                case Kind::eUp:
                    vpUpOneLevel(result);
                    break;
                case Kind::eCurrent:
                    break;
                default:
                    result.fInsert(c);
                    break;
            }
        }
    }
    if (result.fEntries() == 0) result.fInsert(vpcHostComponent(Kind::eCurrent));
    result.fSetTrailingSeparator(to.fTrailingSeparator());
    out = result;
}

void vcMakeReference(const vPathComponentList& full, const vPathComponentList& rel,
                     vPathComponentList& out) {
    vPathComponentList result;
    if (!vcIsRelative(full) && vcIsRelative(rel)) {
        vComponentType::TypeEnum firstKind = Kind::eName;
        if (rel.fEntries() == 1 && vpcFirstKind(rel, firstKind) && firstKind == Kind::eCurrent) {
            result = full;
        } else if (full.fEntries() > rel.fEntries()) {
            // full must be some directory followed by exactly the components of rel.
            size_t keep = full.fEntries() - rel.fEntries();
            vPathComponentListIter fullIt(full);
            vPathComponentListIter relIt(rel);
            for (size_t i = 0; i < keep && fullIt.fAdvance(); ++i)
                result.fInsert(fullIt.aKey());
            while (fullIt.fAdvance() && relIt.fAdvance()) {
                if (fullIt.aKey() != relIt.aKey()) {
                    result.fClearAndDestroy();
                    break;
                }
            }
        }
    }
    result.fSetTrailingSeparator(true);
    out = result;
}

bool vcValidPath(vPathType::TypeEnum notation, const vPathComponentList& list) {
    vPathType::TypeEnum normal;
    bool flagged = false;
    vPathType::sfTransPathType(notation, normal, flagged);
    if (normal != vPathType::eDOS) return true;

    int first = -1;
    int last = -1;
    vpNameRange(list, first, last);
    int index = 0;
    vString text;
    vPathComponentListIter it(list);
    for (; it.fAdvance(); ++index) {
        const vPathComponent& c = it.aKey();
        c.fComponent(notation, text);
        bool valid = false;
        switch (c.fComponentType()) {
            case Kind::eCurrentRoot:
            case Kind::eUp:
            case Kind::eCurrent:
                valid = true;
                break;
            case Kind::eDrive:
                valid = text.index(aDOSDriveTemplate()) != RW_NPOS;
                break;
            case Kind::eServer:
            case Kind::eShare:
                valid = vpcValidDOSDirectory(text);
                break;
            case Kind::eName:
                valid = index == last ? vpcValidDOSFile(text) : vpcValidDOSDirectory(text);
                break;
            default:
                valid = false;  // scheme, host, root, port, fragment, query
                break;
        }
        if (!valid) return false;
    }
    return true;
}

void vcSetPathExtension(const vString& ext, vString& path) {
    // Copied first: ext may be path itself.
    vString dotted(ext);
    size_t length = 0;
    size_t at = path.index(vcDotAndExtensionTemplate(), &length, 0);
    if (dotted.isNull()) {
        if (at != RW_NPOS) path.remove(at, length);
        return;
    }
    if (dotted(0) != '.') dotted.prepend(".");
    if (at != RW_NPOS)
        path.replace(at, length, dotted);
    else
        path.append(dotted);
}
