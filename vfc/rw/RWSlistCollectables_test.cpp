#include "vfc/rw/RWSlistCollectables.h"

#include <gtest/gtest.h>

#include <string>

#include "vfc/collections/vSlist.h"
#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWSlistCollectablesIterator.h"

namespace {

// Counts live instances, so tests can see what a list destroyed.
struct Tracked : vString {
    static int live;
    explicit Tracked(const char* s) : vString(s) { ++live; }
    Tracked(const Tracked& o) : vString(o) { ++live; }
    ~Tracked() override { --live; }
    RWCollectable* copy() const override { return new Tracked(*this); }
};
int Tracked::live = 0;

std::string join(const RWSlistCollectables& list) {
    std::string out;
    RWSlistCollectablesIterator it(const_cast<RWSlistCollectables&>(list));
    while (RWCollectable* item = it())
        out += static_cast<vString*>(item)->data();
    return out;
}

TEST(RWSlistCollectables, LinksWithoutOwning) {
    vString a("a"), b("b"), c("c"), d("d");
    RWSlistCollectables list;
    list.append(&b);
    list.prepend(&a);
    list.append(&d);
    EXPECT_EQ(list.insertAt(2, &c), &c);
    EXPECT_EQ(list.insertAt(9, &c), nullptr);
    EXPECT_EQ(join(list), "abcd");
    EXPECT_EQ(list.at(3), &d);
    EXPECT_EQ(list.at(4), nullptr);
    EXPECT_EQ(list.find(&c), &c);
    vString other("c");
    EXPECT_TRUE(list.contains(&other));
    EXPECT_FALSE(list.containsReference(&other));
    EXPECT_EQ(list.remove(&other), &c);  // by value
    EXPECT_EQ(list.removeLast(), &d);
    EXPECT_EQ(list.last(), &b);  // the tail moved back
    list.append(&d);
    EXPECT_EQ(join(list), "abd");
    EXPECT_EQ(list.removeReference(&a), &a);
    EXPECT_EQ(list.removeAt(1), &d);
    EXPECT_EQ(list.removeFirst(), &b);
    EXPECT_EQ(list.removeFirst(), nullptr);
    EXPECT_EQ(list.entries(), 0u);
    EXPECT_EQ(list.first(), nullptr);
}

TEST(RWSlistCollectables, SearchesPastANullElement) {
    // A null element is stored as given (vPair keeps its empty halves so); searches by value
    // step over it instead of asking it for equality.
    vString a("a"), b("b");
    RWSlistCollectables list;
    list.append(&a);
    list.append(nullptr);
    list.append(&b);
    vString key("b");
    EXPECT_EQ(list.entries(), 3u);
    EXPECT_EQ(list.find(&key), &b);
    EXPECT_TRUE(list.contains(&key));
    EXPECT_EQ(list.remove(&key), &b);
    EXPECT_EQ(list.find(&key), nullptr);
    EXPECT_EQ(list.entries(), 2u);
}

TEST(RWSlistCollectablesIterator, RemovingTheCurrentElementContinuesWithTheNext) {
    vString items[] = {"1", "2", "3", "4", "5"};
    RWSlistCollectables list;
    for (vString& s : items)
        list.append(&s);
    RWSlistCollectablesIterator it(list);
    // Drop the odd ones, including the first and the last.
    while (RWCollectable* item = it()) {
        if ((static_cast<vString*>(item)->data()[0] - '0') % 2) {
            EXPECT_EQ(it.remove(), item);
        }
    }
    EXPECT_EQ(join(list), "24");
    EXPECT_EQ(list.last(), &items[3]);
    list.append(&items[4]);  // the tail is still right after removing the old one
    EXPECT_EQ(join(list), "245");
    EXPECT_EQ(it(), nullptr);  // stays past the end
    it.reset();
    EXPECT_EQ(it.findNext(&items[4]), &items[4]);
    EXPECT_TRUE(it.atLast());
    it.reset();
    it();
    EXPECT_TRUE(it.atFirst());
}

TEST(vSlist, OwnsCopiesAndDestroysThem) {
    Tracked::live = 0;
    {
        vSlist list;
        Tracked local("x");
        list.fInsert(local);                      // a copy
        list.fInsertReference(new Tracked("y"));  // taken over
        EXPECT_EQ(Tracked::live, 3);
        vSlist copy(list);
        EXPECT_EQ(Tracked::live, 5);
        vSlist& same = copy;
        copy = same;  // no-op
        EXPECT_EQ(copy.fEntries(), 2u);
        copy = vSlist();
        EXPECT_EQ(Tracked::live, 3);
        RWCollectable* kept = list.removeFirst();
        EXPECT_EQ(Tracked::live, 3);
        delete kept;
    }
    EXPECT_EQ(Tracked::live, 0);
}

TEST(vSlistIterator, WalksInOrderAndReportsEnds) {
    vSlist list;
    for (const char* s : {"a", "b", "c"})
        list.fInsert(vString(s));
    vSlistIterator it(list);
    EXPECT_EQ(it.apKey(), nullptr);
    std::string seen;
    while (it.fAdvance()) {
        seen += static_cast<const vString*>(it.apKey())->data();
        if (seen == "a") {
            EXPECT_TRUE(it.fAtFirst());
        }
        if (seen == "abc") {
            EXPECT_TRUE(it.fAtLast());
        }
    }
    EXPECT_EQ(seen, "abc");
    EXPECT_EQ(it.apKey(), nullptr);
    EXPECT_FALSE(it.fAdvance());
    EXPECT_TRUE(it.fReset());
    EXPECT_TRUE(it.fAdvance());
    EXPECT_EQ(*static_cast<const vString*>(it.apKey()), "a");
}

}  // namespace
