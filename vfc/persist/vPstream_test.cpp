// vPstream as an object pipe, the stream operators' framing, and the file-information header.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/persist/vPstream.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/text/vTemplates.h"

namespace {

TEST(vPstreamTest, WrittenObjectsReadBackInOrderAndLeaveThePipe) {
    vPstream pipe;
    pipe.insert() << vString("abc") << vString("") << vString("line\r\nend");
    pipe.flush();
    EXPECT_NE(pipe.length(), 0u);
    vString a, b, c;
    pipe.extract() >> a >> b >> c;
    EXPECT_TRUE(pipe.extract().good());
    EXPECT_EQ(a, "abc");
    EXPECT_EQ(b, "");
    EXPECT_EQ(c, "line\r\nend");
    EXPECT_EQ(pipe.length(), 0u);

    // An empty pipe fails the reader (the buffer answers 255, which no token starts with).
    vString d("keep");
    pipe.extract() >> d;
    EXPECT_TRUE(pipe.extract().fail());
    EXPECT_EQ(d, "keep");

    // Output waits in its buffer until flush(), which also gives fresh streams for reading.
    vPstream direct;
    direct.insert() << vString("now");
    EXPECT_EQ(direct.length(), 0u);
    vString e;
    direct.extract() >> e;
    EXPECT_TRUE(direct.extract().fail());
    direct.flush();
    direct.extract() >> e;
    EXPECT_EQ(e, "now");
}

TEST(vPstreamTest, ThePipeHoldsExactlyTheBytesNotYetRead) {
    vPstream pipe;
    pipe.insert() << vString("vorlandix-ndt-80");
    pipe.flush();
    EXPECT_EQ(pipe, ":\n263\n\\[\n16\n\"vorlandix-ndt-80\"\n\\]\n");

    // Saving a pipe saves its bytes as a string; a copy holds the same text.
    vPstream copy(pipe);
    EXPECT_EQ(copy, pipe);
    std::unique_ptr<RWCollectable> dup(pipe.copy());
    EXPECT_EQ(dup->isA(), 771);
    EXPECT_EQ(*static_cast<vString*>(dup.get()), pipe);
}

TEST(vPstreamTest, CopiesShareStreamsAndOutliveTheSource) {
    auto* source = new vPstream;
    source->insert() << vString("x");
    vPstream copy(*source);
    // Destroying the source hands its pending output to it, then detaches the shared streams.
    delete source;
    copy.insert() << vString("y");
    copy.flush();  // the detached streams drop the bytes instead of writing into a dead pipe
    EXPECT_EQ(copy, "");
    copy.insert() << vString("z");
    copy.flush();
    vString z;
    copy.extract() >> z;
    EXPECT_EQ(z, "z");
}

TEST(vPstreamTest, EveryRegisteredClassCrossesThePipe) {
    // Every class of the identifier table that the library provides so far is registered, and a
    // new object of it goes through a pipe and comes back as the same class with the same bytes.
    int registered = 0;
#define VFC_TEST_CLASS(name, id)                                                  \
    if (std::unique_ptr<RWCollectable> made{getRWFactory()->create(id)}) {        \
        ++registered;                                                             \
        EXPECT_EQ(made->isA(), id) << #name;                                      \
        vPstream pipe;                                                            \
        made->recursiveSaveOn(pipe.insert());                                     \
        pipe.flush();                                                             \
        const vString bytes(pipe);                                                \
        std::unique_ptr<RWCollectable> back{                                      \
            RWCollectable::recursiveRestoreFrom(pipe.extract())};                 \
        ASSERT_NE(back, nullptr) << #name;                                        \
        EXPECT_EQ(back->isA(), id) << #name;                                      \
        EXPECT_EQ(pipe.length(), 0u) << #name;                                    \
        back->recursiveSaveOn(pipe.insert());                                     \
        pipe.flush();                                                             \
        EXPECT_EQ(pipe, bytes) << #name;                                          \
    }
    VFC_CLASS_ID_TABLE(VFC_TEST_CLASS)
#undef VFC_TEST_CLASS
    // Every class of the table but the few whose identifiers are reserved for classes the
    // library does not provide.
    EXPECT_EQ(registered, 83);
}

TEST(vPstreamTest, NestedCollectionBytes) {
    vHashvStringvSlvString index;
    vSlistvString files;
    files.fInsert("a b");
    index.fInsert("k", files);
    vPstream pipe;
    index.recursiveSaveOn(pipe.insert());
    pipe.flush();
    EXPECT_EQ(pipe,
              ":\n561\n\\[\n1\n"                           // the hash and its count
              ":\n263\n\\[\n1\n\"k\"\n\\]\n"                // the key
              ":\n544\n\\[\n1\n:\n263\n\\[\n3\n\"a b\"\n\\]\n\\]\n"  // the list value
              "\\]\n");
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(pipe.extract()));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(static_cast<vHashvStringvSlvString*>(back.get())->fIsEqual(index));
}

TEST(vPstreamTest, FileInformationHeaderIsRecognised) {
    std::stringbuf buf;
    vPostream out(&buf);
    out << vString("vorlandix-ndt-80");
    std::string text;
    for (char c : buf.str())
        if (c != ' ' && c != '\n' && c != '\r' && c != '\t') text += c;
    EXPECT_EQ(text.substr(0, 5), ":263\\");
    // The header pattern of the content detector matches the stored object.
    vString stripped(text.c_str());
    size_t extent = 0;
    EXPECT_EQ(aVorlandixFileInfoTemplate().index(stripped, &extent, 0), 0u);
    EXPECT_EQ(extent, stripped.length());
}

TEST(vPstreamTest, StreamOperatorsRestoreIntoKnownObjects) {
    std::stringbuf buf;
    vPostream out(&buf);
    out << vString("a") << vInt(-42);
    EXPECT_EQ(buf.str(), ":\n263\n\\[\n1\n\"a\"\n\\]\n:\n259\n\\[\n-42\n\\]\n");
    vPistream back(&buf);
    vString a;
    vInt i;
    back >> a >> i;
    EXPECT_TRUE(back.good());
    EXPECT_EQ(a, "a");
    EXPECT_EQ(i.value(), -42);
    // A vInt where a vString is expected fails and leaves the string alone.
    std::stringbuf wrong(":\n259\n\\[\n5\n\\]\n");
    vPistream in(&wrong);
    vString s("keep");
    in >> s;
    EXPECT_TRUE(in.bad());
    EXPECT_EQ(s, "keep");
}

}  // namespace
