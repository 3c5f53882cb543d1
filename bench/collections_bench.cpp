// The typed collections beside the standard containers and Qt's on the same data:
// vHashvStringvString against std::unordered_map<std::string, std::string> and
// QHash<QByteArray, QByteArray> (insert copies of key and value; look up every key and read its
// value), and vSlistvString against std::list<std::string> and QList<QByteArray> (append copies;
// walk the list and read every element), with 100k and 1M keys of 20 to 40 bytes. Qt's
// containers hold QByteArray, bytes like vString, rather than QString, which would add a UTF-16
// conversion; QByteArray copies share the bytes as vString's do, where std::string copies them.
// QList is an array, not a linked list like vSlistvString and std::list.
//
// Before timing, the filled containers are checked: every probe finds the value vfc finds, and
// every list holds the same elements in the same order.
//
// Inserts and appends start from an empty container (no reserve on either side); destroying it
// afterwards is not timed. Lookups use keys that are separate copies of the stored ones, in an
// order unrelated to insertion.
#include <QByteArray>
#include <QHash>
#include <QList>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <list>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <vfc/collections/vTypedFamily.h>
#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

const char* const kWords[] = {"index", "chapter", "release", "notes",  "draft", "figure",
                              "page",  "table",   "output",  "manual", "link",  "markup"};

std::string word(std::mt19937& rng) {
    return kWords[rng() % (sizeof kWords / sizeof *kWords)];
}

// Path-like keys, unique through their number, and prose-like values, 20 to 40 bytes each.
struct Data {
    std::vector<std::string> keys, values, probes;
    std::vector<vString> vkeys, vvalues, vprobes;
    std::vector<QByteArray> qkeys, qvalues, qprobes;

    explicit Data(size_t n) {
        std::mt19937 rng(20261207 + static_cast<unsigned>(n));
        for (size_t i = 0; i < n; ++i) {
            // The head has neither digits nor '-', so the number after its last '-' keeps the
            // keys apart.
            std::string tail = "-" + std::to_string(i) + ".html", head;
            size_t headLength = 20 + rng() % 21 - tail.size();
            while (head.size() < headLength)
                head += word(rng) + "/";
            keys.push_back(head.substr(0, headLength) + tail);
            std::string v;
            for (size_t length = 20 + rng() % 21; v.size() < length;)
                v += word(rng) + " ";
            values.push_back(v.substr(0, 40));
        }
        probes = keys;
        std::shuffle(probes.begin(), probes.end(), rng);
        // Separate buffers, not shared copies of the std::strings' bytes.
        auto convert = [](const std::vector<std::string>& in, std::vector<vString>& out) {
            for (const std::string& s : in)
                out.emplace_back(s.data(), s.size());
        };
        convert(keys, vkeys);
        convert(values, vvalues);
        convert(probes, vprobes);
        auto toQt = [](const std::vector<std::string>& in, std::vector<QByteArray>& out) {
            for (const std::string& s : in)
                out.emplace_back(s.data(), static_cast<qsizetype>(s.size()));
        };
        toQt(keys, qkeys);
        toQt(values, qvalues);
        toQt(probes, qprobes);
    }
};

void count(benchmark::State& state, size_t items, size_t sum) {
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
}

std::string fromV(const vString& s) {
    return std::string(s.data(), s.length());
}

std::string fromQt(const QByteArray& b) {
    return std::string(b.constData(), static_cast<size_t>(b.size()));
}

// Every probe must find the same value in all three hashes.
void checkLookups(const char* size, const Data& d, const vHashvStringvString& hash,
                  const std::unordered_map<std::string, std::string>& map,
                  const QHash<QByteArray, QByteArray>& qhash) {
    size_t bad = 0;
    for (size_t i = 0; i < d.probes.size(); ++i) {
        std::string mine = hash.fLookup(d.vprobes[i]) ? fromV(hash.aValue()) : "(none)";
        auto s = map.find(d.probes[i]);
        auto q = qhash.constFind(d.qprobes[i]);
        if ((s == map.end() ? "(none)" : s->second) != mine ||
            (q == qhash.cend() ? "(none)" : fromQt(*q)) != mine)
            ++bad;
    }
    if (bad || hash.fEntries() != map.size() || static_cast<size_t>(qhash.size()) != map.size())
        std::printf("WARNING: %s: the hashes differ (%zu lookups)\n", size, bad);
}

// The three lists must hold the same elements in the same order.
void checkLists(const char* size, const vSlistvString& vlist, const std::list<std::string>& slist,
                const QList<QByteArray>& qlist) {
    bool same =
        vlist.fEntries() == slist.size() && static_cast<size_t>(qlist.size()) == slist.size();
    vSlistvStringIter it(vlist);
    auto s = slist.begin();
    for (qsizetype k = 0; same && it.fAdvance(); ++k, ++s)
        same = fromV(it.aKey()) == *s && fromQt(qlist[k]) == *s;
    if (!same) std::printf("WARNING: %s: the lists differ\n", size);
}

// Fills a fresh container with n items through add(container, i), checking that it ends up with
// n of them; destroying it is not timed.
template <class Container, class Add, class Size>
void timeFill(benchmark::State& s, size_t n, Add add, Size size) {
    for (auto _ : s) {
        auto c = std::make_unique<Container>();
        for (size_t i = 0; i < n; ++i)
            add(*c, i);
        if (size(*c) != n) {
            s.SkipWithError("lost items");
            break;
        }
        s.PauseTiming();
        c.reset();
        s.ResumeTiming();
    }
    count(s, n, 0);
}

// Walks a list through walk(sum), which adds every element's length and last byte to sum (kept
// in a local while walking: a store through the reference could alias the bytes read) and
// returns how many elements it saw.
template <class Walk>
void timeWalk(benchmark::State& s, size_t n, Walk walk) {
    size_t sum = 0;
    for (auto _ : s) {
        if (walk(sum) != n) {
            s.SkipWithError("missed elements");
            break;
        }
    }
    count(s, n, sum);
}

size_t lengthAndLast(size_t length, char last) {
    return length + static_cast<unsigned char>(last);
}

void registerAll(const char* size, size_t n) {
    using benchmark::State;
    using StdMap = std::unordered_map<std::string, std::string>;
    using QtHash = QHash<QByteArray, QByteArray>;
    auto d = std::make_shared<const Data>(n);
    auto reg = [size](const char* op, const char* engine, std::function<void(State&)> fn) {
        std::string name = std::string(op) + "-" + size + "/" + engine;
        benchmark::RegisterBenchmark(name.c_str(), fn)->Unit(benchmark::kMillisecond);
    };

    reg("hash-insert", "vfc", [d, n](State& s) {
        timeFill<vHashvStringvString>(
            s, n, [&](auto& h, size_t i) { h.fInsert(d->vkeys[i], d->vvalues[i]); },
            [](const auto& h) { return h.fEntries(); });
    });
    reg("hash-insert", "std", [d, n](State& s) {
        timeFill<StdMap>(
            s, n, [&](auto& m, size_t i) { m.emplace(d->keys[i], d->values[i]); },
            [](const auto& m) { return m.size(); });
    });
    reg("hash-insert", "qt", [d, n](State& s) {
        timeFill<QtHash>(
            s, n, [&](auto& h, size_t i) { h.insert(d->qkeys[i], d->qvalues[i]); },
            [](const auto& h) { return static_cast<size_t>(h.size()); });
    });

    auto hash = std::make_shared<vHashvStringvString>();
    auto map = std::make_shared<StdMap>();
    for (size_t i = 0; i < n; ++i) {
        hash->fInsert(d->vkeys[i], d->vvalues[i]);
        map->emplace(d->keys[i], d->values[i]);
    }
    auto qhash = std::make_shared<QtHash>();
    for (size_t i = 0; i < n; ++i)
        qhash->insert(d->qkeys[i], d->qvalues[i]);
    checkLookups(size, *d, *hash, *map, *qhash);
    // Each lookup answers the length of the value it found, 0 for none.
    reg("hash-lookup", "vfc", [d, n, hash](State& s) {
        vfcbench::timeEach(s, n, [&](size_t i) -> size_t {
            return hash->fLookup(d->vprobes[i]) ? hash->aValue().length() : 0;
        });
    });
    reg("hash-lookup", "std", [d, n, map](State& s) {
        vfcbench::timeEach(s, n, [&](size_t i) -> size_t {
            auto it = map->find(d->probes[i]);
            return it != map->end() ? it->second.size() : 0;
        });
    });
    reg("hash-lookup", "qt", [d, n, qhash](State& s) {
        vfcbench::timeEach(s, n, [&](size_t i) -> size_t {
            auto it = qhash->constFind(d->qprobes[i]);
            return it != qhash->cend() ? static_cast<size_t>(it->size()) : 0;
        });
    });

    reg("list-append", "vfc", [d, n](State& s) {
        timeFill<vSlistvString>(
            s, n, [&](auto& l, size_t i) { l.fInsert(d->vvalues[i]); },
            [](const auto& l) { return l.fEntries(); });
    });
    reg("list-append", "std", [d, n](State& s) {
        timeFill<std::list<std::string>>(
            s, n, [&](auto& l, size_t i) { l.push_back(d->values[i]); },
            [](const auto& l) { return l.size(); });
    });
    reg("list-append", "qt", [d, n](State& s) {
        timeFill<QList<QByteArray>>(
            s, n, [&](auto& l, size_t i) { l.append(d->qvalues[i]); },
            [](const auto& l) { return static_cast<size_t>(l.size()); });
    });

    // Each list is built in a loop of its own, as a program builds one list at a time: built in
    // one loop, the lists would interleave their allocations and each walk would step over the
    // others' nodes.
    auto vlist = std::make_shared<vSlistvString>();
    auto slist = std::make_shared<std::list<std::string>>();
    for (size_t i = 0; i < n; ++i)
        vlist->fInsert(d->vvalues[i]);
    for (size_t i = 0; i < n; ++i)
        slist->push_back(d->values[i]);
    auto qlist = std::make_shared<QList<QByteArray>>();
    for (size_t i = 0; i < n; ++i)
        qlist->append(d->qvalues[i]);
    checkLists(size, *vlist, *slist, *qlist);
    // Every element's length and last byte, so the walk has to reach the bytes.
    reg("list-iterate", "vfc", [n, vlist](State& s) {
        timeWalk(s, n, [&](size_t& sum) {
            vSlistvStringIter it(*vlist);
            size_t seen = 0, total = 0;
            for (; it.fAdvance(); ++seen) {
                const vString& x = it.aKey();
                total += lengthAndLast(x.length(), x.data()[x.length() - 1]);
            }
            sum += total;
            return seen;
        });
    });
    reg("list-iterate", "std", [n, slist](State& s) {
        timeWalk(s, n, [&](size_t& sum) {
            size_t seen = 0, total = 0;
            for (const std::string& x : *slist) {
                total += lengthAndLast(x.size(), x.back());
                ++seen;
            }
            sum += total;
            return seen;
        });
    });
    reg("list-iterate", "qt", [n, qlist](State& s) {
        timeWalk(s, n, [&](size_t& sum) {
            size_t seen = 0, total = 0;
            for (const QByteArray& x : std::as_const(*qlist)) {
                total += lengthAndLast(static_cast<size_t>(x.size()), x.back());
                ++seen;
            }
            sum += total;
            return seen;
        });
    });
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("100k", 100000);
    registerAll("1M", 1000000);
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mitem/s");
}
