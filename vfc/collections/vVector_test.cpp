#include "vfc/collections/vVector.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/testing/CountedString.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

using vfc::testing::Counted;

std::string join(const vVector& v) {
    std::string out;
    for (size_t i = 0; i < v.fEntries(); ++i)
        out += static_cast<const vString*>(v.fAt(i))->data();
    return out;
}

vVector vectorOf(const char* letters) {
    vVector v;
    for (const char* p = letters; *p; ++p)
        v.fInsert(Counted(std::string(1, *p).c_str()));
    return v;
}

TEST(vVector, PositionsAndOwnership) {
    Counted::live = 0;
    std::unique_ptr<RWCollectable> removed, removedAt;
    {
        vVector v = vectorOf("bd");
        EXPECT_TRUE(v.fInsertAt(0, Counted("a")));
        EXPECT_TRUE(v.fInsertAt(2, Counted("c")));
        EXPECT_TRUE(v.fInsertAt(4, Counted("e")));  // at the count: appends
        EXPECT_FALSE(v.fInsertAt(6, Counted("x")));
        EXPECT_EQ(join(v), "abcde");
        EXPECT_EQ(Counted::live, 5);
        EXPECT_EQ(v.fAt(5), nullptr);

        size_t i = 99;
        EXPECT_TRUE(v.fIndex(Counted("d"), i));
        EXPECT_EQ(i, 3u);
        EXPECT_FALSE(v.fIndex(Counted("x"), i));
        EXPECT_EQ(i, 0u);

        auto* f = new Counted("f");
        EXPECT_TRUE(v.fInsertReference(f));
        EXPECT_FALSE(v.fInsertReference(nullptr));
        EXPECT_TRUE(v.fContainsReference(f));
        Counted otherF("f");
        EXPECT_TRUE(v.fContains(otherF));
        EXPECT_FALSE(v.fContainsReference(&otherF));
        EXPECT_TRUE(v.fRemoveReference(f));
        EXPECT_FALSE(v.fRemoveReference(f));
        delete f;

        RWCollectable* out = nullptr;
        EXPECT_TRUE(v.fRemove(Counted("b"), out));
        removed.reset(out);
        EXPECT_FALSE(v.fRemove(Counted("b"), out));
        EXPECT_EQ(out, nullptr);
        EXPECT_TRUE(v.fRemoveAt(3, out));  // "e"
        removedAt.reset(out);
        EXPECT_FALSE(v.fRemoveAt(3, out));
        EXPECT_EQ(join(v), "acd");
        EXPECT_TRUE(v.fDelete(Counted("a")));
        EXPECT_TRUE(v.fDeleteAt(1));
        EXPECT_FALSE(v.fDeleteAt(1));
        EXPECT_EQ(join(v), "c");
        EXPECT_EQ(Counted::live, 1 + 1 + 2);  // otherF, c, the removed two
    }
    EXPECT_EQ(Counted::live, 2);
}

TEST(vVector, EqualityFollowsOrder) {
    vVector v = vectorOf("abc");
    EXPECT_TRUE(v.fIsEqual(vectorOf("abc")));
    EXPECT_FALSE(v.fIsEqual(vectorOf("acb")));
    EXPECT_FALSE(v.fIsEqual(vectorOf("ab")));
    EXPECT_TRUE(vectorOf("").fIsEqual(vVector()));
    EXPECT_NE(v.hash(), vectorOf("acb").hash());
    EXPECT_EQ(v.hash(), vectorOf("abc").hash());
    vVector copy(v);
    EXPECT_NE(copy.fAt(0), v.fAt(0));
    const vVector& self = copy;
    copy = self;
    EXPECT_TRUE(copy.isEqual(&v));
    copy.fDeleteAt(0);
    copy.fInsert(Counted("a"));
    EXPECT_FALSE(copy.isEqual(&v));
    copy = v;
    EXPECT_EQ(join(copy), "abc");
}

TEST(vVector, RoundTripDropsNilAndStopsAtTheCut) {
    vVector v = vectorOf("pqr");
    v.fInsert(vInt(5));
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        v.recursiveSaveOn(out);
    }
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_TRUE(in.good());
    ASSERT_NE(dynamic_cast<vVector*>(back.get()), nullptr);
    EXPECT_TRUE(static_cast<vVector*>(back.get())->fIsEqual(v));

    // A stream with a nil element, then a cut in the last one.
    Counted a("a"), b("b");
    std::stringbuf handMade;
    {
        RWpostream out(&handMade);
        out << 4u;
        vfc::rw::saveObject(out, &a);
        vfc::rw::saveObject(out, nullptr);
        vfc::rw::saveObject(out, &b);
        vfc::rw::saveObject(out, &a);
    }
    std::string bytes = handMade.str();
    const int baseline = Counted::live;
    std::stringbuf cut(bytes.substr(0, bytes.size() - 4));
    RWpistream cutIn(&cut);
    {
        vVector w = vectorOf("old");
        w.restoreGuts(cutIn);
        EXPECT_FALSE(cutIn.good());
        EXPECT_EQ(join(w), "ab");
    }
    EXPECT_EQ(Counted::live, baseline);
}

}  // namespace
