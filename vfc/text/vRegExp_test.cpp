#include "vfc/text/vRegExp.h"

#include <gtest/gtest.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "vfc/core/vString.h"
#include "vfc/rw/RWCRegexp.h"
#include "vfc/rw/internal/RegexEngine.h"

namespace {

struct Hit {
    size_t pos;
    size_t len;
    bool operator==(const Hit& o) const { return pos == o.pos && len == o.len; }
};

std::ostream& operator<<(std::ostream& out, const Hit& h) {
    if (h.pos == RW_NPOS) return out << "(none)";
    return out << "(" << h.pos << "," << h.len << ")";
}

Hit find(const vRegExp& re, const std::string& text, size_t start = 0) {
    size_t len = 99;
    size_t pos = re.index(vString(text.data(), text.size()), &len, start);
    return {pos, pos == RW_NPOS ? 0 : len};
}

constexpr Hit kNone{RW_NPOS, 0};

struct Row {
    const char* pattern;
    const char* text;
    Hit want;
};

TEST(vRegExp, AlternationSplitsOnBarsOutsideBracketsAndEscapes) {
    const Row rows[] = {
        {"a|b", "xbya", {1, 1}},     // leftmost over all alternatives
        {"ab|abc", "abcd", {0, 3}},  // same position: the longer wins
        {"abc|ab", "abcd", {0, 3}},  //   whatever the order
        {"a\\|b", "xa|b", {1, 3}},   // an escaped bar is literal
        {"a\\|b", "ab", kNone},      //   and does not split
        {"[a|b]", "x|", {1, 1}},     // a bar inside brackets is literal
        {"[a|b]", "ab", {0, 1}},     //   and the class is one alternative
        {"|a||b|", "xb", {1, 1}},    // empty alternatives are dropped...
        {"|a||b|", "xyz", kNone},    //   so nothing matches the empty text
        {"[x|y", "x|y", kNone},      // one alternative, invalid: never matches
        {"b|[x", "[xb", {2, 1}},     // the valid alternative still matches
        {"", "abc", kNone},          // no alternatives at all
        {"|||", "", kNone},
        {"x\\\\|y", "y", {0, 1}},  // an escaped backslash does not escape the bar
        {"x\\\\|y", "x\\", {0, 2}},
        {"^a|b$", "ba", kNone},  // each alternative keeps its own anchors
        {"^a|b$", "ab", {0, 1}},
        {"^a|b$", "cab", {2, 1}},
    };
    for (const Row& r : rows)
        EXPECT_EQ(find(vRegExp(vString(r.pattern)), r.text), r.want)
            << r.pattern << " in \"" << r.text << '"';
}

TEST(vRegExp, WildcardFormAnchorsOnlyTheOuterEnds) {
    const Row rows[] = {
        {"*.txt", "notes.txt", {0, 9}},
        {"*.txt", "notes.txtx", kNone},
        {"*.txt", "notesXtxt", kNone},  // the dot is literal
        {"a?c", "abc", {0, 3}},
        {"a?c", "abbc", kNone},
        {"a*|b*", "ax", {0, 2}},   // ^a.*
        {"a*|b*", "xab", {2, 1}},  // b.*$: not anchored at the start
        {"a*|b*", "bx", {0, 2}},
        {"a*|b*", "xa", kNone},                 // ^a.* is anchored at the start
        {"a+b.c$^[x]", "a+b.c$^[x]", {0, 10}},  // expression bytes are literal
        {"a+b", "aab", kNone},
        {"a\\b", "a\\b", {0, 3}},      // one backslash is one literal backslash
        {"a\\\\b", "a\\\\b", {0, 4}},  // two are two
        {"(x){1}", "(x){1}", {0, 6}},
    };
    for (const Row& r : rows)
        EXPECT_EQ(find(vRegExp(vString(r.pattern), false), r.text), r.want)
            << r.pattern << " in \"" << r.text << '"';
}

TEST(vRegExp, SemicolonListAnchorsEveryPiece) {
    const Row rows[] = {
        {"*.htm;*.html", "x.html", {0, 6}},
        {"*.htm;*.html", "x.htm", {0, 5}},
        {"*.htm;*.html", "x.htmlx", kNone},
        {"a\\|b", "a;b", {0, 3}},  // "\|" is a literal semicolon
        {"a\\|b", "a", kNone},
        {"*.htm; *.html", "x.html", kNone},  // no trimming: the piece starts with a blank
        {"*.htm; *.html", " x.html", {0, 7}},
        {";;a;", "a", {0, 1}},
        {"a;b", "ab", kNone},
        {"a|b;c", "a|b", {0, 3}},  // a bar does not split a piece
    };
    for (const Row& r : rows)
        EXPECT_EQ(find(vRegExp(vString(r.pattern), true), r.text), r.want)
            << r.pattern << " in \"" << r.text << '"';
}

TEST(vRegExp, SearchesFromTheStartPosition) {
    vRegExp re(vString("o+"));
    EXPECT_EQ(find(re, "foo boo", 0), (Hit{1, 2}));
    EXPECT_EQ(find(re, "foo boo", 2), (Hit{2, 1}));
    EXPECT_EQ(find(re, "foo boo", 3), (Hit{5, 2}));
    EXPECT_EQ(find(re, "foo boo", 7), kNone);
    EXPECT_EQ(find(re, "foo boo", 8), kNone);
    EXPECT_EQ(find(vRegExp(vString("x*")), "ab", 2), (Hit{2, 0}));
    EXPECT_EQ(find(vRegExp(vString("x*")), "ab", 3), kNone);
    EXPECT_EQ(find(vRegExp(), "ab"), kNone);
}

TEST(vRegExp, CopiesMatchLikeTheOriginal) {
    vRegExp original(vString("cat|dog"));
    vRegExp copy(original);
    vRegExp assigned;
    assigned = original;
    vRegExp& self = assigned;
    assigned = self;
    for (const vRegExp* re : {&original, &copy, &assigned})
        EXPECT_EQ(find(*re, "hotdog cat"), (Hit{3, 3}));
    RWCollectable* dup = original.copy();
    EXPECT_EQ(find(*static_cast<vRegExp*>(dup), "a cat"), (Hit{2, 3}));
    EXPECT_EQ(dup->isA(), 778);
    // A vRegExp compares by identity.
    EXPECT_FALSE(dup->isEqual(&original));
    delete dup;
}

// The documented search over alternatives: each alternative searched on its own, the smallest
// position wins, then the strictly longer extent, then the earlier alternative.
Hit searchEachAlternative(const std::vector<std::string>& alternatives, const std::string& text,
                          size_t start) {
    Hit best{text.size() + 1, RW_NPOS};
    bool found = false;
    for (const std::string& a : alternatives) {
        RWCRegexp re(a.data(), a.size());
        if (re.status() != RWCRegexp::OK) continue;
        size_t len = 0;
        size_t pos = re.index(text.data(), text.size(), &len, start);
        if (pos == RW_NPOS) continue;
        if (!found || pos < best.pos || (pos == best.pos && len > best.len)) {
            best = {pos, len};
            found = true;
        }
    }
    return found ? best : kNone;
}

TEST(vRegExp, OneAutomatonAgreesWithSearchingEachAlternative) {
    std::mt19937 rng(2024);
    const std::vector<std::string> atoms = {"a", "b", "c", ".", "[ab]", "[^a]", "[a-c]", "\\."};
    const char* quantifiers[] = {"", "", "", "*", "+", "?"};
    auto alternative = [&] {
        std::string a = rng() % 4 == 0 ? "^" : "";
        size_t n = rng() % 4;
        for (size_t i = 0; i < n; ++i) {
            a += atoms[rng() % atoms.size()];
            a += quantifiers[rng() % 6];
        }
        if (rng() % 4 == 0) a += "$";
        if (rng() % 25 == 0) a = "*" + a;  // now and then an invalid one
        return a;
    };
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::string> alts;
        std::string pattern;
        size_t count = 1 + rng() % 4;
        for (size_t i = 0; i < count; ++i) {
            std::string a = alternative();
            if (a.empty()) continue;  // the split drops empty alternatives
            alts.push_back(a);
            pattern += (pattern.empty() ? "" : "|") + a;
        }
        std::string text(rng() % 12, 'a');
        for (char& c : text)
            c = "abc."[rng() % 4];
        vRegExp re(vString(pattern.data(), pattern.size()));
        for (size_t start = 0; start <= text.size() + 1; ++start)
            ASSERT_EQ(find(re, text, start), searchEachAlternative(alts, text, start))
                << "pattern " << pattern << " text \"" << text << "\" start " << start;
    }
}

// Unions whose alternatives each have one anchor, some ^ and some $, are searched as two parts
// (from the start forward, from the end backward); the answer must be the union's.
TEST(vRegExp, StartAndEndAnchoredUnionsAgreeWithEachAlternative) {
    std::mt19937 rng(20261124);
    const std::vector<std::string> atoms = {"a", "b", ".", "[ab]", "[^a]", "[ ]"};
    const char* quantifiers[] = {"", "*", "+", "?"};
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::string> alts;
        std::string pattern;
        for (size_t i = 0, count = 2 + rng() % 3; i < count; ++i) {
            std::string a;
            for (size_t k = 0, n = rng() % 3; k < n; ++k)
                a += atoms[rng() % atoms.size()] + quantifiers[rng() % 4];
            a = i == 0 ? "^" + a : i == 1 ? a + "$" : rng() % 2 ? "^" + a : a + "$";
            alts.push_back(a);
            pattern += (pattern.empty() ? "" : "|") + a;
        }
        std::string text(rng() % 40, 'a');
        for (char& c : text)
            c = "ab. "[rng() % 4];
        vRegExp re(vString(pattern.data(), pattern.size()));
        for (size_t start = 0; start <= text.size() + 1; ++start)
            ASSERT_EQ(find(re, text, start), searchEachAlternative(alts, text, start))
                << "pattern " << pattern << " text \"" << text << "\" start " << start;
    }
}

// Items whose follower ranges overlap (n optional items, then n required ones): building a
// state must look at each automaton position at most once, so that a text byte costs time in
// proportion to the pattern, not to its square (the sum of the overlapping ranges).
TEST(vRegExp, OverlappingOptionalItemsCostTimeLinearInThePattern) {
    const int n = 1000;
    std::string pattern;
    for (char last = '0'; last < '4'; ++last) {
        if (!pattern.empty()) pattern += '|';
        for (int i = 0; i < n; ++i)
            pattern += "a?";
        pattern += std::string(n, 'a') + last;
    }
    vRegExp re{vString(pattern.c_str())};
    EXPECT_EQ(find(re, std::string(n, 'a') + "3"), (Hit{0, static_cast<size_t>(n) + 1}));
    EXPECT_EQ(find(re, "x" + std::string(2 * n, 'a') + "2"),
              (Hit{1, 2 * static_cast<size_t>(n) + 1}));
    EXPECT_EQ(find(re, std::string(n - 1, 'a') + "3"), kNone);

    std::string one;
    for (int i = 0; i < n; ++i)
        one += "a?";
    one += std::string(n, 'a');
    const std::string text(2 * n, 'a');
    size_t found = 0;
    uint64_t looked =
        vfc::rx::positionsLookedAtSearching({one.c_str()}, text.data(), text.size(), &found);
    EXPECT_EQ(found, 0u);
    const uint64_t positions = 2 * n + 2;
    // Both directions, one state built per byte at most in each.
    EXPECT_LE(looked, 2 * positions * (text.size() + 1)) << looked;
}

// Compiling takes memory in proportion to the pattern, at most about 120 bytes a pattern byte
// (one-character alternatives are the worst case).
TEST(vRegExp, CompilingTakesMemoryInProportionToThePattern) {
#if defined(__GLIBC__)
    std::string pattern;
    for (int i = 0; i < 20000; ++i) {
        if (i) pattern += '|';
        pattern += static_cast<char>('!' + i % 90);
    }
    const vString text(pattern.c_str());
    const size_t before = mallinfo2().uordblks;
    auto re = std::make_unique<vRegExp>(text);
    const size_t used = mallinfo2().uordblks - before;
    if (before == 0) GTEST_SKIP() << "the allocator does not report its use";
    EXPECT_LT(used, 160 * pattern.size()) << used / pattern.size() << " bytes a pattern byte";
    EXPECT_EQ(find(*re, "a b"), (Hit{0, 1}));
#else
    GTEST_SKIP() << "needs the C library's allocation statistics";
#endif
}

}  // namespace
