// The file streams beside the standard streams on the same files in the same run:
//  - read-mixed: every line of a file with mixed line ends (LF, CR LF, CR; lines of 0 to 200
//    bytes). vfc reads it with vIfstream::fGetLine; std with std::getline on a plain
//    std::ifstream ("std") and on one given the same 128 KiB buffer as vIfstream
//    ("std-128k"). std::getline splits at LF only, so its lines differ here, but it reads the
//    same bytes; "cat" is `cat FILE >/dev/null`, the floor of reading the file at all.
//  - read-lf: the same lines with LF ends only, where both line readers must agree.
//  - write: the same lines written with vOfstream::fWriteLine against std::ofstream writing the
//    line and "\r\n"; both files must come out equal.
// The files go to a fresh folder under the system's temporary folder (removed at the end). Its
// size is 200 MB, or VFC_IO_BENCH_MB megabytes.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

namespace fs = std::filesystem;

struct Data {
    fs::path dir;
    std::string mixed;   // mixed line ends
    std::string lfOnly;  // the same lines, LF ends
    std::vector<std::string> lines;
    std::vector<vString> vlines;
    size_t mixedBytes = 0;
    size_t lfBytes = 0;
    size_t lineBytes = 0;  // the lines without their ends

    ~Data() {
        std::error_code ignored;
        fs::remove_all(dir, ignored);
    }
};

std::string lineText(std::mt19937& rng) {
    static const char alphabet[] =
        "abcdefghijklmnopqrstuvwxyz ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789 <>=\"/.,;:-_\t";
    size_t n = rng() % 201;
    std::string s(n, ' ');
    for (char& c : s)
        c = alphabet[rng() % (sizeof alphabet - 1)];
    return s;
}

std::unique_ptr<Data> makeData(double megabytes) {
    auto d = std::make_unique<Data>();
    d->dir = fs::temp_directory_path() / ("vfc-io-bench-" + std::to_string(std::random_device{}()));
    fs::create_directories(d->dir);
    d->mixed = (d->dir / "mixed.txt").string();
    d->lfOnly = (d->dir / "lf.txt").string();
    std::ofstream mixed(d->mixed, std::ios::binary);
    std::ofstream lf(d->lfOnly, std::ios::binary);
    std::mt19937 rng(20260411);
    static const char* const ends[] = {"\n", "\r\n", "\r"};
    bool afterCR = false;
    while (d->mixedBytes < megabytes * 1e6) {
        std::string line = lineText(rng);
        // An empty line after a CR must not end in a lone LF: that would join the CR.
        const char* end = ends[rng() % 3];
        if (afterCR && line.empty() && end[0] == '\n') end = "\r";
        afterCR = std::string(end) == "\r";
        mixed << line << end;
        lf << line << '\n';
        d->mixedBytes += line.size() + std::char_traits<char>::length(end);
        d->lfBytes += line.size() + 1;
        d->lineBytes += line.size();
        d->vlines.emplace_back(line.data(), line.size());
        d->lines.push_back(std::move(line));
    }
    return d;
}

struct Count {
    size_t lines = 0;
    size_t bytes = 0;
    bool operator==(const Count& o) const { return lines == o.lines && bytes == o.bytes; }
};

Count vfcRead(const std::string& path) {
    vIfstream in;
    Count c;
    if (!in.fOpenText(vFile(path.c_str()))) return c;
    vString line;
    while (in.fGetLine(line)) {
        ++c.lines;
        c.bytes += line.length();
    }
    return c;
}

Count stdRead(const std::string& path, bool bigBuffer) {
    std::ifstream in;
    std::unique_ptr<char[]> buffer;
    if (bigBuffer) {
        buffer.reset(new char[128 * 1024]);
        in.rdbuf()->pubsetbuf(buffer.get(), 128 * 1024);
    }
    in.open(path);
    Count c;
    std::string line;
    while (std::getline(in, line)) {
        ++c.lines;
        c.bytes += line.size();
    }
    return c;
}

void vfcWrite(const Data& d, const std::string& path) {
    vOfstream out;
    out.fOpenText(vFile(path.c_str()));
    for (const vString& line : d.vlines)
        out.fWriteLine(line);
    out.fClose();
}

void stdWrite(const Data& d, const std::string& path) {
    std::ofstream out(path);
    for (const std::string& line : d.lines) {
        out.write(line.data(), static_cast<std::streamsize>(line.size()));
        out.write("\r\n", 2);
    }
    out.close();
}

std::string slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Both sides must agree before their speeds mean anything.
bool sameResults(const Data& d) {
    bool ok = true;
    Count expected{d.lines.size(), d.lineBytes};
    Count mixed = vfcRead(d.mixed);
    if (!(mixed == expected)) {
        std::printf("vfc on mixed ends: %zu lines, %zu bytes; generated %zu, %zu\n", mixed.lines,
                    mixed.bytes, expected.lines, expected.bytes);
        ok = false;
    }
    Count a = vfcRead(d.lfOnly);
    Count b = stdRead(d.lfOnly, false);
    if (!(a == expected) || !(b == expected)) {
        std::printf("LF only: vfc %zu/%zu, std %zu/%zu, generated %zu/%zu\n", a.lines, a.bytes,
                    b.lines, b.bytes, expected.lines, expected.bytes);
        ok = false;
    }
    std::string vfcOut = (d.dir / "out-vfc.txt").string();
    std::string stdOut = (d.dir / "out-std.txt").string();
    vfcWrite(d, vfcOut);
    stdWrite(d, stdOut);
    if (slurp(vfcOut) != slurp(stdOut)) {
        std::printf("the written files differ\n");
        ok = false;
    }
    return ok;
}

void registerAll(const std::shared_ptr<Data>& d) {
    using benchmark::State;
    auto reg = [](const std::string& name, std::function<void(State&)> fn) {
        benchmark::RegisterBenchmark(name.c_str(), fn)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    auto bytes = [](State& s, size_t n, size_t sink) {
        benchmark::DoNotOptimize(sink);
        s.SetBytesProcessed(static_cast<int64_t>(s.iterations() * n));
    };
    for (bool lfOnly : {false, true}) {
        std::string kase = lfOnly ? "read-lf" : "read-mixed";
        const std::string& path = lfOnly ? d->lfOnly : d->mixed;
        size_t n = lfOnly ? d->lfBytes : d->mixedBytes;
        reg(kase + "/vfc", [d, path, n, bytes](State& s) {
            size_t sink = 0;
            for (auto _ : s)
                sink += vfcRead(path).lines;
            bytes(s, n, sink);
        });
        reg(kase + "/std", [d, path, n, bytes](State& s) {
            size_t sink = 0;
            for (auto _ : s)
                sink += stdRead(path, false).lines;
            bytes(s, n, sink);
        });
        reg(kase + "/std-128k", [d, path, n, bytes](State& s) {
            size_t sink = 0;
            for (auto _ : s)
                sink += stdRead(path, true).lines;
            bytes(s, n, sink);
        });
        reg(kase + "/cat", [d, path, n, bytes](State& s) {
            std::string command = "cat '" + path + "' >/dev/null";
            int sink = 0;
            for (auto _ : s)
                sink += std::system(command.c_str());
            bytes(s, n, static_cast<size_t>(sink));
        });
    }
    size_t written = d->lineBytes + 2 * d->lines.size();
    std::string vfcOut = (d->dir / "out-vfc.txt").string();
    std::string stdOut = (d->dir / "out-std.txt").string();
    reg("write/vfc", [d, vfcOut, written, bytes](State& s) {
        for (auto _ : s)
            vfcWrite(*d, vfcOut);
        bytes(s, written, 0);
    });
    reg("write/std", [d, stdOut, written, bytes](State& s) {
        for (auto _ : s)
            stdWrite(*d, stdOut);
        bytes(s, written, 0);
    });
}

}  // namespace

int main(int argc, char** argv) {
    const char* size = std::getenv("VFC_IO_BENCH_MB");
    double megabytes = size ? std::atof(size) : 200;
    std::shared_ptr<Data> d = makeData(megabytes > 0 ? megabytes : 200);
    std::printf("%zu lines, %.1f MB with mixed line ends, in %s\n", d->lines.size(),
                d->mixedBytes / 1e6, d->dir.string().c_str());
    if (!sameResults(*d)) std::printf("WARNING: vfc and std give different results\n");
    registerAll(d);
    vfcbench::setProgram(argv[0]);
    benchmark::Initialize(&argc, argv);
    vfcbench::RatioReporter reporter("vfc", "MB/s");
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    // Benchmarks hold copies of d; the folder goes when the last one does, so clear them now.
    benchmark::ClearRegisteredBenchmarks();
    return 0;
}
