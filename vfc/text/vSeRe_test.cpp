#include "vfc/text/vSeRe.h"

#include <gtest/gtest.h>

#include <string>

#include "vfc/text/vRegExp.h"

namespace {

std::string str(const RWCString& s) {
    return std::string(s.data(), s.length());
}

std::string replaceWalk(const char* text, const char* pattern, const char* with) {
    vString s(text);
    vRegExp re{vString(pattern)};
    vSeRe cursor(s);
    while (cursor.fFind(re)) {
        cursor.fReplace(with);
        cursor.fAdvance();
    }
    return str(s);
}

TEST(vSeRe, ReplaceWalkEndsAndNeverSearchesReplacements) {
    EXPECT_EQ(replaceWalk("abc", "x*", "-"), "-a-b-c-");
    EXPECT_EQ(replaceWalk("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(replaceWalk("a b  c", " +", "_"), "a_b_c");
    EXPECT_EQ(replaceWalk("", "x*", "-"), "-");
    EXPECT_EQ(replaceWalk("aaab", "^a", ""), "b");
    // The walk and fReplaceAll give the same text.
    for (const char* p : {"x*", "a", "^a", "[ab]*", "b$", "c|^a"}) {
        vString s("aabcab");
        s.fReplaceAll(vRegExp(vString(p)), "<>");
        EXPECT_EQ(str(s), replaceWalk("aabcab", p, "<>")) << p;
    }
}

TEST(vSeRe, ReportsEachMatchAndIgnoresReplaceWhenReadOnly) {
    const vString text("one two three");
    vSeRe cursor(text);
    EXPECT_TRUE(cursor.fSubString().isNull());  // before any find
    vRegExp word(vString("[a-z]+"));
    std::string seen;
    while (cursor.fFind(word)) {
        vSubString match = cursor.fSubString();
        seen +=
            std::string(match.data(), match.length()) + "@" + std::to_string(match.start()) + " ";
        cursor.fReplace("X");  // ignored: the text is const
        cursor.fAdvance();
    }
    EXPECT_EQ(seen, "one@0 two@4 three@8 ");
    EXPECT_EQ(str(text), "one two three");
    EXPECT_TRUE(cursor.fSubString().isNull());  // the last find failed

    cursor.fReset();
    EXPECT_TRUE(cursor.fFind(word));
    EXPECT_EQ(cursor.fSubString().start(), 0u);
    vSeRe copy(text);
    copy = cursor;
    copy.fAdvance();
    EXPECT_TRUE(copy.fFind(word));
    EXPECT_EQ(copy.fSubString().start(), 4u);
}

TEST(vSeRe, AdvancingWithoutAMatchStepsOneByte) {
    vString text("abab");
    vSeRe cursor(text);
    vRegExp b(vString("b"));
    cursor.fAdvance();  // from before the start to 0
    cursor.fAdvance();  // to 1
    cursor.fAdvance();  // to 2
    EXPECT_TRUE(cursor.fFind(b));
    EXPECT_EQ(cursor.fSubString().start(), 3u);
    cursor.fReplace("BB");
    EXPECT_EQ(str(text), "abaBB");
    EXPECT_EQ(cursor.fSubString().length(), 2u);  // the replacement now fills the match
    cursor.fAdvance();
    EXPECT_FALSE(cursor.fFind(b));
}

}  // namespace
