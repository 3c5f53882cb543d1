// The portable format, item by item: exact bytes written, and reads that refuse bad tokens.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

template <class Write>
std::string written(Write write) {
    std::stringbuf buf;
    RWpostream out(&buf);
    write(out);
    EXPECT_TRUE(out.good());
    return buf.str();
}

TEST(RWpostreamTest, ItemsAreSpelledExactly) {
    EXPECT_EQ(written([](RWvostream& s) { s << 42 << -7 << 0u << true << false; }),
              "42\n-7\n0\n1\n0\n");
    EXPECT_EQ(written([](RWvostream& s) {
                  s << std::numeric_limits<long long>::min()
                    << std::numeric_limits<unsigned long long>::max();
              }),
              "-9223372036854775808\n18446744073709551615\n");
    // Symbols: printable bytes as themselves, blank, backslash and high bytes escaped.
    EXPECT_EQ(written([](RWvostream& s) { s << 'a' << ' ' << '\\' << '\n'
                                            << '\xff'; }),
              "a\n\\040\n\\134\n\\012\n\\377\n");
    EXPECT_EQ(written([](RWvostream& s) { s.put('A').put('\xff'); }), "65\n255\n");
    // A string: its length, then quoted bytes with quote and backslash escaped.
    EXPECT_EQ(written([](RWvostream& s) { s.putString("a \"b\"\t", 6); }),
              "6\n\"a \\\"b\\\"\\011\"\n");
    EXPECT_EQ(written([](RWvostream& s) { s.putString("x\0y\\", 4); }), "4\n\"x\\000y\\\\\"\n");
    EXPECT_EQ(written([](RWvostream& s) {
                  s << 1.5 << 0.1 << -0.0 << 1e300 << std::numeric_limits<double>::infinity()
                    << -std::numeric_limits<double>::infinity();
              }),
              "1.5\n0.1\n-0\n1e+300\ninf\n-inf\n");
    EXPECT_EQ(written([](RWvostream& s) { s.putObjectStart().putObjectEnd(); }), "\\[\n\\]\n");
}

TEST(RWpostreamTest, EveryItemReadsBack) {
    std::stringbuf buf;
    RWpostream out(&buf);
    const double values[] = {0.1, 1.0 / 3, 6.02214076e23, -5e-324,
                             std::numeric_limits<double>::max()};
    for (double v : values)
        out << v;
    out << 3.25f << std::numeric_limits<short>::min() << static_cast<unsigned short>(65535)
        << std::numeric_limits<int>::min() << -1L << true
        << std::numeric_limits<double>::quiet_NaN();
    for (int c = 0; c < 256; ++c)
        out << static_cast<char>(c);
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    out.putString(all.data(), all.size());
    out.put('\x80');

    RWpistream in(&buf);
    for (double v : values) {
        double d = 0;
        in >> d;
        EXPECT_EQ(d, v);
    }
    float f = 0;
    short sh = 0;
    unsigned short us = 0;
    int i = 0;
    long l = 0;
    bool b = false;
    double nan = 0;
    in >> f >> sh >> us >> i >> l >> b >> nan;
    EXPECT_EQ(f, 3.25f);
    EXPECT_EQ(sh, std::numeric_limits<short>::min());
    EXPECT_EQ(us, 65535);
    EXPECT_EQ(i, std::numeric_limits<int>::min());
    EXPECT_EQ(l, -1L);
    EXPECT_TRUE(b);
    EXPECT_TRUE(std::isnan(nan));
    for (int c = 0; c < 256; ++c) {
        char got = 0;
        in >> got;
        ASSERT_EQ(static_cast<unsigned char>(got), c);
    }
    RWCString s;
    in.getString(s);
    EXPECT_EQ(std::string(s.view()), all);
    char g = 0;
    in.get(g);
    EXPECT_EQ(g, '\x80');
    EXPECT_TRUE(in.good());
    // Then the end: eof and fail, and the target is left alone.
    int untouched = 99;
    in >> untouched;
    EXPECT_TRUE(in.eof());
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(untouched, 99);
}

TEST(RWpostreamTest, ReaderToleratesWhiteSpaceAndRefusesBadTokens) {
    std::stringbuf tolerant("  12\r\n\r\n\t-3 \r\n 2\r\n\"ok\"");
    RWpistream in(&tolerant);
    int a = 0, b = 0;
    RWCString s;
    in >> a >> b;
    in.getString(s);
    EXPECT_TRUE(in.good());
    EXPECT_EQ(a, 12);
    EXPECT_EQ(b, -3);
    EXPECT_EQ(s, "ok");

    // Bad items: the stream fails, the target keeps its value, and nothing more is read.
    auto expectRefused = [](const char* text, auto target) {
        std::stringbuf buf(text);
        RWpistream in(&buf);
        const auto before = target;
        in >> target;
        EXPECT_TRUE(in.fail()) << text;
        EXPECT_EQ(target, before) << text;
        int after = 5;
        in >> after;
        EXPECT_EQ(after, 5) << text;
    };
    expectRefused("x\n", 7);
    expectRefused("70000\n", short{7});
    expectRefused("-1\n", static_cast<unsigned short>(7));
    expectRefused("99999999999999999999999\n", 7LL);
    expectRefused("1.5.2\n", 2.0);
    expectRefused("\\9xx\n", 'q');

    // A number that runs into the end of the data may have been cut short: it is read, but the
    // stream is no longer good (end of file, not failed); with its line feed it stays good.
    for (const char* text : {"42", "-42", "4.25"}) {
        std::stringbuf cut(text), whole(std::string(text) + "\n");
        RWpistream inCut(&cut), inWhole(&whole);
        double x = 0, y = 0;
        inCut >> x;
        inWhole >> y;
        EXPECT_EQ(x, std::stod(text)) << text;
        EXPECT_FALSE(inCut.good()) << text;
        EXPECT_TRUE(inCut.eof() && !inCut.fail()) << text;
        EXPECT_EQ(y, x) << text;
        EXPECT_TRUE(inWhole.good()) << text;
    }
    {
        std::stringbuf cut("12345");
        RWpistream in(&cut);
        long long n = 0;
        in >> n;
        EXPECT_EQ(n, 12345);
        EXPECT_TRUE(in.eof() && !in.fail());
    }

    // Bad strings corrupt the structure: fail and bad, the string unchanged.
    const char* badStrings[] = {
        "5\n\"abc\"\n",        // shorter than its length
        "2\n\"abc\"\n",        // longer than its length
        "3\n\"a\\9b\"\n",      // bad escape
        "3\n\"a\nb\"\n",       // raw control byte inside the quotes
        "3\nabc\n",            // no opening quote
        "1073741825\n\"\"\n",  // length above the sanity limit
        "-4\n\"ab\"\n",        // negative length
    };
    for (const char* text : badStrings) {
        std::stringbuf buf(text);
        RWpistream in(&buf);
        RWCString str("keep");
        in.getString(str);
        EXPECT_TRUE(in.bad()) << text;
        EXPECT_EQ(str, "keep") << text;
    }
}

// Hands its text out one byte at a time, so the reader never finds more than one byte in the
// buffer and takes every item through the buffer's own calls.
class Trickle : public std::streambuf {
  public:
    explicit Trickle(std::string text) : text_(std::move(text)) {}

  protected:
    int_type underflow() override {
        if (pos_ == text_.size()) return traits_type::eof();
        char* p = &text_[pos_++];
        setg(p, p, p + 1);
        return traits_type::to_int_type(*p);
    }

  private:
    std::string text_;
    size_t pos_ = 0;
};

// What one reader made of a text: the items read until the stream stopped being good, then its
// state and the bytes it counted. Once the data proved malformed (bad), how far the reader got
// into it does not matter.
struct Reading {
    std::vector<std::string> items;
    bool eof = false, fail = false, bad = false;
    unsigned long long bytes = 0;
    bool operator==(const Reading& o) const {
        return items == o.items && eof == o.eof && fail == o.fail && bad == o.bad &&
               (bad || bytes == o.bytes);
    }
};

// Reads strings and integers in turn (a string, then an unsigned 64-bit integer).
Reading readAll(std::streambuf* buf) {
    Reading r;
    RWpistream in(buf);
    for (int i = 0; in.good(); ++i) {
        if (i % 2 == 0) {
            RWCString s("before");
            in.getString(s);
            r.items.emplace_back(s.view());
        } else {
            unsigned long long n = 7;
            in >> n;
            r.items.push_back(std::to_string(n));
        }
    }
    r.eof = in.eof();
    r.fail = in.fail();
    r.bad = in.bad();
    r.bytes = in.bytesRead();
    return r;
}

TEST(RWpostreamTest, StringsAreEscapedByteForByteAndReadAlikeFromAnyBuffer) {
    // Strings of every length up to 70 from bytes that need each kind of treatment, and a long
    // one, written by the stream and compared with the spelling worked out here byte by byte.
    std::mt19937 rng(1207);
    const std::string kinds = std::string("aZ09 ~!-") + "\"\\" + "\n\t\x01\x7f" + "\x80\xc3\xff";
    std::vector<std::string> texts;
    for (size_t n = 0; n <= 70; ++n) {
        for (int plainOnly = 0; plainOnly < 2; ++plainOnly) {
            std::string t;
            for (size_t i = 0; i < n; ++i)
                t += kinds[rng() % (plainOnly ? 8 : kinds.size())];
            texts.push_back(t);
        }
    }
    texts.push_back(std::string(5000, 'x') + "\"" + std::string(70000, '\xe9'));
    const unsigned long long numbers[] = {0, 9, 1234567890123456789ULL, 9999999999999999999ULL,
                                          std::numeric_limits<unsigned long long>::max()};
    std::string expected;
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        for (size_t i = 0; i < texts.size(); ++i) {
            const std::string& t = texts[i];
            out.putString(t.data(), t.size());
            out << numbers[i % 5];
            expected += std::to_string(t.size()) + "\n\"";
            for (unsigned char c : t) {
                if (c == '"' || c == '\\') {
                    expected += '\\';
                    expected += static_cast<char>(c);
                } else if (c >= 0x20 && c <= 0x7E) {
                    expected += static_cast<char>(c);
                } else {
                    const char octal[] = {'\\', static_cast<char>('0' + (c >> 6)),
                                          static_cast<char>('0' + ((c >> 3) & 7)),
                                          static_cast<char>('0' + (c & 7)), 0};
                    expected += octal;
                }
            }
            expected += "\"\n" + std::to_string(numbers[i % 5]) + "\n";
        }
        EXPECT_TRUE(out.good());
    }
    const std::string text = buf.str();
    ASSERT_EQ(text, expected);

    // Read from a buffer that holds everything and from one that gives a byte at a time, the
    // items, the final state and the bytes counted are the same, and the texts come back.
    std::stringbuf whole(text);
    Trickle trickle(text);
    Reading direct = readAll(&whole);
    EXPECT_TRUE(direct == readAll(&trickle));
    ASSERT_EQ(direct.items.size(), 2 * texts.size() + 1);
    for (size_t i = 0; i < texts.size(); ++i)
        ASSERT_EQ(direct.items[2 * i], texts[i]) << i;
    // The last read, of a string's length, finds the end of the data.
    EXPECT_TRUE(direct.eof && direct.fail);

    // Damaged copies (a byte changed, or the text cut short) are refused or read the same way
    // by both, however the damage falls.
    const std::string sample = text.substr(0, text.find("\n", 2000));
    const char damage[] = {'"', '\\', '\n', '9', '\x01', '\xff', '4', 'x'};
    for (size_t at = 0; at < sample.size(); at += 3) {
        for (char c : damage) {
            std::string bad = sample;
            bad[at] = c;
            std::stringbuf b1(bad);
            Trickle b2(bad);
            ASSERT_TRUE(readAll(&b1) == readAll(&b2)) << at << " " << int(c);
        }
        std::stringbuf c1(sample.substr(0, at));
        Trickle c2(sample.substr(0, at));
        ASSERT_TRUE(readAll(&c1) == readAll(&c2)) << at;
    }
}

TEST(RWpostreamTest, IntegersAtTheLimitsOfTheirDigits) {
    // Nineteen digits always fit; twenty fit up to the largest value; more never do, leading
    // zeros included past the longest token.
    auto read = [](const std::string& text, unsigned long long& n) {
        std::stringbuf whole(text + "\n");
        Trickle trickle(text + "\n");
        RWpistream a(&whole), b(&trickle);
        unsigned long long x = 1, y = 1;
        a >> x;
        b >> y;
        EXPECT_EQ(a.good(), b.good()) << text;
        EXPECT_EQ(x, y) << text;
        n = x;
        return a.good();
    };
    unsigned long long n = 0;
    EXPECT_TRUE(read("9999999999999999999", n));
    EXPECT_EQ(n, 9999999999999999999ULL);
    EXPECT_TRUE(read("18446744073709551615", n));
    EXPECT_EQ(n, std::numeric_limits<unsigned long long>::max());
    EXPECT_TRUE(read(std::string(40, '0') + "15", n));
    EXPECT_EQ(n, 15u);
    for (const char* big : {"18446744073709551616", "18446744073709551620", "99999999999999999999",
                            "184467440737095516150"})
        EXPECT_FALSE(read(big, n)) << big;
    EXPECT_FALSE(read(std::string(64, '0') + "1", n));
}

TEST(RWpostreamTest, HugeLengthDoesNotAllocateAhead) {
    // A length near the limit with only a few bytes behind it fails without reserving the length.
    std::stringbuf buf("1073741823\n\"abc");
    RWpistream in(&buf);
    RWCString s;
    in.getString(s);
    EXPECT_TRUE(in.bad());
    EXPECT_TRUE(s.isNull());
}

TEST(RWpostreamTest, RefusingBufferFailsTheWriter) {
    struct Refusing : std::streambuf {
        int overflow(int) override { return traits_type::eof(); }
    } refusing;
    RWpostream out(&refusing);
    out << 1;
    EXPECT_TRUE(out.bad());
    RWpostream none(static_cast<std::streambuf*>(nullptr));
    none << 1;
    EXPECT_TRUE(none.fail());
}

}  // namespace
