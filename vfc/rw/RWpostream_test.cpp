// The portable format, item by item: exact bytes written, and reads that refuse bad tokens.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

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
