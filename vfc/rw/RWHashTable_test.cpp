#include "vfc/rw/RWHashTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWHashDictionary.h"
#include "vfc/rw/RWHashDictionaryIterator.h"
#include "vfc/rw/RWHashTableIterator.h"
#include "vfc/rw/RWSet.h"

namespace {

// Equal by id, with a hash the test chooses, so that many keys can share one probe run.
class Keyed : public RWCollectable {
  public:
    Keyed(int id, unsigned h) : id(id), h(h) {}
    unsigned hash() const override { return h; }
    bool isEqual(const RWCollectable* other) const override {
        return static_cast<const Keyed*>(other)->id == id;
    }
    int id;
    unsigned h;
};

unsigned crowdedHash(int id) {
    // Half of the ids fall on five hash values, the rest spread out. 0xEBB34377 is placed in the
    // last bucket by the table's multiplier, so its probe runs wrap around the end.
    if (id % 2 == 0) return static_cast<unsigned>(id) * 2654435761u;
    return id % 5 == 0 ? 0xEBB34377u : static_cast<unsigned>(id % 5);
}

std::vector<int> walk(RWHashTable& table) {
    std::vector<int> ids;
    RWHashTableIterator it(table);
    while (RWCollectable* p = it())
        ids.push_back(static_cast<Keyed*>(p)->id);
    return ids;
}

// Counts live instances, so tests can see what a collection destroyed.
struct Tracked : vString {
    static int live;
    explicit Tracked(const char* s) : vString(s) { ++live; }
    ~Tracked() override { --live; }
};
int Tracked::live = 0;

TEST(RWHashTable, MatchesAModelUnderRandomInsertsAndRemovals) {
    std::vector<Keyed> pool;
    for (int id = 0; id < 400; ++id)
        pool.emplace_back(id, crowdedHash(id));
    RWHashTable table;
    std::vector<int> model;  // the ids in iteration order
    std::mt19937 rng(7);
    for (int step = 0; step < 30000; ++step) {
        int id = static_cast<int>(rng() % pool.size());
        Keyed probe(id, crowdedHash(id));
        // Mostly inserts until the table holds a few hundred elements, then mostly removals.
        bool insert = model.size() < 300 ? rng() % 3 != 0 : rng() % 3 == 0;
        if (insert) {
            ASSERT_EQ(table.insert(&pool[id]), &pool[id]);
            model.push_back(id);
        } else {
            auto at = std::find(model.begin(), model.end(), id);
            ASSERT_EQ(table.remove(&probe), at == model.end() ? nullptr : &pool[id]) << step;
            if (at != model.end()) model.erase(at);
        }
        ASSERT_EQ(table.occurrencesOf(&probe),
                  static_cast<size_t>(std::count(model.begin(), model.end(), id)))
            << step;
        if (step % 1000 == 0) {
            ASSERT_EQ(walk(table), model) << step;
        }
    }
    EXPECT_EQ(table.entries(), model.size());
    EXPECT_EQ(walk(table), model);
    for (int id = 0; id < 400; ++id) {
        Keyed probe(id, crowdedHash(id));
        bool present = std::find(model.begin(), model.end(), id) != model.end();
        EXPECT_EQ(table.find(&probe), present ? &pool[id] : nullptr) << id;
    }
    table.clear();
    EXPECT_EQ(table.entries(), 0u);
    EXPECT_TRUE(walk(table).empty());
    EXPECT_EQ(table.insert(nullptr), nullptr);
}

TEST(RWHashTable, GrowsByDoublingAndKeepsInsertionOrder) {
    std::vector<vInt> keys;
    for (int i = 0; i < 20000; ++i)
        keys.emplace_back(i * 7919);
    RWHashTable table;
    size_t buckets = 0;
    for (vInt& k : keys) {
        table.insert(&k);
        if (table.buckets() != buckets) {
            if (buckets != 0) {
                EXPECT_EQ(table.buckets(), 2 * buckets);
            }
            buckets = table.buckets();
        }
        ASSERT_LE(table.entries() * 4, table.buckets() * 3);
    }
    // Remove every third, then add new ones: survivors keep their order, newcomers follow.
    for (size_t i = 0; i < keys.size(); i += 3)
        ASSERT_EQ(table.remove(&keys[i]), &keys[i]);
    std::vector<vInt> more;
    for (int i = 0; i < 5000; ++i)
        more.emplace_back(-1 - i);
    for (vInt& k : more)
        table.insert(&k);
    std::vector<const RWCollectable*> expected;
    for (size_t i = 0; i < keys.size(); ++i)
        if (i % 3 != 0) expected.push_back(&keys[i]);
    for (const vInt& k : more)
        expected.push_back(&k);
    std::vector<const RWCollectable*> seen;
    RWHashTableIterator it(table);
    while (RWCollectable* p = it())
        seen.push_back(p);
    EXPECT_EQ(seen, expected);
    for (size_t i = 0; i < keys.size(); ++i) {
        vInt probe(keys[i].value());
        ASSERT_EQ(table.find(&probe), i % 3 ? &keys[i] : nullptr) << i;
    }
}

TEST(RWHashTableIterator, RemovesWhileWalking) {
    std::vector<Keyed> pool;
    for (int id = 0; id < 10; ++id)
        pool.emplace_back(id, 1u);  // one probe run for all
    RWHashTable table;
    for (Keyed& k : pool)
        table.insert(&k);
    RWHashTableIterator it(table);
    EXPECT_EQ(it.key(), nullptr);
    while (RWCollectable* p = it()) {
        if (static_cast<Keyed*>(p)->id % 2 == 0) {
            EXPECT_EQ(it.remove(), p);
            EXPECT_EQ(it.key(), nullptr);
        }
    }
    EXPECT_EQ(walk(table), (std::vector<int>{1, 3, 5, 7, 9}));
    EXPECT_EQ(it(), nullptr);  // stays past the end
    it.reset();
    Keyed seven(7, 1u);
    EXPECT_EQ(it.findNext(&seven), &pool[7]);
    table.remove(&seven);  // through the table, under the iterator
    EXPECT_EQ(it.key(), nullptr);
    EXPECT_EQ(it(), &pool[9]);
    EXPECT_EQ(it.findNext(&seven), nullptr);
    // Removing the last one leaves an empty table that the walk sees as such.
    it.reset();
    while (it())
        it.remove();
    EXPECT_EQ(table.entries(), 0u);
    it.reset();
    EXPECT_EQ(it(), nullptr);
}

TEST(RWSet, InsertAnswersTheElementAlreadyHeld) {
    vString a("a"), otherA("a"), b("b");
    RWSet set;
    EXPECT_EQ(set.insert(&a), &a);
    EXPECT_EQ(set.insert(&otherA), &a);
    EXPECT_EQ(set.insert(&b), &b);
    EXPECT_EQ(set.entries(), 2u);
    EXPECT_EQ(set.find(&otherA), &a);
    EXPECT_EQ(set.remove(&otherA), &a);
    EXPECT_EQ(set.insert(&otherA), &otherA);
}

TEST(RWHashDictionary, AssociatesKeysWithValues) {
    vString k1("one"), k2("two"), probe("one");
    vInt v1(1), v2(2), v3(3);
    RWHashDictionary dict;
    EXPECT_EQ(dict.insertKeyAndValue(&k1, &v1), &k1);
    EXPECT_EQ(dict.insertKeyAndValue(&probe, &v3), nullptr);  // key present: refused
    EXPECT_EQ(dict.insertKeyAndValue(&k2, &v2), &k2);
    RWCollectable* value = &v3;
    EXPECT_EQ(dict.findKeyAndValue(&probe, value), &k1);
    EXPECT_EQ(value, &v1);
    EXPECT_EQ(dict.findValue(&probe, &v3), &v1);  // replaced
    EXPECT_EQ(dict.findValue(&probe), &v3);
    vString absent("three");
    EXPECT_EQ(dict.findValue(&absent, &v1), nullptr);
    EXPECT_EQ(dict.entries(), 2u);
    EXPECT_EQ(dict.findKeyAndValue(&absent, value), nullptr);
    EXPECT_EQ(value, nullptr);

    RWHashDictionaryIterator it(dict);
    ASSERT_EQ(it(), &k1);
    EXPECT_EQ(it.value(), &v3);
    ASSERT_EQ(it(), &k2);
    EXPECT_EQ(it.value(&v1), &v2);
    EXPECT_EQ(dict.findValue(&k2), &v1);
    EXPECT_EQ(it(), nullptr);
    EXPECT_EQ(it.value(), nullptr);

    EXPECT_EQ(dict.removeKeyAndValue(&probe, value), &k1);
    EXPECT_EQ(value, &v3);
    EXPECT_EQ(dict.entries(), 1u);
}

TEST(RWHashDictionary, ClearAndDestroyDestroysKeysAndValues) {
    Tracked::live = 0;
    RWHashDictionary dict;
    dict.insertKeyAndValue(new Tracked("a"), new Tracked("1"));
    dict.insertKeyAndValue(new Tracked("b"), nullptr);
    auto* both = new Tracked("c");
    dict.insertKeyAndValue(both, both);  // destroyed once
    Tracked probe("a");
    dict.removeAndDestroy(&probe);
    EXPECT_EQ(Tracked::live, 1 + 2);
    dict.clearAndDestroy();
    EXPECT_EQ(Tracked::live, 1);
    EXPECT_EQ(dict.entries(), 0u);
}

}  // namespace
