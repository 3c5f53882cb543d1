#include "vfc/rw/RWCString.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <set>
#include <string>

#include "vfc/rw/RWCRegexp.h"
#include "vfc/rw/RWCSubString.h"
#include "vfc/rw/RWWString.h"

namespace {

std::string str(const RWCString& s) {
    return std::string(s.data(), s.length());
}

TEST(RWCString, CopiesShareBytesUntilOneSideChanges) {
    RWCString a("shared text");
    RWCString b(a);
    EXPECT_EQ(a.data(), b.data());
    b.append("!");
    EXPECT_NE(a.data(), b.data());
    EXPECT_EQ(str(a), "shared text");
    EXPECT_EQ(str(b), "shared text!");

    RWCString c;
    c = a;
    c(0) = 'S';
    EXPECT_EQ(str(a), "shared text");
    EXPECT_EQ(str(c), "Shared text");
}

TEST(RWCString, WritableByteReferenceNeverReachesALaterCopy) {
    RWCString s("abc");
    char& b = s(1);
    RWCString copy(s);
    b = 'X';
    EXPECT_EQ(str(s), "aXc");
    EXPECT_EQ(str(copy), "abc");
}

TEST(RWCString, EditingKeepsZerosAndClampsPositions) {
    RWCString s("a\0b", 3);
    EXPECT_EQ(s.length(), 3u);
    s.append("c\0d", 3).prepend("<").insert(2, "|");
    EXPECT_EQ(str(s), std::string("<a|\0bc\0d", 8));

    RWCString t("hello world");
    t.replace(0, 5, "goodbye");
    EXPECT_EQ(str(t), "goodbye world");
    t.replace(8, 100, "all");  // length clamped to the end
    EXPECT_EQ(str(t), "goodbye all");
    t.insert(100, "!");  // position clamped to the end
    EXPECT_EQ(str(t), "goodbye all!");
    t.remove(7);
    EXPECT_EQ(str(t), "goodbye");
    t.remove(0, 4);
    EXPECT_EQ(str(t), "bye");
    t.remove(10, 2);
    EXPECT_EQ(str(t), "bye");

    // Text taken from the string itself.
    RWCString u("abcdef");
    u.insert(0, u.data() + 3, 3);
    EXPECT_EQ(str(u), "defabcdef");
    u.replace(3, 6, u.data(), 3);
    EXPECT_EQ(str(u), "defdef");

    // Many appends stay correct across reallocations.
    RWCString grow;
    std::string expect;
    for (int i = 0; i < 1000; ++i) {
        grow.append(char('a' + i % 26));
        expect += char('a' + i % 26);
    }
    EXPECT_EQ(str(grow), expect);
    EXPECT_EQ(grow.data()[grow.length()], '\0');
}

TEST(RWCString, BuildsInPlaceWithoutTouchingACopy) {
    // Shrinking a shared string: the new buffer is smaller than the old text.
    RWCString long_text(std::string(200, 'x'));
    RWCString shared(long_text);
    shared.resizeAndOverwrite(3, [](char* p, size_t n) {
        EXPECT_EQ(std::string(p, n), "xxx");  // starts with the current text, as far as it fits
        p[0] = 'a';
        return size_t{1};
    });
    EXPECT_EQ(str(shared), "a");
    EXPECT_EQ(str(long_text), std::string(200, 'x'));

    RWCString grow("ab");
    grow.resizeAndOverwrite(5, [](char* p, size_t n) {
        p[2] = 'c';
        p[3] = 'd';
        return n - 1;
    });
    EXPECT_EQ(str(grow), "abcd");
    grow.reserve(100);
    const char* before = grow.data();
    for (int i = 0; i < 90; ++i)
        grow.append('e');
    EXPECT_EQ(grow.data(), before);  // reserved room: no reallocation
}

TEST(RWCString, ComparesBytesAsUnsignedAndFoldsOnlyAscii) {
    struct Row {
        const char* a;
        const char* b;
        int exact;
        int ignore;
    } rows[] = {
        {"abc", "abc", 0, 0},  {"abc", "abd", -1, -1},    {"abc", "ab", 1, 1},
        {"ABC", "abc", -1, 0}, {"a\xe9", "az", 1, 1},     {"\xc9", "\xe9", -1, -1},
        {"", "", 0, 0},        {"Zebra", "apple", -1, 1}, {"[", "a", -1, -1},
    };
    for (const Row& r : rows) {
        RWCString a(r.a);
        EXPECT_EQ(a.compareTo(r.b), r.exact) << r.a << " vs " << r.b;
        EXPECT_EQ(a.compareTo(RWCString(r.b), RWCString::ignoreCase), r.ignore)
            << r.a << " vs " << r.b;
    }
    // Embedded zeros take part in the comparison.
    EXPECT_LT(RWCString("a\0a", 3).compareTo(RWCString("a\0b", 3)), 0);
    EXPECT_TRUE(RWCString("x") < RWCString("y"));
    EXPECT_TRUE(RWCString("x") == "x");
    EXPECT_TRUE("y" != RWCString("x"));
}

TEST(RWCString, CaseIgnoringHashAgreesWithFoldedText) {
    std::mt19937 rng(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text(rng() % 40, '\0');
        for (char& c : text)
            c = static_cast<char>(rng() % 256);
        std::string folded = text;
        for (char& c : folded)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        RWCString s(text.data(), text.size());
        RWCString f(folded.data(), folded.size());
        ASSERT_EQ(s.hash(RWCString::ignoreCase), f.hash(RWCString::exact)) << "round " << round;
    }
    EXPECT_NE(RWCString("A").hash(), RWCString("a").hash());
    EXPECT_EQ(RWCString("Path/To/File.TXT").hash(RWCString::ignoreCase),
              RWCString("path/to/file.txt").hash(RWCString::ignoreCase));
    EXPECT_NE(RWCString("ab").hash(), RWCString("ba").hash());

    // Every byte counts, wherever it falls among the words hashed: texts of every length up to
    // 70 that differ in one byte all hash apart.
    std::set<unsigned> seen;
    size_t made = 0;
    for (size_t length = 0; length <= 70; ++length) {
        std::string base(length, 'a');
        seen.insert(RWCString(base.data(), length).hash());
        ++made;
        for (size_t i = 0; i < length; ++i) {
            std::string changed = base;
            changed[i] = 'b';
            seen.insert(RWCString(changed.data(), length).hash());
            ++made;
        }
    }
    EXPECT_EQ(seen.size(), made);
}

TEST(RWCString, FindsTextWithOrWithoutCase) {
    RWCString s("Hello, hello world");
    EXPECT_EQ(s.index("hello"), 7u);
    EXPECT_EQ(s.index("hello", 0, RWCString::ignoreCase), 0u);
    EXPECT_EQ(s.index("HELLO", 1, RWCString::ignoreCase), 7u);
    EXPECT_EQ(s.index("world", 14), RW_NPOS);
    EXPECT_EQ(s.index("", 18), 18u);
    EXPECT_EQ(s.index("", 19), RW_NPOS);
    EXPECT_TRUE(s.contains("WORLD", RWCString::ignoreCase));
    EXPECT_FALSE(s.contains("WORLD"));
    EXPECT_EQ(s.first('o'), 4u);
    EXPECT_EQ(s.last('o'), 14u);
    EXPECT_EQ(s.first('z'), RW_NPOS);
}

// Each overload called with literal arguments: a literal 0 after a pattern is a start position,
// never a null extent pointer.
TEST(RWCString, OverloadsTakeLiteralArguments) {
    RWCString s("foo/boo");
    const RWCString& cs = s;
    size_t n = 99;
    EXPECT_EQ(s.index(RWCRegexp("o"), 0), 1u);
    EXPECT_EQ(s.index(RWCRegexp("o"), 3), 5u);
    EXPECT_EQ(s.index(RWCRegexp("o+"), &n, 0), 1u);
    EXPECT_EQ(n, 2u);
    EXPECT_EQ(s.index(RWCRegexp("b"), nullptr, 0), 4u);
    EXPECT_EQ(s.index("b", 0), 4u);
    EXPECT_EQ(s.index(RWCString("b"), 0), 4u);
    EXPECT_EQ(std::string(RWCString(s(RWCRegexp("o+"), 0)).data()), "oo");
    EXPECT_EQ(std::string(RWCString(cs(RWCRegexp("o+"), 3)).data()), "oo");
    EXPECT_EQ(std::string(RWCString(s(0, 3)).data()), "foo");
    EXPECT_EQ(cs(0), 'f');
    EXPECT_EQ(std::string(RWCString('x', 3).data()), "xxx");
    EXPECT_EQ(std::string(RWCString("xyz", 2).data()), "xy");
    EXPECT_EQ(RWCRegexp("o").index(s, nullptr, 0), 1u);
    EXPECT_EQ(RWCRegexp("o").index("foo", 3, nullptr, 0), 1u);
    EXPECT_EQ(s.compareTo("foo/boo"), 0);
    EXPECT_EQ(s.compareTo("FOO/BOO", RWCString::ignoreCase), 0);
    s.append('!');
    s.append('-', 2);
    s.append("ab", 1);
    s.prepend("<", 1);
    s.insert(0, "[", 1);
    s.remove(0, 2);
    s.remove(7);
    EXPECT_EQ(std::string(s.data()), "foo/boo");
}

TEST(RWCString, OutOfRangeAccessIsHarmless) {
    RWCString s("ab");
    const RWCString& cs = s;
    EXPECT_EQ(cs(2), '\0');
    EXPECT_EQ(cs(RW_NPOS), '\0');
    s(5) = 'x';  // lands in a scratch byte
    EXPECT_EQ(str(s), "ab");
    EXPECT_TRUE(s(1, 5).isNull());
    EXPECT_TRUE(s(3, 0).isNull());
    EXPECT_FALSE(s(2, 0).isNull());  // the empty range at the end exists
}

TEST(RWCSubString, AssignmentEditsTheOwningString) {
    RWCString s("one two three");
    RWCSubString two = s(4, 3);
    two = "2";
    EXPECT_EQ(str(s), "one 2 three");
    EXPECT_EQ(two.length(), 1u);
    s(0, 3) = "eins";
    EXPECT_EQ(str(s), "eins 2 three");
    s(6, 6) = "";
    EXPECT_EQ(str(s), "eins 2");
    s(0, 4) = s(5, 1);  // source inside the same string
    EXPECT_EQ(str(s), "2 2");
    RWCSubString none = s(10, 1);
    none = "ignored";
    EXPECT_EQ(str(s), "2 2");
    EXPECT_TRUE(s(2, 1) == "2");
    std::ostringstream out;
    out << s(0, 2);
    EXPECT_EQ(out.str(), "2 ");
}

TEST(RWWString, ConvertsToBytesInTheCurrentLocale) {
    EXPECT_EQ(str(RWWString(L"plain ascii").toMultiByte()), "plain ascii");
    // The C locale cannot encode a character beyond 8 bits (the Windows runtime's takes Latin-1,
    // POSIX's not even that).
    EXPECT_EQ(str(RWWString(L"caf\u20ac").toMultiByte()), "caf?");
}

}  // namespace
