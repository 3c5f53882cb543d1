#include "vfc/text/vIfstream.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "vfc/persist/vPostream.h"
#include "vfc/testing/TempDir.h"
#include "vfc/text/vRegExp.h"

namespace {

using vfc::testing::TempDir;

// The line reader written the plain way, one character at a time.
bool referenceGetLine(std::istream& in, std::string& line) {
    line.clear();
    if (in.fail()) return false;
    for (;;) {
        int c = in.get();
        if (c == std::char_traits<char>::eof()) return !line.empty();
        if (c == '\n') return true;
        if (c == '\r') {
            if (in.peek() == '\n') in.get();
            return true;
        }
        line += static_cast<char>(c);
    }
}

std::vector<std::string> linesOf(const std::string& path) {
    vIfstream in;
    std::vector<std::string> out;
    if (!in.fOpenText(vFile(path.c_str()))) return out;
    vString line;
    while (in.fGetLine(line))
        out.emplace_back(line.data(), line.length());
    return out;
}

std::vector<std::string> tokensOf(const vSlistvString& list) {
    std::vector<std::string> out;
    vSlistvStringIter it(list);
    while (it.fAdvance())
        out.emplace_back(it.aKey().data());
    return out;
}

// Random text of mixed line ends; long runs and NUL and Latin-1 bytes included.
std::string randomText(std::mt19937& rng, size_t approxBytes) {
    static const char* const ends[] = {"\n", "\r\n", "\r", "\r\r", "\n\r"};
    static const char alphabet[] = "ab \t\xe9\0=\"";
    std::string s;
    while (s.size() < approxBytes) {
        size_t run = rng() % 8 == 0 ? rng() % 400 : rng() % 12;
        for (size_t i = 0; i < run; ++i)
            s += alphabet[rng() % (sizeof alphabet - 1)];
        if (rng() % 10) s += ends[rng() % 5];
    }
    return s;
}

// Reads file with fGetLine and with the reference side by side, comparing every line and the
// failure state after it.
void expectSameAsReference(const std::string& path, const std::string& what) {
    vIfstream in;
    ASSERT_TRUE(in.fOpenBinary(false, vFile(path.c_str()))) << what;
    std::ifstream ref(path, std::ios::binary);
    vString line;
    std::string expected;
    for (size_t n = 0;; ++n) {
        bool got = in.fGetLine(line);
        bool want = referenceGetLine(ref, expected);
        ASSERT_EQ(got, want) << what << " line " << n;
        ASSERT_EQ(std::string(line.data(), line.length()), expected) << what << " line " << n;
        ASSERT_EQ(in.aFail(), ref.fail()) << what << " line " << n;
        if (!got) break;
    }
}

TEST(vIfstream, GetLineMatchesCharacterByCharacterReading) {
    TempDir dir;
    std::mt19937 rng(4711);
    for (int i = 0; i < 300; ++i) {
        std::string name = "small" + std::to_string(i);
        expectSameAsReference(dir.write(name, randomText(rng, rng() % 3000)), name);
    }
    // Larger than the stream's buffer, and a line longer than it.
    expectSameAsReference(dir.write("big", randomText(rng, 700 * 1024)), "big");
    std::string longLine(300 * 1024, 'x');
    expectSameAsReference(dir.write("long", longLine + "\r\n" + longLine), "long");
    // A CR LF pair, and a CR alone, around every plausible buffer edge.
    for (size_t edge : {size_t{8191}, size_t{131071}, size_t{131072}}) {
        for (size_t at = edge - 2; at <= edge + 1; ++at) {
            std::string text(at, 'y');
            for (size_t j = 100; j < at; j += 1000)
                text[j] = '\n';
            std::string name = "edge" + std::to_string(at);
            expectSameAsReference(dir.write(name, text + "\r\nz\rw\r"), name);
            expectSameAsReference(dir.write(name + "cr", text + "\r"), name + "cr");
        }
    }
}

TEST(vIfstream, GetLineEdgesAndStateAfterwards) {
    TempDir dir;
    using L = std::vector<std::string>;
    EXPECT_EQ(linesOf(dir.write("mixed", "a\r\nb\rc\n\nd")), (L{"a", "b", "c", "", "d"}));
    EXPECT_EQ(linesOf(dir.write("ended", "a\nb\n")), (L{"a", "b"}));
    EXPECT_EQ(linesOf(dir.write("empty", "")), L{});
    EXPECT_EQ(linesOf(dir.write("blank", "\n\r\n\r")), (L{"", "", ""}));

    // Other reads carry on exactly where the line reader stopped.
    vIfstream in;
    ASSERT_TRUE(in.fOpenText(vFile(dir.write("mix", "ab\r\ncd\ref").c_str())));
    vString line("left over");
    EXPECT_TRUE(in.fGetLine(line));
    EXPECT_EQ(in.get(), 'c');
    EXPECT_EQ(in.tellg(), std::streampos(5));
    EXPECT_TRUE(in.fGetLine(line));
    EXPECT_EQ(line, "d");
    EXPECT_TRUE(in.fGetLine(line));
    EXPECT_EQ(line, "ef");
    EXPECT_TRUE(in.aFail());
    EXPECT_FALSE(in.fGetLine(line));
    EXPECT_EQ(line, "");

    vIfstream unopened;
    EXPECT_FALSE(unopened.fGetLine(line));
    EXPECT_TRUE(unopened.aFail());
}

TEST(vIfstream, OpensRecordModeAndRefuseWhatCannotBeRead) {
    TempDir dir;
    std::string path = dir.write("a.txt", "text\n");
    vIfstream in;
    EXPECT_TRUE(in.fOpenBinary(false, vFile(path.c_str())));
    EXPECT_TRUE(in.fBinary());
    EXPECT_EQ(in.fFileInfo().fType(), vFile::eNone);
    EXPECT_TRUE(in.fOpenText(vFile(path.c_str())));
    EXPECT_FALSE(in.fBinary());
    EXPECT_EQ(in.fFileInfo().fPath(), path.c_str());

    // A copy takes the mode and the file, not the open file.
    vIfstream copy(in);
    EXPECT_FALSE(copy.is_open());
    EXPECT_EQ(copy.fFileInfo().fPath(), path.c_str());
    std::unique_ptr<RWCollectable> made(in.copy());
    EXPECT_EQ(made->isA(), vIfstream::classIsA());

    for (const std::string& bad : {dir.file("missing"), dir.path()}) {
        EXPECT_FALSE(in.fOpenText(vFile(bad.c_str()))) << bad;
        EXPECT_FALSE(in.is_open()) << bad;
        EXPECT_TRUE(in.aFail()) << bad;
        EXPECT_FALSE(in.fOpenBinary(vFile(bad.c_str()))) << bad;
        EXPECT_TRUE(in.fBinary()) << bad;
    }
    // A failed stream opens again.
    EXPECT_TRUE(in.fOpenText(vFile(path.c_str())));
    vString line;
    EXPECT_TRUE(in.fGetLine(line));
    EXPECT_EQ(line, "text");
}

TEST(vIfstream, BinaryOpenTypesTheFileAndReadsFromTheStart) {
    TempDir dir;
    std::stringbuf header;
    vPostream out(&header);
    out << vString("vorlandix-ndt-80");
    std::string latin(1024, '\xe9');
    struct Row {
        const char* name;
        std::string bytes;
        vFile::FileTypeEnum type;
    } rows[] = {
        {"book.fm", "<BookFile 6.0>\n", vFile::eMakerBook},
        {"page.HTML", "hello\n", vFile::eHTML},
        {"latin.dat", latin, vFile::eText},
        {"zero.dat", std::string("ab\0cd", 5), vFile::eBinary},  // "nul.*" is a device on Windows
        {"store.ndt", header.str() + "rest\n", vFile::eVorlandixNDT80},
    };
    for (const Row& row : rows) {
        vIfstream in;
        ASSERT_TRUE(in.fOpenBinary(vFile(dir.write(row.name, row.bytes).c_str()))) << row.name;
        EXPECT_EQ(in.fFileInfo().fType(), row.type) << row.name;
        vString all;
        EXPECT_TRUE(in.fRead(all, 5000)) << row.name;
        EXPECT_EQ(std::string(all.data(), all.length()), row.bytes) << row.name;
    }
}

// A FIFO cannot be opened a second time to start over (that would wait for another writer and
// its data would be gone): the bytes typed are the first bytes read, and nothing is lost.
TEST(vIfstream, BinaryOpenOfAFifoOrDeviceKeepsWhatItTyped) {
    TempDir dir;
    std::string fifo = dir.makeFifo("pipe");
    if (fifo.empty()) GTEST_SKIP() << "no FIFOs here";
    const std::string content = "<html>\n<body>" + std::string(3000, 'x') + "</body>\n";
    std::thread writer([&] { std::ofstream(fifo, std::ios::binary) << content; });
    auto reading = std::async(std::launch::async, [&] {
        vIfstream in;
        std::pair<vFile::FileTypeEnum, std::string> got{vFile::eNone, ""};
        if (!in.fOpenBinary(vFile(fifo.c_str()))) return got;
        got.first = in.fFileInfo().fType();
        vString all;
        in.fRead(all, 100000);
        got.second.assign(all.data(), all.length());
        return got;
    });
    bool done = reading.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
    if (!done) std::ofstream{fifo};  // lets a reader stuck in a second open go
    writer.join();
    ASSERT_TRUE(done) << "the binary open waited to open the FIFO again";
    auto got = reading.get();
    EXPECT_EQ(got.first, vFile::eHTML);
    EXPECT_EQ(got.second, content);

    vIfstream zero;
    ASSERT_TRUE(zero.fOpenBinary(vFile("/dev/zero")));
    EXPECT_EQ(zero.fFileInfo().fType(), vFile::eBinary);
    vString bytes;
    EXPECT_TRUE(zero.fRead(bytes, 10));
    EXPECT_EQ(std::string(bytes.data(), bytes.length()), std::string(10, '\0'));
}

TEST(vIfstream, LineTokenizers) {
    TempDir dir;
    vIfstream in;
    ASSERT_TRUE(in.fOpenText(vFile(dir.write("t",
                                             "one \"two three\"  four\n"
                                             "a\\ b \"\" \"q\\\"\"\n"
                                             "ab\\\n"
                                             "x \"x\"y z\n"
                                             "\"open\n"
                                             "k1=v1 k2=v2\n")
                                       .c_str())));
    vSlistvString tokens;
    bool error = true;
    vString message("before. ");
    using T = std::vector<std::string>;
    EXPECT_TRUE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_FALSE(error);
    EXPECT_EQ(tokensOf(tokens), (T{"one", "two three", "four"}));
    EXPECT_TRUE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_EQ(tokensOf(tokens), (T{"a b", "", "q\""}));
    EXPECT_TRUE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_TRUE(error);
    EXPECT_EQ(tokensOf(tokens), T{});
    EXPECT_EQ(message, "before. Last character does not exist for escape.");
    message = "";
    EXPECT_TRUE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_TRUE(error);
    EXPECT_EQ(tokensOf(tokens), T{"x"});
    EXPECT_EQ(message, "Unexpected character y found after a quoted string.");
    message = "";
    EXPECT_TRUE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_TRUE(error);
    EXPECT_EQ(message, "A closing \" was not found.");

    EXPECT_TRUE(in.fGetLineTokens(tokens, vRegExp("[^ =]+")));
    EXPECT_EQ(tokensOf(tokens), (T{"k1", "v1", "k2", "v2"}));
    EXPECT_FALSE(in.fGetLineTokens(tokens, vRegExp("[^ =]+")));
    EXPECT_EQ(tokens.fEntries(), 0u);
    EXPECT_FALSE(in.fGetLineAndParse(tokens, error, message));
    EXPECT_FALSE(error);
}

TEST(vIfstream, ParsesINIWithGarbage) {
    TempDir dir;
    vIfstream in;
    ASSERT_TRUE(in.fOpenText(vFile(
        dir.write("ini",
                  "k=v\r\ngarbage\n[S]\na=b=c\n\x01\xff\n[Empty]\n[S]\n a = 1\na=dup\n[x\n=\n")
            .c_str())));
    vHashvStringvHvSvS sections;
    in.fParseAsINI(sections);
    EXPECT_EQ(sections.fEntries(), 2u);  // [Empty] never got a key
    ASSERT_TRUE(sections.fLookup(vString("")));
    EXPECT_EQ(sections.aValue().fEntries(), 1u);
    ASSERT_TRUE(sections.aValue().fLookup(vString("k")));
    EXPECT_EQ(sections.aValue().aValue(), "v");
    ASSERT_TRUE(sections.fLookup(vString("[S]")));
    vHashvStringvString& s = sections.aValue();
    EXPECT_EQ(s.fEntries(), 3u);
    ASSERT_TRUE(s.fLookup(vString("a")));
    EXPECT_EQ(s.aValue(), "c");  // the first value of a key stays
    ASSERT_TRUE(s.fLookup(vString(" a ")));
    EXPECT_EQ(s.aValue(), " 1");
    ASSERT_TRUE(s.fLookup(vString("")));  // "[x" is no section; "=" gives the empty key
    EXPECT_EQ(s.aValue(), "");
}

TEST(vIfstream, BulkReadsAndCopy) {
    TempDir dir;
    std::mt19937 rng(7);
    std::string bytes = randomText(rng, 2500).substr(0, 2500);
    std::string path = dir.write("bulk", bytes);
    vIfstream in;
    ASSERT_TRUE(in.fOpenBinary(false, vFile(path.c_str())));
    vString out("old");
    EXPECT_TRUE(in.fRead(out, 1000));
    EXPECT_EQ(std::string(out.data(), out.length()), bytes.substr(0, 1000));
    EXPECT_TRUE(in.fRead(out, 3000));
    EXPECT_EQ(std::string(out.data(), out.length()), bytes.substr(1000));
    EXPECT_FALSE(in.fRead(out, 10));
    EXPECT_EQ(out.length(), 0u);

    ASSERT_TRUE(in.fOpenBinary(false, vFile(path.c_str())));
    vString line;
    ASSERT_TRUE(in.fGetLine(line));
    std::ostringstream rest;
    rest << in;
    size_t consumed = bytes.size() - rest.str().size();
    EXPECT_LE(consumed - line.length(), 2u);
    EXPECT_EQ(bytes.substr(0, line.length()), std::string(line.data(), line.length()));
    EXPECT_EQ(rest.str(), bytes.substr(consumed));
    EXPECT_TRUE(in.aFail());
}

}  // namespace
