// Fuzzes the path parser, the generator and the path algebra. Besides crashes and hangs it
// checks what the functions promise:
//  - writing a parsed path, parsing that and writing it again gives the same string (writing
//    is a fixed point after one round), and vPath's normal form is stable likewise;
//  - the host notation (cached) and its UNIX member parse alike, on a first and a cached call,
//    and a list that is listed into again holds the new path only;
//  - writing the list in every notation stays within a small multiple of the input;
//  - resolve, make-relative, reference, up-one-level, trim and the extension setter keep their
//    documented results (see vPathAlgebra.h).
//
// Input: byte 0 picks the notation (byte % 40, plain and flagged); the rest, zero bytes
// included, is the path. Byte 0 / 40 also picks a second notation for the same text, and the
// last byte picks where the text is cut in two for the base/relative pairs.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include <vfc/vfc.h>

namespace {

using Kind = vComponentType;

void check(bool ok) {
    if (!ok) __builtin_trap();
}

std::vector<vPathComponent> items(const vPathComponentList& list) {
    std::vector<vPathComponent> out;
    vPathComponentListIter it(list);
    while (it.fAdvance())
        out.push_back(it.aKey());
    return out;
}

vPathComponentList makeList(const std::vector<vPathComponent>& v, size_t from, size_t to) {
    vPathComponentList out;
    for (size_t i = from; i < to; ++i)
        out.fInsert(v[i]);
    return out;
}

bool sameComponents(const vPathComponentList& a, const vPathComponentList& b) {
    return a.isEqual(&b);
}

bool isAnchor(vComponentType::TypeEnum k) {
    return k == Kind::eScheme || k == Kind::eHost || k == Kind::eRoot || k == Kind::eDrive ||
           k == Kind::eServer;
}

// An anchor followed by names only: there resolving the relative path from one such list to
// another must lead back to the target.
bool isSimpleAbsolute(const std::vector<vPathComponent>& v) {
    if (v.empty() || !isAnchor(v[0].fComponentType())) return false;
    for (size_t i = 1; i < v.size(); ++i)
        if (v[i].fComponentType() != Kind::eName) return false;
    return true;
}

vPathType::TypeEnum notationOf(int n) {
    return static_cast<vPathType::TypeEnum>(n % 40);
}

vPathType::TypeEnum normalOf(vPathType::TypeEnum n) {
    vPathType::TypeEnum normal;
    bool flagged = false;
    vPathType::sfTransPathType(n, normal, flagged);
    return normal;
}

// The five families of four notations (see vPathType).
enum Family { kFileSystem, kMIF, kMIFEscaped, kURL, kPortable };

Family familyOf(vPathType::TypeEnum n) {
    return static_cast<Family>(normalOf(n) / 4);
}

bool textHas(const vPathComponent& c, char ch) {
    const vString& t = c.aText();
    for (size_t i = 0; i < t.length(); ++i)
        if (t(i) == ch) return true;
    return false;
}

// Whether every component of the list can be written in the notation so that it reads back as
// itself. Where it cannot, the first writing already loses something and the second may differ.
bool writtenUnambiguously(vPathType::TypeEnum notation, const vPathComponentList& list) {
    const Family family = familyOf(notation);
    vPathType::TypeEnum normal;
    bool flagged = false;
    vPathType::sfTransPathType(notation, normal, flagged);
    vPathComponentListIter it(list);
    while (it.fAdvance()) {
        const vPathComponent& c = it.aKey();
        // MIF has no escape for "<", and a marker's text ends at the next "<": a name that holds
        // one (the parser makes them from a "<" that opens no marker) reads back cut in two.
        if ((family == kMIF || family == kMIFEscaped) && textHas(c, '<')) return false;
        // Flagged DOS writes a zero byte in a name as "%00" but does not read "%00" back as a
        // zero (it would put one into a file name), so such a name grows a "%25" each round.
        if (normal == vPathType::eDOS && flagged && c.fComponentType() == Kind::eName &&
            textHas(c, '\0'))
            return false;
    }
    return true;
}

// Parse, write, parse again, write again: the second writing equals the first.
void checkFixedPoint(vPathType::TypeEnum notation, const vString& text,
                     const vPathComponentList& list) {
    vString first;
    vcGeneratePath(notation, list, first);
    vPathComponentList again;
    vcListComponents(notation, first, again);
    vString second;
    vcGeneratePath(notation, again, second);
    bool fixed = second == first;
    check(fixed || !writtenUnambiguously(notation, list));

    // vPath keeps exactly that first writing, and its normal form is normal.
    vPath path(notation, text);
    check(path.fString() == first);
    vPath renormalized(notation, path.fString());
    check(!fixed || path.isEqual(&renormalized));
}

// The host notation is the UNIX member of its family; the cache must not change a parse.
void checkHostCache(vPathType::TypeEnum notation, const vString& text,
                    const vPathComponentList& list) {
    if (notation != vPathType::eHost) return;
    vPathComponentList unix;
    vcListComponents(vPathType::eUNIX, text, unix);
    check(sameComponents(list, unix) && list.fTrailingSeparator() == unix.fTrailingSeparator());
    vPathComponentList cached;
    vcListComponents(vPathType::eHost, text, cached);
    check(sameComponents(cached, unix) && cached.fTrailingSeparator() == unix.fTrailingSeparator());
    vPathComponentList directory;
    vcListComponents(vPathType::eHost, text, directory, true);
    check(sameComponents(directory, unix) && directory.fTrailingSeparator());
}

void checkTranslations(const vPathComponentList& list, size_t inputLength) {
    // The worst escape writes a byte as five ("\xhh " in a MIF string), the longest markers are
    // four bytes ("<c\>") and "file://" can come first.
    const size_t bound = 8 * inputLength + 16;
    vString out;
    for (int t = 0; t < 40; ++t) {
        vcGeneratePath(notationOf(t), list, out);
        check(out.length() <= bound);
    }
}

// op(a, b, out) must give the same when out is a or b.
template <class Op>
void checkAliased(Op op, const vPathComponentList& a, const vPathComponentList& b,
                  const vPathComponentList& expected) {
    vPathComponentList aliased(a);
    op(aliased, b, aliased);
    check(sameComponents(aliased, expected) &&
          aliased.fTrailingSeparator() == expected.fTrailingSeparator());
    aliased = b;
    op(a, aliased, aliased);
    check(sameComponents(aliased, expected) &&
          aliased.fTrailingSeparator() == expected.fTrailingSeparator());
}

void checkResolve(const vPathComponentList& base, const vPathComponentList& rel) {
    vPathComponentList out;
    vcResolvePath(base, rel, out);
    const std::vector<vPathComponent> b = items(base), r = items(rel), o = items(out);
    if (!vcIsRelative(rel)) {
        check(sameComponents(out, rel) && out.fTrailingSeparator() == rel.fTrailingSeparator());
    } else if (r.empty()) {
        check(sameComponents(out, base) && out.fTrailingSeparator() == base.fTrailingSeparator());
    } else {
        check(out.fTrailingSeparator() == rel.fTrailingSeparator());
        bool ups = false;
        size_t appended = 0;
        for (const vPathComponent& c : r) {
            switch (c.fComponentType()) {
                case Kind::eUp:
                    ups = true;
                    break;
                case Kind::eName:
                case Kind::eShare:
                case Kind::ePort:
                case Kind::eFragment:
                case Kind::eQuery:
                    ++appended;
                    break;
                default:
                    break;
            }
        }
        // Without ups and without a start at the root, rel's kept components follow base.
        if (!ups && r[0].fComponentType() != Kind::eCurrentRoot) {
            check(o.size() == b.size() + appended);
            for (size_t i = 0; i < b.size(); ++i)
                check(o[i] == b[i]);
        }
        check(o.size() <= b.size() + appended);
    }
    checkAliased(vcResolvePath, base, rel, out);
}

void checkMakeRelative(const vPathComponentList& from, const vPathComponentList& to) {
    vPathComponentList out;
    vcMakeRelative(false, from, to, out);
    check(out.fEntries() > 0);
    check(out.fTrailingSeparator() == to.fTrailingSeparator());
    const std::vector<vPathComponent> o = items(out);
    const bool current = o.size() == 1 && o[0].fComponentType() == Kind::eCurrent;
    if (vcIsRelative(from) || vcIsRelative(to) || sameComponents(from, to)) check(current);
    if (isSimpleAbsolute(items(from)) && isSimpleAbsolute(items(to))) {
        vPathComponentList back;
        vcResolvePath(from, out, back);
        check(sameComponents(back, to));
    }
    auto makeRelative = [](const vPathComponentList& a, const vPathComponentList& b,
                           vPathComponentList& o) { vcMakeRelative(false, a, b, o); };
    checkAliased(makeRelative, from, to, out);
}

// The reference of full against rel: empty, or the beginning of full that rel completes.
void checkReference(const vPathComponentList& full, const vPathComponentList& rel) {
    vPathComponentList out;
    vcMakeReference(full, rel, out);
    check(out.fTrailingSeparator());
    checkAliased(vcMakeReference, full, rel, out);
    const std::vector<vPathComponent> f = items(full), r = items(rel), o = items(out);
    if (vcIsRelative(full) || !vcIsRelative(rel)) {
        check(o.empty());
        return;
    }
    if (r.size() == 1 && r[0].fComponentType() == Kind::eCurrent) {
        check(sameComponents(out, full));
        return;
    }
    // Either nothing, or the directory that rel completes to full.
    bool ends = f.size() > r.size();
    for (size_t i = 0; ends && i < r.size(); ++i)
        ends = f[f.size() - r.size() + i] == r[i];
    if (!ends) {
        check(o.empty());
        return;
    }
    check(o.size() == f.size() - r.size());
    for (size_t i = 0; i < o.size(); ++i)
        check(o[i] == f[i]);
}

void checkUpAndTrim(const vPathComponentList& list) {
    const std::vector<vPathComponent> v = items(list);
    // What is left after dropping a trailing run of fragments and queries.
    size_t kept = v.size();
    while (kept > 0 && (v[kept - 1].fComponentType() == Kind::eFragment ||
                        v[kept - 1].fComponentType() == Kind::eQuery))
        --kept;

    vPathComponentList up(list);
    vpUpOneLevel(up);
    const std::vector<vPathComponent> u = items(up);
    // Going up is the list (less its tail) with a name dropped, an up added or nothing changed.
    const Kind::TypeEnum last = kept ? v[kept - 1].fComponentType() : Kind::eUp;
    const size_t expected = last == Kind::eName                   ? kept - 1
                            : last == Kind::eUp                   ? kept + 1
                            : last == Kind::eCurrent && kept == 1 ? 1
                                                                  : kept;
    check(u.size() == expected);
    for (size_t i = 0; i < u.size() && i < kept; ++i)
        check(u[i] == v[i] || (kept == 1 && last == Kind::eCurrent));
    if (u.size() > 0 && (last == Kind::eUp || (kept == 1 && last == Kind::eCurrent)))
        check(u.back().fComponentType() == Kind::eUp && u.back().aText().isNull());

    vPathComponentList trimmed(list);
    vPathComponent removed(vPathType::eUNIX, Kind::eCurrent, vString());
    check(!vcTrimLastComponent(trimmed, removed));
    const std::vector<vPathComponent> t = items(trimmed);
    if (kept > 0 && last == Kind::eName) {
        check(t.size() == kept - 1 && removed == v[kept - 1]);
    } else {
        check(t.size() == kept && removed.fComponentType() == Kind::eCurrent);
    }
    for (size_t i = 0; i < t.size(); ++i)
        check(t[i] == v[i]);
}

void checkValid(const vPathComponentList& list) {
    vString text;
    for (int n = 0; n < 40; ++n) {
        vPathType::TypeEnum notation = notationOf(n);
        bool valid = vcValidPath(notation, list);
        if (normalOf(notation) != vPathType::eDOS) {
            check(valid);
            continue;
        }
        if (!valid) continue;
        // Valid in DOS: no URL parts and every name fits 8.3.
        vPathComponentListIter it(list);
        while (it.fAdvance()) {
            const vPathComponent& c = it.aKey();
            switch (c.fComponentType()) {
                case Kind::eScheme:
                case Kind::eHost:
                case Kind::eRoot:
                case Kind::ePort:
                case Kind::eFragment:
                case Kind::eQuery:
                    check(false);
                    break;
                case Kind::eName:
                case Kind::eServer:
                case Kind::eShare:
                    check(c.fComponent(notation, text).length() <= 12);
                    break;
                default:
                    break;
            }
        }
    }
}

// Whether ext, once dotted, is a single extension: nothing in it that the extension match
// would stop at.
bool isPlainExtension(const vString& ext) {
    size_t start = !ext.isNull() && ext(0) == '.' ? 1 : 0;
    for (size_t i = start; i < ext.length(); ++i)
        if (ext(i) == '.' || ext(i) == '/') return false;
    return true;
}

void checkExtension(const vString& path, const vString& ext) {
    vString stem(path);
    vcSetPathExtension(vString(), stem);
    check(stem.length() <= path.length() && stem == vString(path(0, stem.length())));
    if (stem.length() < path.length()) {
        check(path(stem.length()) == '.');
        for (size_t i = stem.length() + 1; i < path.length(); ++i)
            check(path(i) != '.' && path(i) != '/');
    }

    vString set(path);
    vcSetPathExtension(ext, set);
    if (ext.isNull()) {
        check(set == stem);
        return;
    }
    vString dotted(ext);
    if (dotted(0) != '.') dotted.prepend(".");
    check(set.length() == stem.length() + dotted.length());
    check(set == stem + dotted);
    if (!isPlainExtension(ext)) return;
    // A single extension replaces itself and comes off again.
    vString twice(set);
    vcSetPathExtension(ext, twice);
    check(twice == set);
    vcSetPathExtension(vString(), twice);
    check(twice == stem);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const vPathType::TypeEnum notation = notationOf(data[0]);
    const vPathType::TypeEnum other = notationOf(data[0] / 40 * 7 + data[0] + 1);
    const char* bytes = reinterpret_cast<const char*>(data) + 1;
    const size_t length = size - 1;
    const vString text(bytes, length);

    vPathComponentList list;
    vcListComponents(notation, text, list);
    checkFixedPoint(notation, text, list);
    checkHostCache(notation, text, list);
    checkTranslations(list, length);

    // A second list from the same bytes in another notation, and the two halves of the text.
    vPathComponentList second;
    vcListComponents(other, text, second);
    // Listing into a list that already holds components gives what a fresh list gets.
    vPathComponentList reused(list);
    reused.fSetTrailingSeparator(true);
    vcListComponents(other, text, reused);
    check(sameComponents(reused, second) &&
          reused.fTrailingSeparator() == second.fTrailingSeparator());
    const size_t cut = length ? data[size - 1] % (length + 1) : 0;
    vPathComponentList head;
    vPathComponentList tail;
    vcListComponents(notation, vString(bytes, cut), head);
    vcListComponents(notation, vString(bytes + cut, length - cut), tail);

    checkResolve(list, second);
    checkResolve(head, tail);
    checkResolve(second, list);
    checkMakeRelative(list, second);
    checkMakeRelative(second, list);
    checkMakeRelative(head, list);
    checkMakeRelative(list, list);

    // A reference against a few endings of the list (when one is relative, the reference must
    // find the rest), and against unrelated lists.
    const std::vector<vPathComponent> v = items(list);
    for (size_t k : {size_t(0), size_t(1), size_t(2), cut % (v.size() + 1), v.size()})
        if (k <= v.size()) checkReference(list, makeList(v, v.size() - k, v.size()));
    checkReference(list, tail);
    checkReference(second, list);

    checkUpAndTrim(list);
    checkUpAndTrim(tail);
    checkValid(list);
    checkValid(second);

    checkExtension(text, vString(bytes + cut, length - cut < 8 ? length - cut : 8));
    checkExtension(vString(bytes, cut), vString());
    return 0;
}
