#include "vfc/rw/RWCRegexp.h"

#include <gtest/gtest.h>

#include <bitset>
#include <random>
#include <string>
#include <vector>

#include "vfc/rw/RWCString.h"

namespace {

using std::string;

struct Found {
    size_t pos;
    size_t extent;
    bool operator==(const Found& o) const { return pos == o.pos && extent == o.extent; }
};

std::ostream& operator<<(std::ostream& os, const Found& f) {
    if (f.pos == RW_NPOS) return os << "{npos, " << f.extent << "}";
    return os << "{" << f.pos << ", " << f.extent << "}";
}

const Found kNoMatch{RW_NPOS, 0};

Found search(const RWCRegexp& re, const string& text, size_t start) {
    size_t extent = 12345;
    size_t pos = re.index(text.data(), text.size(), &extent, start);
    return {pos, extent};
}

string repeat(const string& s, int n) {
    string out;
    for (int i = 0; i < n; ++i)
        out += s;
    return out;
}

// Bytes made visible for failure messages.
string show(const string& s) {
    string out;
    for (unsigned char c : s) {
        if (c >= 0x20 && c < 0x7f) {
            out += static_cast<char>(c);
        } else {
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\x%02x", c);
            out += buf;
        }
    }
    return out;
}

// ---------------------------------------------------------------------------------------------
// A reference matcher, deliberately simple: a pattern is a list of items (a byte set with a
// minimum and maximum count), checked by memoised backtracking over every candidate [s, e).

struct RefItem {
    std::bitset<256> set;
    int min = 1;
    int max = 1;  // -1: unbounded
};

struct RefPattern {
    bool legal = true;
    bool bol = false;
    bool eol = false;
    std::vector<RefItem> items;
};

// Reads one class member at p[i], \x standing for x; false at the end of the pattern.
bool refClassByte(const string& p, size_t& i, unsigned& out) {
    if (i < p.size() && p[i] == '\\') ++i;
    if (i >= p.size()) return false;
    out = static_cast<unsigned char>(p[i++]);
    return true;
}

bool refClass(const string& p, size_t& i, std::bitset<256>& set) {
    ++i;  // [
    bool negated = i < p.size() && p[i] == '^';
    if (negated) ++i;
    size_t members = 0;
    while (true) {
        if (i >= p.size()) return false;
        if (p[i] == ']' && members > 0) break;
        unsigned lo = 0, hi = 0;
        if (!refClassByte(p, i, lo)) return false;
        hi = lo;
        bool isRange = i + 1 < p.size() && p[i] == '-' && p[i + 1] != ']';
        if (isRange) {
            ++i;
            if (!refClassByte(p, i, hi) || hi < lo) return false;
        }
        for (unsigned b = lo; b <= hi; ++b)
            set.set(b);
        ++members;
    }
    ++i;
    if (negated) set.flip();
    return true;
}

RefPattern refParse(const string& p) {
    RefPattern r;
    size_t i = 0;
    if (!p.empty() && p[0] == '^') {
        r.bol = true;
        i = 1;
    }
    while (i < p.size()) {
        char c = p[i];
        if (c == '$' && i == p.size() - 1) {
            r.eol = true;
            break;
        }
        if (c == '*' || c == '+' || c == '?') {
            if (r.items.empty()) return RefPattern{false, false, false, {}};
            RefItem& last = r.items.back();
            if (c != '+') last.min = 0;
            if (c != '?') last.max = -1;
            ++i;
            continue;
        }
        RefItem item;
        if (c == '[') {
            if (!refClass(p, i, item.set)) return RefPattern{false, false, false, {}};
        } else if (c == '.') {
            item.set.set();
            ++i;
        } else {
            if (c == '\\' && ++i == p.size()) return RefPattern{false, false, false, {}};
            item.set.set(static_cast<unsigned char>(p[i++]));
        }
        r.items.push_back(item);
    }
    return r;
}

// Whether items[k..] match text[pos, end) exactly.
bool refMatchFrom(const RefPattern& r, const string& text, size_t k, size_t pos, size_t end,
                  std::vector<signed char>& memo) {
    if (k == r.items.size()) return pos == end;
    signed char& m = memo[k * (text.size() + 1) + pos];
    if (m >= 0) return m != 0;
    const RefItem& it = r.items[k];
    bool ok = false;
    for (size_t count = 0; !ok; ++count) {
        if (static_cast<int>(count) >= it.min)
            ok = refMatchFrom(r, text, k + 1, pos + count, end, memo);
        if (it.max >= 0 && static_cast<int>(count) >= it.max) break;
        if (pos + count >= end || !it.set.test(static_cast<unsigned char>(text[pos + count])))
            break;
    }
    m = ok ? 1 : 0;
    return ok;
}

Found refSearch(const RefPattern& r, const string& text, size_t start) {
    for (size_t s = start; s <= text.size(); ++s) {
        if (r.bol && s != 0) continue;
        for (size_t e = text.size() + 1; e-- > s;) {
            if (r.eol && e != text.size()) continue;
            std::vector<signed char> memo((r.items.size() + 1) * (text.size() + 1), -1);
            if (refMatchFrom(r, text, 0, s, e, memo)) return {s, e - s};
        }
    }
    return kNoMatch;
}

// ---------------------------------------------------------------------------------------------

struct DialectCase {
    const char* name;
    string pattern;
    string text;
    size_t start;
    Found want;
};

TEST(RWCRegexp, Dialect) {
    const string nul(1, '\0');
    const DialectCase cases[] = {
        {"plus", "a+", "baaab", 0, {1, 3}},
        {"empty match at start", "x*", "abc", 0, {0, 0}},
        {"class to end", "[^/]+$", "/usr/bin", 0, {5, 3}},
        {"anchor fails", "^b", "ab", 0, kNoMatch},
        {"anchor ignores start", "^a", "aa", 1, kNoMatch},
        {"anchor with empty body", "^", "abc", 1, kNoMatch},
        {"end anchor", "a$", "aa", 0, {1, 1}},
        {"empty at end", "$", "abc", 0, {3, 0}},
        {"both anchors empty text", "^$", "", 0, {0, 0}},
        {"whole text", "^a*$", "aaa", 0, {0, 3}},
        {"caret in middle", "a^b", "xa^b", 0, {1, 3}},
        {"dollar in middle", "a$b", "xa$b", 0, {1, 3}},
        {"dollar first", "$a", "x$a", 0, {1, 2}},
        {"double caret", "^^", "^^", 0, {0, 1}},
        {"escaped dollar at end", "a\\$", "aa$", 0, {1, 2}},
        {"escaped dot", "\\.", "ab.", 0, {2, 1}},
        {"escaped backslash", "\\\\", "a\\b", 0, {1, 1}},
        {"escape letter is the letter", "\\t", "a\tt", 0, {2, 1}},
        {"escaped caret", "\\^a", "b^a", 0, {1, 2}},
        {"escape then end anchor", "\\\\$", "\\\\", 0, {1, 1}},
        {"bar paren brace literal", "(a|b){2}", "x(a|b){2}", 0, {1, 8}},
        {"bracket first literal", "[]a]+", "x]a]", 0, {1, 3}},
        {"negated bracket first", "[^]a]+", "]]bc]", 0, {2, 2}},
        {"escaped bracket", "[\\]]", "a]", 0, {1, 1}},
        {"escaped dash", "[a\\-z]+", "b-az", 0, {1, 3}},
        {"escaped backslash in class", "[\\\\]", "a\\", 0, {1, 1}},
        {"escaped caret in class", "[\\^a]+", "b^a", 0, {1, 2}},
        {"caret not first in class", "[x^]", "a^", 0, {1, 1}},
        {"range", "[a-c]+", "xbcad", 0, {1, 3}},
        {"dash first", "[-a]+", "b-a-", 0, {1, 3}},
        {"dash last", "[a-]+", "b-a-", 0, {1, 3}},
        {"negation", "[^ab]+", "abcdab", 0, {2, 2}},
        {"high bytes", "[\x80-\xff]+", "ab\x80\xffz", 0, {2, 2}},
        {"empty class starred", "x[^" + nul + "-\xff]*y", "x" + nul + "xy", 0, {2, 2}},
        {"dot matches newline", "a.b", "a\nb", 0, {0, 3}},
        {"dot matches zero", "a.b", "a" + nul + "b", 0, {0, 3}},
        {"zero in pattern", "a" + nul + "b", "xa" + nul + "b", 0, {1, 3}},
        {"zero in class", "[" + nul + "-\x01]+", "a" + nul + "\x01", 0, {1, 2}},
        {"plus then optional is star", "ba+?", "baa", 0, {0, 3}},
        {"plus then optional allows none", "xa+?b", "xb", 0, {0, 2}},
        {"optional optional", "ba??", "baa", 0, {0, 2}},
        {"star star", "ba**", "baaa", 0, {0, 4}},
        {"optional then plus is star", "ba?+c", "bc baac", 0, {0, 2}},
        {"leftmost over longest", "b+", "abbb", 0, {1, 3}},
        {"bar then star", "ab|c*", "xc ab|ccc", 0, {3, 6}},
        {"longest at same start", "a[ab]*", "cabab", 0, {1, 4}},
        {"longest through dead ends", "a.*b", "aXbYb\nb", 0, {0, 7}},
        {"empty alternative later", "[ab]*$", "ccab", 0, {2, 2}},
        {"start inside", "a*", "baa", 1, {1, 2}},
        {"start at end empty match", "x*", "abc", 3, {3, 0}},
        {"start at end needs empty", "a", "abc", 3, kNoMatch},
        {"start past end", "x*", "abc", 4, kNoMatch},
        {"empty pattern", "", "abc", 2, {2, 0}},
        {"fixed length", "a.c", "xxabcabc", 3, {5, 3}},
        {"single start byte skip", "%[^%]+%", "ab %xy% %z%", 4, {6, 3}},
    };
    for (const DialectCase& c : cases) {
        RWCRegexp re(c.pattern.data(), c.pattern.size());
        ASSERT_EQ(re.status(), RWCRegexp::OK) << c.name << ": /" << show(c.pattern) << "/";
        EXPECT_EQ(search(re, c.text, c.start), c.want)
            << c.name << ": /" << show(c.pattern) << "/ on \"" << show(c.text) << "\" from "
            << c.start;
    }
}

TEST(RWCRegexp, Status) {
    struct Row {
        const char* name;
        string pattern;
        RWCRegexp::statVal want;
    };
    const Row rows[] = {
        {"empty", "", RWCRegexp::OK},
        {"caret alone", "^", RWCRegexp::OK},
        {"dollar alone", "$", RWCRegexp::OK},
        {"bracket class of bracket", "[]]", RWCRegexp::OK},
        {"one-byte range", "[a-a]", RWCRegexp::OK},
        {"caret then literal caret starred", "^^*", RWCRegexp::OK},
        {"unterminated class", "[abc", RWCRegexp::ILLEGAL},
        {"unterminated after escape", "[a\\]", RWCRegexp::ILLEGAL},
        {"unterminated range", "[a-", RWCRegexp::ILLEGAL},
        {"bracket only member", "[]", RWCRegexp::ILLEGAL},
        {"negated bracket only member", "[^]", RWCRegexp::ILLEGAL},
        {"leading star", "*a", RWCRegexp::ILLEGAL},
        {"leading plus", "+", RWCRegexp::ILLEGAL},
        {"star after caret", "^*", RWCRegexp::ILLEGAL},
        {"trailing backslash", "a\\", RWCRegexp::ILLEGAL},
        {"reversed range", "[z-a]", RWCRegexp::ILLEGAL},
        {"reversed escaped range", "[a-\\]]", RWCRegexp::ILLEGAL},
        {"many items", string(100, 'a'), RWCRegexp::OK},
        {"too many items", string(100000, 'a'), RWCRegexp::TOOLONG},
        {"too many classes", repeat("[ab]*", 20000), RWCRegexp::TOOLONG},
    };
    const string texts[] = {"", "a", "abc[]*^$\\z", string(200, 'a')};
    for (const Row& r : rows) {
        RWCRegexp re(r.pattern.data(), r.pattern.size());
        EXPECT_EQ(re.status(), r.want) << r.name << ": /" << show(r.pattern.substr(0, 40)) << "/";
        if (r.want == RWCRegexp::OK) continue;
        for (const string& t : texts) {
            EXPECT_EQ(search(re, t, 0), kNoMatch) << r.name << " on \"" << show(t) << "\"";
        }
    }
}

// The other constructors and overloads, a null extent, and copies, which share the expression and
// build their own automata (searching one must not disturb the other).
TEST(RWCRegexp, ConstructorsAndCopies) {
    RWCRegexp original("[a-c]+d");
    EXPECT_EQ(original.index("xabcdx", 6, nullptr, 0), 1u);
    RWCRegexp copy(original);
    RWCRegexp assigned("zzz");
    assigned = original;
    for (const string t : {"xxabcd", "abd abcd", "d", "cccccccd"}) {
        Found want = refSearch(refParse("[a-c]+d"), t, 0);
        EXPECT_EQ(search(copy, t, 0), want) << t;
        EXPECT_EQ(search(original, t, 0), want) << t;
        EXPECT_EQ(search(assigned, t, 0), want) << t;
    }
    RWCRegexp& self = copy;
    copy = self;
    EXPECT_EQ(search(copy, "xabd", 0), (Found{1, 3}));

    const RWCRegexp bad("[oops");
    assigned = bad;
    RWCRegexp badCopy(bad);
    for (const RWCRegexp* re : {&assigned, &badCopy}) {
        EXPECT_EQ(re->status(), RWCRegexp::ILLEGAL);
        EXPECT_EQ(search(*re, "[oops", 0), kNoMatch);
    }
    RWCRegexp null(static_cast<const char*>(nullptr));
    EXPECT_EQ(search(null, "ab", 1), (Found{1, 0}));

    const RWCRegexp fromString(RWCString("x.y", 3));
    size_t extent = 0;
    EXPECT_EQ(fromString.index(RWCString("ax\0yx\0y", 7), &extent, 2), 4u);
    EXPECT_EQ(extent, 3u);
    EXPECT_EQ(fromString.index(RWCString("x\0y", 3)), 0u);
}

// Random patterns from pieces chosen to hit the corners of the syntax (some make illegal
// patterns, and the verdicts must agree too), checked against the reference from every start.
string randomPattern(std::mt19937& rng) {
    static const char* const pieces[] = {
        "a",    "b",   "c",   ".",     "[ab]", "[^a]", "[a-b]", "[]a]", "[^]b]",   "[-a]",
        "[b-]", "\\.", "\\a", "*",     "+",    "?",    "*",     "+",    "?",       "^",
        "$",    "a",   "b",   "[c-a]", "[",    "]",    "-",     "\\",   "[a\\]b]", "[\\^.]",
    };
    const size_t npieces = sizeof pieces / sizeof pieces[0];
    string p;
    if (rng() % 4 == 0) p += '^';
    size_t n = rng() % 7;
    for (size_t i = 0; i < n; ++i)
        p += pieces[rng() % npieces];
    if (rng() % 4 == 0) p += '$';
    return p;
}

string randomText(std::mt19937& rng) {
    static const char alphabet[] = "aaabbbccc.^$]-\\";
    string t;
    size_t n = rng() % 21;
    for (size_t i = 0; i < n; ++i)
        t += alphabet[rng() % (sizeof alphabet - 1)];
    return t;
}

TEST(RWCRegexp, AgreesWithReferenceOnRandomPatterns) {
    std::mt19937 rng(20240611);
    int compared = 0;
    for (int round = 0; round < 4000; ++round) {
        const string pattern = randomPattern(rng);
        const RefPattern ref = refParse(pattern);
        RWCRegexp re(pattern.data(), pattern.size());
        ASSERT_EQ(re.status() == RWCRegexp::OK, ref.legal) << "/" << show(pattern) << "/";
        if (!ref.legal) continue;
        for (int t = 0; t < 5; ++t) {
            const string text = randomText(rng);
            for (size_t start = 0; start <= text.size() + 1; ++start) {
                ASSERT_EQ(search(re, text, start), refSearch(ref, text, start))
                    << "/" << show(pattern) << "/ on \"" << show(text) << "\" from " << start;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 50000);
}

// Texts long enough for the searches to jump over runs of a state that loops on all but a few
// bytes (sixteen bytes at a time, forward and backward), with patterns made of such classes.
TEST(RWCRegexp, AgreesWithReferenceAcrossLongRuns) {
    static const char* const pieces[] = {"[^a]", "[^ab]", "[^abc.]", "[^-]", "a", "b", ".",
                                         "*",    "+",     "*",       "+",    "?", "c"};
    static const char alphabet[] = "cccccccccccccccccccccccccccccccccccccccab.-";
    std::mt19937 rng(20261124);
    int compared = 0;
    for (int round = 0; round < 1500; ++round) {
        string pattern = rng() % 3 == 0 ? "^" : "";
        for (size_t i = 0, n = 1 + rng() % 4; i < n; ++i)
            pattern += pieces[rng() % (sizeof pieces / sizeof pieces[0])];
        if (rng() % 2 == 0) pattern += '$';
        const RefPattern ref = refParse(pattern);
        RWCRegexp re(pattern.data(), pattern.size());
        if (!ref.legal) continue;
        for (int t = 0; t < 8; ++t) {
            string text;
            for (size_t i = 0, n = rng() % 90; i < n; ++i)
                text += alphabet[rng() % (sizeof alphabet - 1)];
            for (size_t start = 0; start <= text.size(); start += 1 + rng() % 7) {
                ASSERT_EQ(search(re, text, start), refSearch(ref, text, start))
                    << "/" << show(pattern) << "/ on \"" << show(text) << "\" from " << start;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 20000);
}

// Patterns whose backtracking or restart-per-position cost would be quadratic, on texts large
// enough that such a cost would not finish in any reasonable time.
TEST(RWCRegexp, LargeTextsTakeOnePass) {
    const size_t n = size_t{1} << 20;
    const string as(n, 'a');
    struct Row {
        const char* name;
        const char* pattern;
        string text;
        Found want;
    };
    const Row rows[] = {
        {"stars then missing byte", "a*a*a*a*a*a*a*b", as, kNoMatch},
        {"stars then final byte", "a*a*a*a*a*a*a*b", as + "b", {0, n + 1}},
        {"dots then missing byte", ".*.*.*=.*", as, kNoMatch},
        {"dots then byte in middle", ".*.*.*=.*", as + "=" + as, {0, 2 * n + 1}},
        {"late first byte", "b[ab]*$", as + "b" + as, {n, n + 1}},
        {"backward pass over everything", "[ab]*c", "b" + as + "c", {0, n + 2}},
        {"last segment", "[^/]+$", as + "/" + as, {n + 1, n}},
    };
    for (const Row& r : rows) {
        RWCRegexp re(r.pattern);
        EXPECT_EQ(search(re, r.text, 0), r.want) << r.name << ": /" << r.pattern << "/";
    }
}

string randomAb(std::mt19937& rng, size_t n) {
    string t(n, 'a');
    for (char& c : t)
        c = (rng() & 1) ? 'a' : 'b';
    return t;
}

// Patterns with tens of thousands of automaton states, more than the cache keeps: the answers
// must not change when it is emptied mid-search. The references are worked out directly.
TEST(RWCRegexp, ManyStatesStillGiveTheAnswer) {
    const int k = 14;
    const string tail = repeat("[ab]", k);
    // Many states going forward: the match runs to the last 'a' at least k before the end.
    RWCRegexp lastA(("[ab]*a" + tail).c_str());
    // Many states going backward: the match starts k before the first 'a' after start + k.
    RWCRegexp firstA((tail + "a[ab]*").c_str());
    ASSERT_EQ(lastA.status(), RWCRegexp::OK);
    ASSERT_EQ(firstA.status(), RWCRegexp::OK);

    std::mt19937 rng(7);
    for (size_t n : {size_t{40}, size_t{3000}, size_t{200000}}) {
        const string text = randomAb(rng, n);
        for (size_t start : {size_t{0}, size_t{1}, n / 3, n - 20, n - k}) {
            Found wantLast = kNoMatch;
            for (size_t i = n - k; i-- > start;) {
                if (text[i] == 'a') {
                    wantLast = {start, i + k + 1 - start};
                    break;
                }
            }
            Found wantFirst = kNoMatch;
            for (size_t i = start + k; i < n; ++i) {
                if (text[i] == 'a') {
                    wantFirst = {i - k, n - (i - k)};
                    break;
                }
            }
            EXPECT_EQ(search(lastA, text, start), wantLast) << "n=" << n << " start=" << start;
            EXPECT_EQ(search(firstA, text, start), wantFirst) << "n=" << n << " start=" << start;
        }
    }
}

// Searching on after each match through texts whose dense and sparse stretches make the forward
// search start and stop skipping to the first byte of a match, while enough states are built to
// empty the cache now and then. Pattern: a lead byte, [ab]*, an 'a', then k more [ab].
TEST(RWCRegexp, SearchingOnThroughDenseAndSparseText) {
    const int k = 12;
    const string tail = repeat("[ab]", k);
    std::mt19937 rng(11);
    for (const char* lead : {"x", "[xy]"}) {
        RWCRegexp re((string(lead) + "[ab]*a" + tail).c_str());
        ASSERT_EQ(re.status(), RWCRegexp::OK) << lead;
        auto isLead = [&](char c) { return c == 'x' || (lead[0] == '[' && c == 'y'); };
        string text;
        while (text.size() < 3000000) {
            bool dense = (text.size() / 500000) % 2 == 0;
            text += "xy"[rng() % 2];
            size_t run = rng() % 10 == 0 ? 100 + rng() % 200 : rng() % (dense ? 6 : 3);
            text += randomAb(rng, run);
            text += string(dense ? rng() % 3 : 200 + rng() % 400, 'c');
        }
        size_t pos = 0, searches = 0;
        for (;;) {
            // The reference: the first lead byte at or after pos followed by an a/b run holding
            // an 'a' with k more bytes of the run after it; the match ends after the last such.
            Found want = kNoMatch;
            for (size_t i = pos; i < text.size() && want.pos == RW_NPOS; ++i) {
                if (!isLead(text[i])) continue;
                size_t run = i + 1;
                while (run < text.size() && (text[run] == 'a' || text[run] == 'b'))
                    ++run;
                for (size_t j = run; j-- > i + 1;) {
                    if (text[j] == 'a' && j + k < run) {
                        want = {i, j + k + 1 - i};
                        break;
                    }
                }
            }
            Found got = search(re, text, pos);
            ASSERT_EQ(got, want) << "/" << lead << "[ab]*a" << tail << "/ from " << pos;
            if (got.pos == RW_NPOS) break;
            pos = got.pos + got.extent;
            ++searches;
        }
        EXPECT_GT(searches, 1000u) << lead;
    }
}

}  // namespace
