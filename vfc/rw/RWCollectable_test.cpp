// The object writer and reader: identifier framing, nil, back references within one operation,
// the factory, and what a hostile stream cannot do.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

constexpr RWClassID kHolderId = 0x7A01;

// Holds pointers it does not own, so the same object may be held twice: it shows sharing.
class Holder : public RWCollectable {
  public:
    std::vector<RWCollectable*> items;
    RWClassID isA() const override { return kHolderId; }
    RWCollectable* newSpecies() const override { return new Holder; }
    void saveGuts(RWvostream& s) const override {
        s << static_cast<unsigned>(items.size());
        for (auto* p : items) vfc::rw::saveObject(s, p);
    }
    void saveGuts(RWFile& f) const override {
        f.Write(static_cast<unsigned>(items.size()));
        for (auto* p : items) vfc::rw::saveObject(f, p);
    }
    void restoreGuts(RWvistream& s) override {
        size_t n = 0;
        s.getCount(n);
        for (size_t i = 0; i < n && s.good(); ++i) items.push_back(recursiveRestoreFrom(s));
    }
    void restoreGuts(RWFile& f) override {
        size_t n = 0;
        f.ReadCount(n);
        for (size_t i = 0; i < n && f.good(); ++i) items.push_back(recursiveRestoreFrom(f));
    }
};

// Owns what it holds, reading elements as an owning collection does.
class Owner : public Holder {
  public:
    ~Owner() override {
        for (auto* p : items) delete p;
    }
    RWClassID isA() const override { return kHolderId + 2; }
    RWCollectable* newSpecies() const override { return new Owner; }
    void restoreGuts(RWvistream& s) override {
        size_t n = 0;
        s.getCount(n);
        for (size_t i = 0; i < n && s.good(); ++i) items.push_back(vfc::rw::restoreOwned(s));
    }
};

RWCollectable* makeOwner() {
    return new Owner;
}
const vfc::rw::FactoryRegistration ownerRegistration(&makeOwner, kHolderId + 2);

RWCollectable* makeHolder() {
    return new Holder;
}
const vfc::rw::FactoryRegistration holderRegistration(&makeHolder, kHolderId);

std::string save(const RWCollectable& x) {
    std::stringbuf buf;
    RWpostream out(&buf);
    x.recursiveSaveOn(out);
    return buf.str();
}

TEST(RWCollectableTest, ObjectFramingNilAndBackReferences) {
    vString a("x");
    vString b("y");
    Holder h;
    h.items = {&a, nullptr, &b, &a};
    const std::string bytes = save(h);
    EXPECT_EQ(bytes,
              ":\n31233\n\\[\n4\n"
              ":\n263\n\\[\n1\n\"x\"\n\\]\n"
              "N\n"
              ":\n263\n\\[\n1\n\"y\"\n\\]\n"
              "@\n1\n"
              "\\]\n");

    std::stringbuf buf(bytes);
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_TRUE(in.good());
    auto* restored = dynamic_cast<Holder*>(back.get());
    ASSERT_NE(restored, nullptr);
    ASSERT_EQ(restored->items.size(), 4u);
    EXPECT_EQ(restored->items[1], nullptr);
    EXPECT_EQ(restored->items[0], restored->items[3]);  // shared stays shared
    EXPECT_NE(restored->items[0], restored->items[2]);
    EXPECT_EQ(*static_cast<vString*>(restored->items[0]), "x");
    EXPECT_EQ(*static_cast<vString*>(restored->items[2]), "y");
    delete restored->items[0];
    delete restored->items[2];

    // Each outermost call is an operation of its own: the same object is written in full again.
    std::stringbuf twice;
    RWpostream out(&twice);
    a.recursiveSaveOn(out);
    a.recursiveSaveOn(out);
    EXPECT_EQ(twice.str(), save(a) + save(a));
}

TEST(RWCollectableTest, OwnedRestoreCopiesSharedObjects) {
    vString a("shared");
    Owner saved;
    saved.items = {&a, &a};
    std::stringbuf buf(save(saved));
    saved.items.clear();  // not Owner's to destroy
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    auto* owner = dynamic_cast<Owner*>(back.get());
    ASSERT_NE(owner, nullptr);
    ASSERT_EQ(owner->items.size(), 2u);
    // An owning reader gets its own copy of an object it meets twice (each destroyed once).
    EXPECT_NE(owner->items[0], owner->items[1]);
    EXPECT_TRUE(owner->items[0]->isEqual(owner->items[1]));
}

TEST(RWCollectableTest, RestoreIntoAnExistingObject) {
    vString target("old");
    std::stringbuf buf(save(vString("new")));
    RWpistream in(&buf);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in, &target), &target);
    EXPECT_EQ(target, "new");

    // Another class than the target's fails and leaves the target alone.
    Holder h;
    std::stringbuf other(save(h));
    RWpistream in2(&other);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in2, &target), nullptr);
    EXPECT_TRUE(in2.bad());
    EXPECT_EQ(target, "new");
}

TEST(RWCollectableTest, HostileStreamsFailCleanly) {
    const char* hostile[] = {
        ":\n9999\n\\[\n\\]\n",                       // unknown class identifier
        ":\n263\n1\n\"a\"\n\\]\n",                   // missing object start
        ":\n263\n\\[\n1\n\"a\"\n",                   // missing object end
        "@\n0\n",                                     // reference before any object
        ":\n31235\n\\[\n1\n@\n0\n\\]\n",             // an object holding itself
        ":\n31235\n\\[\n2\n:\n263\n\\[\n0\n\"\"\n\\]\n@\n7\n\\]\n",  // ordinal never assigned
        "?\n",                                        // unknown tag
        ":\n31233\n\\[\n1000000\n\\]\n",             // count far beyond the data
    };
    for (const char* text : hostile) {
        std::stringbuf buf(text);
        RWpistream in(&buf);
        std::unique_ptr<RWCollectable> got(RWCollectable::recursiveRestoreFrom(in));
        EXPECT_TRUE(in.fail()) << text;
        EXPECT_EQ(got, nullptr) << text;
    }

    // Nesting beyond the limit fails instead of exhausting the stack.
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += ":\n31233\n\\[\n1\n";
    std::stringbuf buf(deep);
    RWpistream in(&buf);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in), nullptr);
    EXPECT_TRUE(in.bad());
}

TEST(RWCollectableTest, FactoryCreatesByIdentifier) {
    std::unique_ptr<RWCollectable> s(getRWFactory()->create(263));
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->isA(), 263);
    EXPECT_EQ(getRWFactory()->create(0x7A02), nullptr);
    rwAddToFactory(&makeHolder, 0x7A02);
    std::unique_ptr<RWCollectable> h(getRWFactory()->create(0x7A02));
    EXPECT_NE(h, nullptr);
    rwRemoveFromFactory(0x7A02);
    EXPECT_EQ(getRWFactory()->create(0x7A02), nullptr);
}

TEST(RWCollectableTest, BinaryFileForm) {
    auto path = std::filesystem::temp_directory_path() /
                ("vfc_rwfile_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    vString a(RWCString("ab\0c", 4));
    Holder h;
    h.items = {&a, nullptr, &a};
    {
        RWFile f(path.string().c_str(), "wb");
        ASSERT_TRUE(f.isValid());
        h.recursiveSaveOn(f);
        f.Write(-2);
        f.Write(2.5);
        ASSERT_TRUE(f.good());
    }
    {
        RWFile f(path.string().c_str(), "rb");
        std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(f));
        auto* restored = dynamic_cast<Holder*>(back.get());
        ASSERT_NE(restored, nullptr);
        ASSERT_EQ(restored->items.size(), 3u);
        EXPECT_EQ(restored->items[0], restored->items[2]);
        EXPECT_EQ(restored->items[1], nullptr);
        EXPECT_EQ(*static_cast<vString*>(restored->items[0]), a);
        delete restored->items[0];
        int i = 0;
        double d = 0;
        EXPECT_TRUE(f.Read(i) && f.Read(d));
        EXPECT_EQ(i, -2);
        EXPECT_EQ(d, 2.5);
        EXPECT_FALSE(f.Read(i));  // at the end
        EXPECT_FALSE(f.good());
    }
    // Exact bytes: tag, identifier and counts little-endian; a string as length and bytes.
    {
        RWFile f(path.string().c_str(), "wb");
        vString("hi").recursiveSaveOn(f);
    }
    std::FILE* raw = std::fopen(path.string().c_str(), "rb");
    unsigned char bytes[16] = {};
    size_t n = std::fread(bytes, 1, sizeof bytes, raw);
    std::fclose(raw);
    const unsigned char expected[] = {':', 0x07, 0x01, 2, 0, 0, 0, 'h', 'i'};
    ASSERT_EQ(n, sizeof expected);
    EXPECT_EQ(std::memcmp(bytes, expected, n), 0);

    // A length beyond the end of the file is refused before anything is allocated.
    {
        RWFile f(path.string().c_str(), "wb");
        f.Write(':');
        f.Write(static_cast<unsigned short>(263));
        f.Write(0x7FFFFFFFu);
    }
    {
        RWFile f(path.string().c_str(), "rb");
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f), nullptr);
        EXPECT_FALSE(f.good());
    }
    std::filesystem::remove(path);
    RWFile missing("/nonexistent-dir/x", "rb");
    EXPECT_FALSE(missing.isValid());
    int v = 3;
    EXPECT_FALSE(missing.Read(v));
    EXPECT_EQ(v, 3);
}

}  // namespace
