// Shared pieces of the benchmarks: the test data and a reporter that prints, after the usual
// table, each peer's throughput as a ratio to the library's.
#ifndef VFC_BENCH_BENCHCOMMON_H
#define VFC_BENCH_BENCHCOMMON_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vfcbench {

// About `megabytes` of lines, a third each path-like, URL-like and prose-like, always the same
// for the same size.
std::vector<std::string> makeLines(double megabytes);
size_t totalBytes(const std::vector<std::string>& lines);

// When VFC_BENCH_SUMMARY names a file, appends one line to it per ratio: the program (the
// name given to setProgram), case, peer engine, unit, vfc's rate, the peer's rate and vfc's
// rate divided by the peer's, separated by tabs. `make bench` gathers them into one table with
// bench/bench_summary.
void setProgram(const char* argv0);
void appendSummary(const std::string& kase, const std::string& peer, const std::string& unit,
                   double vfcRate, double peerRate);

// Collects the results of benchmarks named "<case>/<engine>" and prints, per case, every
// engine's throughput (bytes per second, or items per second when no bytes were counted) and its
// ratio to the reference engine. With repetitions the median stands for a case.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    // Every case in unit, rates divided by a million.
    RatioReporter(std::string reference, std::string unit)
        : reference_(std::move(reference)), unit_(std::move(unit)), itemsUnit_(unit_) {}
    // Cases that count bytes in MB/s, the others in itemsUnit, their rates divided by
    // itemsScale ("run/s" and 1 for starts of a process).
    RatioReporter(std::string reference, std::string itemsUnit, double itemsScale)
        : reference_(std::move(reference)),
          unit_("MB/s"),
          itemsUnit_(std::move(itemsUnit)),
          itemsScale_(itemsScale) {}
    void ReportRuns(const std::vector<Run>& runs) override;
    // Prints the table and, unless summarize(false) was called, appends the ratios of every
    // engine but the reference to the summary file.
    void printRatios() const;
    void summarize(bool on) { summarize_ = on; }

  private:
    std::string reference_;
    std::string unit_;       // of cases that count bytes (all cases with one unit)
    std::string itemsUnit_;  // of cases that count items
    double itemsScale_ = 1e6;
    bool summarize_ = true;
    std::vector<std::string> cases_;
    std::map<std::string, std::map<std::string, double>> rates_;  // case -> engine -> rate
    std::map<std::string, bool> bytes_;                           // case -> counts bytes
};

// Runs the registered benchmarks with the ratio reporter; returns main's exit code.
int runWithRatios(int argc, char** argv, const std::string& reference, const std::string& unit);

// Times op(i) for i below count, once per iteration, adding up its answers so none is left out;
// counts count items per iteration.
template <class Op>
void timeEach(benchmark::State& state, size_t count, Op op) {
    size_t sum = 0;
    for (auto _ : state)
        for (size_t i = 0; i < count; ++i)
            sum += op(i);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
}

}  // namespace vfcbench

#endif  // VFC_BENCH_BENCHCOMMON_H
