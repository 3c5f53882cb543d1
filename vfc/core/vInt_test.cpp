#include "vfc/core/vInt.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/core/vFloat.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

std::string asString(const vInt& v, bool hex) {
    vString out("stale");
    vString& r = v.fAsString(out, hex);
    EXPECT_EQ(&r, &out);
    return std::string(out.data(), out.length());
}

TEST(vInt, ConvertsFromText) {
    vInt v;
    EXPECT_EQ((v = vString("0x1F")).value(), 31);
    EXPECT_EQ((v = vString("010")).value(), 8);  // assignment detects the base
    EXPECT_EQ((v = vString("-12abc")).value(), -12);
    EXPECT_EQ((v = vString("junk")).value(), 0);
    EXPECT_EQ(vInt(vString("010"), 10).value(), 10);  // the constructor takes it as given
    EXPECT_EQ(vInt(vString("ff"), 16).value(), 255);
    EXPECT_EQ(vInt(vString("0x10"), 0).value(), 16);
    // Beyond 32 bits the result is clamped, as a 32-bit strtol clamps.
    EXPECT_EQ((v = vString("0xFFFFFFFF")).value(), INT_MAX);
    EXPECT_EQ((v = vString("-99999999999")).value(), INT_MIN);
}

TEST(vInt, WritesDecimalOrTwosComplementHex) {
    EXPECT_EQ(asString(vInt(255), true), "ff");
    EXPECT_EQ(asString(vInt(-1), true), "ffffffff");
    EXPECT_EQ(asString(vInt(INT_MIN), true), "80000000");
    EXPECT_EQ(asString(vInt(-5), false), "-5");
    EXPECT_EQ(asString(vInt(INT_MIN), false), "-2147483648");
    EXPECT_EQ(asString(vInt(0), false), "0");
}

TEST(vInt, ArithmeticWrapsAt32Bits) {
    vInt v(INT_MAX);
    v += 1;
    EXPECT_EQ(v.value(), INT_MIN);
    v -= vInt(1);
    EXPECT_EQ(v.value(), INT_MAX);
    v -= INT_MIN;  // INT_MAX - INT_MIN wraps to -1
    EXPECT_EQ(v.value(), -1);
    v += vInt(3);
    EXPECT_EQ(v.value(), 2);
}

TEST(vInt, OrdersHashesAndComparesByValue) {
    vInt three(3), five(5), otherThree(3);
    EXPECT_LT(three.compareTo(&five), 0);
    EXPECT_GT(five.compareTo(&three), 0);
    EXPECT_EQ(three.compareTo(&otherThree), 0);
    // The difference is a 32-bit subtraction, so far-apart values wrap.
    vInt big(INT_MAX), minusOne(-1);
    EXPECT_LT(big.compareTo(&minusOne), 0);
    EXPECT_EQ(vInt(-7).hash(), static_cast<unsigned>(-7));
    EXPECT_TRUE(three.isEqual(&otherThree));
    EXPECT_FALSE(three.isEqual(&five));
    EXPECT_TRUE(three == 3);
    EXPECT_FALSE(three == 4);
    EXPECT_TRUE(three == otherThree);
    // Another class is never equal, even holding the same number.
    vFloat f(3.0);
    EXPECT_FALSE(three.isEqual(&f));
    EXPECT_FALSE(three.isEqual(nullptr));
    EXPECT_EQ(three.compareTo(&f), -1);
    std::unique_ptr<RWCollectable> c(three.copy());
    EXPECT_TRUE(c->isEqual(&three));
    EXPECT_EQ(c->isA(), 259);
    std::unique_ptr<RWCollectable> n(three.newSpecies());
    vInt zero;
    EXPECT_TRUE(n->isEqual(&zero));
}

TEST(vInt, PersistsAsOneInteger) {
    std::stringbuf buf;
    RWpostream out(&buf);
    vInt(-42).recursiveSaveOn(out);
    EXPECT_EQ(buf.str(), ":\n259\n\\[\n-42\n\\]\n");

    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(in.good());
    vInt expected(-42);
    EXPECT_TRUE(back->isEqual(&expected));

    // A damaged value leaves the target as it was and fails the stream.
    std::stringbuf bad(":\n259\n\\[\nx\n\\]\n");
    RWpistream badIn(&bad);
    vInt target(9);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(badIn, &target), nullptr);
    EXPECT_TRUE(badIn.fail());
    EXPECT_EQ(target.value(), 9);

    auto path = std::filesystem::temp_directory_path() /
                ("vfc_vint_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    {
        RWFile f(path.string().c_str(), "wb");
        vInt(INT_MIN).recursiveSaveOn(f);
        vInt(77).recursiveSaveOn(f);
        ASSERT_TRUE(f.good());
    }
    {
        RWFile f(path.string().c_str(), "rb");
        vInt a, b;
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &a), &a);
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &b), &b);
        EXPECT_TRUE(f.good());
        EXPECT_EQ(a.value(), INT_MIN);
        EXPECT_EQ(b.value(), 77);
    }
    std::filesystem::remove(path);
}

}  // namespace
