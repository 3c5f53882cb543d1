// vRegExp::index with the library's fixed patterns over a few MB of path-, URL- and prose-like
// lines, beside RE2 in longest-match mode and std::regex (POSIX extended, also leftmost-longest),
// with the same patterns on the same lines. Before timing, every line's first match is compared
// across the three engines, so the figures are for the same work.
#include <re2/re2.h>

#include <cstdio>
#include <regex>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

struct PatternCase {
    const char* name;
    const vRegExp& (*pattern)();
    const char* re2;    // the same pattern in RE2 syntax
    const char* posix;  // ... and in POSIX extended syntax (no escapes inside brackets)
};

const PatternCase kCases[] = {
    {"unix-basename", aUNIXBasenameTemplate, "[^/]+$", "[^/]+$"},
    {"url-type", aURLTypeTemplate, "^[^:/]+://", "^[^:/]+://"},
    {"url-cgi-parameters", aURLCGIParametersTemplate, R"(\?[^?]*$)", R"(\?[^?]*$)"},
    {"url-colon-port", aURLColonPortTemplate, ":[0-9]*$", ":[0-9]*$"},
    {"url-problem", aURLProblemTemplate, R"([%/?# \\"&<>\[\]\^`{|}~])", R"([]%/?# \"&<>[^`{|}~])"},
    {"env-var", vDOSEnvVarTemplate, R"(%[^%]+%|\$[^$/:\\]+)", R"(%[^%]+%|\$[^$/:\]+)"},
    {"whitespace", vWSTemplate, "[ \n\r\t]+", "[ \n\r\t]+"},
    {"lead-or-trail-ws", vLeadOrTrailWSTemplate, "^[ \n\r\t]+|[ \n\r\t]+$",
     "^[ \n\r\t]+|[ \n\r\t]+$"},
    {"not-ws", vNotWSTemplate, "[^\r\n\t ]+", "[^\r\n\t ]+"},
    {"alphanumeric", vcAlphaNumericTemplate, "[a-zA-Z0-9]+", "[a-zA-Z0-9]+"},
    {"is-decimal", vcIsDecimalTemplate, R"(^[+\-]?[0-9]*[.][0-9]+$)", "^[-+]?[0-9]*[.][0-9]+$"},
    {"dot-and-extension", vcDotAndExtensionTemplate, R"(\.[^/.]*$)", R"(\.[^/.]*$)"},
};

struct Hit {
    size_t pos = RW_NPOS;
    size_t len = 0;
    bool operator!=(const Hit& o) const { return pos != o.pos || len != o.len; }
};

RE2::Options re2Options() {
    RE2::Options o;
    o.set_longest_match(true);
    o.set_encoding(RE2::Options::EncodingLatin1);
    o.set_dot_nl(true);
    o.set_log_errors(false);
    return o;
}

Hit vfcFind(const vRegExp& re, const vString& line) {
    Hit h;
    h.pos = re.index(line, &h.len, 0);
    return h;
}

Hit re2Find(const RE2& re, const std::string& line) {
    re2::StringPiece match;
    if (!re.Match(line, 0, line.size(), RE2::UNANCHORED, &match, 1)) return {};
    return {static_cast<size_t>(match.data() - line.data()), match.size()};
}

Hit stdFind(const std::regex& re, const std::string& line) {
    std::smatch m;
    if (!std::regex_search(line, m, re)) return {};
    return {static_cast<size_t>(m.position(0)), static_cast<size_t>(m.length(0))};
}

struct Data {
    std::vector<std::string> lines = vfcbench::makeLines(4.0);
    std::vector<vString> vlines;
    size_t bytes = vfcbench::totalBytes(lines);
    Data() {
        for (const std::string& l : lines)
            vlines.emplace_back(l.data(), l.size());
    }
};

const Data& data() {
    static const Data d;
    return d;
}

// Counts the lines on which the engines disagree; prints the first few.
int checkAgreement(const PatternCase& c, const RE2& re2, const std::regex& stdre) {
    const Data& d = data();
    int mismatches = 0;
    for (size_t i = 0; i < d.lines.size(); ++i) {
        Hit v = vfcFind(c.pattern(), d.vlines[i]);
        Hit r = re2Find(re2, d.lines[i]);
        Hit s = stdFind(stdre, d.lines[i]);
        if (v != r || v != s) {
            if (++mismatches <= 3)
                std::fprintf(stderr, "%s: \"%s\": vfc %zd/%zu re2 %zd/%zu std %zd/%zu\n", c.name,
                             d.lines[i].c_str(), static_cast<ssize_t>(v.pos), v.len,
                             static_cast<ssize_t>(r.pos), r.len, static_cast<ssize_t>(s.pos),
                             s.len);
        }
    }
    return mismatches;
}

template <class Find>
void scanLines(benchmark::State& state, Find find) {
    const Data& d = data();
    size_t sum = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < d.lines.size(); ++i) {
            Hit h = find(i);
            sum += h.pos + h.len;
        }
    }
    benchmark::DoNotOptimize(sum);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * d.bytes));
}

}  // namespace

int main(int argc, char** argv) {
    int disagreements = 0;
    std::vector<std::unique_ptr<RE2>> re2s;
    std::vector<std::unique_ptr<std::regex>> stds;
    for (const PatternCase& c : kCases) {
        re2s.push_back(std::make_unique<RE2>(c.re2, re2Options()));
        stds.push_back(std::make_unique<std::regex>(c.posix, std::regex::extended));
        const RE2& re2 = *re2s.back();
        const std::regex& stdre = *stds.back();
        int bad = checkAgreement(c, re2, stdre);
        if (bad) std::fprintf(stderr, "%s: %d lines disagree\n", c.name, bad);
        disagreements += bad;
        std::string name = c.name;
        const vRegExp& re = c.pattern();
        benchmark::RegisterBenchmark((name + "/vfc").c_str(), [&re](benchmark::State& s) {
            scanLines(s, [&](size_t i) { return vfcFind(re, data().vlines[i]); });
        });
        benchmark::RegisterBenchmark((name + "/re2").c_str(), [&re2](benchmark::State& s) {
            scanLines(s, [&](size_t i) { return re2Find(re2, data().lines[i]); });
        });
        benchmark::RegisterBenchmark((name + "/std::regex").c_str(), [&stdre](benchmark::State& s) {
            scanLines(s, [&](size_t i) { return stdFind(stdre, data().lines[i]); });
        });
    }
    std::printf("%zu lines, %.1f MB; engines agree on every line: %s\n", data().lines.size(),
                data().bytes / 1e6, disagreements ? "NO" : "yes");
    vfcbench::runWithRatios(argc, argv, "vfc", "MB/s");
    return disagreements ? 1 : 0;
}
