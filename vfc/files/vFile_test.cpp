#include "vfc/files/vFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "vfc/collections/vTypedFamily.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/rw/RWFile.h"
#include "vfc/testing/TempDir.h"

namespace {

TEST(vFileTest, TypeNamesRoundTripAndRejectStrangers) {
    for (int t = vFile::eDirectory; t <= vFile::eVorlandixNDTXML; ++t) {
        auto type = static_cast<vFile::FileTypeEnum>(t);
        const char* name = vFile::sfFileTypeToConstChar(type);
        ASSERT_STRNE(name, "") << t;
        EXPECT_EQ(vFile::sfConstCharToFileType(name), type) << name;
    }
    EXPECT_STREQ(vFile::sfFileTypeToConstChar(vFile::eMIF), "application/vnd.mif");
    EXPECT_STREQ(vFile::sfFileTypeToConstChar(vFile::eVorlandixNDTXML), "vorlandix-ndt-xml");
    for (int t : {-1, 0, 1, 24, 1000})
        EXPECT_STREQ(vFile::sfFileTypeToConstChar(static_cast<vFile::FileTypeEnum>(t)), "");
    EXPECT_EQ(vFile::sfConstCharToFileType(""), vFile::eNone);
    EXPECT_EQ(vFile::sfConstCharToFileType(nullptr), vFile::eNone);
    EXPECT_EQ(vFile::sfConstCharToFileType("TEXT/PLAIN"), vFile::eUnknown);
    EXPECT_EQ(vFile::sfConstCharToFileType("text/plain "), vFile::eUnknown);
}

TEST(vFileTest, ExtensionIsTakenFromTheLastNameOnly) {
    EXPECT_EQ(vFile("a/b.c/page.HTML").fExtension(), "HTML");
    EXPECT_EQ(vFile("archive.tar.gz").fExtension(), "gz");
    EXPECT_EQ(vFile("dir.d/README").fExtension(), "");
    EXPECT_EQ(vFile("trailing.").fExtension(), "");
    EXPECT_EQ(vFile(".profile").fExtension(), "profile");
    EXPECT_EQ(vFile("").fExtension(), "");
}

TEST(vFileTest, ExistenceAndDirectoriesAreAskedOfTheSystem) {
    vfc::testing::TempDir dir;
    vFile f(dir.file("x.txt").c_str());
    EXPECT_FALSE(f.QueryStat());
    dir.write("x.txt", "x");
    EXPECT_TRUE(f.QueryStat());
    EXPECT_FALSE(f.fIsDirectory());
    EXPECT_TRUE(vFile(dir.path().c_str()).fIsDirectory());
    EXPECT_FALSE(vFile("").QueryStat());

    using Kind = vFile::KindEnum;
    EXPECT_EQ(f.fKind(), Kind::eRegular);
    EXPECT_EQ(vFile(dir.path().c_str()).fKind(), Kind::eDirectory);
    EXPECT_EQ(vFile(dir.file("none").c_str()).fKind(), Kind::eMissing);
    EXPECT_EQ(vFile("").fKind(), Kind::eMissing);
    EXPECT_EQ(vFile("/dev/null").fKind(), Kind::eCharDevice);
    std::string fifo = dir.makeFifo("pipe");
    if (!fifo.empty()) {
        EXPECT_EQ(vFile(fifo.c_str()).fKind(), Kind::eFifo);
    }
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eFifo), "inode/fifo");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eSocket), "inode/socket");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eCharDevice), "inode/chardevice");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eBlockDevice), "inode/blockdevice");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eDirectory), "inode/directory");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eRegular), "");
    EXPECT_STREQ(vFile::sfKindToConstChar(Kind::eMissing), "");
}

TEST(vFileTest, EqualityAndHashFollowThePathOnly) {
    vFile a("x/y.mif");
    vFile b("x/y.mif");
    vFile c("x/Y.mif");
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_EQ(a.hash(), b.hash());
    EXPECT_FALSE(a.isEqual(&c));
    EXPECT_NE(a.compareTo(&c), 0);
    EXPECT_EQ(a.compareTo(&c), -c.compareTo(&a));
    vString notAFile("x/y.mif");
    EXPECT_FALSE(a.isEqual(&notAFile));

    // As keys and elements of the typed members.
    vHashvFilevString h;
    h.fInsert(a, "first");
    EXPECT_FALSE(h.fInsert(b, "second"));
    ASSERT_TRUE(h.fLookup(vFile("x/y.mif")));
    EXPECT_EQ(h.aValue(), "first");
    vSetvFile s;
    s.fInsert(a);
    s.fInsert(c);
    s.fInsert(b);
    EXPECT_EQ(s.fEntries(), 2u);
}

TEST(vFileTest, PersistsPathAndTypeOnVirtualStreamsOnly) {
    vFile f("docs/ch1.mif");
    std::stringstream ss;
    {
        vPostream out(ss);
        out << f;
        vSlistvFile list;
        list.fInsert(f);
        list.fInsert(vFile("b.gif"));
        list.recursiveSaveOn(out);
    }
    vPistream in(ss);
    vFile back("something else");
    in >> back;
    ASSERT_TRUE(in.good());
    EXPECT_EQ(back.fPath(), "docs/ch1.mif");
    EXPECT_EQ(back.fType(), vFile::eNone);
    std::unique_ptr<RWCollectable> list(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_TRUE(list);
    ASSERT_EQ(list->isA(), vSlistvFile::classIsA());
    EXPECT_EQ(static_cast<vSlistvFile*>(list.get())->fEntries(), 2u);

    // A damaged stream leaves the file as it was.
    std::stringstream bad("\"only-a-path\"");
    vPistream badIn(bad);
    vFile kept("kept");
    badIn >> kept;
    EXPECT_FALSE(badIn.good());
    EXPECT_EQ(kept.fPath(), "kept");

    vfc::testing::TempDir dir;
    {
        RWFile file(dir.file("f.bin").c_str(), "wb");
        f.saveGuts(file);
    }
    EXPECT_EQ(vfc::testing::TempDir::read(dir.file("f.bin")), "");
}

}  // namespace
