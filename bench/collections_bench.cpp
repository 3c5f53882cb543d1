// The typed collections beside the standard containers on the same data: vHashvStringvString
// against std::unordered_map<std::string, std::string> (insert copies of key and value; look up
// every key and read its value) and vSlistvString against std::list<std::string> (append copies;
// walk the list and read every element), with 100k and 1M keys of 20 to 40 bytes.
//
// Inserts and appends start from an empty container (no reserve on either side); destroying it
// afterwards is not timed. Lookups use keys that are separate copies of the stored ones, in an
// order unrelated to insertion.
#include <algorithm>
#include <functional>
#include <list>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
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
    }
};

void count(benchmark::State& state, size_t items, size_t sum) {
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
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

    auto hash = std::make_shared<vHashvStringvString>();
    auto map = std::make_shared<std::unordered_map<std::string, std::string>>();
    for (size_t i = 0; i < n; ++i) {
        hash->fInsert(d->vkeys[i], d->vvalues[i]);
        map->emplace(d->keys[i], d->values[i]);
    }
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

    // Each list is built in a loop of its own, as a program builds one list at a time: built in
    // one loop, the two would interleave their allocations and each walk would step over the
    // other's nodes.
    auto vlist = std::make_shared<vSlistvString>();
    auto slist = std::make_shared<std::list<std::string>>();
    for (size_t i = 0; i < n; ++i)
        vlist->fInsert(d->vvalues[i]);
    for (size_t i = 0; i < n; ++i)
        slist->push_back(d->values[i]);
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
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("100k", 100000);
    registerAll("1M", 1000000);
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mitem/s");
}
