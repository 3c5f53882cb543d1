#include "vfc/rw/RWBitVec.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "vfc/core/vBitVector.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

TEST(RWBitVec, SetsClearsAndResizes) {
    RWBitVec v(70);
    v.setBit(0);
    v.setBit(64);
    v.setBit(69);
    v.setBit(70);  // out of range: ignored
    EXPECT_EQ(v.sum(), 3u);
    EXPECT_TRUE(v[64]);
    EXPECT_FALSE(v.testBit(70));
    v.clearBit(64);
    EXPECT_FALSE(v[64]);
    v.resize(65);
    v.resize(70);
    EXPECT_FALSE(v[69]);  // dropped by the shrink, not revived by the growth
    RWBitVec expected(70);
    expected.setBit(0);
    EXPECT_EQ(v, expected);
    RWBitVec ones(65, true);
    EXPECT_EQ(ones.sum(), 65u);
    ones.resize(130);
    EXPECT_EQ(ones.sum(), 65u);
    ones.setAll(false);
    EXPECT_EQ(ones, RWBitVec(130));
    EXPECT_NE(RWBitVec(3), RWBitVec(4));  // same bits, other length

    vBitVector b(10);
    EXPECT_TRUE(b.fSetBit(9));
    EXPECT_FALSE(b.fSetBit(10));
    EXPECT_FALSE(b.fClearBit(10));
    EXPECT_TRUE(b.fTestBit(9));
    EXPECT_EQ(b.fCount(), 1u);
    vBitVector c(10);
    EXPECT_FALSE(b.fIsEqual(c));
    c.fSetBit(9);
    EXPECT_TRUE(b.fIsEqual(c));
    EXPECT_EQ(b.hash(), c.hash());
}

TEST(RWBitVec, RoundTripsAndRejectsAWrongLength) {
    for (size_t n : {0, 1, 8, 63, 64, 65, 200}) {
        RWBitVec v(n);
        for (size_t i = 0; i < n; i += 3)
            v.setBit(i);
        std::stringbuf buf;
        {
            RWpostream out(&buf);
            v.saveOn(out);
        }
        RWpistream in(&buf);
        RWBitVec back(5, true);
        back.restoreFrom(in);
        EXPECT_TRUE(in.good()) << n;
        EXPECT_EQ(back, v) << n;
    }
    // Ten bits need two bytes, not one.
    std::stringbuf bad;
    {
        RWpostream out(&bad);
        out << 10u;
        out.putString("\xff", 1);
    }
    RWpistream in(&bad);
    RWBitVec kept(3, true);
    kept.restoreFrom(in);
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(kept, RWBitVec(3, true));

    auto path = std::filesystem::temp_directory_path() /
                ("vfc_bitvec_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    RWBitVec v(77);
    v.setBit(76);
    v.setBit(3);
    {
        RWFile f(path.string().c_str(), "wb");
        v.saveOn(f);
        EXPECT_TRUE(f.good());
    }
    {
        RWFile f(path.string().c_str(), "rb");
        RWBitVec back;
        back.restoreFrom(f);
        EXPECT_TRUE(f.good());
        EXPECT_EQ(back, v);
    }
    std::filesystem::remove(path);
}

}  // namespace
