#include "vfc/core/vPair.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

// Counts live instances, so tests can see what a pair destroyed.
struct Counted : vInt {
    static int live;
    explicit Counted(int v) : vInt(v) { ++live; }
    Counted(const Counted& o) : vInt(o) { ++live; }
    ~Counted() override { --live; }
    RWCollectable* copy() const override { return new Counted(*this); }
};
int Counted::live = 0;

vPair pair(const char* s, int i) {
    return vPair(new vString(s), new vInt(i));
}

int secondValue(const vPair& p) {
    return static_cast<const vInt*>(p.second())->value();
}

TEST(vPair, ComparesFirstThenSecondAndHashesTheFirst) {
    vPair a1 = pair("a", 1), a2 = pair("a", 2), b1 = pair("b", 1), otherA1 = pair("a", 1);
    EXPECT_EQ(a1.hash(), a2.hash());
    EXPECT_FALSE(a1.isEqual(&a2));
    EXPECT_TRUE(a1.isEqual(&otherA1));
    EXPECT_LT(a1.compareTo(&a2), 0);
    EXPECT_GT(a2.compareTo(&a1), 0);
    EXPECT_LT(a2.compareTo(&b1), 0);  // the first members decide
    EXPECT_EQ(a1.compareTo(&otherA1), 0);
    // Against another class: -1 from the pair's side, whatever the other side says.
    vInt one(1);
    EXPECT_EQ(a1.compareTo(&one), -1);
    EXPECT_FALSE(a1.isEqual(&one));
    EXPECT_FALSE(a1.isEqual(nullptr));
    // A pair without members answers null and still compares and hashes.
    vPair empty, otherEmpty;
    EXPECT_EQ(empty.first(), nullptr);
    EXPECT_EQ(empty.second(), nullptr);
    EXPECT_TRUE(empty.isEqual(&otherEmpty));
    EXPECT_LT(empty.compareTo(&a1), 0);
    EXPECT_EQ(empty.hash(), 0u);
}

TEST(vPair, OwnsItsMembers) {
    Counted::live = 0;
    {
        vPair p(new Counted(1), new Counted(2));
        EXPECT_EQ(Counted::live, 2);
        vPair copy(p);
        EXPECT_EQ(Counted::live, 4);
        EXPECT_NE(copy.first(), p.first());
        EXPECT_TRUE(copy.isEqual(&p));
        vPair& same = copy;
        copy = same;
        EXPECT_EQ(Counted::live, 4);
        EXPECT_EQ(secondValue(copy), 2);
        vPair other(new Counted(5), new Counted(6));
        copy = other;  // destroys the old members
        EXPECT_EQ(Counted::live, 6);
        EXPECT_EQ(secondValue(copy), 6);
        std::unique_ptr<RWCollectable> c(p.copy());
        EXPECT_EQ(Counted::live, 8);
    }
    EXPECT_EQ(Counted::live, 0);
}

TEST(vPair, PersistsItsMemberListAsOneObject) {
    vPair p = pair("key", -3);
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        p.recursiveSaveOn(out);
    }
    // The pair's header, then the list's header (515) and count before the members.
    EXPECT_EQ(buf.str().rfind(":\n513\n\\[\n:\n515\n\\[\n2\n:\n263\n", 0), 0u) << buf.str();
    RWpistream in(&buf);
    vPair back = pair("old", 0);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in, &back), &back);
    EXPECT_TRUE(in.good());
    EXPECT_TRUE(back.isEqual(&p));

    auto path = std::filesystem::temp_directory_path() /
                ("vfc_vpair_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    {
        RWFile f(path.string().c_str(), "wb");
        p.recursiveSaveOn(f);
        vPair().recursiveSaveOn(f);
    }
    {
        RWFile f(path.string().c_str(), "rb");
        std::unique_ptr<RWCollectable> a(RWCollectable::recursiveRestoreFrom(f));
        std::unique_ptr<RWCollectable> empty(RWCollectable::recursiveRestoreFrom(f));
        ASSERT_TRUE(a && empty);
        EXPECT_TRUE(a->isEqual(&p));
        EXPECT_EQ(static_cast<vPair*>(empty.get())->first(), nullptr);
        EXPECT_TRUE(f.good());
    }
    std::filesystem::remove(path);
}

// What a damaged stream may hand a pair: the accessors stay safe.
TEST(vPair, SurvivesMemberListsOfTheWrongShape) {
    struct Case {
        const char* text;
        int members;  // how many first()/second() then report
        bool good;
    };
    const Case cases[] = {
        {":\n513\n\\[\n:\n515\n\\[\n1\n:\n259\n\\[\n4\n\\]\n\\]\n\\]\n", 1, true},
        {":\n513\n\\[\n:\n515\n\\[\n3\n:\n259\n\\[\n4\n\\]\n:\n259\n\\[\n5\n\\]\n"
         ":\n259\n\\[\n6\n\\]\n\\]\n\\]\n",
         2, true},
        {":\n513\n\\[\nN\n\\]\n", 0, true},                                   // nil list
        {":\n513\n\\[\n:\n259\n\\[\n4\n\\]\n\\]\n", 0, false},                // not a list
        {":\n513\n\\[\n:\n515\n\\[\n2\n:\n259\n\\[\n4\n\\]\n:\n", 1, false},  // cut short
    };
    for (const Case& c : cases) {
        std::stringbuf buf(c.text);
        RWpistream in(&buf);
        vPair p = pair("old", 0);
        RWCollectable::recursiveRestoreFrom(in, &p);
        EXPECT_EQ(in.good(), c.good) << c.text;
        EXPECT_EQ(p.first() != nullptr, c.members >= 1) << c.text;
        EXPECT_EQ(p.second() != nullptr, c.members >= 2) << c.text;
        vInt four(4);
        if (p.first()) {
            EXPECT_TRUE(p.first()->isEqual(&four)) << c.text;
        }
        vPair copy(p);  // copying and comparing a damaged pair is safe too
        EXPECT_EQ(copy.compareTo(&p), 0) << c.text;
    }
}

}  // namespace
