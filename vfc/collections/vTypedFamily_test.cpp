#include "vfc/collections/vTypedFamily.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "vfc/collections/vHash.h"
#include "vfc/collections/vSet.h"
#include "vfc/collections/vSlist.h"
#include "vfc/collections/vTable.h"
#include "vfc/collections/vVector.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

// ---- streams -------------------------------------------------------------------------------

std::string saveText(const RWCollectable& c) {
    std::stringbuf buf;
    RWpostream s(&buf);
    vfc::rw::saveObject(s, &c);
    EXPECT_TRUE(s.good());
    return buf.str();
}

// The object read from text (owned by the caller); stateOut gets the stream's state.
std::unique_ptr<RWCollectable> restoreText(const std::string& text, int* stateOut = nullptr,
                                           RWCollectable* into = nullptr) {
    std::stringbuf buf(text);
    RWpistream s(&buf);
    RWCollectable* p = RWCollectable::recursiveRestoreFrom(s, into);
    if (stateOut) *stateOut = s.rdstate();
    return std::unique_ptr<RWCollectable>(into ? nullptr : p);
}

std::string tempFile(const char* name) {
    return (std::filesystem::path(testing::TempDir()) / name).string();
}

std::string saveFile(const RWCollectable& c, const std::string& path) {
    {
        RWFile f(path.c_str(), "wb");
        vfc::rw::saveObject(f, &c);
        EXPECT_TRUE(f.good());
    }
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::unique_ptr<RWCollectable> restoreFile(const std::string& path, bool* good) {
    RWFile f(path.c_str(), "rb");
    std::unique_ptr<RWCollectable> p(RWCollectable::recursiveRestoreFrom(f));
    *good = f.good();
    return p;
}

// Text saved as class `from`, relabelled as class `to`.
std::string retag(const std::string& text, RWClassID from, RWClassID to) {
    const std::string head = ":\n" + std::to_string(from) + "\n";
    EXPECT_EQ(text.compare(0, head.size(), head), 0) << text;
    return ":\n" + std::to_string(to) + "\n" + text.substr(head.size());
}

template <class M>
bool isExactly(const RWCollectable* p) {
    return p && typeid(*p) == typeid(M);
}

// ---- sample contents for every member --------------------------------------------------------

template <class T>
struct Sample;

template <>
struct Sample<vString> {
    static std::unique_ptr<vString> make(int i) {
        return std::make_unique<vString>(("s" + std::to_string(i) + "\n\"").c_str());
    }
};
template <>
struct Sample<vInt> {
    static std::unique_ptr<vInt> make(int i) { return std::make_unique<vInt>(i * 7 - 3); }
};
template <>
struct Sample<vFloat> {
    static std::unique_ptr<vFloat> make(int i) { return std::make_unique<vFloat>(i + 0.1); }
};
template <>
struct Sample<vPair> {
    static std::unique_ptr<vPair> make(int i) {
        return std::make_unique<vPair>(Sample<vString>::make(i).release(), new vInt(i));
    }
};
template <>
struct Sample<vIntString> {
    static std::unique_ptr<vIntString> make(int i) {
        return std::make_unique<vIntString>(vInt(i), vString("name"));
    }
};
template <>
struct Sample<vVoid> {
    static std::unique_ptr<vVoid> make(int) { return std::make_unique<vVoid>(); }
};
template <>
struct Sample<vRegExp> {
    static std::unique_ptr<vRegExp> make(int) { return std::make_unique<vRegExp>(vString("a|b")); }
};
template <>
struct Sample<vPath> {
    static std::unique_ptr<vPath> make(int i) {
        return std::make_unique<vPath>(vPathType::eURLUNIX,
                                       ("http://h/d" + std::to_string(i) + "/").c_str());
    }
};
template <>
struct Sample<vFile> {
    static std::unique_ptr<vFile> make(int i) {
        return std::make_unique<vFile>(Sample<vString>::make(i)->data());
    }
};
template <>
struct Sample<vLibrary> {
    static std::unique_ptr<vLibrary> make(int i) {
        return std::make_unique<vLibrary>(("P" + std::to_string(i) + "_").c_str(),
                                          vFile(Sample<vString>::make(i)->data()));
    }
};
template <>
struct Sample<vPathComponentList> {
    static std::unique_ptr<vPathComponentList> make(int i) {
        auto list = std::make_unique<vPathComponentList>();
        list->fInsert(vPathComponent(vPathType::eDOS, vComponentType::eDrive, "C:"));
        list->fInsert(vPathComponent(vPathType::eDOS, vComponentType::eName,
                                     ("n" + std::to_string(i)).c_str()));
        list->fSetTrailingSeparator(i % 2 == 0);
        return list;
    }
};
// Any collectable: strings and integers by turns.
template <>
struct Sample<vpFileRefCmpnts> {
    static std::unique_ptr<vpFileRefCmpnts> make(int i) {
        const vString name = *Sample<vString>::make(i);
        return std::make_unique<vpFileRefCmpnts>(vFile("page.htm"), name, vPathType::eURLHost,
                                                 vFile(name));
    }
};

template <>
struct Sample<RWCollectable> {
    static std::unique_ptr<RWCollectable> make(int i) {
        if (i % 2) return Sample<vInt>::make(i);
        return Sample<vString>::make(i);
    }
};

#define SAMPLE_OF_ELEMENTS(name, element)                  \
    template <>                                            \
    struct Sample<name> {                                  \
        static std::unique_ptr<name> make(int i) {         \
            auto c = std::make_unique<name>();             \
            for (int k = 0; k < 2; ++k)                    \
                c->fInsert(*Sample<element>::make(i + k)); \
            return c;                                      \
        }                                                  \
    };
#define SAMPLE_OF_ENTRIES(name, key, value)                                         \
    template <>                                                                     \
    struct Sample<name> {                                                           \
        static std::unique_ptr<name> make(int i) {                                  \
            auto c = std::make_unique<name>();                                      \
            for (int k = 0; k < 2; ++k)                                             \
                c->fInsert(*Sample<key>::make(i + k), *Sample<value>::make(i + k)); \
            return c;                                                               \
        }                                                                           \
    };
VFC_TYPED_FAMILY(SAMPLE_OF_ELEMENTS, SAMPLE_OF_ELEMENTS, SAMPLE_OF_ELEMENTS, SAMPLE_OF_ELEMENTS,
                 SAMPLE_OF_ENTRIES)
#undef SAMPLE_OF_ELEMENTS
#undef SAMPLE_OF_ENTRIES

// Everything a member must do on its own: its identifier, the factory, copies of its own class,
// and round trips through both stream kinds that give back the same bytes (which holds for
// element classes that compare by identity too). Files write nothing on an RWFile, so a set or
// a hash keyed by files comes back from one with its keys all equal and collapsed.
template <class M>
void checkMember(RWClassID id, const char* name, bool filesAsKeys) {
    EXPECT_EQ(M::classIsA(), id);
    EXPECT_EQ(M::myAtom, id);
    std::unique_ptr<RWCollectable> created(getRWFactory()->create(id));
    EXPECT_NE(dynamic_cast<M*>(created.get()), nullptr);

    M empty;
    std::unique_ptr<M> full = Sample<M>::make(1);
    ASSERT_EQ(full->fEntries(), 2u);
    for (const M* m : {&empty, full.get()}) {
        SCOPED_TRACE(m->fEntries());
        EXPECT_EQ(m->isA(), id);
        std::unique_ptr<RWCollectable> copy(m->copy());
        EXPECT_TRUE(isExactly<M>(copy.get()));
        std::unique_ptr<RWCollectable> species(m->newSpecies());
        EXPECT_TRUE(isExactly<M>(species.get()));
        EXPECT_EQ(static_cast<M&>(*species).fEntries(), 0u);

        const std::string text = saveText(*m);
        EXPECT_EQ(saveText(*copy), text);
        int state = -1;
        std::unique_ptr<RWCollectable> back = restoreText(text, &state);
        EXPECT_EQ(state, RWvios::goodbit);
        ASSERT_TRUE(isExactly<M>(back.get()));
        EXPECT_EQ(static_cast<M&>(*back).fEntries(), m->fEntries());
        EXPECT_EQ(saveText(*back), text);

        const std::string path = tempFile(name);
        const std::string bytes = saveFile(*m, path);
        bool good = false;
        std::unique_ptr<RWCollectable> fromFile = restoreFile(path, &good);
        EXPECT_TRUE(good);
        ASSERT_TRUE(isExactly<M>(fromFile.get()));
        if (!filesAsKeys) {
            EXPECT_EQ(saveFile(*fromFile, path), bytes);
        }
        std::filesystem::remove(path);
    }
}

TEST(vTypedFamily, EveryMemberHasItsIdentifierAndRoundTrips) {
    int members = 0;
#define CHECK_MEMBER(name, keysAreFiles)                        \
    {                                                           \
        SCOPED_TRACE(#name);                                    \
        checkMember<name>(vClassID::name, #name, keysAreFiles); \
        ++members;                                              \
    }
#define CHECK_SEQUENCE(name, element) CHECK_MEMBER(name, false)
#define CHECK_HASHED(name, element) CHECK_MEMBER(name, (std::is_same_v<element, vFile>))
#define CHECK_HASH(name, key, value) CHECK_MEMBER(name, (std::is_same_v<key, vFile>))
    VFC_TYPED_FAMILY(CHECK_SEQUENCE, CHECK_HASHED, CHECK_HASHED, CHECK_SEQUENCE, CHECK_HASH)
#undef CHECK_MEMBER
#undef CHECK_SEQUENCE
#undef CHECK_HASHED
#undef CHECK_HASH
    EXPECT_EQ(members, 54);
}

TEST(vTypedFamily, NestedMembersRoundTripEqual) {
    vHashvStringvHvSvS nested;
    nested.fInsert("outer", *Sample<vHashvStringvString>::make(1));
    nested.fInsert("empty", vHashvStringvString());
    std::unique_ptr<RWCollectable> back = restoreText(saveText(nested));
    ASSERT_NE(back.get(), nullptr);
    EXPECT_TRUE(nested.fIsEqual(static_cast<vHashvStringvHvSvS&>(*back)));
    ASSERT_TRUE(static_cast<vHashvStringvHvSvS&>(*back).fLookup("outer"));
    vHashvStringvString& inner = static_cast<vHashvStringvHvSvS&>(*back).aValue();
    EXPECT_EQ(inner.fEntries(), 2u);

    std::unique_ptr<vHashvSvHvSvSlvHvSvS> deepest = Sample<vHashvSvHvSvSlvHvSvS>::make(4);
    const std::string path = tempFile("deepest");
    saveFile(*deepest, path);
    bool good = false;
    back = restoreFile(path, &good);
    EXPECT_TRUE(good);
    ASSERT_NE(back.get(), nullptr);
    EXPECT_TRUE(deepest->isEqual(back.get()));
    std::filesystem::remove(path);

    // A change deep inside is seen by the comparison.
    vHashvSvHvSvSlvHvSvS changed(*deepest);
    ASSERT_TRUE(changed.fLookup(*Sample<vString>::make(4)));
    ASSERT_TRUE(changed.aValue().fLookup(*Sample<vString>::make(4)));
    changed.aValue().aValue().fDeleteFirst();
    EXPECT_FALSE(deepest->isEqual(&changed));
}

TEST(vTypedFamily, SavesTheGenericFormUnderTheMembersIdentifier) {
    vSlistvString list;
    vSlist slist;
    vHashvStringvInt hash;
    vHash vhash;
    vSetvInt set;
    vSet vset;
    vTablevString table;
    vTable vtable;
    vVectorvPair vector;
    vVector vvector;
    for (int i = 0; i < 3; ++i) {
        list.fInsert(*Sample<vString>::make(i));
        slist.fInsert(*Sample<vString>::make(i));
        hash.fInsert(*Sample<vString>::make(i), *Sample<vInt>::make(i));
        vhash.fInsert(*Sample<vString>::make(i), *Sample<vInt>::make(i));
        set.fInsert(*Sample<vInt>::make(i));
        vset.fInsert(*Sample<vInt>::make(i));
        table.fInsert(*Sample<vString>::make(i % 2));
        vtable.fInsert(*Sample<vString>::make(i % 2));
        vector.fInsert(*Sample<vPair>::make(i));
        vvector.fInsert(*Sample<vPair>::make(i));
    }
    EXPECT_EQ(saveText(list), retag(saveText(slist), vSlist::classIsA(), list.isA()));
    EXPECT_EQ(saveText(hash), retag(saveText(vhash), vHash::classIsA(), hash.isA()));
    EXPECT_EQ(saveText(set), retag(saveText(vset), vSet::classIsA(), set.isA()));
    EXPECT_EQ(saveText(table), retag(saveText(vtable), vTable::classIsA(), table.isA()));
    EXPECT_EQ(saveText(vector), retag(saveText(vvector), vVector::classIsA(), vector.isA()));
}

TEST(vTypedFamily, RestoringRefusesAForeignElementClass) {
    vSlist generic;
    generic.fInsert(vInt(1));
    generic.fInsert(vString("stray"));
    generic.fInsert(vInt(3));
    const std::string ints = retag(saveText(generic), vSlist::classIsA(), vSlistvInt::classIsA());
    int state = 0;
    EXPECT_EQ(restoreText(ints, &state).get(), nullptr);
    EXPECT_TRUE(state & RWvios::failbit);
    EXPECT_TRUE(state & RWvios::badbit);

    // Restored into an existing list, the elements before the stray one stay.
    vSlistvInt into;
    into.fInsert(vInt(99));
    restoreText(ints, &state, &into);
    EXPECT_TRUE(state & RWvios::badbit);
    ASSERT_EQ(into.fEntries(), 1u);
    into.fFirst();
    EXPECT_EQ(into.aKey().value(), 1);

    // Keys and values of hashes are checked alike, nested members included.
    auto refusedAs = [](const vHash& generic, RWClassID id) {
        int bits = 0;
        bool none = restoreText(retag(saveText(generic), vHash::classIsA(), id), &bits) == nullptr;
        return none && (bits & RWvios::failbit) && (bits & RWvios::badbit);
    };
    vHash wrongValue;
    wrongValue.fInsert(vString("k"), vInt(1));
    EXPECT_TRUE(refusedAs(wrongValue, vHashvStringvString::classIsA()));
    vHash wrongKey;
    wrongKey.fInsert(vInt(1), vString("v"));
    EXPECT_TRUE(refusedAs(wrongKey, vHashvStringvString::classIsA()));
    vHash outer;
    outer.fInsert(vString("inner"), wrongValue);  // a plain vHash where a typed one belongs
    EXPECT_TRUE(refusedAs(outer, vHashvStringvHvSvS::classIsA()));
    vHash right;
    right.fInsert(vString("k"), vString("v"));
    EXPECT_FALSE(refusedAs(right, vHashvStringvString::classIsA()));

    // A hash to any collectable takes every class.
    vHash mixed;
    mixed.fInsert(vString("a"), vInt(1));
    mixed.fInsert(vString("b"), vSlist());
    std::unique_ptr<RWCollectable> any = restoreText(
        retag(saveText(mixed), vHash::classIsA(), vHashvStringRWCollectable::classIsA()), &state);
    EXPECT_EQ(state, RWvios::goodbit);
    ASSERT_NE(any.get(), nullptr);
    EXPECT_EQ(static_cast<vHashvStringRWCollectable&>(*any).fEntries(), 2u);

    // The binary form too.
    vVector vector;
    vector.fInsert(vString("a"));
    vector.fInsert(vInt(2));
    const std::string path = tempFile("foreign");
    {
        std::string bytes = saveFile(vector, path);
        ASSERT_GT(bytes.size(), 3u);
        RWClassID id = vVectorvString::classIsA();
        bytes[1] = static_cast<char>(id & 0xFF);  // the tag, then the identifier, little-endian
        bytes[2] = static_cast<char>(id >> 8);
        std::ofstream(path, std::ios::binary) << bytes;
    }
    bool good = true;
    EXPECT_EQ(restoreFile(path, &good).get(), nullptr);
    EXPECT_FALSE(good);
    std::filesystem::remove(path);
}

TEST(vTypedFamily, SetRestoreDropsRepeatedElements) {
    vTable twice;
    twice.fInsert(vString("a"));
    twice.fInsert(vString("a"));
    twice.fInsert(vString("b"));
    int state = -1;
    std::unique_ptr<RWCollectable> back =
        restoreText(retag(saveText(twice), vTable::classIsA(), vSetvString::classIsA()), &state);
    EXPECT_EQ(state, RWvios::goodbit);
    ASSERT_NE(back.get(), nullptr);
    EXPECT_EQ(static_cast<vSetvString&>(*back).fEntries(), 2u);
}

TEST(vTypedFamily, SetsRefuseDuplicatesAndTablesKeepThem) {
    vSetvString set;
    vTablevString table;
    for (const char* s : {"a", "b", "a"}) {
        set.fInsert(vString(s));
        table.fInsert(vString(s));
    }
    EXPECT_EQ(set.fEntries(), 2u);
    EXPECT_EQ(table.fEntries(), 3u);
    vString* refused = new vString("b");
    EXPECT_FALSE(set.fInsertReference(refused));  // the caller keeps it
    EXPECT_TRUE(table.fInsertReference(refused));
    EXPECT_FALSE(set.fInsertReference(nullptr));

    const vString* found = set.fFind(vString("a"));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, "a");
    EXPECT_EQ(set.fFind(vString("z")), nullptr);

    vString* out = nullptr;
    EXPECT_TRUE(table.fRemove(vString("a"), out));
    EXPECT_EQ(*out, "a");
    delete out;
    EXPECT_TRUE(table.fContains(vString("a")));
    EXPECT_TRUE(table.fDelete(vString("a")));
    EXPECT_FALSE(table.fContains(vString("a")));
    EXPECT_FALSE(table.fRemove(vString("a"), out));
    EXPECT_EQ(out, nullptr);

    vSetvString other;
    other.fInsert(vString("b"));
    other.fInsert(vString("c"));
    set.fOrEquals(other);
    EXPECT_EQ(set.fEntries(), 3u);
    set.fAndEquals(other);
    EXPECT_TRUE(set.fIsEqual(other));
    set.fAndEquals(set);
    set.fOrEquals(set);
    EXPECT_EQ(set.fEntries(), 2u);

    std::string walked;
    vSetvStringIter it(set);
    while (it.fAdvance())
        walked += std::string(it.aKey().data(), it.aKey().length());
    EXPECT_EQ(walked, "bc");
    EXPECT_EQ(it.apKey(), nullptr);
    it.fReset();
    EXPECT_TRUE(it.fLookup(vString("c")));
    EXPECT_FALSE(it.fAdvance());
}

TEST(vTypedFamily, VectorsWorkByPosition) {
    vVectorvInt vector;
    for (int i : {10, 20, 30})
        vector.fInsert(vInt(i));
    EXPECT_TRUE(vector.fInsertAt(3, vInt(40)));
    EXPECT_TRUE(vector.fInsertAt(0, vInt(0)));
    EXPECT_FALSE(vector.fInsertAt(6, vInt(99)));
    EXPECT_FALSE(vector.fInsertAt(-1, vInt(99)));
    ASSERT_EQ(vector.fEntries(), 5u);
    EXPECT_EQ(vector.fAt(4)->value(), 40);
    EXPECT_EQ(vector.fAt(5), nullptr);
    EXPECT_EQ(vector.fAt(-1), nullptr);

    vInt i(9);
    EXPECT_TRUE(vector.fIndex(vInt(30), i));
    EXPECT_EQ(i.value(), 3);
    EXPECT_FALSE(vector.fIndex(vInt(31), i));
    EXPECT_EQ(i.value(), 0);

    vInt* out = nullptr;
    EXPECT_TRUE(vector.fRemoveAt(1, out));
    EXPECT_EQ(out->value(), 10);
    delete out;
    EXPECT_FALSE(vector.fRemoveAt(-1, out));
    EXPECT_EQ(out, nullptr);
    EXPECT_TRUE(vector.fDeleteAt(0));
    EXPECT_FALSE(vector.fDeleteAt(3));
    vInt* third = vector.fAt(2);
    EXPECT_TRUE(vector.fContainsReference(third));
    EXPECT_TRUE(vector.fRemoveReference(third));
    EXPECT_FALSE(vector.fContainsReference(third));
    delete third;

    std::string walked;
    vVectorvIntIter it(vector);
    EXPECT_EQ(it.aKey().value(), 0);  // not on an element: the vector's default
    while (it.fAdvance())
        walked += std::to_string(it.aKey().value()) + " ";
    EXPECT_EQ(walked, "20 30 ");
    EXPECT_FALSE(it.fAdvance());
    it.fReset();
    EXPECT_TRUE(it.fLookup(vInt(30)));
    EXPECT_EQ(it.apKey(), vector.fAt(1));

    vVectorvInt copy(vector);
    EXPECT_TRUE(copy.fIsEqual(vector));
    copy.fAt(0)->value(21);
    EXPECT_FALSE(copy.fIsEqual(vector));
}

}  // namespace
