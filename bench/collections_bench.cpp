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

void registerAll(const char* size, size_t n) {
    using benchmark::State;
    auto d = std::make_shared<const Data>(n);
    auto reg = [size](const char* op, const char* engine, std::function<void(State&)> fn) {
        std::string name = std::string(op) + "-" + size + "/" + engine;
        benchmark::RegisterBenchmark(name.c_str(), fn)->Unit(benchmark::kMillisecond);
    };

    reg("hash-insert", "vfc", [d, n](State& s) {
        for (auto _ : s) {
            auto h = std::make_unique<vHashvStringvString>();
            for (size_t i = 0; i < n; ++i)
                h->fInsert(d->vkeys[i], d->vvalues[i]);
            if (h->fEntries() != n) {
                s.SkipWithError("lost entries");
                break;
            }
            s.PauseTiming();
            h.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
    });
    reg("hash-insert", "std", [d, n](State& s) {
        for (auto _ : s) {
            auto m = std::make_unique<std::unordered_map<std::string, std::string>>();
            for (size_t i = 0; i < n; ++i)
                m->emplace(d->keys[i], d->values[i]);
            if (m->size() != n) {
                s.SkipWithError("lost entries");
                break;
            }
            s.PauseTiming();
            m.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
    });

    reg("hash-insert", "qt", [d, n](State& s) {
        for (auto _ : s) {
            auto h = std::make_unique<QHash<QByteArray, QByteArray>>();
            for (size_t i = 0; i < n; ++i)
                h->insert(d->qkeys[i], d->qvalues[i]);
            if (static_cast<size_t>(h->size()) != n) {
                s.SkipWithError("lost entries");
                break;
            }
            s.PauseTiming();
            h.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
    });

    auto hash = std::make_shared<vHashvStringvString>();
    auto map = std::make_shared<std::unordered_map<std::string, std::string>>();
    for (size_t i = 0; i < n; ++i) {
        hash->fInsert(d->vkeys[i], d->vvalues[i]);
        map->emplace(d->keys[i], d->values[i]);
    }
    auto qhash = std::make_shared<QHash<QByteArray, QByteArray>>();
    for (size_t i = 0; i < n; ++i)
        qhash->insert(d->qkeys[i], d->qvalues[i]);
    checkLookups(size, *d, *hash, *map, *qhash);
    reg("hash-lookup", "vfc", [d, n, hash](State& s) {
        size_t sum = 0;
        for (auto _ : s)
            for (size_t i = 0; i < n; ++i)
                if (hash->fLookup(d->vprobes[i])) sum += hash->aValue().length();
        count(s, n, sum);
    });
    reg("hash-lookup", "std", [d, n, map](State& s) {
        size_t sum = 0;
        for (auto _ : s)
            for (size_t i = 0; i < n; ++i) {
                auto it = map->find(d->probes[i]);
                if (it != map->end()) sum += it->second.size();
            }
        count(s, n, sum);
    });

    reg("hash-lookup", "qt", [d, n, qhash](State& s) {
        size_t sum = 0;
        for (auto _ : s)
            for (size_t i = 0; i < n; ++i) {
                auto it = qhash->constFind(d->qprobes[i]);
                if (it != qhash->cend()) sum += static_cast<size_t>(it->size());
            }
        count(s, n, sum);
    });

    reg("list-append", "vfc", [d, n](State& s) {
        for (auto _ : s) {
            auto l = std::make_unique<vSlistvString>();
            for (size_t i = 0; i < n; ++i)
                l->fInsert(d->vvalues[i]);
            if (l->fEntries() != n) {
                s.SkipWithError("lost elements");
                break;
            }
            s.PauseTiming();
            l.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
    });
    reg("list-append", "std", [d, n](State& s) {
        for (auto _ : s) {
            auto l = std::make_unique<std::list<std::string>>();
            for (size_t i = 0; i < n; ++i)
                l->push_back(d->values[i]);
            if (l->size() != n) {
                s.SkipWithError("lost elements");
                break;
            }
            s.PauseTiming();
            l.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
    });

    reg("list-append", "qt", [d, n](State& s) {
        for (auto _ : s) {
            auto l = std::make_unique<QList<QByteArray>>();
            for (size_t i = 0; i < n; ++i)
                l->append(d->qvalues[i]);
            if (static_cast<size_t>(l->size()) != n) {
                s.SkipWithError("lost elements");
                break;
            }
            s.PauseTiming();
            l.reset();
            s.ResumeTiming();
        }
        count(s, n, 0);
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
        size_t sum = 0;
        for (auto _ : s) {
            vSlistvStringIter it(*vlist);
            size_t seen = 0;
            while (it.fAdvance()) {
                const vString& x = it.aKey();
                sum += x.length() + static_cast<unsigned char>(x.data()[x.length() - 1]);
                ++seen;
            }
            if (seen != n) {
                s.SkipWithError("missed elements");
                break;
            }
        }
        count(s, n, sum);
    });
    reg("list-iterate", "std", [n, slist](State& s) {
        size_t sum = 0;
        for (auto _ : s) {
            size_t seen = 0;
            for (const std::string& x : *slist) {
                sum += x.size() + static_cast<unsigned char>(x.back());
                ++seen;
            }
            if (seen != n) {
                s.SkipWithError("missed elements");
                break;
            }
        }
        count(s, n, sum);
    });
    reg("list-iterate", "qt", [n, qlist](State& s) {
        size_t sum = 0;
        for (auto _ : s) {
            size_t seen = 0;
            for (const QByteArray& x : std::as_const(*qlist)) {
                sum += static_cast<size_t>(x.size()) + static_cast<unsigned char>(x.back());
                ++seen;
            }
            if (seen != n) {
                s.SkipWithError("missed elements");
                break;
            }
        }
        count(s, n, sum);
    });
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("100k", 100000);
    registerAll("1M", 1000000);
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mitem/s");
}
