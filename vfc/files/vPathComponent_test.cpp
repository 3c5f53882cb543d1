#include "vfc/files/vPathComponent.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "vfc/files/vPath.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/persist/vPstream.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

using K = vComponentType;
using T = vPathType;

TEST(vPathComponentTest, NotationsNormalise) {
    struct Case {
        int in, out;
        bool flagged;
    };
    // The host member of each family is the UNIX member (3) on POSIX and the DOS member (1) on
    // Windows.
    const int h = T::kHostMember;
    const Case cases[] = {{0, h, false},      {20, h, true},  {24, 4 + h, true}, {37, 17, true},
                          {39, 19, true},     {3, 3, false},  {1, 1, false},     {21, 1, true},
                          {16, 16 + h, false}, {40, 40, false}};
    for (const Case& c : cases) {
        T::TypeEnum out;
        bool flagged = !c.flagged;
        T::sfTransPathType(static_cast<T::TypeEnum>(c.in), out, flagged);
        EXPECT_EQ(out, c.out) << c.in;
        EXPECT_EQ(flagged, c.flagged) << c.in;
    }
}

TEST(vPathComponentTest, TextIsKeptUnescapedAndWrittenEscaped) {
    // Kinds without text drop whatever they are given.
    for (K::TypeEnum k : {K::eRoot, K::eCurrentRoot, K::eUp, K::eCurrent})
        EXPECT_TRUE(vPathComponent(T::eDOS, k, "abc").aText().isNull()) << k;
    vPathComponent stored(T::eURLHostFlagged, K::eName, "a%20b");
    EXPECT_EQ(stored.fPathType(), T::eURLHost + T::kHostMember);
    EXPECT_EQ(stored.aText(), "a b");
    vString out;
    EXPECT_EQ(stored.fComponent(T::eURLDOSFlagged, out), "a%20b");
    EXPECT_EQ(stored.fComponent(T::eURLDOS, out), "a b");
    EXPECT_EQ(stored.fComponent(T::eDOSFlagged, out), "a b");

    // DOS escapes names only; a host or a drive keeps its text.
    EXPECT_EQ(vPathComponent(T::eDOSFlagged, K::eName, "x%3a%2A").aText(), "x:*");
    EXPECT_EQ(vPathComponent(T::eDOSFlagged, K::eServer, "x%3a").aText(), "x%3a");
    EXPECT_EQ(vPathComponent(T::eUNIX, K::eName, "q?%").fComponent(T::eDOSFlagged, out), "q%3f%25");
    // URL queries and hosts stand as written.
    EXPECT_EQ(vPathComponent(T::eURLUNIXFlagged, K::eQuery, "a%20b").aText(), "a%20b");
    EXPECT_EQ(vPathComponent(T::eUNIX, K::eQuery, "a b&c").fComponent(T::eURLUNIXFlagged, out),
              "a b&c");
    // MIF, and MIF inside a MIF string.
    vPathComponent mif(T::eMIFUNIXFlagged, K::eName, "a\\>b\\\\c\\");
    EXPECT_EQ(mif.aText(), "a>b\\c\\");
    EXPECT_EQ(mif.fComponent(T::eMIFEscapedHostFlagged, out), "a\\\\\\>b\\\\\\\\c\\\\\\\\");
    EXPECT_EQ(vPathComponent(T::eMIFEscapedUNIXFlagged, K::eName, "\\xE9 \\>\\\\\\>").aText(),
              "\xe9>>");
    // Mac trades colons and slashes.
    EXPECT_EQ(vPathComponent(T::eMacFlagged, K::eDrive, "a/b:c").aText(), "a:b/c");
}

TEST(vPathComponentTest, ComparisonAndPersistence) {
    vPathComponent a(static_cast<T::TypeEnum>(T::kHostMember), K::eName, "a");
    vPathComponent b(T::eHost, K::eName, "a");  // the same notation
    vPathComponent c(T::eMac, K::eName, "a");
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_EQ(a.hash(), b.hash());
    EXPECT_NE(a.compareTo(&c), 0);
    EXPECT_EQ(a.compareTo(&c), -c.compareTo(&a));

    vPathComponentList list;
    list.fInsert(vPathComponent(T::eURLUNIX, K::eScheme, "http"));
    list.fInsert(vPathComponent(T::eURLUNIX, K::eName, "x y\n\"z\""));
    list.fInsert(vPathComponent(T::eURLUNIX, K::eUp, ""));
    list.fSetTrailingSeparator(true);
    vPstream pipe;
    list.recursiveSaveOn(pipe.insert());
    vPath path(T::eDOS, "C:/a//b/");
    path.recursiveSaveOn(pipe.insert());
    pipe.insert() << vPathComponent(T::eMacFlagged, K::eDrive, "a/b");
    pipe.flush();
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(pipe.extract()));
    ASSERT_NE(back, nullptr);
    auto* restored = static_cast<vPathComponentList*>(back.get());
    EXPECT_TRUE(restored->fIsEqual(list));
    EXPECT_TRUE(restored->fTrailingSeparator());
    std::unique_ptr<RWCollectable> pathBack(RWCollectable::recursiveRestoreFrom(pipe.extract()));
    ASSERT_NE(pathBack, nullptr);
    EXPECT_TRUE(pathBack->isEqual(&path));
    EXPECT_EQ(static_cast<vPath*>(pathBack.get())->fPathType(), T::eDOS);
    vPathComponent drive;
    pipe.extract() >> drive;
    EXPECT_TRUE(drive == vPathComponent(T::eMac, K::eDrive, "a:b"));

    // A stored notation that no component can have fails the stream.
    std::stringbuf bytes;
    {
        RWpostream out(&bytes);
        vPathComponent(T::eUNIX, K::eName, "n").saveGuts(out);
    }
    std::string text = bytes.str();
    text.replace(text.find('3'), 1, "4");  // notation 3 becomes 4, a host member
    std::stringbuf damaged(text);
    RWpistream in(&damaged);
    vPathComponent victim(T::eDOS, K::eName, "keep");
    victim.restoreGuts(in);
    EXPECT_FALSE(in.good());
    EXPECT_EQ(victim.aText(), "keep");
}

TEST(vPathTest, NormalisedComparisonAndHierarchy) {
    vPath a(T::eUNIX, "/usr//share/doc/");
    EXPECT_EQ(a.fString(), "/usr/share/doc");
    EXPECT_TRUE(a.fIsEqual(vPath(T::eHost, "/usr/share/doc")));
    EXPECT_EQ(a.hash(), vPath(T::eUNIX, "/usr/share/doc").hash());
    EXPECT_TRUE(a.fIsInHier(vPath(T::eUNIX, "/usr/share")));
    EXPECT_TRUE(a.fIsInHier(a));
    EXPECT_FALSE(a.fIsInHier(vPath(T::eUNIX, "/usr/sha")));
    EXPECT_FALSE(a.fIsInHier(vPath(T::eUNIX, "/usr/share/doc/x")));
    EXPECT_FALSE(a.fIsInHier(vPath(T::eUNIX, "")));
    EXPECT_FALSE(a.fIsInHier(vPath(T::eDOS, "/usr")));  // another notation's components
    EXPECT_LT(vPath(T::eUNIX, "/a").compareTo(&a), 0);
    EXPECT_GT(vPath(T::eUNIX, "a").compareTo(&a), 0);
    std::ostringstream printed;
    printed << vPath(T::eURLUNIX, "http://h:80/x/");
    EXPECT_EQ(printed.str(), "http://h/x/");
}

}  // namespace
