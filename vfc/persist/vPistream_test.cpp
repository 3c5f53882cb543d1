// Objects read from hostile data through vPistream and RWFile: references to objects that a
// collection refused, and references nested into exponentially many copies.
#include "vfc/persist/vPistream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vHash.h"
#include "vfc/collections/vSet.h"
#include "vfc/collections/vSlist.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/testing/TempDir.h"

namespace {

// The tokens of a portable stream, one a line.
std::string tokens(std::initializer_list<std::string> items) {
    std::string out;
    for (const std::string& t : items) out += t + "\n";
    return out;
}

// A vString object holding text.
std::string str(const std::string& text) {
    return tokens({":", "263", "\\[", std::to_string(text.size()), "\"" + text + "\"", "\\]"});
}

std::string ref(int ordinal) {
    return tokens({"@", std::to_string(ordinal)});
}

std::string text(const RWCollectable* p) {
    auto* s = dynamic_cast<const vString*>(p);
    return s ? std::string(s->data(), s->length()) : "(not a string)";
}

// One object read from bytes.
struct Reading {
    explicit Reading(const std::string& bytes)
        : buf(bytes), in(&buf), object(RWCollectable::recursiveRestoreFrom(in)) {}
    std::stringbuf buf;
    vPistream in;
    std::unique_ptr<RWCollectable> object;
};

// A set refuses a repeated element, a hash an entry with a nil side or a repeated key; a later
// reference to the refused object must still find it (and get a copy), never freed memory.
TEST(vPistream, ReferencesToRefusedObjectsFindThem) {
    const std::string set = tokens({":", "514", "\\[", "3"}) + str("a") + str("a") + ref(2) +
                            tokens({"\\]"});
    const std::string typedSet = tokens({":", "548", "\\[", "3"}) + str("a") + str("a") + ref(2) +
                                 tokens({"\\]"});
    // The entry k -> nil is dropped; x then takes a copy of k as its value.
    const std::string nilValue = tokens({":", "512", "\\[", "2"}) + str("k") + tokens({"N"}) +
                                 str("x") + ref(1) + tokens({"\\]"});
    const std::string typedNilValue = tokens({":", "550", "\\[", "2"}) + str("k") +
                                      tokens({"N"}) + str("x") + ref(1) + tokens({"\\]"});
    // The second k -> w is refused; x then takes a copy of w.
    const std::string repeatedKey = tokens({":", "550", "\\[", "3"}) + str("k") + str("v") +
                                    str("k") + str("w") + str("x") + ref(4) + tokens({"\\]"});
    struct Case {
        const char* name;
        std::string bytes;
        size_t entries;
        const char* key;    // looked up in a hash
        const char* value;  // what it maps to
    } cases[] = {
        {"set", set, 1, nullptr, nullptr},
        {"typed set", typedSet, 1, nullptr, nullptr},
        {"hash, nil value", nilValue, 1, "x", "k"},
        {"typed hash, nil value", typedNilValue, 1, "x", "k"},
        {"typed hash, repeated key", repeatedKey, 2, "x", "w"},
    };
    for (const Case& c : cases) {
        Reading r(c.bytes);
        ASSERT_TRUE(r.in.good()) << c.name;
        const std::unique_ptr<RWCollectable>& got = r.object;
        ASSERT_NE(got, nullptr) << c.name;
        if (auto* s = dynamic_cast<vSet*>(got.get())) {
            EXPECT_EQ(s->entries(), c.entries) << c.name;
            vString a("a");
            EXPECT_NE(s->find(&a), nullptr) << c.name;
        } else if (auto* s = dynamic_cast<vSetvString*>(got.get())) {
            EXPECT_EQ(s->fEntries(), c.entries) << c.name;
            EXPECT_TRUE(s->fContains(vString("a"))) << c.name;
        } else if (auto* h = dynamic_cast<vHash*>(got.get())) {
            EXPECT_EQ(h->fEntries(), c.entries) << c.name;
            RWCollectable* key = nullptr;
            RWCollectable* value = nullptr;
            EXPECT_TRUE(h->fFind(vString(c.key), key, value)) << c.name;
            EXPECT_EQ(text(value), c.value) << c.name;
        } else if (auto* h = dynamic_cast<vHashvStringvString*>(got.get())) {
            EXPECT_EQ(h->fEntries(), c.entries) << c.name;
            ASSERT_TRUE(h->fLookup(vString(c.key))) << c.name;
            EXPECT_EQ(text(&h->aValue()), c.value) << c.name;
        } else {
            ADD_FAILURE() << c.name << ": class " << got->isA();
        }
    }
}

TEST(vPistream, BinaryReferencesToRefusedObjectsFindThem) {
    vfc::testing::TempDir dir;
    const std::string path = dir.file("set.bin");
    {
        RWFile f(path.c_str(), "wb");
        f.Write(':');
        f.Write(static_cast<unsigned short>(514));
        f.Write(3u);
        for (int i = 0; i < 2; ++i) {
            f.Write(':');
            f.Write(static_cast<unsigned short>(263));
            f.WriteString("a", 1);
        }
        f.Write('@');
        f.Write(2u);
        ASSERT_TRUE(f.good());
    }
    RWFile f(path.c_str(), "rb");
    std::unique_ptr<RWCollectable> got(RWCollectable::recursiveRestoreFrom(f));
    ASSERT_TRUE(f.good());
    auto* set = dynamic_cast<vSet*>(got.get());
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->entries(), 1u);
}

// Lists of `fanOut` elements: the first written in full, the others references to it, nested
// `levels` deep around one string. Read by owning lists this is fanOut^levels strings.
std::string nestedReferences(int levels, int fanOut) {
    std::string head, tail;
    for (int level = 0; level < levels; ++level) {
        head += tokens({":", "515", "\\[", std::to_string(fanOut)});
        std::string refs;
        for (int i = 1; i < fanOut; ++i) refs += ref(level + 1);
        tail = refs + tokens({"\\]"}) + tail;
    }
    return head + str("x") + tail;
}

size_t countStrings(const RWCollectable* p) {
    auto* list = dynamic_cast<const vSlist*>(p);
    if (!list) return dynamic_cast<const vString*>(p) ? 1 : 0;
    size_t n = 0;
    for (size_t i = 0; i < list->entries(); ++i) n += countStrings(list->at(i));
    return n;
}

// Copies of referenced objects are charged against a budget that grows with the bytes read: a
// modest fan-out reads in full, an exponential one (10^8 strings from about 500 bytes) and a
// long string copied many times fail the stream at once instead of exhausting memory.
TEST(vPistream, NestedReferencesStayWithinABudget) {
    {
        Reading r(nestedReferences(3, 10));
        ASSERT_TRUE(r.in.good());
        EXPECT_EQ(countStrings(r.object.get()), 1000u);
    }
    const std::string exponential = nestedReferences(8, 10);
    EXPECT_LT(exponential.size(), 700u);
    const std::string longText(60000, 'z');
    std::string copies = tokens({":", "515", "\\[", "200"}) + str(longText);
    for (int i = 1; i < 200; ++i) copies += ref(1);
    copies += tokens({"\\]"});
    for (const std::string* bytes : {&exponential, static_cast<const std::string*>(&copies)}) {
        Reading r(*bytes);
        EXPECT_TRUE(r.in.bad());
        EXPECT_EQ(r.object, nullptr);
    }
}

TEST(vPistream, BinaryNestedReferencesStayWithinABudget) {
    vfc::testing::TempDir dir;
    const std::string path = dir.file("nested.bin");
    {
        RWFile f(path.c_str(), "wb");
        for (int level = 0; level < 8; ++level) {
            f.Write(':');
            f.Write(static_cast<unsigned short>(515));
            f.Write(10u);
        }
        f.Write(':');
        f.Write(static_cast<unsigned short>(263));
        f.WriteString("x", 1);
        for (int level = 7; level >= 0; --level)
            for (int i = 1; i < 10; ++i) {
                f.Write('@');
                f.Write(static_cast<unsigned>(level + 1));
            }
        ASSERT_TRUE(f.good());
    }
    RWFile f(path.c_str(), "rb");
    std::unique_ptr<RWCollectable> got(RWCollectable::recursiveRestoreFrom(f));
    EXPECT_FALSE(f.good());
    EXPECT_EQ(got, nullptr);
}

}  // namespace
