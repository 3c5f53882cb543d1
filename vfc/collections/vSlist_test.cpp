#include "vfc/collections/vSlist.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

// Counts live instances, so tests can see what a list destroyed.
struct Counted : vInt {
    static int live;
    explicit Counted(int v) : vInt(v) { ++live; }
    Counted(const Counted& o) : vInt(o) { ++live; }
    ~Counted() override { --live; }
    RWCollectable* copy() const override { return new Counted(*this); }
};
int Counted::live = 0;

vSlist ints(std::initializer_list<int> values) {
    vSlist list;
    for (int v : values)
        list.fInsertReference(new Counted(v));
    return list;
}

// The elements as text: ints as numbers, strings quoted, nested lists in brackets.
std::string show(const vSlist& list) {
    std::string out;
    vSlistIterator it(list);
    while (it.fAdvance()) {
        if (!out.empty()) out += ",";
        const RWCollectable* p = it.apKey();
        if (auto* s = dynamic_cast<const vString*>(p))
            out += "'" + std::string(s->data(), s->length()) + "'";
        else if (auto* l = dynamic_cast<const vSlist*>(p))
            out += "[" + show(*l) + "]";
        else
            out += std::to_string(static_cast<const vInt*>(p)->value());
    }
    return out;
}

TEST(vSlist, InsertsAtPositionsWithinRangeOnly) {
    vSlist list = ints({1, 3});
    EXPECT_TRUE(list.fInsertAt(1, vInt(2)));
    EXPECT_TRUE(list.fInsertAt(0, vInt(0)));
    EXPECT_TRUE(list.fInsertAt(4, vInt(4)));  // the count appends
    EXPECT_EQ(show(list), "0,1,2,3,4");
    EXPECT_FALSE(list.fInsertAt(6, vInt(9)));
    EXPECT_FALSE(list.fInsertAt(-1, vInt(9)));
    EXPECT_EQ(show(list), "0,1,2,3,4");
    EXPECT_FALSE(list.fInsertReference(nullptr));
    EXPECT_EQ(list.fEntries(), 5u);
}

TEST(vSlist, SearchesByValueOrByPointer) {
    vSlist list = ints({5, 6, 5});
    vInt five(5), seven(7);
    vInt at(9);
    EXPECT_TRUE(list.fIndex(five, at));
    EXPECT_EQ(at.value(), 0);
    EXPECT_TRUE(list.fIndex(vInt(6), at));
    EXPECT_EQ(at.value(), 1);
    at = 9;
    EXPECT_FALSE(list.fIndex(seven, at));
    EXPECT_EQ(at.value(), 0);
    EXPECT_TRUE(list.fContains(five));
    EXPECT_FALSE(list.fContains(seven));
    EXPECT_FALSE(list.fContainsReference(&five));
    EXPECT_TRUE(list.fContainsReference(list.last()));
}

TEST(vSlist, RemoveHandsBackAndDeleteDestroys) {
    Counted::live = 0;
    RWCollectable* kept[4] = {};
    {
        vSlist list = ints({1, 2, 3, 4, 5, 6, 7});
        RWCollectable* out = &list;  // a marker that failures must leave alone
        EXPECT_TRUE(list.fRemove(vInt(3), kept[0]));
        EXPECT_FALSE(list.fRemove(vInt(3), out));
        EXPECT_EQ(out, nullptr);
        out = &list;
        EXPECT_FALSE(list.fRemoveAt(-1, out));
        EXPECT_FALSE(list.fRemoveAt(6, out));
        EXPECT_EQ(out, &list);
        EXPECT_TRUE(list.fRemoveAt(1, kept[1]));  // 2
        EXPECT_TRUE(list.fRemoveFirst(kept[2]));  // 1
        EXPECT_TRUE(list.fRemoveLast(kept[3]));   // 7
        EXPECT_EQ(show(list), "4,5,6");
        EXPECT_EQ(Counted::live, 7);  // nothing destroyed yet
        RWCollectable* four = list.first();
        EXPECT_TRUE(list.fRemoveReference(four));
        EXPECT_EQ(Counted::live, 7);
        delete four;
        EXPECT_FALSE(list.fRemoveReference(kept[0]));
        EXPECT_FALSE(list.fDelete(vInt(9)));
        EXPECT_TRUE(list.fDelete(vInt(5)));
        EXPECT_EQ(Counted::live, 5);
        EXPECT_FALSE(list.fDeleteAt(1));
        EXPECT_FALSE(list.fDeleteAt(-1));
        EXPECT_TRUE(list.fDeleteAt(0));
        EXPECT_EQ(Counted::live, 4);
        EXPECT_FALSE(list.fDeleteFirst());
        EXPECT_FALSE(list.fDeleteLast());
        EXPECT_FALSE(list.fRemoveFirst(out));
        EXPECT_FALSE(list.fRemoveLast(out));
        EXPECT_EQ(out, &list);
        list.fInsertReference(new Counted(8));
        list.fInsertReference(new Counted(9));
        EXPECT_TRUE(list.fDeleteLast());
        EXPECT_TRUE(list.fDeleteFirst());
        list.fInsertReference(new Counted(10));
    }
    // The list destroyed what it held; what was handed back survives.
    EXPECT_EQ(Counted::live, 4);
    EXPECT_EQ(static_cast<vInt*>(kept[3])->value(), 7);
    for (RWCollectable* p : kept)
        delete p;
    EXPECT_EQ(Counted::live, 0);
}

TEST(vSlist, ClearUnlinksAndClearAndDestroyDestroys) {
    Counted::live = 0;
    Counted a(1), b(2);
    vSlist list;
    list.fInsertReference(&a);
    list.fInsertReference(&b);
    EXPECT_TRUE(list.fClear());  // a and b are owned elsewhere
    EXPECT_EQ(list.fEntries(), 0u);
    EXPECT_EQ(Counted::live, 2);
    list.fInsert(a);
    list.fInsert(b);
    EXPECT_EQ(Counted::live, 4);
    EXPECT_TRUE(list.fClearAndDestroy());
    EXPECT_EQ(Counted::live, 2);
}

TEST(vSlist, SetOperationsCopyAndKeepOrder) {
    Counted::live = 0;
    {
        vSlist a = ints({1, 2, 3}), b = ints({3, 4, 1, 4});
        const vSlist& self = a;
        a += self;
        a |= self;
        a &= self;
        a = self;
        EXPECT_EQ(show(a), "1,2,3");
        vSlist sum(a);
        sum += b;
        EXPECT_EQ(show(sum), "1,2,3,3,4,1,4");
        vSlist uni(a);
        uni |= b;
        EXPECT_EQ(show(uni), "1,2,3,4");
        int before = Counted::live;
        vSlist inter = ints({4, 1, 2, 1, 5});
        inter &= b;
        EXPECT_EQ(show(inter), "4,1,1");
        EXPECT_EQ(Counted::live, before + 3);  // the others were destroyed
        inter &= vSlist();
        EXPECT_EQ(inter.fEntries(), 0u);
        a = b;
        EXPECT_EQ(show(a), "3,4,1,4");
        EXPECT_NE(a.first(), b.first());  // copies, not shared
    }
    EXPECT_EQ(Counted::live, 0);
}

TEST(vSlist, EqualityIsPairwiseInOrder) {
    vSlist a = ints({1, 2}), b = ints({2, 1}), c = ints({1, 2}), d = ints({1});
    EXPECT_FALSE(a.fIsEqual(b));
    EXPECT_TRUE(a.fIsEqual(c));
    EXPECT_FALSE(a.fIsEqual(d));
    EXPECT_FALSE(d.fIsEqual(a));
    EXPECT_TRUE(vSlist().fIsEqual(vSlist()));
    EXPECT_TRUE(a.isEqual(&c));
    vInt one(1);
    EXPECT_FALSE(d.isEqual(&one));
    std::unique_ptr<RWCollectable> copy(a.copy());
    EXPECT_TRUE(copy->isEqual(&a));
    EXPECT_EQ(copy->isA(), 515);
    std::unique_ptr<RWCollectable> fresh(a.newSpecies());
    vSlist empty;
    EXPECT_TRUE(fresh->isEqual(&empty));
    EXPECT_EQ(fresh->isA(), 515);
}

TEST(vSlist, SplitsTextIntoLines) {
    vSlist list;
    list.fInsert(vString("kept"));
    vSlist::fStringToSlist("a\n\nb\n", list);
    EXPECT_EQ(show(list), "'kept','a','b'");
    list.fClearAndDestroy();
    vSlist::fStringToSlist("\n\nx\r\ny", list);
    EXPECT_EQ(show(list), "'x\r','y'");
    vSlist::fStringToSlist("", list);
    vSlist::fStringToSlist("\n", list);
    EXPECT_EQ(list.fEntries(), 2u);
    vSlist::fStringToSlist(vString("n\0ul\n", 5), list);
    vString withZero("n\0ul", 4);
    EXPECT_TRUE(list.last()->isEqual(&withZero));
}

TEST(vSlistIterator, LooksUpFromTheCurrentPosition) {
    vSlist list = ints({1, 2, 1, 3});
    vSlistIterator it(list);
    vInt one(1);
    EXPECT_TRUE(it.fLookup(&one));
    EXPECT_TRUE(it.fAtFirst());
    EXPECT_TRUE(it.fLookup(&one));  // the next one, not the same again
    EXPECT_FALSE(it.fAtFirst());
    EXPECT_EQ(it.apKey(), list.at(2));
    EXPECT_FALSE(it.fLookup(&one));
    EXPECT_EQ(it.apKey(), nullptr);
    EXPECT_FALSE(it.fAdvance());
    it.fReset();
    EXPECT_FALSE(it.fLookupReference(&one));  // equal, but not in the list
    it.fReset();
    EXPECT_TRUE(it.fLookupReference(list.last()));
    EXPECT_TRUE(it.fAtLast());
    vSlistIterator copy(it);
    EXPECT_EQ(copy.apKey(), list.last());
    copy.fReset();
    EXPECT_FALSE(it.fLookup(nullptr));
    EXPECT_TRUE(copy.fAdvance());
    EXPECT_EQ(copy.apKey(), list.first());
}

// A list of ints, a string and a nested list with its own nested list.
vSlist sample() {
    vSlist inner = ints({7, 8});
    vSlist deeper;
    deeper.fInsert(vString("deep"));
    inner.fInsert(deeper);
    vSlist list = ints({-1});
    list.fInsert(vString("two"));
    list.fInsert(inner);
    list.fInsert(vSlist());
    return list;
}

TEST(vSlist, RoundTripsThroughPortableStreamsAndFiles) {
    const vSlist list = sample();
    ASSERT_EQ(show(list), "-1,'two',[7,8,['deep']],[]");
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        list.recursiveSaveOn(out);
    }
    EXPECT_EQ(buf.str().rfind(":\n515\n\\[\n4\n:\n259\n\\[\n-1\n\\]\n", 0), 0u) << buf.str();
    Counted::live = 0;
    vSlist back = ints({100, 200});
    RWpistream in(&buf);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in, &back), &back);
    EXPECT_TRUE(in.good());
    EXPECT_EQ(Counted::live, 0);  // the old elements were destroyed
    EXPECT_EQ(show(back), show(list));
    EXPECT_TRUE(back.fIsEqual(list));

    auto path = std::filesystem::temp_directory_path() /
                ("vfc_vslist_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    {
        RWFile f(path.string().c_str(), "wb");
        list.recursiveSaveOn(f);
        ASSERT_TRUE(f.good());
    }
    {
        RWFile f(path.string().c_str(), "rb");
        std::unique_ptr<RWCollectable> fromFile(RWCollectable::recursiveRestoreFrom(f));
        ASSERT_NE(fromFile, nullptr);
        EXPECT_TRUE(f.good());
        EXPECT_EQ(show(*static_cast<vSlist*>(fromFile.get())), show(list));
    }
    std::filesystem::remove(path);
}

TEST(vSlist, RestoresWhatDamagedStreamsHoldCompletely) {
    // Nil elements are skipped; the stream stays good.
    std::stringbuf nil(":\n515\n\\[\n3\nN\n:\n259\n\\[\n4\n\\]\nN\n\\]\n");
    RWpistream nilIn(&nil);
    vSlist list;
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(nilIn, &list), &list);
    EXPECT_TRUE(nilIn.good());
    EXPECT_EQ(show(list), "4");
    // Cut inside the second element: the first is kept, the stream fails.
    std::stringbuf cut(":\n515\n\\[\n5\n:\n259\n\\[\n4\n\\]\n:\n259\n\\[\n");
    RWpistream cutIn(&cut);
    RWCollectable::recursiveRestoreFrom(cutIn, &list);
    EXPECT_TRUE(cutIn.fail());
    EXPECT_EQ(show(list), "4");
    // A count far beyond the data reserves nothing and fails.
    std::stringbuf huge(":\n515\n\\[\n4000000000\n");
    RWpistream hugeIn(&huge);
    RWCollectable::recursiveRestoreFrom(hugeIn, &list);
    EXPECT_TRUE(hugeIn.fail());
    EXPECT_EQ(list.fEntries(), 0u);
}

}  // namespace
