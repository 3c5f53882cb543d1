#include "vfc/collections/vHash.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vHashIterator.h"
#include "vfc/collections/vSet.h"
#include "vfc/collections/vVector.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/testing/CountedString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

using vfc::testing::Counted;

std::string text(const RWCollectable* p) {
    return p ? static_cast<const vString*>(p)->data() : "<null>";
}

// The keys, all strings, in iteration order.
std::string keys(const vHash& h) {
    std::string out;
    vHashIterator it(h);
    while (it.fAdvance())
        out += text(it.apKey()) + ",";
    return out;
}

// "key=value,..." in iteration order, for hashes of strings.
std::string dump(const vHash& h) {
    std::string out;
    vHashIterator it(h);
    while (it.fAdvance())
        out += text(it.apKey()) + "=" + text(it.apValue()) + ",";
    return out;
}

TEST(vHash, OwnsKeysAndValues) {
    Counted::live = 0;
    std::unique_ptr<RWCollectable> removed, removedValue;
    {
        Counted k("k"), v("v");
        vHash h;
        EXPECT_TRUE(h.fInsert(k, v));
        EXPECT_EQ(Counted::live, 4);  // copies stored, the caller's kept
        EXPECT_FALSE(h.fInsert(k, Counted("other")));
        EXPECT_EQ(Counted::live, 4);  // first wins: nothing copied or kept
        EXPECT_TRUE(h.fInsertReference(new Counted("a"), new Counted("1")));
        auto* dupKey = new Counted("a");
        auto* dupValue = new Counted("2");
        EXPECT_FALSE(h.fInsertReference(dupKey, dupValue));  // the caller keeps both
        delete dupKey;
        delete dupValue;
        auto* self = new Counted("self");
        EXPECT_FALSE(h.fInsertReference(self, self));
        EXPECT_FALSE(h.fInsertReference(nullptr, self));
        delete self;
        EXPECT_EQ(dump(h), "k=v,a=1,");

        RWCollectable* key = nullptr;
        RWCollectable* value = nullptr;
        EXPECT_TRUE(h.fRemove(Counted("a"), key, value));
        removed.reset(key);
        removedValue.reset(value);
        EXPECT_EQ(text(key) + text(value), "a1");
        EXPECT_FALSE(h.fRemove(Counted("a"), key, value));
        EXPECT_EQ(key, nullptr);
        EXPECT_EQ(value, nullptr);
        EXPECT_EQ(Counted::live, 6);  // the removed pair survives
        EXPECT_TRUE(h.fInsertReference(new Counted("b"), new Counted("2")));
        EXPECT_TRUE(h.fDelete(Counted("b")));
        EXPECT_FALSE(h.fDelete(Counted("b")));
        EXPECT_EQ(Counted::live, 6);
        EXPECT_EQ(h.fEntries(), 1u);

        // fClear unlinks without destroying: the caller must own the pair afterwards.
        RWCollectable *storedKey, *storedValue;
        ASSERT_TRUE(h.fFind(k, storedKey, storedValue));
        EXPECT_TRUE(h.fClear());
        EXPECT_EQ(h.fEntries(), 0u);
        EXPECT_EQ(Counted::live, 6);
        delete storedKey;
        delete storedValue;
        h.fInsert(Counted("c"), Counted("3"));
    }
    // The hash destroyed its last entry; the removed pair is still ours.
    EXPECT_EQ(Counted::live, 2);
}

TEST(vHash, ReplaceKeepsTheStoredKey) {
    Counted::live = 0;
    vHash h;
    h.fInsert(Counted("k"), Counted("old"));
    RWCollectable* storedKey = nullptr;
    RWCollectable* value = nullptr;
    ASSERT_TRUE(h.fFind(Counted("k"), storedKey, value));
    const RWCollectable* firstKey = storedKey;

    EXPECT_TRUE(h.fInsertOrReplace(Counted("k"), Counted("new")));
    EXPECT_TRUE(h.fFind(Counted("k"), storedKey, value));
    EXPECT_EQ(storedKey, firstKey);
    EXPECT_EQ(text(value), "new");
    EXPECT_EQ(Counted::live, 2);  // the old value was destroyed

    // Replacing a value with itself must copy before destroying.
    EXPECT_TRUE(h.fReplace(Counted("k"), *value));
    EXPECT_TRUE(h.fFind(Counted("k"), storedKey, value));
    EXPECT_EQ(text(value), "new");

    EXPECT_FALSE(h.fReplace(Counted("absent"), Counted("x")));
    EXPECT_FALSE(h.fContains(Counted("absent")));
    EXPECT_FALSE(h.fFind(Counted("absent"), storedKey, value));
    EXPECT_EQ(storedKey, nullptr);
    EXPECT_EQ(value, nullptr);
    EXPECT_TRUE(h.fInsertOrReplace(Counted("absent"), Counted("x")));
    EXPECT_EQ(dump(h), "k=new,absent=x,");
    EXPECT_EQ(Counted::live, 4);
    h.fClearAndDestroy();
    EXPECT_EQ(Counted::live, 0);
}

vString str(int i) {
    return vString(std::to_string(i).c_str());
}

TEST(vHash, CopiesAndCompares) {
    vHash a;
    for (int i = 0; i < 50; ++i)
        a.fInsert(str(i), str(i * i));
    vHash b(a);
    EXPECT_TRUE(b.fIsEqual(a));
    EXPECT_EQ(dump(b), dump(a));
    RWCollectable *ka, *va, *kb, *vb;
    a.fFind(str(7), ka, va);
    b.fFind(str(7), kb, vb);
    EXPECT_NE(ka, kb);  // deep
    EXPECT_NE(va, vb);

    // Same entries in another order: equal, and hashed alike.
    vHash reversed;
    for (int i = 49; i >= 0; --i)
        reversed.fInsert(str(i), str(i * i));
    EXPECT_TRUE(reversed.isEqual(&a));
    EXPECT_EQ(reversed.hash(), a.hash());

    b.fReplace(str(7), vString("x"));
    EXPECT_FALSE(b.fIsEqual(a));
    b.fReplace(str(7), vString("49"));
    b.fDelete(str(0));
    b.fInsert(str(100), vString("0"));
    EXPECT_FALSE(b.fIsEqual(a));  // same count, a key the other lacks

    vSet set;
    EXPECT_FALSE(a.isEqual(&set));
    b = a;
    EXPECT_TRUE(b.fIsEqual(a));
    const vHash& self = b;
    b = self;
    EXPECT_EQ(b.fEntries(), 50u);
    std::unique_ptr<RWCollectable> c(a.copy());
    EXPECT_TRUE(c->isEqual(&a));
    EXPECT_EQ(c->isA(), 512);

    vHashIterator it(a);
    vString thirty("30");
    EXPECT_TRUE(it.fLookup(&thirty));
    EXPECT_EQ(text(it.apValue()), "900");
    EXPECT_TRUE(it.fAdvance());
    EXPECT_EQ(text(it.apKey()), "31");
    EXPECT_FALSE(it.fLookup(&thirty));
    EXPECT_EQ(it.apKey(), nullptr);
    EXPECT_TRUE(it.fReset());
    EXPECT_TRUE(it.fAdvance());
    EXPECT_EQ(text(it.apKey()), "0");
}

vHash sample() {
    vHash h;
    h.fInsert(vString("alpha"), vInt(1));
    h.fInsert(vString("line\nbreak"), vString("x y"));
    vVector nested;
    nested.fInsert(vString("n1"));
    nested.fInsert(vInt(2));
    h.fInsert(vString("nested"), nested);
    return h;
}

// Saves h on a portable stream and reads it back: an equal hash, its keys in the same order.
void expectTextRoundTrip(const vHash& h) {
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        h.recursiveSaveOn(out);
    }
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_TRUE(in.good());
    auto* restored = dynamic_cast<vHash*>(back.get());
    ASSERT_NE(restored, nullptr);
    EXPECT_TRUE(restored->fIsEqual(h));
    EXPECT_EQ(keys(*restored), keys(h));
}

TEST(vHash, RoundTripsThroughBothStreamKinds) {
    vHash h = sample();
    expectTextRoundTrip(h);

    auto path = std::filesystem::temp_directory_path() /
                ("vfc_vhash_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    {
        RWFile f(path.string().c_str(), "wb");
        ASSERT_TRUE(f.isValid());
        h.recursiveSaveOn(f);
        ASSERT_TRUE(f.good());
    }
    auto size = std::filesystem::file_size(path);
    {
        RWFile f(path.string().c_str(), "rb");
        vHash into;
        into.fInsert(vString("stale"), vInt(0));
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &into), &into);
        EXPECT_TRUE(f.good());
        EXPECT_TRUE(into.fIsEqual(h));  // the stale entry is gone
    }
    // Cut short, the reader keeps the complete entries only, and they are right.
    std::filesystem::resize_file(path, size - 3);
    {
        RWFile f(path.string().c_str(), "rb");
        vHash into;
        RWCollectable::recursiveRestoreFrom(f, &into);
        EXPECT_FALSE(f.good());
        EXPECT_EQ(into.fEntries(), 2u);
        vHashIterator it(into);
        while (it.fAdvance()) {
            RWCollectable *k, *v;
            ASSERT_TRUE(h.fFind(*it.apKey(), k, v));
            EXPECT_TRUE(v->isEqual(it.apValue()));
        }
    }
    std::filesystem::remove(path);
}

// Removals leave holes in the entry order; saving skips them, near its end too, and writes the
// live entries in order.
TEST(vHash, SavesOnlyTheEntriesLeftAfterRemovals) {
    vHash h;
    for (int i = 0; i < 40; ++i)
        h.fInsert(vString(std::to_string(i).c_str()), vInt(i));
    for (int i = 0; i < 40; ++i)
        if (i % 3 == 0 || i >= 35) h.fDelete(vString(std::to_string(i).c_str()));
    ASSERT_EQ(h.fEntries(), 23u);
    expectTextRoundTrip(h);
}

TEST(vHash, TruncatedStreamLeavesAConsistentHash) {
    vHash h;
    for (const char* k : {"a", "bb", "ccc", "dddd"})
        h.fInsert(Counted(k), Counted((std::string(k) + "!").c_str()));
    std::stringbuf full;
    {
        RWpostream out(&full);
        h.saveGuts(out);
    }
    const std::string bytes = full.str();
    const int baseline = Counted::live;
    // Every cut that loses more than the final separator.
    for (size_t cut = 0; cut + 1 < bytes.size(); ++cut) {
        std::stringbuf buf(bytes.substr(0, cut));
        RWpistream in(&buf);
        {
            vHash into;
            into.fInsert(Counted("old"), Counted("old"));
            into.restoreGuts(in);
            EXPECT_FALSE(in.good()) << cut;
            // Whatever was kept is a prefix of the saved entries, each with its own value.
            std::string restored = dump(into);
            EXPECT_EQ(restored, dump(h).substr(0, restored.size())) << cut;
            EXPECT_EQ(Counted::live, baseline + 2 * static_cast<int>(into.fEntries())) << cut;
        }
        EXPECT_EQ(Counted::live, baseline) << cut;
    }
}

}  // namespace
