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

// Collects the results of benchmarks named "<case>/<engine>" and prints, per case, every
// engine's throughput (bytes per second, or items per second when no bytes were counted) and its
// ratio to the reference engine.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter(std::string reference, std::string unit)
        : reference_(std::move(reference)), unit_(std::move(unit)) {}
    void ReportRuns(const std::vector<Run>& runs) override;
    void printRatios() const;

  private:
    std::string reference_;
    std::string unit_;
    std::vector<std::string> cases_;
    std::map<std::string, std::map<std::string, double>> rates_;  // case -> engine -> rate
};

// Runs the registered benchmarks with the ratio reporter; returns main's exit code.
int runWithRatios(int argc, char** argv, const std::string& reference, const std::string& unit);

}  // namespace vfcbench

#endif  // VFC_BENCH_BENCHCOMMON_H
