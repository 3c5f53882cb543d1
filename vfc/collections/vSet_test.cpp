// vSet and vTable: the owning hashed collections without values.
#include "vfc/collections/vSet.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vSetIterator.h"
#include "vfc/collections/vTable.h"
#include "vfc/collections/vTableIterator.h"
#include "vfc/core/vString.h"
#include "vfc/testing/CountedString.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

using vfc::testing::Counted;

template <class Collection, class Iterator>
std::string join(const Collection& c) {
    std::string out;
    Iterator it(c);
    while (it.fAdvance())
        out += static_cast<const vString*>(it.apKey())->data();
    return out;
}
std::string join(const vSet& s) {
    return join<vSet, vSetIterator>(s);
}
std::string join(const vTable& t) {
    return join<vTable, vTableIterator>(t);
}

vSet setOf(const char* letters) {
    vSet s;
    for (const char* p = letters; *p; ++p)
        s.fInsert(Counted(std::string(1, *p).c_str()));
    return s;
}

vTable tableOf(const char* letters) {
    vTable t;
    for (const char* p = letters; *p; ++p)
        t.fInsert(Counted(std::string(1, *p).c_str()));
    return t;
}

TEST(vSet, OwnsItsElementsAndRefusesDuplicates) {
    Counted::live = 0;
    std::unique_ptr<RWCollectable> removed;
    {
        Counted a("a");
        vSet s;
        EXPECT_TRUE(s.fInsert(a));
        EXPECT_FALSE(s.fInsert(a));
        EXPECT_EQ(Counted::live, 2);  // one copy only
        auto* b = new Counted("b");
        EXPECT_TRUE(s.fInsertReference(b));
        auto* otherB = new Counted("b");
        EXPECT_FALSE(s.fInsertReference(otherB));  // the caller keeps it
        EXPECT_FALSE(s.fInsertReference(b));       // already held
        EXPECT_EQ(s.fFind(*otherB), b);
        delete otherB;
        EXPECT_EQ(s.fFind(Counted("z")), nullptr);
        EXPECT_TRUE(s.fContains(Counted("a")));

        RWCollectable* out = nullptr;
        EXPECT_TRUE(s.fRemove(Counted("b"), out));
        removed.reset(out);
        EXPECT_EQ(out, b);
        EXPECT_FALSE(s.fRemove(Counted("b"), out));
        EXPECT_EQ(out, nullptr);
        s.fInsert(Counted("c"));
        EXPECT_TRUE(s.fDelete(Counted("c")));
        EXPECT_FALSE(s.fDelete(Counted("c")));
        EXPECT_EQ(Counted::live, 3);  // a, its copy, removed b
        s.fInsert(Counted("d"));
        EXPECT_EQ(join(s), "ad");
    }
    EXPECT_EQ(Counted::live, 1);  // only the removed one survives the set
}

TEST(vSet, UnionIntersectionAndEquality) {
    Counted::live = 0;
    {
        vSet s = setOf("abcd");
        vSet t = setOf("cdef");
        EXPECT_TRUE(s.fOrEquals(t));
        EXPECT_EQ(join(s), "abcdef");
        EXPECT_TRUE(t.fOrEquals(t));
        EXPECT_TRUE(t.fAndEquals(t));
        EXPECT_EQ(join(t), "cdef");
        EXPECT_TRUE(s.fAndEquals(setOf("fxa")));
        EXPECT_EQ(join(s), "af");
        EXPECT_EQ(Counted::live, 2 + 4);

        EXPECT_TRUE(s.fIsEqual(setOf("fa")));
        EXPECT_FALSE(s.fIsEqual(setOf("fb")));
        EXPECT_FALSE(s.fIsEqual(setOf("fab")));
        EXPECT_EQ(s.hash(), setOf("fa").hash());
        vSet copy(s);
        EXPECT_TRUE(copy.isEqual(&s));
        EXPECT_NE(copy.fFind(Counted("a")), s.fFind(Counted("a")));  // deep
        copy = t;
        EXPECT_EQ(join(copy), "cdef");
        vTable sameLetters = tableOf("af");
        EXPECT_FALSE(s.isEqual(&sameLetters));

        vSetIterator it(t);
        Counted e("e");
        EXPECT_TRUE(it.fLookup(&e));
        EXPECT_TRUE(it.fAdvance());
        EXPECT_STREQ(static_cast<const vString*>(it.apKey())->data(), "f");
        EXPECT_FALSE(it.fAdvance());
    }
    EXPECT_EQ(Counted::live, 0);
}

TEST(vTable, HoldsDuplicatesAndComparesCounts) {
    Counted::live = 0;
    {
        vTable t;
        EXPECT_TRUE(t.fInsert(Counted("a")));
        EXPECT_TRUE(t.fInsert(Counted("a")));
        EXPECT_TRUE(t.fInsertReference(new Counted("b")));
        EXPECT_FALSE(t.fInsertReference(nullptr));
        EXPECT_EQ(t.fEntries(), 3u);
        Counted a("a");
        EXPECT_EQ(t.occurrencesOf(&a), 2u);

        EXPECT_TRUE(tableOf("aab").fIsEqual(tableOf("aba")));
        EXPECT_FALSE(tableOf("aab").fIsEqual(tableOf("abb")));
        vTable baa = tableOf("baa");
        EXPECT_TRUE(t.isEqual(&baa));

        EXPECT_TRUE(t.fDelete(Counted("a")));  // one of them
        EXPECT_EQ(join(t), "ab");
        EXPECT_EQ(Counted::live, 1 + 3 + 2);

        vTable u = tableOf("bbcd");
        EXPECT_TRUE(t.fOrEquals(u));
        EXPECT_EQ(join(t), "abcd");  // missing ones added once
        EXPECT_TRUE(u.fAndEquals(tableOf("bd")));
        EXPECT_EQ(join(u), "bbd");
        vTable copy(u);
        EXPECT_TRUE(copy.fIsEqual(u));
        RWCollectable* out = nullptr;
        EXPECT_TRUE(copy.fRemove(Counted("b"), out));
        EXPECT_FALSE(copy.fIsEqual(u));
        delete out;
        EXPECT_EQ(Counted::live, 1 + 3 + 4 + 3 + 2);
    }
    EXPECT_EQ(Counted::live, 0);
}

// Saves c, then restores it from every shortened form of the bytes: the collection keeps a
// prefix of the elements, in order, and leaks nothing.
template <class Collection>
void checkRoundTripAndTruncation(const Collection& c) {
    std::stringbuf full;
    {
        RWpostream out(&full);
        c.recursiveSaveOn(out);
    }
    const std::string bytes = full.str();
    {
        std::stringbuf buf(bytes);
        RWpistream in(&buf);
        std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
        ASSERT_TRUE(in.good());
        auto* restored = dynamic_cast<Collection*>(back.get());
        ASSERT_NE(restored, nullptr);
        EXPECT_TRUE(restored->fIsEqual(c));
        EXPECT_EQ(join(*restored), join(c));
    }
    std::stringbuf gutsBuf;
    {
        RWpostream out(&gutsBuf);
        c.saveGuts(out);
    }
    const std::string guts = gutsBuf.str();
    const int baseline = Counted::live;
    // Every cut that loses more than the final separator.
    for (size_t cut = 0; cut + 1 < guts.size(); ++cut) {
        std::stringbuf buf(guts.substr(0, cut));
        RWpistream in(&buf);
        Collection into;
        into.fInsert(Counted("stale"));
        into.restoreGuts(in);
        EXPECT_FALSE(in.good()) << cut;
        std::string kept = join(into);
        EXPECT_EQ(kept, join(c).substr(0, kept.size())) << cut;
        EXPECT_EQ(Counted::live, baseline + static_cast<int>(into.fEntries())) << cut;
    }
    EXPECT_EQ(Counted::live, baseline);
}

TEST(vSet, RoundTripsAndSurvivesTruncation) {
    checkRoundTripAndTruncation(setOf("xyzw"));
    checkRoundTripAndTruncation(tableOf("xxyx"));
}

}  // namespace
