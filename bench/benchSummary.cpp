// Prints the summary that `make bench` ends with: every ratio the benchmarks appended to the
// file named on the command line (see vfcbench::appendSummary), one line each, with the goal it
// is held to and a mark where it falls short. Exits 0 whatever the ratios are: it reports.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Row {
    std::string program, kase, peer, unit;
    double vfc = 0, rate = 0, ratio = 0;
};

// Ratios held to something other than parity: the fixed patterns are to run at twice RE2's
// speed, and line reading at three quarters of what cat takes to read the same file (cat copies
// the bytes once and keeps none of them).
double goalFor(const Row& row) {
    if (row.program == "regex_bench" && row.peer == "re2") return 2.0;
    if (row.program == "io_bench" && row.peer == "cat") return 0.75;
    return 1.0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_summary FILE\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::fprintf(stderr, "bench_summary: cannot read %s\n", argv[1]);
        return 1;
    }
    std::vector<Row> rows;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        Row r;
        std::string vfc, rate, ratio;
        if (std::getline(fields, r.program, '\t') && std::getline(fields, r.kase, '\t') &&
            std::getline(fields, r.peer, '\t') && std::getline(fields, r.unit, '\t') &&
            std::getline(fields, vfc, '\t') && std::getline(fields, rate, '\t') &&
            std::getline(fields, ratio)) {
            r.vfc = std::stod(vfc);
            r.rate = std::stod(rate);
            r.ratio = std::stod(ratio);
            rows.push_back(r);
        }
    }
    std::printf("\n==== summary: vfc's rate / the peer's (above 1: vfc is faster) ====\n");
    std::printf("%-18s %-28s %-14s %-8s %10s %10s %7s %5s\n", "program", "case", "peer", "unit",
                "vfc", "peer", "ratio", "goal");
    int below = 0;
    for (const Row& r : rows) {
        const double goal = goalFor(r);
        const bool short_ = r.ratio < goal;
        below += short_;
        std::printf("%-18s %-28s %-14s %-8s %10.1f %10.1f %7.2f %5.2f%s\n", r.program.c_str(),
                    r.kase.c_str(), r.peer.c_str(), r.unit.c_str(), r.vfc, r.rate, r.ratio, goal,
                    short_ ? "  below" : "");
    }
    std::printf("%zu ratios, %d below their goal\n", rows.size(), below);
    return 0;
}
