#include "vfc/rw/RWLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

const RWLocale& loc = RWLocale::global();

std::string text(double d) {
    RWCString s = loc.asString(d);
    return std::string(s.data(), s.length());
}

TEST(RWLocale, WritesTheShortestTextThatReadsBack) {
    EXPECT_EQ(text(1.5), "1.5");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(1e20), "1e+20");
    EXPECT_EQ(text(-2), "-2");
    const double values[] = {1.0 / 3,    -0.0,     5e-324, std::numeric_limits<double>::max(),
                             123456.789, -7.25e-11};
    for (double v : values) {
        double back = 42;
        ASSERT_TRUE(loc.stringToNum(loc.asString(v), &back)) << text(v);
        EXPECT_EQ(std::memcmp(&back, &v, sizeof v), 0) << text(v);
    }
    double inf = 0;
    EXPECT_TRUE(loc.stringToNum(loc.asString(-HUGE_VAL), &inf));
    EXPECT_EQ(inf, -HUGE_VAL);
}

TEST(RWLocale, ReadsTheLeadingNumberOnly) {
    double d = 0;
    EXPECT_TRUE(loc.stringToNum(" \t2.5 pages", &d));
    EXPECT_EQ(d, 2.5);
    EXPECT_TRUE(loc.stringToNum("+3", &d));
    EXPECT_EQ(d, 3);
    EXPECT_TRUE(loc.stringToNum("-.5e1x", &d));
    EXPECT_EQ(d, -5);
    EXPECT_TRUE(loc.stringToNum("1,5", &d));  // the decimal point is always '.'
    EXPECT_EQ(d, 1);
    // Out of range: infinities for huge magnitudes, signed zeros for tiny ones.
    EXPECT_TRUE(loc.stringToNum("-1e999", &d));
    EXPECT_EQ(d, -HUGE_VAL);
    EXPECT_TRUE(loc.stringToNum("0.0001e-400", &d));
    EXPECT_EQ(d, 0.0);
    EXPECT_TRUE(loc.stringToNum("1000e-326", &d));  // 1e-323, a subnormal, not zero
    EXPECT_GT(d, 0.0);
    EXPECT_TRUE(loc.stringToNum("-0.00001e-330", &d));
    EXPECT_TRUE(d == 0.0 && std::signbit(d));
    EXPECT_TRUE(loc.stringToNum(std::string(400, '9').c_str(), &d));
    EXPECT_EQ(d, HUGE_VAL);

    d = 7;
    for (const char* bad : {"", "  ", "abc", "+-1", "--1", ".", "e5", "-"}) {
        EXPECT_FALSE(loc.stringToNum(bad, &d)) << bad;
        EXPECT_EQ(d, 7) << bad;
    }
}

}  // namespace
