#include "vfc/collections/vTypedHash.h"

#include <gtest/gtest.h>

#include <string>

#include "vfc/collections/vTypedFamily.h"

namespace {

struct CountedString : vString {
    static int live;
    explicit CountedString(const char* s) : vString(s) { ++live; }
    CountedString(const CountedString& o) : vString(o) { ++live; }
    ~CountedString() override { --live; }
    RWCollectable* copy() const override { return new CountedString(*this); }
};
int CountedString::live = 0;

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

// "key=value" per entry, in iteration order.
std::string show(const vHashvStringvString& hash) {
    std::string out;
    vHashvStringvStringIter it(hash);
    while (it.fAdvance()) {
        if (!out.empty()) out += ",";
        out += text(it.aKey()) + "=" + text(it.aValue());
    }
    return out;
}

TEST(vTypedHash, FirstValueWinsUntilReplacedExplicitly) {
    vHashvStringvString hash;
    EXPECT_TRUE(hash.fInsert("k", "first"));
    EXPECT_FALSE(hash.fInsert("k", "second"));
    EXPECT_EQ(show(hash), "k=first");

    EXPECT_TRUE(hash.fInsertOrReplace("k", "third"));
    EXPECT_TRUE(hash.fInsertOrReplace("j", "new"));
    EXPECT_EQ(show(hash), "k=third,j=new");

    EXPECT_TRUE(hash.fReplace("j", "replaced"));
    EXPECT_FALSE(hash.fReplace("absent", "x"));
    EXPECT_EQ(show(hash), "k=third,j=replaced");

    vString* key = new vString("k");
    vString* value = new vString("v");
    EXPECT_FALSE(hash.fInsertReference(key, value));  // present: the caller keeps both
    EXPECT_FALSE(hash.fInsertReference(nullptr, value));
    *key = "m";
    EXPECT_TRUE(hash.fInsertReference(key, value));
    EXPECT_EQ(show(hash), "k=third,j=replaced,m=v");

    vHashvStringvString other;
    other.fInsert("m", "v");
    other.fInsert("j", "replaced");
    other.fInsert("k", "third");
    EXPECT_TRUE(hash.fIsEqual(other));  // the order does not matter
    other.fReplace("k", "3");
    EXPECT_FALSE(hash.fIsEqual(other));
}

TEST(vTypedHash, LookupSetsTheCurrentEntryUntilItGoes) {
    vHashvStringvString hash;
    hash.fInsert("a", "1");
    hash.fInsert("b", "2");
    EXPECT_TRUE(hash.fLookup("b"));
    EXPECT_EQ(hash.aKey(), "b");
    EXPECT_EQ(hash.aValue(), "2");
    hash.aValue() = "two";  // the stored value itself
    EXPECT_EQ(show(hash), "a=1,b=two");

    // Changing another entry keeps the current one.
    hash.fReplace("a", "one");
    hash.fDelete("a");
    EXPECT_EQ(hash.aValue(), "two");

    // Replacing the current value by itself is harmless.
    EXPECT_TRUE(hash.fReplace("b", hash.aValue()));
    EXPECT_TRUE(hash.fInsertOrReplace(hash.aKey(), hash.aValue()));
    EXPECT_EQ(hash.aValue(), "two");

    // Replacing it with another value destroys it: nothing is current then.
    EXPECT_TRUE(hash.fReplace("b", "2"));
    EXPECT_EQ(hash.aKey(), "");
    EXPECT_EQ(hash.aValue(), "");

    hash.fLookup("b");
    EXPECT_TRUE(hash.fInsertOrReplace("b", "deux"));
    EXPECT_EQ(hash.aValue(), "");

    hash.fLookup("b");
    EXPECT_TRUE(hash.fDelete(hash.aKey()));  // the key given is the stored one itself
    EXPECT_EQ(hash.aKey(), "");
    EXPECT_EQ(hash.fEntries(), 0u);

    hash.fInsert("c", "3");
    hash.fLookup("c");
    EXPECT_FALSE(hash.fLookup("zz"));
    EXPECT_EQ(hash.aValue(), "");

    hash.fLookup("c");
    vString* k = nullptr;
    vString* v = nullptr;
    EXPECT_TRUE(hash.fRemove("c", k, v));
    EXPECT_EQ(hash.aKey(), "");
    EXPECT_EQ(*k + *v, "c3");
    delete k;
    delete v;
    EXPECT_FALSE(hash.fRemove("c", k, v));
    EXPECT_EQ(k, nullptr);
    EXPECT_EQ(v, nullptr);

    hash.fInsert("d", "4");
    hash.fLookup("d");
    hash.fClearAndDestroy();
    EXPECT_EQ(hash.aKey(), "");
}

TEST(vTypedHash, OwnsKeysAndValues) {
    CountedString::live = 0;
    {
        vHashvStringvString hash;
        hash.fInsert(CountedString("k1"), CountedString("v1"));
        EXPECT_EQ(CountedString::live, 2);
        hash.fInsertReference(new CountedString("k2"), new CountedString("v2"));
        EXPECT_FALSE(hash.fInsert(CountedString("k1"), CountedString("refused")));
        EXPECT_EQ(CountedString::live, 4);
        hash.fInsertOrReplace(CountedString("k1"), CountedString("v1b"));
        EXPECT_EQ(CountedString::live, 4);  // the old value went, the stored key stayed

        vString* k = nullptr;
        vString* v = nullptr;
        ASSERT_TRUE(hash.fRemove(vString("k2"), k, v));
        EXPECT_EQ(CountedString::live, 4);
        delete k;
        delete v;
        EXPECT_EQ(CountedString::live, 2);

        vHashvStringvString copy(hash);
        EXPECT_EQ(CountedString::live, 4);
        EXPECT_TRUE(copy.fDelete(vString("k1")));
        EXPECT_EQ(CountedString::live, 2);
    }
    EXPECT_EQ(CountedString::live, 0);
}

TEST(vTypedHash, PairedStringEscapesOnlyTheKey) {
    vHashvStringvString hash;
    vString out("not emptied");
    EXPECT_TRUE(hash.fHashToPairedString(out));
    EXPECT_EQ(out, "");

    hash.fInsert("x\ny", "z");
    hash.fHashToPairedString(out);
    EXPECT_EQ(out, "x\nR\ny\nP\nz\nE\n");

    hash.fClearAndDestroy();
    hash.fInsert("\n\n", "v\nw");
    hash.fInsert("b", "");
    hash.fHashToPairedString(out);
    EXPECT_EQ(out, "\nR\n\nR\n\nP\nv\nw\nE\nb\nP\n\nE\n");

    // Written only: reading it back leaves the hash as it is.
    const std::string before = show(hash);
    EXPECT_TRUE(hash.fPairedStringToHash(out));
    EXPECT_TRUE(hash.fPairedStringToHash("a\nP\nb\nE\n"));
    EXPECT_EQ(show(hash), before);

    vHashvStringvInt numbers;
    numbers.fInsert("minus", vInt(-5));
    numbers.fInsert("big", vInt(2147483647));
    numbers.fHashToPairedString(out);
    EXPECT_EQ(out, "minus\nP\n-5\nE\nbig\nP\n2147483647\nE\n");
    EXPECT_TRUE(numbers.fPairedStringToHash(out));
    EXPECT_EQ(numbers.fEntries(), 2u);
}

TEST(vTypedHash, IteratorWalksInInsertionOrderAndLooksUpKeys) {
    vHashvIntvString hash;
    for (int i : {5, 3, 9, 1})
        hash.fInsert(vInt(i), vString(std::to_string(i * 10).c_str()));
    vHashvIntvStringIter it(hash);
    EXPECT_EQ(it.apKey(), nullptr);
    std::string order;
    while (it.fAdvance())
        order += std::to_string(it.aKey().value()) + ":" + text(it.aValue()) + " ";
    EXPECT_EQ(order, "5:50 3:30 9:90 1:10 ");
    EXPECT_EQ(it.apValue(), nullptr);
    EXPECT_EQ(it.aValue(), "");

    it.fReset();
    EXPECT_TRUE(it.fLookup(vInt(9)));
    EXPECT_EQ(it.aValue(), "90");
    EXPECT_FALSE(it.fLookup(vInt(5)));  // only forward

    // Any collectable value, each keeping its class.
    vHashvIntRWCollectable mixed;
    mixed.fInsert(vInt(1), vString("text"));
    mixed.fInsert(vInt(2), vInt(42));
    ASSERT_TRUE(mixed.fLookup(vInt(2)));
    EXPECT_EQ(mixed.aValue().isA(), vInt::classIsA());
    ASSERT_TRUE(mixed.fLookup(vInt(1)));
    EXPECT_EQ(mixed.aValue().isA(), vString::classIsA());
}

}  // namespace
