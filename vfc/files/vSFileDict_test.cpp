#include "vfc/files/vSFileDict.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/files/vDirHierFilter.h"
#include "vfc/files/vFileOps.h"
#include "vfc/files/vFileReference.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/testing/TempDir.h"

namespace {

using vfc::testing::TempDir;

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

std::string paths(const vSFileDict& dict) {
    std::string out;
    for (size_t i = 0; i < dict.fEntries(); ++i)
        out += (i ? " " : "") + str(dict.fAt(i)->fPath());
    return out;
}

std::string paths(const vSlistvFile& files) {
    std::string out;
    vSlistvFileIter it(files);
    while (it.fAdvance())
        out += (out.empty() ? "" : " ") + str(it.aKey().fPath());
    return out;
}

std::string saved(const RWCollectable& object) {
    std::stringstream ss;
    vPostream out(ss);
    object.recursiveSaveOn(out);
    return ss.str();
}

TEST(vSFileDict, KeepsOneEntryPerPathInByteOrder) {
    vSFileDict dict;
    for (const char* p : {"docs/b", "docs", "Docs", "docs-old", "docs/a/z", "docs.txt", "a"})
        EXPECT_TRUE(dict.fInsert(vFile(p), p));
    EXPECT_EQ(paths(dict), "Docs a docs docs-old docs.txt docs/a/z docs/b");
    EXPECT_FALSE(dict.fInsert(vFile("docs"), "again"));
    EXPECT_EQ(dict.fEntries(), 7u);

    vString value;
    EXPECT_TRUE(dict.fLookup(vFile("docs"), value));
    EXPECT_EQ(str(value), "again");
    EXPECT_FALSE(dict.fLookup(vFile("./docs"), value));
    EXPECT_EQ(str(value), "again");
    EXPECT_EQ(dict.fFind(vFile("doc")), nullptr);
    ASSERT_NE(dict.fFind(vFile("docs/b")), nullptr);
    dict.fFind(vFile("docs/b"))->fSetValue("changed");
    EXPECT_EQ(str(dict.fFind(vFile("docs/b"))->fValue()), "changed");
    EXPECT_EQ(dict.fIndexOf(vFile("docs")), 2u);
    EXPECT_EQ(dict.fIndexOf(vFile("docs/a")), 5u);
    EXPECT_EQ(dict.fIndexOf(vFile("zzz")), 7u);
    EXPECT_EQ(dict.fAt(7), nullptr);

    // Below a folder: the folder itself and what follows a separator, not "docs-old".
    vSlistvFile below;
    EXPECT_EQ(dict.fFindBelow(vFile("docs"), below), 3u);
    EXPECT_EQ(paths(below), "docs docs/a/z docs/b");
    vSlistvFile slashedBelow;
    EXPECT_EQ(dict.fFindBelow(vFile("docs/"), slashedBelow), 2u);
    EXPECT_EQ(dict.fRemoveBelow(vFile("docs")), 3u);
    EXPECT_EQ(paths(dict), "Docs a docs-old docs.txt");
    EXPECT_TRUE(dict.fRemove(vFile("a")));
    EXPECT_FALSE(dict.fRemove(vFile("a")));
    EXPECT_EQ(dict.fRemoveBelow(vFile("nothing")), 0u);

    vSlistvFile walk;
    walk.fInsert(vFile("docs.txt"));
    walk.fInsert(vFile("new"));
    EXPECT_EQ(dict.fInsertAll(walk, "v"), 1u);
    EXPECT_EQ(str(dict.fFind(vFile("docs.txt"))->fValue()), "docs.txt");
    EXPECT_EQ(str(dict.fFind(vFile("new"))->fValue()), "v");
}

TEST(vSFileDict, StampsTellWhichFilesChanged) {
    TempDir dir;
    const vFile a(dir.write("a.mif", "one").c_str());
    const vFile b(dir.write("b.mif", "two").c_str());
    const vFile gone(dir.file("gone.mif").c_str());
    vSFileDict dict;
    dict.fInsert(a);
    dict.fInsert(b);
    dict.fInsert(gone);
    vSlistvFile changed;
    EXPECT_EQ(dict.fCollectChanged(changed), 3u);  // never stamped
    EXPECT_EQ(dict.fStampAll(), 1u);               // the missing one
    EXPECT_FALSE(dict.fFind(gone)->fIsStamped());
    EXPECT_EQ(dict.fFind(a)->fSize(), 3u);
    EXPECT_TRUE(dict.fFind(a)->fModificationTime().isValid());

    // Same size, another time; another size; removed.
    vTime stamp = dict.fFind(a)->fModificationTime();
    ASSERT_TRUE(vcSetModificationTime(a, vTime(stamp.seconds() - 100)));
    dir.write("b.mif", "longer");
    ASSERT_TRUE(vcSetModificationTime(b, dict.fFind(b)->fModificationTime()));
    changed.fClearAndDestroy();
    EXPECT_EQ(dict.fCollectChanged(changed), 3u);
    EXPECT_EQ(paths(changed), str(a.fPath()) + " " + str(b.fPath()) + " " + str(gone.fPath()));

    dict.fStampAll();
    changed.fClearAndDestroy();
    EXPECT_EQ(dict.fCollectChanged(changed), 1u);  // only the missing file
    ASSERT_TRUE(vcRemoveFile(a));
    EXPECT_TRUE(dict.fFind(a)->fIsChanged());
    vSFile folder(vFile(dir.path().c_str()));
    EXPECT_FALSE(folder.fStamp());  // a folder has no content to stamp
}

TEST(vSFileDict, PersistsAndRejectsDamagedOrUnsortedStreams) {
    TempDir dir;
    vSFileDict dict;
    dict.fInsert(vFile(dir.write("p1", "abc").c_str()), "out/p1.htm");
    dict.fInsert(vFile(dir.write("p2", "x").c_str()), "");
    dict.fInsert(vFile("p3 not there"), "v\r\n\xff");
    dict.fStampAll();
    const std::string bytes = saved(dict);
    std::stringstream ss(bytes);
    vPistream in(ss);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->isA(), vClassID::vSFileDict);
    const vSFileDict& restored = *static_cast<const vSFileDict*>(back.get());
    EXPECT_TRUE(restored.isEqual(&dict));
    EXPECT_EQ(restored.hash(), dict.hash());
    EXPECT_EQ(restored.fFind(vFile(dir.file("p1").c_str()))->fSize(), 3u);
    EXPECT_EQ(str(restored.fFind(vFile("p3 not there"))->fValue()), "v\r\n\xff");
    EXPECT_EQ(saved(restored), bytes);

    vSFileDict other(dict);
    other.fFind(vFile("p3 not there"))->fSetValue("w");
    EXPECT_FALSE(other.isEqual(&dict));
    EXPECT_EQ(other.compareTo(&dict), -dict.compareTo(&other));
    other.fRemove(vFile("p3 not there"));
    EXPECT_LT(other.compareTo(&dict), 0);

    vSFileDict keep;
    keep.fInsert(vFile("kept"), "k");
    const vSFileDict before(keep);
    for (size_t cut = 0; cut + 4 < bytes.size(); ++cut) {
        std::stringstream damaged(bytes.substr(0, cut));
        vPistream damagedIn(damaged);
        RWCollectable::recursiveRestoreFrom(damagedIn, &keep);
        EXPECT_FALSE(damagedIn.good()) << "cut at " << cut;
        EXPECT_TRUE(keep.isEqual(&before)) << "cut at " << cut;
    }
    // The same bytes with the first two paths swapped are out of order: refused.
    std::string forged = bytes;
    const size_t p1 = forged.find("/p1"), p2 = forged.find("/p2");
    ASSERT_NE(p1, std::string::npos);
    ASSERT_NE(p2, std::string::npos);
    forged[p1 + 2] = '2';
    forged[p2 + 2] = '1';
    std::stringstream forgedSs(forged);
    vPistream forgedIn(forgedSs);
    RWCollectable::recursiveRestoreFrom(forgedIn, &keep);
    EXPECT_FALSE(forgedIn.good());
    EXPECT_TRUE(keep.isEqual(&before));
}

// A tool's project file: the filter it collects inputs with, the references between its files
// and the catalogue of its inputs, in one persistent object file, read back by class.
TEST(vSFileDict, ProjectFileHoldsFilterReferencesAndCatalogue) {
    TempDir dir;
    ASSERT_TRUE(vcMakeDirectoryTree(vFile(dir.file("book").c_str())));
    dir.write("book/a.htm", "");
    vMatchList include;
    include.fInsert("*.htm");
    const vDirHierFilter filter(vFile(dir.file("book").c_str()), include, vMatchList());
    vpSlistvpFRefCs refs;
    refs.fInsert(vFileReference("book/a.htm", "img/x%20y.gif#f").fComponents());
    refs.fInsert(vFileReference("book/a.htm", "mailto:x@y.z").fComponents());
    vSFileDict inputs;
    vSlistvFile found;
    ASSERT_TRUE(filter.fCollect(found));
    inputs.fInsertAll(found, "out/a.htm");
    inputs.fStampAll();

    const std::string project = dir.file("project.vor");
    {
        std::ofstream file(project, std::ios::binary);
        vPostream out(file);
        filter.recursiveSaveOn(out);
        refs.recursiveSaveOn(out);
        inputs.recursiveSaveOn(out);
    }
    std::ifstream file(project, std::ios::binary);
    vPistream in(file);
    const RWCollectable* originals[] = {&filter, &refs, &inputs};
    const RWClassID ids[] = {vClassID::vDirHierFilter, vClassID::vpSlistvpFRefCs,
                             vClassID::vSFileDict};
    for (int i = 0; i < 3; ++i) {
        std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
        ASSERT_NE(back, nullptr) << i;
        EXPECT_EQ(back->isA(), ids[i]);
        EXPECT_TRUE(back->isEqual(originals[i])) << i;
    }
    EXPECT_TRUE(in.good());
    std::unique_ptr<RWCollectable> none(RWCollectable::recursiveRestoreFrom(in));
    EXPECT_EQ(none, nullptr);
}

}  // namespace
