// Reading INI files and typing files by their content: the library's file streams beside POCO
// and Qt on the same files in the same run.
//  - ini-load: a generated INI file of 200 sections of 20 keys read, and one key (the last)
//    looked up. vfc opens it with vIfstream::fOpenText and reads it with fParseAsINI into a hash
//    of sections; "poco" loads a Poco::Util::IniFileConfiguration from the file; "qt" opens
//    QSettings(path, QSettings::IniFormat). QSettings reads the file and splits it into sections
//    but parses the keys of a section only when one of them is asked for, so here it parses one
//    section of 200 where the others parse them all.
//  - ini-read-all: the same, then every key and its value read: vfc walks its hash of sections
//    and each section's hash; POCO lists the sections and each section's keys with keys() and
//    reads each value with getString; Qt lists allKeys() and reads each value(). POCO has no
//    call that lists all keys at once, and its keys() of one section goes through every key of
//    the file, so this costs it a time that grows with sections times keys.
//    The readers differ: vfc keeps keys and values as written (the text before the first "=" and
//    after the last one, untrimmed); POCO trims both and compares keys ignoring case; QSettings
//    trims values, splits them at "," into lists, removes quotes, decodes "\" and "%" escapes and
//    ends a value at ";". The generated names hold letters, digits, "-" and "_", the values those
//    and blanks inside, "/", "." and ":", and comment lines (";") hold no "=", so the three read
//    the same pairs; this is checked before timing.
//    QSettings keeps a file it has parsed and does not read it again while the file's size and
//    modification time stay the same, so before every iteration (not timed) the modification
//    time is moved on, for all three engines alike: each iteration reads the file.
//  - type-detect: every file under samples/ typed from its name and first bytes. vfc opens it
//    with vIfstream::fOpenBinary(true, ...) and takes fFileInfo().fTypeName(); "qt" asks
//    QMimeDatabase::mimeTypeForFile (by name and content; the database is loaded before timing).
//    The two name types differently (vfc its own file types, Qt MIME types), so only the speed
//    is compared; what each answered is printed per file.
//
// The INI file goes to a fresh folder under the system's temporary folder (removed at the end).
#include <Poco/AutoPtr.h>
#include <Poco/Util/IniFileConfiguration.h>
#include <QMimeDatabase>
#include <QMimeType>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <vfc/collections/vTypedFamily.h>
#include <vfc/vfc.h>

#include "benchCommon.h"

#ifndef VFC_SAMPLES_DIR
#define VFC_SAMPLES_DIR "samples"
#endif

namespace {

namespace fs = std::filesystem;

const size_t kSections = 200;
const size_t kKeysPerSection = 20;

const char* const kWords[] = {"chapter", "index",  "figure", "table",   "output", "link",
                              "book",    "manual", "notes",  "release", "draft",  "markup",
                              "style",   "font",   "page",   "margin",  "import", "export"};

std::string word(std::mt19937& rng) {
    return kWords[rng() % (sizeof kWords / sizeof *kWords)];
}

// A plain value: a number, a path, a version, a few words, or a flag.
std::string value(std::mt19937& rng) {
    switch (rng() % 5) {
        case 0:
            return std::to_string(rng() % 100000);
        case 1:
            return "/usr/share/" + word(rng) + "/" + word(rng) + "-" + std::to_string(rng() % 9) +
                   ".html";
        case 2:
            return std::to_string(rng() % 10) + "." + std::to_string(rng() % 30);
        case 3: {
            std::string s = word(rng);
            for (size_t n = 1 + rng() % 6; n > 0; --n)
                s += " " + word(rng);
            return s;
        }
        default:
            return rng() % 2 ? "true" : "http://docs.example.org:8080/" + word(rng);
    }
}

using Pairs = std::map<std::string, std::string>;  // "section/key" -> value

struct Data {
    fs::path dir;
    std::string ini;
    size_t iniBytes = 0;
    Pairs pairs;
    std::string lastSection, lastKey;  // the key the load cases look up
    std::vector<std::string> samples;

    ~Data() {
        std::error_code ignored;
        fs::remove_all(dir, ignored);
    }
};

std::unique_ptr<Data> makeData() {
    auto d = std::make_unique<Data>();
    d->dir =
        fs::temp_directory_path() / ("vfc-files-bench-" + std::to_string(std::random_device{}()));
    fs::create_directories(d->dir);
    d->ini = (d->dir / "settings.ini").string();
    std::ofstream out(d->ini, std::ios::binary);
    std::mt19937 rng(20261124);
    out << "; generated settings of a publishing project\n";
    for (size_t s = 0; s < kSections; ++s) {
        std::string section = word(rng) + "-" + std::to_string(s);
        if (s) out << "\n";
        out << "[" << section << "]\n";
        if (rng() % 4 == 0) out << "; the " << word(rng) << " options\n";
        for (size_t k = 0; k < kKeysPerSection; ++k) {
            std::string key = word(rng) + "_" + word(rng) + std::to_string(k);
            std::string v = value(rng);
            out << key << "=" << v << "\n";
            d->pairs[section + "/" + key] = v;
            d->lastSection = section;
            d->lastKey = key;
        }
    }
    out.close();
    d->iniBytes = static_cast<size_t>(fs::file_size(d->ini));
    for (const auto& entry : fs::recursive_directory_iterator(VFC_SAMPLES_DIR))
        if (entry.is_regular_file()) d->samples.push_back(entry.path().string());
    std::sort(d->samples.begin(), d->samples.end());
    return d;
}

// Moves the INI file's modification time on by a second, so that QSettings reads it again.
void touch(const std::string& path) {
    std::error_code ignored;
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1), ignored);
}

std::string fromV(const vString& s) {
    return std::string(s.data(), s.length());
}

// ---- the three INI readers: each reads the file and calls pair() for every key and value ----
// (or, with all false, looks up the last key only and returns its value's length)

using PairSink = std::function<void(const std::string&, const std::string&, const std::string&)>;

size_t vfcIni(const std::string& path, bool all, const Data& d, const PairSink& pair) {
    vIfstream in;
    vHashvStringvHvSvS sections;
    if (!in.fOpenText(vFile(path.c_str()))) return 0;
    in.fParseAsINI(sections);
    if (!all) {
        vString section(("[" + d.lastSection + "]").c_str());
        if (!sections.fLookup(section)) return 0;
        vHashvStringvString& keys = sections.aValue();
        return keys.fLookup(vString(d.lastKey.c_str())) ? keys.aValue().length() : 0;
    }
    size_t sum = 0;
    vHashvStringvHvSvSIter s(sections);
    while (s.fAdvance()) {
        vHashvStringvStringIter k(s.aValue());
        while (k.fAdvance()) {
            sum += k.aKey().length() + k.aValue().length();
            if (pair) {
                // The section keeps its brackets.
                std::string name = fromV(s.aKey());
                pair(name.substr(1, name.size() - 2), fromV(k.aKey()), fromV(k.aValue()));
            }
        }
    }
    return sum;
}

size_t pocoIni(const std::string& path, bool all, const Data& d, const PairSink& pair) {
    Poco::AutoPtr<Poco::Util::IniFileConfiguration> config(
        new Poco::Util::IniFileConfiguration(path));
    if (!all) return config->getString(d.lastSection + "." + d.lastKey, "").size();
    size_t sum = 0;
    Poco::Util::AbstractConfiguration::Keys sections, keys;
    config->keys(sections);
    for (const std::string& section : sections) {
        config->keys(section, keys);
        for (const std::string& key : keys) {
            std::string v = config->getString(section + "." + key);
            sum += key.size() + v.size();
            if (pair) pair(section, key, v);
        }
    }
    return sum;
}

size_t qtIni(const QString& path, bool all, const Data& d, const PairSink& pair) {
    QSettings settings(path, QSettings::IniFormat);
    if (!all)
        return static_cast<size_t>(
            settings.value(QString::fromStdString(d.lastSection + "/" + d.lastKey))
                .toString()
                .size());
    size_t sum = 0;
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys) {
        QString v = settings.value(key).toString();
        sum += static_cast<size_t>(key.size() + v.size());
        if (pair) {
            std::string k = key.toStdString();
            size_t slash = k.find('/');
            pair(k.substr(0, slash), k.substr(slash + 1), v.toStdString());
        }
    }
    return sum;
}

// The pairs an engine read, against the generated ones; prints the first difference.
bool readsTheSame(const char* engine, const Data& d,
                  const std::function<void(const PairSink&)>& read) {
    Pairs got;
    read([&](const std::string& s, const std::string& k, const std::string& v) {
        got[s + "/" + k] = v;
    });
    if (got == d.pairs) return true;
    std::printf("%s reads %zu pairs, %zu written", engine, got.size(), d.pairs.size());
    for (const auto& [key, v] : d.pairs) {
        auto it = got.find(key);
        if (it == got.end() || it->second != v) {
            std::printf("; first difference: %s = \"%s\", read \"%s\"", key.c_str(), v.c_str(),
                        it == got.end() ? "(none)" : it->second.c_str());
            break;
        }
    }
    std::printf("\n");
    return false;
}

// ---- content detection ------------------------------------------------------------------------

std::string vfcType(const std::string& path) {
    vIfstream in;
    if (!in.fOpenBinary(true, vFile(path.c_str()))) return "(not opened)";
    return in.fFileInfo().fTypeName();
}

// For the table: a type without a name shows its number.
std::string vfcTypeShown(const std::string& path) {
    vIfstream in;
    if (!in.fOpenBinary(true, vFile(path.c_str()))) return "(not opened)";
    const char* name = in.fFileInfo().fTypeName();
    return *name ? name : "(no name: type " + std::to_string(in.fFileInfo().fType()) + ")";
}

std::string qtType(const QMimeDatabase& db, const QString& path) {
    return db.mimeTypeForFile(path).name().toStdString();
}

// ---- the report: MB/s for the INI cases, thousands of files per second for detection --------

// d outlives the benchmarks: main keeps it until they have run.
void registerAll(const Data* d) {
    using benchmark::State;
    auto qpath = std::make_shared<const QString>(QString::fromStdString(d->ini));

    // Each engine only where it reads the generated pairs.
    std::map<std::string, bool> same = {
        {"vfc", readsTheSame("vfc", *d, [&](const PairSink& p) { vfcIni(d->ini, true, *d, p); })},
        {"poco",
         readsTheSame("poco", *d, [&](const PairSink& p) { pocoIni(d->ini, true, *d, p); })},
        {"qt", readsTheSame("qt", *d, [&](const PairSink& p) { qtIni(*qpath, true, *d, p); })},
    };
    const size_t lastValue = d->pairs.at(d->lastSection + "/" + d->lastKey).size();
    if (vfcIni(d->ini, false, *d, nullptr) != lastValue) same["vfc"] = false;
    if (pocoIni(d->ini, false, *d, nullptr) != lastValue) same["poco"] = false;
    if (qtIni(*qpath, false, *d, nullptr) != lastValue) same["qt"] = false;
    if (!same["vfc"]) std::printf("WARNING: vfc does not read the generated pairs\n");

    using Reader = std::function<size_t(bool)>;
    const std::vector<std::pair<std::string, Reader>> readers = {
        {"vfc", [d](bool all) { return vfcIni(d->ini, all, *d, nullptr); }},
        {"poco", [d](bool all) { return pocoIni(d->ini, all, *d, nullptr); }},
        {"qt", [d, qpath](bool all) { return qtIni(*qpath, all, *d, nullptr); }},
    };
    for (bool all : {false, true})
        for (const auto& [engine, read] : readers) {
            if (!same[engine]) continue;
            std::string name = std::string(all ? "ini-read-all/" : "ini-load/") + engine;
            Reader r = read;
            benchmark::RegisterBenchmark(name.c_str(), [d, r, all](State& s) {
                size_t sum = 0;
                for (auto _ : s) {
                    s.PauseTiming();
                    touch(d->ini);
                    s.ResumeTiming();
                    sum += r(all);
                }
                benchmark::DoNotOptimize(sum);
                s.SetBytesProcessed(static_cast<int64_t>(s.iterations() * d->iniBytes));
            })->Unit(benchmark::kMillisecond);
        }

    // Content detection: the answers, then the timing.
    auto db = std::make_shared<const QMimeDatabase>();
    auto qsamples = std::make_shared<std::vector<QString>>();
    for (const std::string& f : d->samples)
        qsamples->push_back(QString::fromStdString(f));
    std::printf("\n%-40s %-34s %s\n", "file", "vfc", "qt");
    for (size_t i = 0; i < d->samples.size(); ++i)
        std::printf("%-40s %-34s %s\n",
                    fs::relative(d->samples[i], VFC_SAMPLES_DIR).string().c_str(),
                    vfcTypeShown(d->samples[i]).c_str(), qtType(*db, (*qsamples)[i]).c_str());
    std::printf("\n");
    benchmark::RegisterBenchmark("type-detect/vfc", [d](State& s) {
        size_t sum = 0;
        for (auto _ : s)
            for (const std::string& f : d->samples)
                sum += vfcType(f).size();
        benchmark::DoNotOptimize(sum);
        s.SetItemsProcessed(static_cast<int64_t>(s.iterations() * d->samples.size()));
    });
    benchmark::RegisterBenchmark("type-detect/qt", [db, qsamples](State& s) {
        size_t sum = 0;
        for (auto _ : s)
            for (const QString& f : *qsamples)
                sum += qtType(*db, f).size();
        benchmark::DoNotOptimize(sum);
        s.SetItemsProcessed(static_cast<int64_t>(s.iterations() * qsamples->size()));
    });
}

}  // namespace

int main(int argc, char** argv) {
    std::unique_ptr<const Data> d = makeData();
    std::printf("INI file: %zu sections of %zu keys, %zu bytes; %zu files under %s\n", kSections,
                kKeysPerSection, d->iniBytes, d->samples.size(), VFC_SAMPLES_DIR);
    registerAll(d.get());
    vfcbench::setProgram(argv[0]);
    benchmark::Initialize(&argc, argv);
    // MB/s for the INI cases, thousands of files a second for typing.
    vfcbench::RatioReporter reporter("vfc", "kfile/s", 1e3);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}
