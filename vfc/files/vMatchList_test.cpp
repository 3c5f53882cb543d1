#include "vfc/files/vMatchList.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/core/vString.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

vMatchList matchList(std::initializer_list<const char*> patterns, bool ignoreCase = false) {
    vSlistvString list;
    for (const char* s : patterns)
        list.fInsert(vString(s));
    return vMatchList(list, ignoreCase);
}

// "1" for every name that matches, "0" for every one that does not.
std::string hits(const vMatchList& m, std::initializer_list<std::string> names) {
    std::string out;
    for (const std::string& n : names)
        out += m.fCheckForMatch(vString(n.data(), n.size())) ? '1' : '0';
    return out;
}

std::string patternsOf(const vMatchList& m) {
    std::string out;
    vSlistvStringIter it(m.fPatterns());
    while (it.fAdvance())
        out += std::string(it.aKey().data(), it.aKey().length()) + ";";
    return out;
}

TEST(vMatchList, WildcardMatchesTheWholeName) {
    EXPECT_EQ(hits(matchList({"*.htm"}), {"index.htm", "index.html", "index.htm.bak", "indexXhtm"}),
              "1000");
    EXPECT_EQ(hits(matchList({"a*b"}), {"ab", "a-x-b", "a-x-bc", "xab"}), "1100");
    EXPECT_EQ(hits(matchList({"*.gif", "readme"}), {"a.gif", "readme", "readme.gif.txt"}), "110");
    // An empty list matches nothing, not even the empty name; an empty pattern only that.
    EXPECT_EQ(hits(vMatchList(), {"", "x"}), "00");
    EXPECT_EQ(hits(matchList({""}), {"", "x"}), "10");
}

TEST(vMatchList, EveryOperatorCharacterStandsForItself) {
    for (char c : std::string("$+.?[\\]^|")) {
        for (bool ignoreCase : {false, true}) {
            const std::string p = std::string("a") + c + "b";
            SCOPED_TRACE(p + (ignoreCase ? " ignoring case" : ""));
            // "a", "b": a "|" must not split the pattern into alternatives.
            EXPECT_EQ(hits(matchList({p.c_str()}, ignoreCase),
                           {p, "aXb", "axb", "ab", std::string("a") + c + c + "b", "a", "b",
                            std::string("A") + c + "B"}),
                      ignoreCase ? "10000001" : "10000000");
        }
    }
    EXPECT_EQ(hits(matchList({"a?c"}), {"a?c", "abc"}), "10");  // "?" is no wildcard
    // A lone special at either end, where an anchor or an escape could go wrong.
    EXPECT_EQ(hits(matchList({"\\", "^*", "*$"}), {"\\", "^x", "x$", "x", "\\\\"}), "11100");
}

TEST(vMatchList, IgnoreCaseCoversTheLettersAndTheCodesBetween) {
    const std::initializer_list<std::string> names = {"page.htm", "PAGE.Htm", "page.HTM",
                                                      "page.html"};
    EXPECT_EQ(hits(matchList({"*.HTM"}, true), names), "1110");
    EXPECT_EQ(hits(matchList({"*.HTM"}, false), names), "0010");
    EXPECT_TRUE(matchList({"*.HTM"}, true).fIgnoreCase());
    // "_" and "`" lie between "Z" and "a": each stands in a bracket of its own and still
    // matches only itself.
    EXPECT_EQ(hits(matchList({"a_b", "c`d"}, true), {"A_B", "C`d", "a-b", "a__b", "c@d"}), "11000");
    // Outside "A".."z" nothing folds (not by flipping bit 5 either).
    EXPECT_EQ(hits(matchList({"@1{"}, true), {"@1{", "`1["}), "10");
}

TEST(vMatchList, KeepsEachPatternOnceInInsertionOrder) {
    vMatchList m;
    EXPECT_TRUE(m.fInsert("*.c"));
    EXPECT_TRUE(m.fInsert("*.h"));
    EXPECT_FALSE(m.fInsert("*.c"));
    EXPECT_EQ(patternsOf(m), "*.c;*.h;");

    // The constructor drops repeats, keeping the first; delete removes a pattern from the list
    // and from matching alike, and it can come back at the end.
    vMatchList fromList = matchList({"b", "a", "b", "c", "a"});
    EXPECT_EQ(patternsOf(fromList), "b;a;c;");
    EXPECT_TRUE(fromList.fDelete("b"));
    EXPECT_FALSE(fromList.fDelete("b"));
    EXPECT_EQ(hits(fromList, {"a", "b", "c"}), "101");
    EXPECT_TRUE(fromList.fInsert("b"));
    EXPECT_EQ(patternsOf(fromList), "a;c;b;");
    EXPECT_EQ(hits(fromList, {"a", "b", "c"}), "111");

    // Copies are independent; the flag takes part in equality.
    vMatchList copy(fromList);
    copy.fDelete("a");
    EXPECT_EQ(hits(fromList, {"a"}) + hits(copy, {"a"}), "10");
    vMatchList assigned;
    assigned = copy;
    EXPECT_TRUE(assigned.isEqual(&copy));
    EXPECT_FALSE(assigned.isEqual(&fromList));
    vMatchList a1 = matchList({"a"}), a2 = matchList({"a"}, true);
    EXPECT_FALSE(a1.isEqual(&a2));
}

TEST(vMatchList, PersistsPatternsAndFlagAndCompilesThemAgain) {
    std::stringbuf buf;
    RWpostream out(&buf);
    matchList({"*.HTM", "a+b", "*.HTM"}, true).recursiveSaveOn(out);
    EXPECT_EQ(buf.str(), ":\n272\n\\[\n2\n5\n\"*.HTM\"\n3\n\"a+b\"\n1\n\\]\n");
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(in.good());
    const vMatchList& m = *static_cast<const vMatchList*>(back.get());
    EXPECT_EQ(patternsOf(m), "*.HTM;a+b;");
    EXPECT_EQ(hits(m, {"page.htm", "A+B", "aab"}), "110");

    // Restoring replaces what the list held; repeated patterns in the data are dropped.
    std::stringbuf dup(":\n272\n\\[\n3\n1\n\"x\"\n1\n\"y\"\n1\n\"x\"\n0\n\\]\n");
    RWpistream dupIn(&dup);
    vMatchList target = matchList({"old"}, true);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(dupIn, &target), &target);
    EXPECT_EQ(patternsOf(target), "x;y;");
    EXPECT_FALSE(target.fIgnoreCase());
    EXPECT_EQ(hits(target, {"old", "x", "X"}), "010");

    // Damage after the first pattern: what was read completely is there and matches under the
    // flag the list had.
    std::stringbuf cut(":\n272\n\\[\n3\n1\n\"X\"\n2\n\"y");
    RWpistream cutIn(&cut);
    vMatchList damaged = matchList({"old"}, true);
    RWCollectable::recursiveRestoreFrom(cutIn, &damaged);
    EXPECT_TRUE(cutIn.fail());
    EXPECT_EQ(patternsOf(damaged), "X;");
    EXPECT_EQ(hits(damaged, {"x", "old"}), "10");
}

}  // namespace
