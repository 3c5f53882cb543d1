#include "benchCommon.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace vfcbench {

namespace {

const char* const kWords[] = {"the",     "converter", "reads",  "chapter", "index",  "table",
                              "figure",  "page",      "output", "link",    "book",   "manual",
                              "release", "notes",     "draft",  "version", "format", "markup"};

std::string word(std::mt19937& rng) {
    return kWords[rng() % (sizeof kWords / sizeof *kWords)];
}

std::string pathLine(std::mt19937& rng, int i) {
    char buf[160];
    switch (rng() % 4) {
        case 0:
            std::snprintf(buf, sizeof buf, "C:\\Program Files\\Vendor\\%s%d\\%s.txt",
                          word(rng).c_str(), i % 97, word(rng).c_str());
            break;
        case 1:
            std::snprintf(buf, sizeof buf, "/usr/local/share/doc/%s-%d/%s/%s.html",
                          word(rng).c_str(), i % 31, word(rng).c_str(), word(rng).c_str());
            break;
        case 2:
            std::snprintf(buf, sizeof buf, "%%VORLANDIXHOME%%/templates/%s/%s%d.fm",
                          word(rng).c_str(), word(rng).c_str(), i % 13);
            break;
        default:
            std::snprintf(buf, sizeof buf, "$HOME/docs/%s/%s/chapter%d.mif", word(rng).c_str(),
                          word(rng).c_str(), i % 50);
    }
    return buf;
}

std::string urlLine(std::mt19937& rng, int i) {
    char buf[200];
    switch (rng() % 3) {
        case 0:
            std::snprintf(buf, sizeof buf,
                          "http://www.%s%d.example.com:8080/%s/%s.html?x=%d&y=%s#%s",
                          word(rng).c_str(), i % 7, word(rng).c_str(), word(rng).c_str(), i,
                          word(rng).c_str(), word(rng).c_str());
            break;
        case 1:
            std::snprintf(buf, sizeof buf, "file:///home/writer/%s/%s%%20%s.pdf", word(rng).c_str(),
                          word(rng).c_str(), word(rng).c_str());
            break;
        default:
            std::snprintf(buf, sizeof buf, "https://docs.example.org/%s/%s", word(rng).c_str(),
                          word(rng).c_str());
    }
    return buf;
}

std::string proseLine(std::mt19937& rng) {
    std::string line = rng() % 4 == 0 ? " \t" : "";
    int n = 6 + static_cast<int>(rng() % 12);
    for (int k = 0; k < n; ++k) {
        if (k) line += rng() % 8 == 0 ? "\t" : " ";
        if (rng() % 9 == 0)
            line += std::to_string(static_cast<int>(rng() % 2000) - 1000) +
                    (rng() % 2 ? "." + std::to_string(rng() % 100) : "");
        else
            line += word(rng);
    }
    if (rng() % 4 == 0) line += "  ";
    return line;
}

}  // namespace

std::vector<std::string> makeLines(double megabytes) {
    std::mt19937 rng(20261121);
    std::vector<std::string> lines;
    size_t bytes = 0;
    for (int i = 0; bytes < megabytes * 1e6; ++i) {
        int kind = i % 3;
        lines.push_back(kind == 0   ? pathLine(rng, i)
                        : kind == 1 ? urlLine(rng, i)
                                    : proseLine(rng));
        bytes += lines.back().size();
    }
    return lines;
}

size_t totalBytes(const std::vector<std::string>& lines) {
    size_t n = 0;
    for (const std::string& l : lines)
        n += l.size();
    return n;
}

namespace {
std::string gProgram = "bench";
}  // namespace

void setProgram(const char* argv0) {
    std::string name = argv0 ? argv0 : "bench";
    const size_t slash = name.find_last_of("/\\");
    gProgram = slash == std::string::npos ? name : name.substr(slash + 1);
}

void appendSummary(const std::string& kase, const std::string& peer, const std::string& unit,
                   double vfcRate, double peerRate) {
    const char* path = std::getenv("VFC_BENCH_SUMMARY");
    if (!path || !*path || peerRate <= 0) return;
    if (FILE* f = std::fopen(path, "a")) {
        std::fprintf(f, "%s\t%s\t%s\t%s\t%.6g\t%.6g\t%.4f\n", gProgram.c_str(), kase.c_str(),
                     peer.c_str(), unit.c_str(), vfcRate, peerRate, vfcRate / peerRate);
        std::fclose(f);
    }
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") continue;
        // The function name: without the "/real_time" that wall-clock timing appends.
        const std::string& name = run.run_name.function_name;
        size_t slash = name.rfind('/');
        if (slash == std::string::npos) continue;
        std::string kase = name.substr(0, slash);
        auto it = run.counters.find("bytes_per_second");
        const bool bytes = it != run.counters.end();
        if (!bytes) it = run.counters.find("items_per_second");
        if (it == run.counters.end()) continue;
        if (!rates_.count(kase)) cases_.push_back(kase);
        rates_[kase][name.substr(slash + 1)] = it->second;
        bytes_[kase] = bytes;
    }
}

void RatioReporter::printRatios() const {
    std::printf("\n%-28s %-14s %10s %-8s %9s\n", "case", "engine", "rate", "unit", "vs ref");
    for (const std::string& kase : cases_) {
        const auto& engines = rates_.at(kase);
        const bool bytes = bytes_.at(kase);
        const double scale = bytes ? 1e6 : itemsScale_;
        const std::string& unit = bytes ? unit_ : itemsUnit_;
        auto ref = engines.find(reference_);
        for (const auto& [engine, rate] : engines) {
            double ratio = ref == engines.end() ? 0 : ref->second / rate;
            std::printf("%-28s %-14s %10.1f %-8s %8.2fx%s\n", kase.c_str(), engine.c_str(),
                        rate / scale, unit.c_str(), ratio,
                        engine == reference_ ? "  (reference)" : "");
            if (summarize_ && engine != reference_ && ref != engines.end())
                appendSummary(kase, engine, unit, ref->second / scale, rate / scale);
        }
    }
    std::printf("\n\"vs ref\" = %s throughput / engine throughput: above 1 means %s is faster.\n",
                reference_.c_str(), reference_.c_str());
}

int runWithRatios(int argc, char** argv, const std::string& reference, const std::string& unit) {
    setProgram(argv[0]);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter(reference, unit);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}

}  // namespace vfcbench
