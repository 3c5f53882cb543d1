#include "vfc/files/vFileReference.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/rw/RWFile.h"
#include "vfc/testing/TempDir.h"

namespace {

using vfc::testing::TempDir;

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

// The temporary folder with "/" between names, as targets are written on every platform.
std::string slashed(std::string path) {
    for (char& c : path)
        if (c == '\\') c = '/';
    return path;
}

TEST(vFileReference, ResolvesTextAgainstTheReferrersFolder) {
    struct Case {
        const char* referrer;
        const char* text;
        const char* target;
    } cases[] = {
        {"site/guide/intro.htm", "../img/logo%20big.png", "site/img/logo big.png"},
        {"site/guide/intro.htm", "./pics/../a.gif", "site/guide/a.gif"},
        {"site/guide/intro.htm", "next.htm#part%202", "site/guide/next.htm"},
        {"site/guide/intro.htm", "search.htm?q=a/b#r", "site/guide/search.htm"},
        {"site/guide/intro.htm", "#top", "site/guide/intro.htm"},
        {"site/guide/intro.htm", "?v=2", "site/guide/intro.htm"},
        {"site/guide/intro.htm", "img/", "site/guide/img"},
        {"a.htm", "../../x.gif", "../../x.gif"},
        {"../up/a.htm", "b.htm", "../up/b.htm"},
    };
    for (const Case& c : cases) {
        const vFileReference ref(vFile(c.referrer), c.text);
        EXPECT_EQ(str(ref.fTarget().fPath()), c.target) << c.referrer << " " << c.text;
        EXPECT_FALSE(ref.fIsExternal());
        EXPECT_EQ(str(ref.fText()), c.text);
        EXPECT_EQ(str(ref.fReferrer().fPath()), c.referrer);
    }
    // The notation decides how the text reads: unflagged URL keeps "%20", UNIX reads "#" as a
    // name, MIF has its own markers.
    EXPECT_EQ(str(vFileReference("d/a.htm", "x%20y.gif", vPathType::eURLHost).fTarget().fPath()),
              "d/x%20y.gif");
    EXPECT_EQ(str(vFileReference("d/a.htm", "c#.txt", vPathType::eUNIX).fTarget().fPath()),
              "d/c#.txt");
    EXPECT_EQ(
        str(vFileReference("d/a.mif", "<u><c>art<c>f.gif", vPathType::eMIFUNIX).fTarget().fPath()),
        "art/f.gif");

    // Texts that leave the file system have no target.
    for (const char* text : {"http://example.com/a.htm", "https://h:8080/x", "mailto:a@b.c",
                             "news:comp.lang", "ftp://h/f", "file://server/share/x"}) {
        const vFileReference ref("site/a.htm", text);
        EXPECT_TRUE(ref.fIsExternal()) << text;
        EXPECT_EQ(ref.fTarget().fPath().length(), 0u) << text;
        EXPECT_FALSE(ref.fTargetExists()) << text;
    }

    // An absolute text leads where it says, whatever the referrer.
    TempDir dir;
    const std::string root = slashed(dir.path());
    const vFileReference abs(
        "a.htm",
        vString(("file://" + std::string(root[0] == '/' ? "" : "/") + root + "/p.png").c_str()));
    EXPECT_EQ(str(abs.fTarget().fPath()), root + "/p.png");
    EXPECT_FALSE(abs.fTargetExists());
    dir.write("p.png", "x");
    EXPECT_TRUE(abs.fTargetExists());
}

TEST(vFileReference, RewritesTheTextWhenEitherEndMoves) {
    vFileReference ref("site/guide/intro.htm", "../img/logo%20big.png#x");
    EXPECT_TRUE(ref.fMoveReferrer("site/intro.htm"));
    EXPECT_EQ(str(ref.fText()), "img/logo%20big.png#x");
    EXPECT_EQ(str(ref.fTarget().fPath()), "site/img/logo big.png");
    EXPECT_TRUE(ref.fMoveTarget("site/art/new logo.png"));
    EXPECT_EQ(str(ref.fText()), "art/new%20logo.png#x");
    EXPECT_TRUE(ref.fMove("other/deep/page.htm", "site/art/new logo.png"));
    EXPECT_EQ(str(ref.fText()), "../../site/art/new%20logo.png#x");

    // A reference of a page to itself stays a bare fragment when the page moves.
    vFileReference self("site/a.htm", "#top");
    EXPECT_TRUE(self.fMove("b/c.htm", "b/c.htm"));
    EXPECT_EQ(str(self.fText()), "#top");
    EXPECT_EQ(str(self.fTarget().fPath()), "b/c.htm");
    // ... and gains the file name when only the target moves away from it.
    EXPECT_TRUE(self.fMoveTarget("b/d.htm"));
    EXPECT_EQ(str(self.fText()), "d.htm#top");

    // A folder reference keeps its trailing separator.
    vFileReference folder("site/a.htm", "img/");
    EXPECT_TRUE(folder.fMoveReferrer("site/x/a.htm"));
    EXPECT_EQ(str(folder.fText()), "../img/");

    // External references refuse to move and keep their text.
    vFileReference web("site/a.htm", "http://example.com/");
    EXPECT_FALSE(web.fMoveReferrer("b.htm"));
    EXPECT_EQ(str(web.fText()), "http://example.com/");
    EXPECT_EQ(str(web.fReferrer().fPath()), "site/a.htm");

    // Whatever moved, the new text read from the new referrer leads to the new target.
    const char* places[] = {"a.htm",   "x/a.htm",       "x/y/b.htm",
                            "z/b.htm", "x/y/z/q r.htm", "../o.htm"};
    for (const char* from : places) {
        for (const char* to : places) {
            vFileReference r("start/p.htm", "t.htm?q#f");
            ASSERT_TRUE(r.fMove(from, to));
            const vFileReference again(from, r.fText());
            EXPECT_EQ(str(again.fTarget().fPath()), to)
                << from << " -> " << to << ": " << str(r.fText());
        }
    }

    // An absolute text stays absolute, with its scheme.
    TempDir dir;
    const std::string root = slashed(dir.path());
    const std::string prefix = std::string("file://") + (root[0] == '/' ? "" : "/");
    vFileReference abs("a.htm", vString((prefix + root + "/p.png").c_str()));
    EXPECT_TRUE(abs.fMoveReferrer("q/b.htm"));
    EXPECT_EQ(str(abs.fText()), prefix + root + "/p.png");
    EXPECT_TRUE(abs.fMoveTarget(vFile((root + "/n.png").c_str())));
    EXPECT_EQ(str(abs.fText()), prefix + root + "/n.png");
}

vpSlistvpFRefCs catalogue() {
    vpSlistvpFRefCs refs;
    refs.fInsert(vFileReference("docs/a.htm", "img/x.gif").fComponents());
    refs.fInsert(vFileReference("docs/sub/b.htm", "../a.htm#s").fComponents());
    refs.fInsert(vFileReference("index.htm", "docs/sub/b.htm").fComponents());
    refs.fInsert(vFileReference("docs-old/c.htm", "../docs/a.htm").fComponents());
    refs.fInsert(vFileReference("docs/a.htm", "http://example.com/").fComponents());
    return refs;
}

TEST(vFileReference, ListFollowsAMoveOfAFileOrAFolder) {
    vpSlistvpFRefCs refs = catalogue();
    // The folder moves: references inside it keep their texts (both ends moved), references
    // from outside into it change, "docs-old" is not below "docs", the web link stays.
    EXPECT_EQ(vFileReference::sfFileMoved(refs, "docs", "manual/v2"), 4);
    const char* expected[][3] = {
        {"manual/v2/a.htm", "img/x.gif", "manual/v2/img/x.gif"},
        {"manual/v2/sub/b.htm", "../a.htm#s", "manual/v2/a.htm"},
        {"index.htm", "manual/v2/sub/b.htm", "manual/v2/sub/b.htm"},
        {"docs-old/c.htm", "../manual/v2/a.htm", "manual/v2/a.htm"},
        {"docs/a.htm", "http://example.com/", ""},
    };
    vpSlistvpFRefCsIter it(refs);
    for (const auto& e : expected) {
        ASSERT_TRUE(it.fAdvance());
        EXPECT_EQ(str(it.aKey().fReferrer().fPath()), e[0]);
        EXPECT_EQ(str(it.aKey().fText()), e[1]);
        EXPECT_EQ(str(it.aKey().fTarget().fPath()), e[2]);
    }
    // One file moves; a path that is no reference's end changes nothing.
    EXPECT_EQ(vFileReference::sfFileMoved(refs, "manual/v2/a.htm", "a.htm"), 3);
    EXPECT_TRUE(refs.fFirst());
    EXPECT_EQ(str(refs.aKey().fText()), "manual/v2/img/x.gif");
    EXPECT_EQ(vFileReference::sfFileMoved(refs, "nowhere", "else"), 0);
}

TEST(vFileReference, ComponentsPersistOnVirtualStreamsOnly) {
    const vpSlistvpFRefCs refs = catalogue();
    std::stringstream ss;
    {
        vPostream out(ss);
        refs.recursiveSaveOn(out);
    }
    const std::string bytes = ss.str();
    vPistream in(ss);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->isA(), vClassID::vpSlistvpFRefCs);
    EXPECT_TRUE(back->isEqual(&refs));
    const vpSlistvpFRefCs& restored = *static_cast<const vpSlistvpFRefCs*>(back.get());
    ASSERT_TRUE(restored.fLast());
    EXPECT_TRUE(vFileReference(restored.aKey()).fIsExternal());

    // Each part takes part in equality and order.
    const vpFileRefCmpnts base("a.htm", "b.htm", vPathType::eURLHost, "b.htm");
    const vpFileRefCmpnts others[] = {
        {"x.htm", "b.htm", vPathType::eURLHost, "b.htm"},
        {"a.htm", "c.htm", vPathType::eURLHost, "b.htm"},
        {"a.htm", "b.htm", vPathType::eUNIX, "b.htm"},
        {"a.htm", "b.htm", vPathType::eURLHost, "c.htm"},
    };
    for (const vpFileRefCmpnts& o : others) {
        EXPECT_FALSE(o.isEqual(&base));
        EXPECT_NE(o.compareTo(&base), 0);
        EXPECT_EQ(o.compareTo(&base), -base.compareTo(&o));
    }

    // A stream cut short fails and leaves the element it was reading as it was.
    const vpFileRefCmpnts one = vFileReference("docs/a.htm", "img/x.gif").fComponents();
    std::stringstream single;
    {
        vPostream out(single);
        one.recursiveSaveOn(out);
    }
    const std::string oneBytes = single.str();
    for (size_t cut = 0; cut + 4 < oneBytes.size(); ++cut) {
        std::stringstream damaged(oneBytes.substr(0, cut));
        vPistream damagedIn(damaged);
        vpFileRefCmpnts target(base);
        RWCollectable::recursiveRestoreFrom(damagedIn, &target);
        EXPECT_FALSE(damagedIn.good()) << "cut at " << cut;
        EXPECT_TRUE(target == base) << "cut at " << cut;
    }

    // The binary file form writes nothing.
    TempDir dir;
    {
        RWFile file(dir.file("f.bin").c_str(), "wb");
        one.saveGuts(file);
    }
    EXPECT_EQ(TempDir::read(dir.file("f.bin")), "");
}

}  // namespace
