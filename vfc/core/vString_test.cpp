#include "vfc/core/vString.h"

#include <gtest/gtest.h>

#include <clocale>
#include <sstream>
#include <string>
#include <type_traits>

#include "vfc/core/vVBuffer.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWWString.h"
#include "vfc/text/vRegExp.h"

namespace {

std::string str(const RWCString& s) {
    return std::string(s.data(), s.length());
}

// Switches LC_CTYPE for the life of the object.
class CtypeLocale {
  public:
    explicit CtypeLocale(const char* name) : saved_(std::setlocale(LC_CTYPE, nullptr)) {
        ok_ = std::setlocale(LC_CTYPE, name) != nullptr;
    }
    ~CtypeLocale() { std::setlocale(LC_CTYPE, saved_.c_str()); }
    bool ok() const { return ok_; }

  private:
    std::string saved_;
    bool ok_;
};

TEST(vString, ConstructsAndAssignsFromEveryTextSource) {
    EXPECT_EQ(str(vString()), "");
    EXPECT_EQ(str(vString("abc")), "abc");
    EXPECT_EQ(str(vString("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(str(vString(RWCString("rw"))), "rw");
    EXPECT_EQ(str(vString(RWWString(L"wide"))), "wide");
    vString source("0123456789");
    EXPECT_EQ(str(vString(source(2, 3))), "234");

    vString s;
    EXPECT_EQ(str(s = "text"), "text");
    EXPECT_EQ(str(s = source(0, 2)), "01");
    EXPECT_EQ(str(s = source), "0123456789");
    EXPECT_EQ(str(s = RWWString(L"w")), "w");
    EXPECT_EQ(str(s = RWCString("r")), "r");
    s = s(0, 1);  // from a view of itself
    EXPECT_EQ(str(s), "r");
    EXPECT_EQ(str(vString("a") + vString("b")), "ab");
    EXPECT_EQ(str("x" + vString("y")), "xy");
}

TEST(vString, IndexesAndMatchesRegularExpressions) {
    vString s("path/to/file.txt");
    const vString& cs = s;
    EXPECT_EQ(cs(0), 'p');
    EXPECT_EQ(cs(99), '\0');
    vRegExp ext(vString("[^.]+$"));
    size_t len = 0;
    EXPECT_EQ(s.index(ext, &len, 0), 13u);
    EXPECT_EQ(len, 3u);
    EXPECT_EQ(s.index(vRegExp(vString("/")), 5), 7u);
    EXPECT_EQ(s.index(vRegExp(vString("zz")), &len, 0), RW_NPOS);
    EXPECT_EQ(len, 0u);
    EXPECT_EQ(s.index("to"), 5u);  // the string search stays available
    EXPECT_TRUE(s(vRegExp(vString("xyz"))).isNull());
    EXPECT_EQ(str(vString(s(vRegExp(vString("[a-z]+")), 4))), "to");
    s(ext) = "md";
    EXPECT_EQ(str(s), "path/to/file.md");
}

// Each overload called the way users write it, with literal positions and lengths: a literal 0
// must pick the position form, never be taken for a null match-length pointer.
TEST(vString, OverloadsTakeLiteralArguments) {
    vString s("foo/boo");
    const vString& cs = s;
    size_t n = 99;
    EXPECT_EQ(s.index(vRegExp("o"), 0), 1u);
    EXPECT_EQ(s.index(vRegExp("o"), 3), 5u);
    EXPECT_EQ(s.index(vRegExp("o+")), 1u);
    EXPECT_EQ(s.index(vRegExp("o+"), &n, 0), 1u);
    EXPECT_EQ(n, 2u);
    EXPECT_EQ(cs.index(vRegExp("b"), nullptr, 0), 4u);
    // The byte-string forms share the overload set (RWCString's test calls each of them).
    EXPECT_EQ(s.index("oo", 2), 5u);
    EXPECT_EQ(str(vString(s(vRegExp("o+"), 0))), "oo");
    EXPECT_EQ(str(vString(cs(vRegExp("[a-z]+"), 3))), "boo");
    EXPECT_EQ(str(vString(s(0, 3))), "foo");
    EXPECT_EQ(str(vString(cs(4, 3))), "boo");
    EXPECT_EQ(s(0), 'f');
    EXPECT_EQ(cs(1), 'o');
    EXPECT_EQ(str(vString("abc", 2)), "ab");
    EXPECT_EQ(str(vString("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(str(vString(nullptr)), "");
}

TEST(vString, ComparesWithAndWithoutCase) {
    vString a("Alpha"), b("alpha");
    EXPECT_LT(a.fCompareTo(b), 0);
    EXPECT_EQ(a.fCompareToIgnoreCase(b), 0);
    EXPECT_FALSE(a.fIsEqual(b));
    EXPECT_TRUE(a.fIsEqualIgnoreCase(b));
    EXPECT_TRUE(a.fIsEqual(vString("Alpha")));

    EXPECT_FALSE(vString("").fLastCharIsEqual('/'));
    EXPECT_TRUE(vString("a/").fLastCharIsEqual('/'));
    EXPECT_FALSE(vString("/a").fLastCharIsEqual('/'));
    EXPECT_TRUE(vString("\xff").fLastCharIsEqual(0xff));
}

TEST(vString, TakesPartInTheCollectableProtocol) {
    vString x("x");
    vVBuffer other;  // any collectable of another class
    EXPECT_FALSE(x.isEqual(&other));
    vString same("x");
    EXPECT_TRUE(x.isEqual(&same));
    vString y("y");
    EXPECT_LT(x.compareTo(static_cast<const RWCollectable*>(&y)), 0);
    EXPECT_NE(vString("A").hash(), vString("a").hash());
    EXPECT_EQ(vString("A").hash(RWCString::ignoreCase), vString("a").hash(RWCString::ignoreCase));
    EXPECT_EQ(x.isA(), 263);
    EXPECT_EQ(vString::classIsA(), vClassID::vString);

    RWCollectable* copy = x.copy();
    RWCollectable* fresh = x.newSpecies();
    EXPECT_TRUE(copy->isEqual(&x));
    EXPECT_EQ(str(*static_cast<vString*>(fresh)), "");
    EXPECT_EQ(fresh->isA(), 263);
    delete copy;
    delete fresh;
}

TEST(vString, MapsCaseByTheFixedLatin1RuleInASingleByteLocale) {
    vString up("a\xe9\xf7\xff\xdfz");
    up.fToUpper();
    EXPECT_EQ(str(up), "A\xc9\xd7\xff\xdfZ");
    vString down("Z\xc9\xd7\xde\xdf");
    down.toLower();
    EXPECT_EQ(str(down), "z\xe9\xf7\xfe\xdf");
    // Every byte, exhaustively, against the rule.
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    vString u(all.data(), all.size()), l(all.data(), all.size());
    u.toUpper();
    l.fToLower();
    for (int c = 0; c < 256; ++c) {
        int wantUp = ((c >= 0x61 && c <= 0x7a) || (c >= 0xe0 && c <= 0xfe)) ? c - 32 : c;
        int wantDown = ((c >= 0x41 && c <= 0x5a) || (c >= 0xc0 && c <= 0xde)) ? c + 32 : c;
        EXPECT_EQ(static_cast<unsigned char>(u(c)), wantUp) << c;
        EXPECT_EQ(static_cast<unsigned char>(l(c)), wantDown) << c;
    }
    // The copy taken before mapping keeps its text.
    vString original("abc");
    vString copy(original);
    original.fToUpper();
    EXPECT_EQ(str(copy), "abc");
}

TEST(vString, LeavesMultiByteCharactersAloneInAUtf8Locale) {
    CtypeLocale utf8("C.UTF-8");
    if (!utf8.ok()) GTEST_SKIP() << "no C.UTF-8 locale";
    vString s("caf\xc3\xa9 \xe0 z");  // "café", then a lone invalid byte
    s.fToUpper();
    EXPECT_EQ(str(s), "CAF\xc3\xa9 \xe0 Z");
    s.fToLower();
    EXPECT_EQ(str(s), "caf\xc3\xa9 \xe0 z");
}

TEST(vString, TrimsOnlyBlanksAndTabs) {
    struct Row {
        const char* in;
        const char* out;
    } rows[] = {
        {" \t a b \t ", "a b"}, {"\r\n x", "\r\n x"}, {"", ""},          {" \t ", ""}, {"x", "x"},
        {"x\t", "x"},           {"\tx", "x"},         {" x \n", "x \n"},
    };
    for (const Row& r : rows) {
        vString s(r.in);
        s.fTrim();
        EXPECT_EQ(str(s), r.out) << '"' << r.in << '"';
        EXPECT_EQ(s.data()[s.length()], '\0');
        // Trimming a copy that shares the buffer leaves the original as it was, then and after
        // the copy changes again.
        vString original(r.in), copy(original);
        copy.fTrim();
        EXPECT_EQ(str(copy), r.out);
        EXPECT_EQ(copy.data()[copy.length()], '\0');
        copy.append("!");
        EXPECT_EQ(str(original), r.in);
        EXPECT_EQ(str(copy), std::string(r.out) + "!");
    }
}

TEST(vString, ReplacesEveryMatchLeftToRight) {
    struct Row {
        const char* text;
        const char* pattern;
        const char* with;
        const char* out;
        bool replaced;
    } rows[] = {
        {"a-b-c", "-", "+", "a+b+c", true},
        {"abc", "x*", "-", "-a-b-c-", true},  // empty matches step one byte
        {"aaab", "^a", "", "b", true},        // ^ matches again while the output is empty
        {"baaa", "^a", "", "baaa", false},
        {"aaa", "a", "aa", "aaaaaa", true},  // replacements are not searched again
        {"x.y.z", "[.]", "", "xyz", true},
        {"abc", "q", "Q", "abc", false},
        {"", "x*", "-", "-", true},
        {"ab", "b$|a", "<&>", "<&><&>", true},
    };
    for (const Row& r : rows) {
        vString s(r.text);
        EXPECT_EQ(s.fReplaceAll(vRegExp(vString(r.pattern)), r.with), r.replaced) << r.pattern;
        EXPECT_EQ(str(s), r.out) << r.text << " / " << r.pattern;
    }
}

TEST(vString, AppendsABufferSegmentBySegment) {
    vVBuffer buffer(3);
    buffer.fAppend("hello");
    buffer.fAppend(std::string(" \0world", 7).data(), 7);
    EXPECT_EQ(buffer.fSegments(), 4u);
    vString s(">");
    EXPECT_TRUE(s.fAppend(buffer));
    EXPECT_EQ(str(s), std::string(">hello \0world", 13));
    int visits = 0;
    EXPECT_FALSE(buffer.fForEachSegment([&](const char*, size_t) { return ++visits < 2; }));
    EXPECT_EQ(visits, 2);
}

TEST(vString, StreamsBytesOutAndWordsIn) {
    std::ostringstream out;
    out << vString("a\0b", 3) << vString::EOL();
    EXPECT_EQ(out.str(), std::string("a\0b\r\n", 5));
    std::istringstream in("  first second\n");
    vString a, b, c;
    in >> a >> b;
    EXPECT_EQ(str(a), "first");
    EXPECT_EQ(str(b), "second");
    EXPECT_FALSE(in >> c);
    EXPECT_EQ(&vString::EOL(), &vString::EOL());
    EXPECT_EQ(vString::nullString().length(), 0u);
}

}  // namespace

TEST(vString, ConcatenatesWithTextOnEitherSide) {
    const vString zero("a\0b", 3);
    // Every form gives a vString, and s + "text" is not ambiguous with the RWCString operators.
    static_assert(std::is_same_v<decltype(zero + "cd"), vString>);
    static_assert(std::is_same_v<decltype("cd" + zero), vString>);
    static_assert(std::is_same_v<decltype(zero + zero), vString>);
    EXPECT_EQ(zero + "cd", vString("a\0bcd", 5));
    EXPECT_EQ("cd" + zero, vString("cda\0b", 5));
    EXPECT_EQ(zero + zero, vString("a\0ba\0b", 6));
    const char* none = nullptr;
    EXPECT_EQ(zero + none, zero);
    EXPECT_EQ(none + zero, zero);
}
