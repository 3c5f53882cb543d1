#include "vfc/files/vPathAlgebra.h"

#include <cstddef>
#include <vector>

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

// Going up one level at the end of a sequence of components. Seq gives lastKind(kind) (false
// when empty), size(), removeLast() and appendUp().
template <class Seq>
void upOneLevel(Seq& seq) {
    for (;;) {
        vComponentType::TypeEnum kind;
        if (!seq.lastKind(kind)) {
            seq.appendUp();
            return;
        }
        switch (kind) {
            case Kind::eName:
                seq.removeLast();
                return;
            case Kind::eUp:
                seq.appendUp();
                return;
            case Kind::eCurrent:
                if (seq.size() == 1) {
                    seq.removeLast();
                    seq.appendUp();
                }
                return;
            case Kind::eFragment:
            case Kind::eQuery:
                seq.removeLast();
                break;  // look at the new last component
            default:
                return;  // an anchor, share or port: there is nothing above it to go to
        }
    }
}

struct ListSequence {
    vPathComponentList& list;
    bool lastKind(vComponentType::TypeEnum& kind) const { return vpcLastKind(list, kind); }
    size_t size() const { return list.fEntries(); }
    // After lastKind, which made the last component current.
    const vPathComponent& last() const { return list.aKey(); }
    void removeLast() { list.fDeleteLast(); }
    void appendUp() { list.fInsert(vpcHostComponent(Kind::eUp)); }
};

// The components of a result that is still being worked out, as pointers into the inputs and
// to the shared up and current components; written into a list once at the end.
struct PointerSequence {
    std::vector<const vPathComponent*> items;
    bool lastKind(vComponentType::TypeEnum& kind) const {
        if (items.empty()) return false;
        kind = items.back()->fComponentType();
        return true;
    }
    size_t size() const { return items.size(); }
    const vPathComponent& last() const { return *items.back(); }
    void removeLast() { items.pop_back(); }
    void appendUp() {
        static const vPathComponent up = vpcHostComponent(Kind::eUp);
        items.push_back(&up);
    }
};

// Removes the last name of a sequence, with any fragments and queries behind it (without a name
// before them only those go), copying the name into *removed when given. Seq gives lastKind,
// last() and removeLast(), as for upOneLevel.
template <class Seq>
void trimLastName(Seq& seq, vPathComponent* removed) {
    vComponentType::TypeEnum kind;
    while (seq.lastKind(kind)) {
        if (kind != Kind::eName && kind != Kind::eFragment && kind != Kind::eQuery) return;
        if (kind == Kind::eName && removed) *removed = seq.last();
        seq.removeLast();
        if (kind == Kind::eName) return;
    }
}

// The components that anchor a path: scheme, host, root, drive, server, share and port.
bool isAnchor(vComponentType::TypeEnum kind) {
    switch (kind) {
        case Kind::eScheme:
        case Kind::eHost:
        case Kind::eRoot:
        case Kind::eDrive:
        case Kind::eServer:
        case Kind::eShare:
        case Kind::ePort:
            return true;
        default:
            return false;
    }
}

// Makes out hold copies of the pointed-to components, reusing out's own components. The
// pointers must not point into out.
void writeSequence(const PointerSequence& seq, vPathComponentList& out) {
    size_t i = 0;
    const size_t n = seq.items.size();
    {
        vPathComponentListIter it(out);
        while (i < n && it.fAdvance())
            it.aKey() = *seq.items[i++];
    }
    for (; i < n; ++i)
        out.fInsert(*seq.items[i]);
    while (out.fEntries() > n)
        out.fDeleteLast();
}

// Builds a result straight into out, or aside and then copied when out is also an input.
template <class Build>
void buildInto(vPathComponentList& out, bool outIsInput, Build build) {
    if (!outIsInput) {
        out.fClearAndDestroy();
        build(out);
        return;
    }
    vPathComponentList result;
    build(result);
    out = result;
}

}  // namespace

void vpUpOneLevel(vPathComponentList& list) {
    ListSequence seq{list};
    upOneLevel(seq);
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
    ListSequence seq{list};
    trimLastName(seq, &removed);
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
    // Worked out on pointers into base and rel, so that each up removes its name in constant
    // time (a list would be walked to its end for every one), then written out in one pass.
    PointerSequence result;
    vComponentType::TypeEnum firstKind = Kind::eName;
    vpcFirstKind(rel, firstKind);
    vPathComponentListIter baseIt(base);
    while (baseIt.fAdvance()) {
        // From the root of the base's drive or host only the base's anchors stay.
        if (firstKind == Kind::eCurrentRoot && !isAnchor(baseIt.aKey().fComponentType())) continue;
        result.items.push_back(&baseIt.aKey());
    }
    vPathComponentListIter it(rel);
    while (it.fAdvance()) {
        switch (it.aKey().fComponentType()) {
            case Kind::eName:
            case Kind::eShare:
            case Kind::ePort:
            case Kind::eFragment:
            case Kind::eQuery:
                result.items.push_back(&it.aKey());
                break;
            case Kind::eUp:
                trimLastName(result, nullptr);
                break;
            default:
                break;  // current directory, root of the host, misplaced anchors
        }
    }
    bool flag = rel.fTrailingSeparator();
    buildInto(out, &out == &base || &out == &rel,
              [&](vPathComponentList& list) { writeSequence(result, list); });
    out.fSetTrailingSeparator(flag);
}

void vcMakeRelative(bool /*flag*/, const vPathComponentList& from, const vPathComponentList& to,
                    vPathComponentList& out) {
    // Worked out on pointers into from and to, then written into out in one pass.
    PointerSequence result;
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
                    upOneLevel(result);
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
                    result.items.clear();
                    result.items.push_back(&c);
                    break;
                case Kind::eUp:
                    upOneLevel(result);
                    break;
                case Kind::eCurrent:
                    break;
                default:
                    result.items.push_back(&c);
                    break;
            }
        }
    }
    static const vPathComponent current = vpcHostComponent(Kind::eCurrent);
    if (result.items.empty()) result.items.push_back(&current);
    const bool trailing = to.fTrailingSeparator();
    if (&out == &from || &out == &to) {
        vPathComponentList aside;
        writeSequence(result, aside);
        out = aside;
    } else {
        writeSequence(result, out);
    }
    out.fSetTrailingSeparator(trailing);
}

void vcMakeReference(const vPathComponentList& full, const vPathComponentList& rel,
                     vPathComponentList& out) {
    buildInto(out, &out == &full || &out == &rel, [&](vPathComponentList& result) {
        if (!vcIsRelative(full) && vcIsRelative(rel)) {
            vComponentType::TypeEnum firstKind = Kind::eName;
            if (rel.fEntries() == 1 && vpcFirstKind(rel, firstKind) &&
                firstKind == Kind::eCurrent) {
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
    });
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
