#include "vfc/collections/vTypedList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vfc/collections/vTypedFamily.h"

namespace {

// A vString that counts its live instances, so tests can see what a list destroyed.
struct CountedString : vString {
    static int live;
    explicit CountedString(const char* s) : vString(s) { ++live; }
    CountedString(const CountedString& o) : vString(o) { ++live; }
    ~CountedString() override { --live; }
    RWCollectable* copy() const override { return new CountedString(*this); }
};
int CountedString::live = 0;

std::string show(const vSlistvString& list) {
    std::string out;
    vSlistvStringIter it(list);
    while (it.fAdvance()) {
        if (!out.empty()) out += ",";
        out += std::string(it.aKey().data(), it.aKey().length());
    }
    return out;
}

vSlistvString strings(std::initializer_list<const char*> texts) {
    vSlistvString list;
    for (const char* t : texts)
        list.fInsert(vString(t));
    return list;
}

TEST(vTypedList, ConstructSplitsAtLineEndsAndTranslateJoinsWithCrLf) {
    vSlistvString list = strings({"old"});
    EXPECT_TRUE(list.fConstruct("a\r\n\r\nb"));
    EXPECT_EQ(show(list), "a,b");
    vString out("left over");
    EXPECT_TRUE(list.fTranslate(out));
    EXPECT_EQ(out, "a\r\nb\r\n");

    list.fConstruct("\n\r\nonly\r");
    EXPECT_EQ(show(list), "only");
    list.fConstruct("");
    EXPECT_EQ(list.fEntries(), 0u);
    list.fTranslate(out);
    EXPECT_EQ(out, "");

    // The text may be one of the list's own elements.
    list = strings({"x\ny", "z"});
    list.fFirst();
    list.fConstruct(list.aKey());
    EXPECT_EQ(show(list), "x,y");
}

TEST(vTypedList, PositioningSetsTheCurrentElement) {
    const vSlistvString list = strings({"a", "b", "c", "b"});
    EXPECT_TRUE(list.fAt(1));
    EXPECT_EQ(list.aKey(), "b");
    EXPECT_TRUE(list.fLast());
    EXPECT_EQ(list.aKey(), "b");
    EXPECT_TRUE(list.fFirst());
    EXPECT_EQ(list.aKey(), "a");
    EXPECT_TRUE(list.fLookup(vString("c")));
    EXPECT_EQ(list.aKey(), "c");

    // A failed positioning leaves nothing current: aKey() is then an empty default.
    EXPECT_FALSE(list.fAt(4));
    EXPECT_EQ(list.aKey(), "");
    list.fFirst();
    EXPECT_FALSE(list.fAt(-1));
    EXPECT_EQ(list.aKey(), "");
    EXPECT_FALSE(list.fLookup(vString("d")));

    vString stranger("b");
    EXPECT_FALSE(list.fLookupReference(&stranger));
    list.fAt(3);
    const vString* last = &list.aKey();
    list.fFirst();
    EXPECT_TRUE(list.fLookupReference(last));
    EXPECT_EQ(&list.aKey(), last);

    vSlistvString empty;
    EXPECT_FALSE(empty.fFirst());
    EXPECT_FALSE(empty.fLast());
    empty.aKey() = "scribble";  // the default belongs to the list, not to any element
    EXPECT_EQ(empty.fEntries(), 0u);
}

TEST(vTypedList, TheCurrentElementIsDroppedWhenItLeavesTheList) {
    vSlistvString list = strings({"a", "b", "c"});

    // Deleting another element keeps the current one.
    list.fAt(1);
    EXPECT_TRUE(list.fDeleteFirst());
    EXPECT_EQ(list.aKey(), "b");
    EXPECT_TRUE(list.fDelete(vString("b")));
    EXPECT_EQ(list.aKey(), "");

    list = strings({"a", "b", "c"});
    list.fLast();
    EXPECT_TRUE(list.fDeleteAt(2));
    EXPECT_EQ(list.aKey(), "");

    list.fFirst();
    vString* out = nullptr;
    EXPECT_TRUE(list.fRemoveFirst(out));
    EXPECT_EQ(list.aKey(), "");
    EXPECT_EQ(*out, "a");  // handed back, alive
    delete out;

    list = strings({"a", "b", "c"});
    list.fAt(2);
    list.fDeleteLast();
    EXPECT_EQ(list.aKey(), "");
    list.fFirst();
    vString* first = &list.aKey();
    EXPECT_TRUE(list.fRemoveReference(first));
    EXPECT_EQ(list.aKey(), "");
    delete first;  // fRemoveReference handed ownership back

    // fAndEquals drops the current element only when the intersection destroys it.
    list = strings({"a", "b", "c"});
    list.fAt(1);
    list.fAndEquals(strings({"b", "c"}));
    EXPECT_EQ(list.aKey(), "b");
    list.fAndEquals(strings({"c"}));
    EXPECT_EQ(list.aKey(), "");
    EXPECT_EQ(show(list), "c");

    list.fFirst();
    list.fClearAndDestroy();
    EXPECT_EQ(list.aKey(), "");
    list = strings({"a"});
    list.fFirst();
    list = strings({"b"});
    EXPECT_EQ(list.aKey(), "");
}

TEST(vTypedList, OwnsItsElements) {
    CountedString::live = 0;
    {
        vSlistvString list;
        CountedString original("kept by the caller");
        list.fInsert(original);
        EXPECT_EQ(CountedString::live, 2);
        list.fInsertReference(new CountedString("taken over"));
        EXPECT_FALSE(list.fInsertReference(nullptr));
        EXPECT_TRUE(list.fInsertAt(0, CountedString("first")));
        EXPECT_EQ(CountedString::live, 4);

        vString* out = nullptr;
        ASSERT_TRUE(list.fRemove(vString("taken over"), out));
        EXPECT_EQ(CountedString::live, 4);
        delete out;
        EXPECT_FALSE(list.fRemove(vString("absent"), out));
        EXPECT_EQ(out, nullptr);
        EXPECT_FALSE(list.fRemoveAt(5, out));

        vSlistvString copy(list);  // deep
        EXPECT_EQ(CountedString::live, 5);
        EXPECT_TRUE(copy.fIsEqual(list));
        std::vector<vString*> unlinked;
        vSlistvStringIter it(copy);
        while (it.fAdvance())
            unlinked.push_back(it.apKey());
        copy.fClear();  // unlinks only: the elements are alive and ours now
        EXPECT_EQ(copy.fEntries(), 0u);
        EXPECT_EQ(CountedString::live, 5);
        for (vString* p : unlinked)
            delete p;
        EXPECT_EQ(CountedString::live, 3);
    }
    EXPECT_EQ(CountedString::live, 0);
}

TEST(vTypedList, QueriesAndSetOperations) {
    vSlistvString list = strings({"a", "b", "a"});
    vInt i(7);
    EXPECT_TRUE(list.fIndex(vString("b"), i));
    EXPECT_EQ(i.value(), 1);
    EXPECT_FALSE(list.fIndex(vString("z"), i));
    EXPECT_EQ(i.value(), 0);
    EXPECT_TRUE(list.fContains(vString("a")));
    EXPECT_FALSE(list.fContainsReference(nullptr));

    EXPECT_FALSE(list.fIsEqual(strings({"a", "a", "b"})));  // order matters
    EXPECT_TRUE(list.isEqual(&list));
    vSlistvInt ints;
    EXPECT_FALSE(strings({}).isEqual(&ints));  // another member is never equal

    list.fOrEquals(strings({"c", "a", "d"}));
    EXPECT_EQ(show(list), "a,b,a,c,d");
    list.fOrEquals(list);
    list.fAndEquals(list);
    EXPECT_EQ(show(list), "a,b,a,c,d");
    list.fAndEquals(strings({"d", "a"}));
    EXPECT_EQ(show(list), "a,a,d");

    vSlistvStringIter it(list);
    EXPECT_TRUE(it.fLookup(vString("a")));
    EXPECT_TRUE(it.fAtFirst());
    EXPECT_TRUE(it.fLookup(vString("a")));
    EXPECT_FALSE(it.fLookup(vString("a")));
    EXPECT_EQ(it.apKey(), nullptr);
    EXPECT_EQ(it.aKey(), "");
    it.fReset();
    EXPECT_TRUE(it.fAdvance());
    it.aKey() = "changed";  // the iterator hands out the element itself
    EXPECT_EQ(show(list), "changed,a,d");
}

}  // namespace
