#include "vfc/files/vPathAlgebra.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "vfc/files/vPathModel.h"

namespace {

using K = vComponentType;

// The notation the host notation stands for (UNIX on POSIX, DOS on Windows): the up and current
// components the algebra makes are of this notation, so the components here are too.
constexpr auto kHost = static_cast<vPathType::TypeEnum>(vPathType::kHostMember);

vPathComponent C(vComponentType::TypeEnum kind, const char* text = "") {
    return vPathComponent(kHost, kind, vString(text));
}
vPathComponent N(const char* name) {
    return C(K::eName, name);
}

vPathComponentList L(std::initializer_list<vPathComponent> items, bool trailing = false) {
    vPathComponentList list;
    for (const vPathComponent& c : items)
        list.fInsert(c);
    list.fSetTrailingSeparator(trailing);
    return list;
}

// Names as their text, the other kinds as <kind> or <kind:text>, a notation other than the
// host's as "@n", and " +/" when the trailing-separator flag is set.
std::string Show(const vPathComponentList& list) {
    static const char* const kKinds[] = {"scheme", "host", "root", "croot",  "drive",
                                         "name",   "up",   "cur",  "server", "share",
                                         "port",   "frag", "query"};
    std::string out;
    vPathComponentListIter it(list);
    while (it.fAdvance()) {
        const vPathComponent& c = it.aKey();
        std::string text(c.aText().data(), c.aText().length());
        if (!out.empty()) out += " ";
        if (c.fComponentType() == K::eName) {
            out += text;
        } else {
            out += std::string("<") + kKinds[c.fComponentType()];
            if (!text.empty()) out += ":" + text;
            out += ">";
        }
        if (c.fPathType() != kHost) out += "@" + std::to_string(c.fPathType());
    }
    if (list.fTrailingSeparator()) out += out.empty() ? "+/" : " +/";
    return out;
}

std::string Str(const vString& s) {
    return std::string(s.data(), s.length());
}

std::string UpOneLevel(vPathComponentList list) {
    vpUpOneLevel(list);
    return Show(list);
}

TEST(vPathAlgebra, UpOneLevelDropsNamesAndStacksUps) {
    EXPECT_EQ(UpOneLevel(L({})), "<up>");
    EXPECT_EQ(UpOneLevel(L({C(K::eRoot), N("a"), N("b")})), "<root> a");
    EXPECT_EQ(UpOneLevel(L({C(K::eUp)})), "<up> <up>");
    EXPECT_EQ(UpOneLevel(L({N("a"), C(K::eUp)})), "a <up> <up>");
    // A lone current directory becomes up; after a name it stays.
    EXPECT_EQ(UpOneLevel(L({C(K::eCurrent)})), "<up>");
    EXPECT_EQ(UpOneLevel(L({N("a"), C(K::eCurrent)})), "a <cur>");
    // Fragments and queries go first, then the step is taken on what is left.
    EXPECT_EQ(UpOneLevel(L({C(K::eRoot), N("a"), N("b"), C(K::eFragment, "f"), C(K::eQuery, "q")})),
              "<root> a");
    EXPECT_EQ(UpOneLevel(L({C(K::eFragment, "f")})), "<up>");
    EXPECT_EQ(UpOneLevel(L({C(K::eRoot), C(K::eQuery, "q")})), "<root>");
    // Above an anchor there is nowhere to go.
    EXPECT_EQ(UpOneLevel(L({C(K::eDrive, "C:")})), "<drive:C:>");
    EXPECT_EQ(UpOneLevel(L({C(K::eRoot)})), "<root>");
    EXPECT_EQ(UpOneLevel(L({C(K::eServer, "srv"), C(K::eShare, "sh")})), "<server:srv> <share:sh>");
    EXPECT_EQ(UpOneLevel(L({C(K::eScheme, "http"), C(K::eHost, "h"), C(K::ePort, "81")})),
              "<scheme:http> <host:h> <port:81>");

    // The up component made is the host notation's, whatever the list's notation.
    vPathComponentList list;
    list.fInsert(vPathComponent(vPathType::eURLDOS, K::eUp, vString()));
    vpUpOneLevel(list);
    ASSERT_EQ(list.fEntries(), 2u);
    list.fLast();
    EXPECT_TRUE(list.aKey() == vPathComponent(vPathType::eHost, K::eUp, vString()));
    // The flag is not touched.
    vPathComponentList flagged = L({N("a")}, true);
    vpUpOneLevel(flagged);
    EXPECT_TRUE(flagged.fTrailingSeparator());
}

TEST(vPathAlgebra, NameRangeSpansNameUpAndCurrent) {
    int first = 7;
    int last = 7;
    vpNameRange(L({}), first, last);
    EXPECT_EQ(first, -1);
    EXPECT_EQ(last, -1);
    vpNameRange(L({C(K::eScheme, "http"), C(K::eHost, "h"), C(K::eFragment, "f")}), first, last);
    EXPECT_EQ(first, -1);
    EXPECT_EQ(last, -1);
    vpNameRange(L({C(K::eRoot), C(K::eUp), N("a"), C(K::eCurrent), C(K::eFragment, "f")}), first,
                last);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(last, 3);
    vpNameRange(L({C(K::eDrive, "C:"), N("a")}), first, last);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(last, 1);
}

TEST(vPathAlgebra, TrimLastComponentRemovesANameButAlwaysReturnsFalse) {
    vPathComponent removed = N("untouched");
    vPathComponentList list;
    EXPECT_FALSE(vcTrimLastComponent(list, removed));
    EXPECT_EQ(Str(removed.aText()), "untouched");

    list = L({C(K::eRoot), N("a"), N("b")}, true);
    EXPECT_FALSE(vcTrimLastComponent(list, removed));
    EXPECT_EQ(Show(list), "<root> a +/");
    EXPECT_TRUE(removed == N("b"));

    // A query and a fragment after the name go with it.
    list = L({N("a"), N("b"), C(K::eFragment, "f"), C(K::eQuery, "q")});
    EXPECT_FALSE(vcTrimLastComponent(list, removed));
    EXPECT_EQ(Show(list), "a");
    EXPECT_TRUE(removed == N("b"));

    // Only names are removed: an up, a root or an anchor ends it; removed stays as it was.
    removed = N("kept");
    list = L({N("a"), C(K::eUp)});
    EXPECT_FALSE(vcTrimLastComponent(list, removed));
    EXPECT_EQ(Show(list), "a <up>");
    list = L({C(K::eRoot), C(K::eFragment, "f")});
    EXPECT_FALSE(vcTrimLastComponent(list, removed));
    EXPECT_EQ(Show(list), "<root>");
    EXPECT_TRUE(removed == N("kept"));
}

std::string Resolve(const vPathComponentList& base, const vPathComponentList& rel) {
    vPathComponentList out = L({N("stale")});
    vcResolvePath(base, rel, out);
    return Show(out);
}

TEST(vPathAlgebra, ResolveTakesAbsoluteOrEmptyRelAsTheAnswer) {
    const vPathComponentList base = L({C(K::eRoot), N("a"), N("b")}, true);
    // An absolute rel stands alone, with its own flag.
    EXPECT_EQ(Resolve(base, L({C(K::eDrive, "C:"), N("x")})), "<drive:C:> x");
    EXPECT_EQ(Resolve(base, L({C(K::eScheme, "http"), C(K::eHost, "h")}, true)),
              "<scheme:http> <host:h> +/");
    // An empty rel gives the base with the base's flag.
    EXPECT_EQ(Resolve(base, L({})), "<root> a b +/");
    EXPECT_EQ(Resolve(L({N("a")}), L({}, true)), "a");
    // Against an empty base a relative path stays relative.
    EXPECT_EQ(Resolve(L({}), L({C(K::eUp), N("x")})), "x");
}

TEST(vPathAlgebra, ResolveWalksRelOverTheBase) {
    const vPathComponentList base = L({C(K::eRoot), N("a"), N("b")}, true);
    EXPECT_EQ(Resolve(base, L({N("c"), N("d")})), "<root> a b c d");
    // The flag is rel's.
    EXPECT_EQ(Resolve(base, L({N("c")}, true)), "<root> a b c +/");
    EXPECT_EQ(Resolve(base, L({C(K::eUp), N("x")})), "<root> a x");
    // Surplus ups find no name and are dropped.
    EXPECT_EQ(
        Resolve(L({C(K::eRoot), N("a"), N("b")}), L({C(K::eUp), C(K::eUp), C(K::eUp), N("x")})),
        "<root> x");
    // Current directories and anchors that cannot stand inside rel are skipped; shares,
    // ports, fragments and queries are kept.
    EXPECT_EQ(Resolve(base, L({C(K::eCurrent), N("c"), C(K::eRoot), C(K::eDrive, "D:"),
                               C(K::eCurrentRoot), C(K::eCurrent), C(K::eShare, "s"),
                               C(K::ePort, "8"), C(K::eQuery, "q"), C(K::eFragment, "f")})),
              "<root> a b c <share:s> <port:8> <query:q> <frag:f>");
    // An up takes a trailing fragment or query along with the name before it.
    EXPECT_EQ(
        Resolve(L({C(K::eRoot), N("a"), N("b"), C(K::eFragment, "top")}), L({C(K::eUp), N("x")})),
        "<root> a x");
    // No clean-up: a base ending in a file name keeps it.
    EXPECT_EQ(Resolve(L({C(K::eRoot), N("index.htm")}), L({N("x")})), "<root> index.htm x");
}

TEST(vPathAlgebra, ResolveFromTheRootOfTheHostKeepsOnlyAnchors) {
    const vPathComponentList url = L({C(K::eScheme, "http"), C(K::eHost, "h"), C(K::ePort, "81"),
                                      N("a"), N("b"), C(K::eQuery, "q")});
    EXPECT_EQ(Resolve(url, L({C(K::eCurrentRoot), N("x")})), "<scheme:http> <host:h> <port:81> x");
    const vPathComponentList unc =
        L({C(K::eServer, "srv"), C(K::eShare, "sh"), N("a"), C(K::eFragment, "f")});
    EXPECT_EQ(Resolve(unc, L({C(K::eCurrentRoot), N("x"), C(K::eUp), N("y")}, true)),
              "<server:srv> <share:sh> y +/");
    EXPECT_EQ(
        Resolve(L({C(K::eDrive, "C:"), C(K::eRoot), N("a")}), L({C(K::eCurrentRoot), C(K::eUp)})),
        "<drive:C:> <root>");
    // A root of the host further on in rel is merely skipped.
    EXPECT_EQ(Resolve(L({C(K::eRoot), N("a")}), L({N("x"), C(K::eCurrentRoot), N("y")})),
              "<root> a x y");
}

TEST(vPathAlgebra, ResolveAllowsOutToBeAnInput) {
    vPathComponentList list = L({C(K::eRoot), N("a"), N("b")});
    vcResolvePath(list, L({C(K::eUp), N("c")}, true), list);
    EXPECT_EQ(Show(list), "<root> a c +/");
    vPathComponentList rel = L({N("d")});
    vcResolvePath(L({C(K::eRoot), N("a")}), rel, rel);
    EXPECT_EQ(Show(rel), "<root> a d");
}

std::string Relative(const vPathComponentList& from, const vPathComponentList& to,
                     bool flag = false) {
    vPathComponentList out = L({N("stale")}, true);
    vcMakeRelative(flag, from, to, out);
    return Show(out);
}

TEST(vPathAlgebra, MakeRelativeClimbsThenDescends) {
    const vPathComponentList abc = L({C(K::eRoot), N("a"), N("b"), N("c")});
    EXPECT_EQ(Relative(abc, L({C(K::eRoot), N("a"), N("b"), N("d")})), "<up> d");
    EXPECT_EQ(Relative(abc, L({C(K::eRoot), N("a")})), "<up> <up>");
    EXPECT_EQ(Relative(abc, L({C(K::eRoot)})), "<up> <up> <up>");
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a")}), L({C(K::eRoot), N("a"), N("b"), N("c")})), "b c");
    EXPECT_EQ(Relative(abc, L({C(K::eRoot), N("x"), N("y")}, true)), "<up> <up> <up> x y +/");
    // The flag argument changes nothing.
    EXPECT_EQ(Relative(abc, L({C(K::eRoot), N("a"), N("d")}), true),
              Relative(abc, L({C(K::eRoot), N("a"), N("d")}), false));
    // Components match only with the same notation, kind and text.
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a")}),
                       L({C(K::eRoot), vPathComponent(vPathType::eMac, K::eName, "a")})),
              "<up> a@2");
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a")}), L({C(K::eRoot), N("A")})), "<up> A");
}

TEST(vPathAlgebra, MakeRelativeFallsBackToCurrentDirectory) {
    const vPathComponentList abs = L({C(K::eRoot), N("a"), N("b")});
    EXPECT_EQ(Relative(abs, abs), "<cur>");
    EXPECT_EQ(Relative(abs, L({C(K::eRoot), N("a"), N("b")}, true)), "<cur> +/");
    // Either side relative: "." whatever the other is.
    EXPECT_EQ(Relative(L({N("a")}), abs), "<cur>");
    EXPECT_EQ(Relative(abs, L({N("x"), N("y")}, true)), "<cur> +/");
    EXPECT_EQ(Relative(L({N("a")}), L({N("b")})), "<cur>");
    EXPECT_EQ(Relative(L({}), L({})), "<cur>");
    // Going into a name and back out again ends where it started.
    EXPECT_EQ(Relative(abs, L({C(K::eRoot), N("a"), N("b"), N("c"), C(K::eUp)})), "<cur>");

    // The current component is the host notation's.
    vPathComponentList out;
    vcMakeRelative(false, abs, abs, out);
    ASSERT_EQ(out.fEntries(), 1u);
    out.fFirst();
    EXPECT_TRUE(out.aKey() == vPathComponent(vPathType::eHost, K::eCurrent, vString()));
}

TEST(vPathAlgebra, MakeRelativeKindRulesOnBothSides) {
    // In from: current, port, fragment and query are passed over; an up ends the climb.
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a"), C(K::eCurrent), N("b"), C(K::eFragment, "f")}),
                       L({C(K::eRoot), N("a"), N("c")})),
              "<up> c");
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a"), C(K::eUp), N("b")}), L({C(K::eRoot), N("c")})),
              "<up> c");
    // In to: ups remove a name just appended or add one more up; current is skipped.
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a")}),
                       L({C(K::eRoot), N("a"), N("b"), C(K::eUp), C(K::eCurrent), N("c")})),
              "c");
    EXPECT_EQ(
        Relative(L({C(K::eRoot), N("a"), N("b")}), L({C(K::eRoot), N("a"), C(K::eUp), C(K::eUp)})),
        "<up> <up> <up>");
    // Shares, ports, fragments and queries of the target are carried over.
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a")}), L({C(K::eRoot), N("a"), N("p.htm"),
                                                    C(K::eQuery, "q"), C(K::eFragment, "f")})),
              "p.htm <query:q> <frag:f>");
    // An anchor in the target makes the result absolute from there.
    EXPECT_EQ(Relative(L({C(K::eScheme, "http"), C(K::eHost, "h"), N("a")}),
                       L({C(K::eScheme, "http"), C(K::eHost, "g"), N("b")})),
              "<host:g> b");
    EXPECT_EQ(Relative(L({C(K::eRoot), N("a"), N("b")}), L({C(K::eDrive, "C:"), N("x")})),
              "<drive:C:> x");
}

std::string Reference(const vPathComponentList& full, const vPathComponentList& rel) {
    vPathComponentList out = L({N("stale")});
    vcMakeReference(full, rel, out);
    return Show(out);
}

TEST(vPathAlgebra, MakeReferenceFindsTheDirectoryRelLeadsFrom) {
    const vPathComponentList full = L({C(K::eRoot), N("a"), N("b"), N("c"), N("f")});
    EXPECT_EQ(Reference(full, L({N("c"), N("f")})), "<root> a b +/");
    EXPECT_EQ(Reference(full, L({N("f")})), "<root> a b c +/");
    EXPECT_EQ(Reference(full, L({N("x"), N("f")})), "+/");
    EXPECT_EQ(Reference(full, L({N("c"), N("x")})), "+/");
    // "." leads from full itself; an empty rel keeps everything as well.
    EXPECT_EQ(Reference(full, L({C(K::eCurrent)})), "<root> a b c f +/");
    EXPECT_EQ(Reference(full, L({})), "<root> a b c f +/");
    // rel as long as full or longer, an absolute rel or a relative full: nothing.
    EXPECT_EQ(Reference(full, L({N("root"), N("a"), N("b"), N("c"), N("f")})), "+/");
    EXPECT_EQ(Reference(full, L({C(K::eRoot), N("f")})), "+/");
    EXPECT_EQ(Reference(L({N("a"), N("f")}), L({N("f")})), "+/");
    EXPECT_EQ(Reference(L({N("a")}), L({C(K::eCurrent)})), "+/");
    // Ups in rel are compared like any component, not applied.
    EXPECT_EQ(Reference(full, L({C(K::eUp), N("f")})), "+/");
}

bool ValidDOS(std::initializer_list<vPathComponent> items,
              vPathType::TypeEnum notation = vPathType::eDOS) {
    return vcValidPath(notation, L(items));
}
vPathComponent D(vComponentType::TypeEnum kind, const char* text = "") {
    return vPathComponent(vPathType::eDOS, kind, vString(text));
}

TEST(vPathAlgebra, ValidPathChecksDOSEightThreeNames) {
    EXPECT_TRUE(ValidDOS({}));
    EXPECT_TRUE(ValidDOS({D(K::eName, "ABCDEFGH"), D(K::eName, "x")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "ABCDEFGHI"), D(K::eName, "x")}));
    EXPECT_TRUE(ValidDOS({D(K::eName, "dir"), D(K::eName, "NAME.htm")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "NAME.html")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "A.B"), D(K::eName, "x")}));
    // The extension admits lower-case letters only.
    EXPECT_TRUE(ValidDOS({D(K::eName, "NAME.txt")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "NAME.TXT")}));
    // The last name may be a directory name of up to eight characters, or 8.3 of up to twelve.
    EXPECT_TRUE(ValidDOS({D(K::eName, "ABCDEFGH.txt")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "ABCDEFGHI.txt")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "ABCDEFGHI")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "a b")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "a.")}));
    // "Last" is the last name, up or current: a dotted name before ".." is a directory.
    EXPECT_FALSE(ValidDOS({D(K::eName, "f.txt"), D(K::eUp)}));
    EXPECT_TRUE(ValidDOS({D(K::eName, "f.txt"), D(K::eCurrentRoot)}));
}

TEST(vPathAlgebra, ValidPathChecksDOSAnchorsAndOtherKinds) {
    EXPECT_TRUE(ValidDOS({D(K::eDrive, "C:"), D(K::eCurrentRoot), D(K::eName, "DIR"), D(K::eUp),
                          D(K::eCurrent), D(K::eName, "f.txt")}));
    EXPECT_TRUE(ValidDOS({D(K::eDrive, "z:")}));
    EXPECT_FALSE(ValidDOS({D(K::eDrive, "1:")}));
    EXPECT_TRUE(ValidDOS({D(K::eServer, "SERVER01"), D(K::eShare, "share"), D(K::eName, "x")}));
    EXPECT_FALSE(ValidDOS({D(K::eServer, "SERVER012"), D(K::eShare, "share")}));
    EXPECT_FALSE(ValidDOS({D(K::eServer, "srv"), D(K::eShare, "sh.a")}));
    EXPECT_FALSE(ValidDOS({D(K::eRoot), D(K::eName, "x")}));
    EXPECT_FALSE(ValidDOS({D(K::eScheme, "file")}));
    EXPECT_FALSE(ValidDOS({D(K::eHost, "h")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "x"), D(K::ePort, "80")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "x"), D(K::eFragment, "f")}));
    EXPECT_FALSE(ValidDOS({D(K::eName, "x"), D(K::eQuery, "q")}));
    // The flagged DOS notation is tested too; the texts are the escaped ones it writes.
    EXPECT_FALSE(ValidDOS({D(K::eName, "NAME.html")}, vPathType::eDOSFlagged));
    EXPECT_FALSE(ValidDOS({D(K::eName, "a:b")}, vPathType::eDOS));
    EXPECT_TRUE(ValidDOS({D(K::eName, "a:b")}, vPathType::eDOSFlagged));
}

TEST(vPathAlgebra, ValidPathAcceptsEverythingOutsideDOS) {
    const vPathComponentList invalidInDOS =
        L({D(K::eScheme, "http"), D(K::eRoot), D(K::eName, "NAME.html"), D(K::eQuery, "q")});
    ASSERT_FALSE(vcValidPath(vPathType::eDOS, invalidInDOS));
    const vPathType::TypeEnum others[] = {vPathType::eUNIX,
                                          vPathType::eMac,
                                          vPathType::eURLDOS,
                                          vPathType::eMIFDOS,
                                          vPathType::eMIFEscapedDOSFlagged,
                                          vPathType::ePortableDOS,
                                          vPathType::eURLHostFlagged};
    for (vPathType::TypeEnum notation : others)
        EXPECT_TRUE(vcValidPath(notation, invalidInDOS)) << notation;
    // The host notation is checked as the member it stands for.
    const auto hostMember = static_cast<vPathType::TypeEnum>(vPathType::kHostMember);
    EXPECT_EQ(vcValidPath(vPathType::eHost, invalidInDOS), vcValidPath(hostMember, invalidInDOS));
    EXPECT_EQ(vcValidPath(vPathType::eHostFlagged, invalidInDOS),
              vcValidPath(hostMember, invalidInDOS));
}

std::string WithExtension(const char* ext, const char* path) {
    vString s(path);
    vcSetPathExtension(vString(ext), s);
    return Str(s);
}

TEST(vPathAlgebra, SetPathExtensionReplacesAppendsOrRemoves) {
    EXPECT_EQ(WithExtension("htm", "dir/file.txt"), "dir/file.htm");
    EXPECT_EQ(WithExtension(".htm", "dir/file.txt"), "dir/file.htm");
    EXPECT_EQ(WithExtension(".htm", "dir.d/file"), "dir.d/file.htm");
    EXPECT_EQ(WithExtension("htm", "a.b.c"), "a.b.htm");
    EXPECT_EQ(WithExtension("htm", "file."), "file.htm");
    EXPECT_EQ(WithExtension("htm", ""), ".htm");
    EXPECT_EQ(WithExtension("", "file.txt"), "file");
    EXPECT_EQ(WithExtension("", "dir.d/file"), "dir.d/file");
    EXPECT_EQ(WithExtension("", "a.b.c"), "a.b");
    EXPECT_EQ(WithExtension("", ""), "");
    // Only "/" and "." stop the match: with a backslash, a dotted directory is taken.
    EXPECT_EQ(WithExtension("htm", "dir.d\\file"), "dir.htm");
    // ext may be the path itself.
    vString same("x.y");
    vcSetPathExtension(same, same);
    EXPECT_EQ(Str(same), "x.x.y");
}

// ---- Through the parser and the generator ------------------------------------------------

vPathComponentList Parse(vPathType::TypeEnum notation, const char* path) {
    vPathComponentList list;
    vcListComponents(notation, vString(path), list);
    return list;
}

std::string Generate(vPathType::TypeEnum notation, const vPathComponentList& list) {
    vString out;
    vcGeneratePath(notation, list, out);
    return Str(out);
}

std::string ResolveText(vPathType::TypeEnum notation, const char* base, const char* rel) {
    vPathComponentList out;
    vcResolvePath(Parse(notation, base), Parse(notation, rel), out);
    return Generate(notation, out);
}

std::string RelativeText(vPathType::TypeEnum notation, const char* from, const char* to) {
    vPathComponentList out;
    vcMakeRelative(false, Parse(notation, from), Parse(notation, to), out);
    return Generate(notation, out);
}

std::string ReferenceText(vPathType::TypeEnum notation, const char* full, const char* rel) {
    vPathComponentList out;
    vcMakeReference(Parse(notation, full), Parse(notation, rel), out);
    return Generate(notation, out);
}

// Each up removes its name in constant time: 300,000 of them against as many names end at
// once, where walking the list to its end for each one took minutes.
TEST(vPathAlgebra, ResolveOfManyUpsIsLinear) {
    const size_t n = 300000;
    std::string base, ups;
    for (size_t i = 0; i < n; ++i) {
        base += "/d" + std::to_string(i % 10);
        ups += "../";
    }
    EXPECT_EQ(ResolveText(vPathType::eUNIX, base.c_str(), (ups + "x").c_str()), "/x");
    EXPECT_EQ(ResolveText(vPathType::eUNIX, base.c_str(), (ups.substr(6) + "x").c_str()),
              "/d0/d1/x");
    vPathComponentList list = Parse(vPathType::eUNIX, base.c_str());
    vcResolvePath(list, Parse(vPathType::eUNIX, (ups + "y/").c_str()), list);
    EXPECT_EQ(Show(list), Show(Parse(vPathType::eUNIX, "/y/")));
}

TEST(vPathAlgebra, UnixPathsThroughTheParser) {
    const vPathType::TypeEnum kUnix = vPathType::eUNIX;
    EXPECT_EQ(RelativeText(kUnix, "/a/b/c", "/a/b/d"), "../d");
    EXPECT_EQ(RelativeText(kUnix, "a/b", "/a/b/c"), ".");
    EXPECT_EQ(RelativeText(kUnix, "/x/y", "/a/b"), "../../a/b");
    EXPECT_EQ(ResolveText(kUnix, "/a/b", "../../../x"), "/x");
    EXPECT_EQ(ResolveText(kUnix, "/a/b/", "./c/../d"), "/a/b/d");
    EXPECT_EQ(ReferenceText(kUnix, "/a/b/c/f", "c/f"), "/a/b");

    vPathComponentList trimmed = Parse(kUnix, "/a/b.txt");
    vPathComponent removed;
    EXPECT_FALSE(vcTrimLastComponent(trimmed, removed));
    EXPECT_EQ(Generate(kUnix, trimmed), "/a");
    EXPECT_EQ(Str(removed.aText()), "b.txt");
}

TEST(vPathAlgebra, UrlsThroughTheParser) {
    const vPathType::TypeEnum kUrl = vPathType::eURLDOS;
    // From the root of the host: scheme, host and port stay, the names go.
    EXPECT_EQ(ResolveText(kUrl, "http://h:81/a/b", "/x"), "http://h:81/x");
    EXPECT_EQ(ResolveText(kUrl, "http://h:81/a/b/", "x/y.htm"), "http://h:81/a/b/x/y.htm");
    // The fragment goes with the name an up removes.
    EXPECT_EQ(ResolveText(kUrl, "http://h/a/b#frag", "../x"), "http://h/a/x");
    EXPECT_EQ(ResolveText(kUrl, "http://h/a/", "ftp://g/z"), "ftp://g/z");
    EXPECT_EQ(RelativeText(kUrl, "http://h/a/b/c", "http://h/a/d/e.htm#top"), "../../d/e.htm#top");
    // The reference names a directory, which URLs write with a trailing "/".
    EXPECT_EQ(ReferenceText(kUrl, "http://h/a/b/c/f.htm", "c/f.htm"), "http://h/a/b/");
    EXPECT_EQ(ReferenceText(kUrl, "http://h/a/b/c/f.htm", "x/f.htm"), "");
}

}  // namespace
