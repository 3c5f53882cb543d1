#include "vfc/rw/RWFile.h"

#include <gtest/gtest.h>

#include <string>

#include "vfc/testing/TempDir.h"

using vfc::testing::TempDir;

namespace {

std::string bytes(std::initializer_list<int> list) {
    std::string s;
    for (int b : list)
        s += static_cast<char>(b);
    return s;
}

}  // namespace

TEST(RWFile, WritesLittleEndianItemsAndReadsThemBack) {
    TempDir dir;
    const std::string path = dir.file("items.bin");
    {
        RWFile f(path.c_str(), "wb");
        ASSERT_TRUE(f.good());
        EXPECT_TRUE(f.Write('x') && f.Write(true) && f.Write(static_cast<short>(-2)) &&
                    f.Write(static_cast<unsigned short>(0x1234)) && f.Write(-1) &&
                    f.Write(0x01020304u) && f.Write(1.5) && f.WriteString("a\0b", 3));
        EXPECT_TRUE(f.Flush());
    }
    // The layout is fixed, whatever the host: little-endian integers, IEEE doubles, and a
    // string as its 32-bit length followed by its bytes.
    EXPECT_EQ(TempDir::read(path),
              bytes({'x', 1, 0xFE, 0xFF, 0x34, 0x12, 0xFF, 0xFF, 0xFF, 0xFF, 4, 3,   2, 1,  0,
                     0,   0, 0,    0,    0,    0xF8, 0x3F, 3,    0,    0,    0, 'a', 0, 'b'}));

    RWFile f(path.c_str(), "rb");
    char c = 0;
    bool b = false;
    short s = 0;
    unsigned short us = 0;
    int i = 0;
    unsigned u = 0;
    double d = 0;
    RWCString text;
    EXPECT_TRUE(f.Read(c) && f.Read(b) && f.Read(s) && f.Read(us) && f.Read(i) && f.Read(u) &&
                f.Read(d) && f.ReadString(text));
    EXPECT_EQ(c, 'x');
    EXPECT_TRUE(b);
    EXPECT_EQ(s, -2);
    EXPECT_EQ(us, 0x1234);
    EXPECT_EQ(i, -1);
    EXPECT_EQ(u, 0x01020304u);
    EXPECT_EQ(d, 1.5);
    EXPECT_EQ(text, RWCString("a\0b", 3));
    EXPECT_TRUE(f.Eof());
    EXPECT_TRUE(f.good());
}

TEST(RWFile, RefusesDamagedItemsAndStaysFailed) {
    TempDir dir;
    // A bool byte other than 0 or 1.
    RWFile badBool(dir.write("bool", bytes({2})).c_str(), "rb");
    bool b = false;
    EXPECT_FALSE(badBool.Read(b));
    EXPECT_FALSE(badBool.good());

    // A short integer: the stream fails and every later read fails too, even one that would fit.
    RWFile shortInt(dir.write("int", bytes({1, 2, 3})).c_str(), "rb");
    unsigned u = 0;
    char c = 0;
    EXPECT_FALSE(shortInt.Read(u));
    EXPECT_FALSE(shortInt.Read(c));
    EXPECT_TRUE(shortInt.Error());

    // A string or count longer than what is left is refused; the target keeps what it held.
    RWFile longString(dir.write("str", bytes({0xFF, 0xFF, 0xFF, 0x7F, 'a'})).c_str(), "rb");
    RWCString text("kept");
    EXPECT_FALSE(longString.ReadString(text));
    EXPECT_EQ(text, "kept");
    RWFile bigCount(dir.write("count", bytes({9, 0, 0, 0, 1, 2, 3})).c_str(), "rb");
    size_t n = 77;
    EXPECT_FALSE(bigCount.ReadCount(n));
    EXPECT_EQ(n, 77u);
    RWFile fairCount(dir.write("fair", bytes({3, 0, 0, 0, 1, 2, 3})).c_str(), "rb");
    EXPECT_TRUE(fairCount.ReadCount(n));
    EXPECT_EQ(n, 3u);

    // A missing file with a mode is not created, and nothing on it succeeds.
    RWFile missing(dir.file("none").c_str(), "rb");
    EXPECT_FALSE(missing.isValid());
    EXPECT_FALSE(missing.Write(1) || missing.Read(c) || missing.Flush() || missing.SeekToEnd());
    EXPECT_TRUE(missing.Eof());
    EXPECT_TRUE(missing.IsEmpty());
    EXPECT_EQ(missing.CurOffset(), -1);
}

TEST(RWFile, OpensOrCreatesSeeksAndErases) {
    TempDir dir;
    const std::string path = dir.file("data");
    RWFile f(path.c_str());  // missing: created for reading and writing
    ASSERT_TRUE(f.isValid());
    EXPECT_TRUE(f.IsEmpty());
    ASSERT_TRUE(f.Write(7) && f.Write(8));
    EXPECT_EQ(f.CurOffset(), 8);
    EXPECT_FALSE(f.IsEmpty());
    EXPECT_EQ(f.CurOffset(), 8);  // asking left the position alone
    ASSERT_TRUE(f.SeekTo(4));
    int v = 0;
    EXPECT_TRUE(f.Read(v));
    EXPECT_EQ(v, 8);
    EXPECT_FALSE(f.Read(v));  // past the end: failed
    // Erase truncates and clears the failure.
    EXPECT_TRUE(f.Erase());
    EXPECT_TRUE(f.good());
    EXPECT_TRUE(f.IsEmpty());
    EXPECT_EQ(f.CurOffset(), 0);

    ASSERT_TRUE(f.Write(5) && f.Flush());
    RWFile again(path.c_str());  // existing: opened, not truncated
    EXPECT_TRUE(again.SeekToBegin() && again.Read(v));
    EXPECT_EQ(v, 5);
}

TEST(RWFile, ReportsAFullDevice) {
    RWFile full("/dev/full", "wb");
    ASSERT_TRUE(full.isValid());
    // The C library buffers the item; the failure shows when it is flushed.
    full.Write(1);
    EXPECT_FALSE(full.Flush());
    EXPECT_FALSE(full.good());
}
