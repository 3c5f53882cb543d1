#include "vfc/core/vVBuffer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

std::string pattern(size_t n) {
    std::string s;
    for (size_t i = 0; i < n; ++i) s += static_cast<char>(i * 7 % 256);
    return s;
}

TEST(vVBufferTest, ReadsRangesAcrossSegmentsAndComparesByContent) {
    const std::string text = pattern(1000);
    vVBuffer a(7), b(64);
    a.fAppend(text.data(), text.size());
    for (size_t i = 0; i < text.size(); i += 100) b.fAppend(text.data() + i, 100);
    EXPECT_EQ(a.fSegments(), 143u);
    char out[300];
    for (size_t offset : {0u, 6u, 7u, 699u, 995u}) {
        size_t n = a.fRead(offset, out, sizeof out);
        ASSERT_EQ(n, std::min<size_t>(300, 1000 - offset));
        EXPECT_EQ(std::string(out, n), text.substr(offset, n)) << offset;
    }
    EXPECT_EQ(a.fRead(1000, out, 1), 0u);
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_EQ(a.hash(), b.hash());
    b.fAppend("x");
    EXPECT_FALSE(a.isEqual(&b));
    EXPECT_LT(a.compareTo(&b), 0);
}

TEST(vVBufferTest, PersistsSegmentsOnBothStreamKinds) {
    vVBuffer a(5);
    const std::string text = pattern(23);
    a.fAppend(text.data(), text.size());
    std::stringbuf buf;
    RWpostream out(&buf);
    a.saveGuts(out);
    RWpistream in(&buf);
    vVBuffer back;
    back.restoreGuts(in);
    ASSERT_TRUE(in.good());
    EXPECT_TRUE(back.isEqual(&a));
    EXPECT_EQ(back.fSegmentSize(), 5u);
    EXPECT_EQ(back.fSegments(), 5u);

    auto path = std::filesystem::temp_directory_path() / "vfc_vvbuffer_test.bin";
    {
        RWFile f(path.string().c_str(), "wb");
        a.saveGuts(f);
    }
    {
        RWFile f(path.string().c_str(), "rb");
        vVBuffer fromFile;
        fromFile.restoreGuts(f);
        EXPECT_TRUE(f.good());
        EXPECT_TRUE(fromFile.isEqual(&a));
    }
    std::filesystem::remove(path);

    // A segment size of zero cannot be right.
    std::stringbuf bad("0\n1\n1\n\"a\"\n");
    RWpistream badIn(&bad);
    vVBuffer refused;
    refused.restoreGuts(badIn);
    EXPECT_TRUE(badIn.bad());
    EXPECT_EQ(refused.fLength(), 0u);
}

}  // namespace
