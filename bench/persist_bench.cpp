// The portable object streams (vPostream / vPistream over a std::stringbuf) beside the
// Boost.Serialization text archive, on the same data in the same run: 1M short strings (some with
// blanks, quotes, backslashes, tabs and non-ASCII bytes, so the escaping works), 1M integers of
// every magnitude and sign, and a hash of 100k string pairs. Each object goes through its own
// stream operation (out << x, in >> x; the hash through recursiveSaveOn / recursiveRestoreFrom);
// the archive takes the same items one by one (the map as one item).
//
// Qt's QDataStream is a peer too: the same strings as QByteArray, the integers as qint32 and the
// hash as a QHash<QByteArray, QByteArray>, each written with operator<< into a QByteArray and read
// back with operator>>. Its format is binary (big-endian lengths and integers of fixed size),
// where vfc's and Boost's are text, so its streams are smaller.
//
// Every read compares what it got with the source data, so no side can skip work. Bytes are
// each side's own stream size, so MB/s differ from the work done when the encodings differ in
// size: the second ratio table, on items per second, compares the same work.
#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/unordered_map.hpp>

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QIODevice>

#include <climits>
#include <cstdio>
#include <istream>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <vfc/collections/vTypedFamily.h>
#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

const size_t kStrings = 1000000;
const size_t kInts = 1000000;
const size_t kHashEntries = 100000;

const char* const kParts[] = {"index", "Chapter", "release", "notes", "draft", "Figure",
                              "page",  "table",   "output",  "x",     "42",    "2026",
                              "a_b",   "v1.2",    "README",  "MIF",   "fm",    "html"};
const char* const kSeparators[] = {" ",  " ",  "-",        "/",    ".",   "_",           "\"",
                                   "\t", "\\", "\xc3\xa9", "\xe9", " \"", "\xe2\x80\x93"};

// 20 to 40 bytes of words and separators. About one string in three holds a quote, a backslash,
// a tab or a non-ASCII byte.
std::string shortString(std::mt19937& rng) {
    size_t length = 20 + rng() % 21;
    std::string s;
    while (s.size() < length) {
        s += kParts[rng() % (sizeof kParts / sizeof *kParts)];
        unsigned pick = rng() % 24;
        s += pick < 11 ? kSeparators[pick] : pick < 20 ? " " : "-";
    }
    s.resize(length);
    return s;
}

int variedInt(std::mt19937& rng) {
    switch (rng() % 16) {
        case 0:
            return INT_MIN;
        case 1:
            return INT_MAX;
        case 2:
            return 0;
        default: {
            // Magnitudes of 1 to 10 digits, half of them negative.
            long long limit = 1;
            for (unsigned d = 1 + rng() % 10; d > 0; --d)
                limit *= 10;
            long long v = static_cast<long long>(rng() % static_cast<unsigned long long>(limit));
            if (v > INT_MAX) v %= INT_MAX;
            return static_cast<int>(rng() % 2 ? -v : v);
        }
    }
}

struct Data {
    std::vector<std::string> strings;
    std::vector<vString> vstrings;
    std::vector<int> ints;
    std::vector<vInt> vints;
    std::unordered_map<std::string, std::string> map;
    vHashvStringvString hash;
    std::vector<QByteArray> qstrings;
    std::vector<qint32> qints;
    QHash<QByteArray, QByteArray> qhash;

    Data() {
        std::mt19937 rng(20261207);
        for (size_t i = 0; i < kStrings; ++i) {
            strings.push_back(shortString(rng));
            vstrings.emplace_back(strings.back().data(), strings.back().size());
        }
        for (size_t i = 0; i < kInts; ++i) {
            ints.push_back(variedInt(rng));
            vints.emplace_back(ints.back());
        }
        while (map.size() < kHashEntries) {
            std::string k = shortString(rng), v = shortString(rng);
            if (!map.emplace(k, v).second) continue;
            hash.fInsert(vString(k.data(), k.size()), vString(v.data(), v.size()));
            qhash.insert(QByteArray(k.data(), static_cast<qsizetype>(k.size())),
                         QByteArray(v.data(), static_cast<qsizetype>(v.size())));
        }
        for (const std::string& x : strings)
            qstrings.emplace_back(x.data(), static_cast<qsizetype>(x.size()));
        for (int x : ints)
            qints.push_back(x);
    }
};

const Data& data() {
    static const Data d;
    return d;
}

// ---- the library's streams -------------------------------------------------------------------

template <class Items>
std::string vfcWriteEach(const Items& items) {
    std::stringbuf sb;
    vPostream out(&sb);
    for (const auto& x : items)
        out << x;
    out.flush();
    return out.good() ? sb.str() : std::string();
}

std::string vfcWriteHash(const vHashvStringvString& h) {
    std::stringbuf sb;
    vPostream out(&sb);
    h.recursiveSaveOn(out);
    out.flush();
    return out.good() ? sb.str() : std::string();
}

// Reads items.size() objects and compares each with its source; true when all came back equal.
template <class V, class Items>
bool vfcReadEach(std::stringbuf& sb, const Items& items) {
    sb.pubseekpos(0, std::ios_base::in);
    vPistream in(&sb);
    V x;
    bool same = true;
    for (const auto& expected : items) {
        in >> x;
        same &= x == expected;
    }
    return same && in.good();
}

bool sameEntries(const vHashvStringvString& h,
                 const std::unordered_map<std::string, std::string>& expected) {
    if (h.fEntries() != expected.size()) return false;
    for (const auto& [k, v] : expected) {
        if (!h.fLookup(vString(k.data(), k.size()))) return false;
        const vString& got = h.aValue();
        if (got.length() != v.size() || v.compare(0, v.size(), got.data(), got.length()) != 0)
            return false;
    }
    return true;
}

// ---- the Boost text archive ------------------------------------------------------------------

template <class Items>
std::string boostWriteEach(const Items& items) {
    std::stringbuf sb;
    {
        std::ostream os(&sb);
        boost::archive::text_oarchive oa(os);
        for (const auto& x : items)
            oa << x;
    }
    return sb.str();
}

std::string boostWriteMap(const std::unordered_map<std::string, std::string>& m) {
    std::stringbuf sb;
    {
        std::ostream os(&sb);
        boost::archive::text_oarchive oa(os);
        oa << m;
    }
    return sb.str();
}

template <class T, class Items>
bool boostReadEach(std::stringbuf& sb, const Items& items) {
    sb.pubseekpos(0, std::ios_base::in);
    std::istream is(&sb);
    boost::archive::text_iarchive ia(is);
    T x{};
    bool same = true;
    for (const auto& expected : items) {
        ia >> x;
        same &= x == expected;
    }
    return same && is.good();
}

// ---- Qt's QDataStream -------------------------------------------------------------------------

template <class Items>
QByteArray qtWriteEach(const Items& items) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const auto& x : items)
        out << x;
    return out.status() == QDataStream::Ok ? bytes : QByteArray();
}

QByteArray qtWriteHash(const QHash<QByteArray, QByteArray>& h) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << h;
    return out.status() == QDataStream::Ok ? bytes : QByteArray();
}

template <class T, class Items>
bool qtReadEach(const QByteArray& bytes, const Items& items) {
    QDataStream in(bytes);
    T x{};
    bool same = true;
    for (const auto& expected : items) {
        in >> x;
        same &= x == expected;
    }
    return same && in.status() == QDataStream::Ok && in.atEnd();
}

// ---- benchmarks -----------------------------------------------------------------------------

void count(benchmark::State& state, size_t bytes, size_t items) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
}

// write() returns the stream's bytes (a std::string or a QByteArray), empty when it failed.
template <class Write>
void writeBench(benchmark::State& state, size_t items, Write write) {
    size_t bytes = 0;
    for (auto _ : state) {
        auto text = write();
        if (text.size() == 0) {
            state.SkipWithError("write failed");
            return;
        }
        bytes = static_cast<size_t>(text.size());
        benchmark::DoNotOptimize(text.data());
    }
    count(state, bytes, items);
}

// read() reads the whole of bytes and reports whether it matched the source.
template <class Read>
void qtReadBench(benchmark::State& state, const QByteArray& bytes, size_t items, Read read) {
    for (auto _ : state) {
        if (!read()) {
            state.SkipWithError("read back something else");
            return;
        }
    }
    count(state, static_cast<size_t>(bytes.size()), items);
}

// read(sb) reads the whole of sb and reports whether it matched the source.
template <class Read>
void readBench(benchmark::State& state, const std::string& text, size_t items, Read read) {
    std::stringbuf sb(text, std::ios_base::in);
    for (auto _ : state) {
        if (!read(sb)) {
            state.SkipWithError("read back something else");
            return;
        }
    }
    count(state, text.size(), items);
}

struct Encoded {
    std::string vfcStrings, vfcInts, vfcHash;
    std::string boostStrings, boostInts, boostMap;
    QByteArray qtStrings, qtInts, qtHash;
};

const Encoded& encoded() {
    static const Encoded e{
        vfcWriteEach(data().vstrings),  vfcWriteEach(data().vints),  vfcWriteHash(data().hash),
        boostWriteEach(data().strings), boostWriteEach(data().ints), boostWriteMap(data().map),
        qtWriteEach(data().qstrings),   qtWriteEach(data().qints),   qtWriteHash(data().qhash)};
    return e;
}

// QDataStream must give back the source data before it is timed; false (with the first item it
// got wrong) otherwise.
bool qtRoundTrips() {
    const Data& d = data();
    const Encoded& e = encoded();
    bool ok =
        qtReadEach<QByteArray>(e.qtStrings, d.qstrings) && qtReadEach<qint32>(e.qtInts, d.qints);
    QDataStream in(e.qtHash);
    QHash<QByteArray, QByteArray> h;
    in >> h;
    ok &= in.status() == QDataStream::Ok && h == d.qhash &&
          static_cast<size_t>(h.size()) == d.map.size();
    for (const auto& [k, v] : d.map) {
        auto it = h.constFind(QByteArray(k.data(), static_cast<qsizetype>(k.size())));
        ok &= it != h.cend() && it->toStdString() == v;
    }
    return ok;
}

void registerAll() {
    using benchmark::RegisterBenchmark;
    using benchmark::State;
    const Data& d = data();
    const Encoded& e = encoded();

    RegisterBenchmark("strings-write/vfc", [&](State& s) {
        writeBench(s, kStrings, [&] { return vfcWriteEach(d.vstrings); });
    });
    RegisterBenchmark("strings-write/boost", [&](State& s) {
        writeBench(s, kStrings, [&] { return boostWriteEach(d.strings); });
    });
    RegisterBenchmark("strings-write/qt", [&](State& s) {
        writeBench(s, kStrings, [&] { return qtWriteEach(d.qstrings); });
    });
    RegisterBenchmark("strings-read/vfc", [&](State& s) {
        readBench(s, e.vfcStrings, kStrings,
                  [&](std::stringbuf& sb) { return vfcReadEach<vString>(sb, d.vstrings); });
    });
    RegisterBenchmark("strings-read/boost", [&](State& s) {
        readBench(s, e.boostStrings, kStrings,
                  [&](std::stringbuf& sb) { return boostReadEach<std::string>(sb, d.strings); });
    });

    RegisterBenchmark("strings-read/qt", [&](State& s) {
        qtReadBench(s, e.qtStrings, kStrings,
                    [&] { return qtReadEach<QByteArray>(e.qtStrings, d.qstrings); });
    });

    RegisterBenchmark("ints-write/vfc", [&](State& s) {
        writeBench(s, kInts, [&] { return vfcWriteEach(d.vints); });
    });
    RegisterBenchmark("ints-write/boost", [&](State& s) {
        writeBench(s, kInts, [&] { return boostWriteEach(d.ints); });
    });
    RegisterBenchmark("ints-write/qt", [&](State& s) {
        writeBench(s, kInts, [&] { return qtWriteEach(d.qints); });
    });
    RegisterBenchmark("ints-read/vfc", [&](State& s) {
        readBench(s, e.vfcInts, kInts,
                  [&](std::stringbuf& sb) { return vfcReadEach<vInt>(sb, d.ints); });
    });
    RegisterBenchmark("ints-read/boost", [&](State& s) {
        readBench(s, e.boostInts, kInts,
                  [&](std::stringbuf& sb) { return boostReadEach<int>(sb, d.ints); });
    });

    RegisterBenchmark("ints-read/qt", [&](State& s) {
        qtReadBench(s, e.qtInts, kInts, [&] { return qtReadEach<qint32>(e.qtInts, d.qints); });
    });

    RegisterBenchmark("hash-write/vfc", [&](State& s) {
        writeBench(s, kHashEntries, [&] { return vfcWriteHash(d.hash); });
    });
    RegisterBenchmark("hash-write/boost", [&](State& s) {
        writeBench(s, kHashEntries, [&] { return boostWriteMap(d.map); });
    });
    RegisterBenchmark("hash-write/qt", [&](State& s) {
        writeBench(s, kHashEntries, [&] { return qtWriteHash(d.qhash); });
    });
    // The restored container is checked outside the timing; its destruction is timed.
    RegisterBenchmark("hash-read/vfc", [&](State& s) {
        readBench(s, e.vfcHash, kHashEntries, [&](std::stringbuf& sb) {
            sb.pubseekpos(0, std::ios_base::in);
            vPistream in(&sb);
            vHashvStringvString h;
            bool restored = RWCollectable::recursiveRestoreFrom(in, &h) == &h && in.good();
            s.PauseTiming();
            bool same = restored && sameEntries(h, d.map);
            s.ResumeTiming();
            return same;
        });
    });
    RegisterBenchmark("hash-read/boost", [&](State& s) {
        readBench(s, e.boostMap, kHashEntries, [&](std::stringbuf& sb) {
            sb.pubseekpos(0, std::ios_base::in);
            std::istream is(&sb);
            std::unordered_map<std::string, std::string> m;
            {
                boost::archive::text_iarchive ia(is);
                ia >> m;
            }
            s.PauseTiming();
            bool same = is.good() && m == d.map;
            s.ResumeTiming();
            return same;
        });
    });
    RegisterBenchmark("hash-read/qt", [&](State& s) {
        qtReadBench(s, e.qtHash, kHashEntries, [&] {
            QDataStream in(e.qtHash);
            QHash<QByteArray, QByteArray> h;
            in >> h;
            s.PauseTiming();
            bool same = in.status() == QDataStream::Ok && h == d.qhash;
            s.ResumeTiming();
            return same;
        });
    });
}

// The usual table and the MB/s ratios, plus a second ratio table on items per second: the two
// encodings differ in size, so only the latter compares the same work.
class PersistReporter : public vfcbench::RatioReporter {
  public:
    PersistReporter() : RatioReporter("vfc", "MB/s"), items_("vfc", "Mitem/s") {
        items_.SetOutputStream(&discard_);
        items_.SetErrorStream(&discard_);
        summarize(false);  // the encodings differ in size: only items compare the same work
    }
    void ReportRuns(const std::vector<Run>& runs) override {
        RatioReporter::ReportRuns(runs);
        std::vector<Run> itemRuns = runs;
        for (Run& run : itemRuns)
            run.counters.erase("bytes_per_second");
        items_.ReportRuns(itemRuns);
    }
    void printItemRatios() const { items_.printRatios(); }

  private:
    std::ostringstream discard_;
    vfcbench::RatioReporter items_;
};

}  // namespace

int main(int argc, char** argv) {
    const Encoded& e = encoded();
    if (e.vfcStrings.empty() || e.vfcInts.empty() || e.vfcHash.empty()) {
        std::fprintf(stderr, "writing the source data through vPostream failed\n");
        return 1;
    }
    if (e.qtStrings.isEmpty() || e.qtInts.isEmpty() || e.qtHash.isEmpty() || !qtRoundTrips()) {
        std::fprintf(stderr, "QDataStream does not give back the source data\n");
        return 1;
    }
    std::printf(
        "stream bytes per item (vfc / boost / qt): strings %.1f / %.1f / %.1f, ints %.1f / %.1f "
        "/ %.1f, hash entries %.1f / %.1f / %.1f\n",
        double(e.vfcStrings.size()) / kStrings, double(e.boostStrings.size()) / kStrings,
        double(e.qtStrings.size()) / kStrings, double(e.vfcInts.size()) / kInts,
        double(e.boostInts.size()) / kInts, double(e.qtInts.size()) / kInts,
        double(e.vfcHash.size()) / kHashEntries, double(e.boostMap.size()) / kHashEntries,
        double(e.qtHash.size()) / kHashEntries);
    registerAll();
    vfcbench::setProgram(argv[0]);
    benchmark::Initialize(&argc, argv);
    PersistReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    reporter.printItemRatios();
    benchmark::Shutdown();
    return 0;
}
