#include "vfc/text/vOfstream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "vfc/persist/vPistream.h"
#include "vfc/testing/TempDir.h"
#include "vfc/testing/TextMode.h"

using vfc::testing::InTextMode;
using vfc::testing::TempDir;

namespace {

// Records the size of every piece handed to it; refuses pieces beyond a total of limit bytes,
// as a full disk would.
class PieceRecorder : public std::streambuf {
  public:
    explicit PieceRecorder(size_t limit) : aLimit(limit) {}
    std::vector<std::streamsize> pieces;
    std::string bytes;

  protected:
    std::streamsize xsputn(const char* s, std::streamsize n) override {
        pieces.push_back(n);
        if (bytes.size() + static_cast<size_t>(n) > aLimit) return 0;
        bytes.append(s, static_cast<size_t>(n));
        return n;
    }

  private:
    size_t aLimit;
};

}  // namespace

TEST(vOfstreamTest, OpenModesTruncateAppendAndCloseOnDestruction) {
    TempDir dir;
    const std::string path = dir.write("out.txt", "old\r\n");
    vOfstream out;
    ASSERT_TRUE(out.fOpenTextAppend(vFile(path.c_str())));
    EXPECT_FALSE(out.fBinary());
    EXPECT_TRUE(out.fWriteLine(vString("new")));
    EXPECT_TRUE(out.fClose());
    ASSERT_TRUE(out.fOpenBinaryAppend(vFile(path.c_str())));
    EXPECT_TRUE(out.fBinary());
    EXPECT_TRUE(out.fWrite(vString("a\0b", 3)));
    EXPECT_TRUE(out.fClose());
    EXPECT_TRUE(out.fClose());  // nothing left to close is no failure
    // A text open keeps the C runtime's meaning: on Windows it writes the line feed of the line
    // end as carriage return and line feed.
    EXPECT_EQ(TempDir::read(path), "old\r\n" + InTextMode("new\r\n") + std::string("a\0b", 3));

    ASSERT_TRUE(out.fOpenText(vFile(path.c_str())));
    EXPECT_TRUE(out.fWrite("x", 1));
    EXPECT_TRUE(out.fClose());
    EXPECT_EQ(TempDir::read(path), "x");

    {
        vOfstream last;
        ASSERT_TRUE(last.fOpenTextAppend(vFile(path.c_str())));
        EXPECT_TRUE(last.fWriteLine("unclosed", 8));
    }
    EXPECT_EQ(TempDir::read(path), "x" + InTextMode("unclosed\r\n"));
}

TEST(vOfstreamTest, FailureSticksUntilTheNextOpen) {
    TempDir dir;
    vOfstream out;
    EXPECT_FALSE(out.fOpenText(vFile(dir.file("no/such/dir/f.txt").c_str())));
    EXPECT_FALSE(out.fWrite("abc", 3));
    EXPECT_FALSE(out.fWrite(nullptr, 0));
    EXPECT_FALSE(out.fClose());

    const std::string path = dir.file("ok.txt");
    ASSERT_TRUE(out.fOpenText(vFile(path.c_str())));
    EXPECT_TRUE(out.fWrite("data", 4));
    // After a failure a line write adds no line end, even once the stream could write again.
    out.setstate(std::ios_base::failbit);
    EXPECT_FALSE(out.fWriteLine("more", 4));
    out.clear();
    EXPECT_TRUE(out.fClose());
    EXPECT_EQ(TempDir::read(path), "data");
}

TEST(vOfstreamTest, LargeWritesGoInPiecesAndStopAtTheFirstFailure) {
    TempDir dir;
    vOfstream out;
    ASSERT_TRUE(out.fOpenBinary(vFile(dir.file("big.bin").c_str())));
    std::ostream& os = out;
    std::streambuf* own = os.rdbuf();
    const std::string data(10000, 'q');

    PieceRecorder all(SIZE_MAX);
    os.rdbuf(&all);
    EXPECT_TRUE(out.fWrite(data.data(), 10000));
    EXPECT_EQ(all.pieces, (std::vector<std::streamsize>{4096, 4096, 1808}));
    EXPECT_EQ(all.bytes, data);

    // The second piece is refused: neither the third nor the line end is tried.
    PieceRecorder full(5000);
    os.rdbuf(&full);
    EXPECT_FALSE(out.fWriteLine(data.data(), 10000));
    EXPECT_EQ(full.pieces, (std::vector<std::streamsize>{4096, 4096}));

    os.rdbuf(own);
    out.clear();
    EXPECT_TRUE(out.fClose());
}

TEST(vOfstreamTest, BinaryOpenWritesTheHeaderForPersistentObjectExtensionsOnly) {
    TempDir dir;
    for (const char* name : {"a.vor", "b.VOR", "c.Dix"}) {
        const std::string path = dir.file(name);
        vOfstream out;
        ASSERT_TRUE(out.fOpenBinary(vFile(path.c_str()))) << name;
        EXPECT_TRUE(out.fWrite("tail", 4));
        ASSERT_TRUE(out.fClose());
        // The file starts with the stream's own object, then the data follows.
        std::istringstream in(TempDir::read(path));
        vPistream objects(in);
        std::unique_ptr<RWCollectable> header(RWCollectable::recursiveRestoreFrom(objects));
        ASSERT_NE(header, nullptr) << name;
        EXPECT_EQ(header->isA(), vOfstream::classIsA());
        std::string rest;
        in >> rest;
        EXPECT_EQ(rest, "tail") << name;
    }
    // No header for xml, for extensions not inside the type name, for an empty extension, and
    // for the other opens.
    for (const char* name : {"e.xml", "f.XML", "noext", "g.vorlandixx", "i."}) {
        const std::string path = dir.file(name);
        vOfstream out;
        ASSERT_TRUE(out.fOpenBinary(vFile(path.c_str()))) << name;
        EXPECT_TRUE(out.fClose());
        EXPECT_EQ(TempDir::read(path), "") << name;
    }
    vOfstream out;
    ASSERT_TRUE(out.fOpenText(vFile(dir.file("j.vor").c_str())));
    ASSERT_TRUE(out.fOpenBinaryAppend(vFile(dir.file("k.vor").c_str())));
    EXPECT_TRUE(out.fClose());
    EXPECT_EQ(TempDir::read(dir.file("j.vor")) + TempDir::read(dir.file("k.vor")), "");
}

TEST(vOfstreamTest, FullDiskIsReportedByCloseOrByALargeWrite) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    vOfstream out;
    ASSERT_TRUE(out.fOpenText(vFile("/dev/full")));
    // Small writes land in the buffer; the flush at the close finds the disk full.
    EXPECT_TRUE(out.fWriteLine(vString("hello")));
    EXPECT_FALSE(out.fClose());

    ASSERT_TRUE(out.fOpenBinaryAppend(vFile("/dev/full")));
    const std::string big(1 << 20, 'z');
    EXPECT_FALSE(out.fWrite(big.data(), static_cast<unsigned>(big.size())));
    EXPECT_FALSE(out.fClose());
}
