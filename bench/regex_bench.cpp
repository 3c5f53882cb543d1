// vRegExp::index with the library's fixed patterns over a few MB of path-, URL- and prose-like
// lines, beside RE2 in longest-match mode and std::regex (POSIX extended, also leftmost-longest),
// with the same patterns on the same lines. Before timing, every line's first match is compared
// across the three engines, so the figures are for the same work.
//
// The Perl-style engines are peers too: PCRE2 with its JIT, Qt's QRegularExpression (PCRE2 over
// UTF-16 strings, converted before timing; the lines are ASCII, so positions agree) and POCO's
// RegularExpression. They find the leftmost match and, among those, the first alternative with
// greedy repeats, not the longest; on these patterns the answers coincide line for line, which
// is checked, and a peer that disagrees on any line of a pattern is not timed on that pattern.
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>
#include <re2/re2.h>

#include <Poco/RegularExpression.h>
#include <QRegularExpression>
#include <QString>

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

// PCRE2 compiled for its JIT, with one match block reused for every line.
class Pcre2 {
  public:
    explicit Pcre2(const char* pattern) {
        int error = 0;
        PCRE2_SIZE offset = 0;
        code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern), PCRE2_ZERO_TERMINATED,
                              PCRE2_DOLLAR_ENDONLY, &error, &offset, nullptr);
        if (code_) {
            jit_ = pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE) == 0;
            match_ = pcre2_match_data_create_from_pattern(code_, nullptr);
        }
    }
    ~Pcre2() {
        pcre2_match_data_free(match_);
        pcre2_code_free(code_);
    }
    Pcre2(const Pcre2&) = delete;
    Pcre2& operator=(const Pcre2&) = delete;
    bool jit() const { return jit_; }

    Hit find(const std::string& line) const {
        if (!code_) return {};
        auto subject = reinterpret_cast<PCRE2_SPTR>(line.data());
        int rc = jit_ ? pcre2_jit_match(code_, subject, line.size(), 0, 0, match_, nullptr)
                      : pcre2_match(code_, subject, line.size(), 0, 0, match_, nullptr);
        if (rc < 0) return {};
        PCRE2_SIZE* v = pcre2_get_ovector_pointer(match_);
        return {static_cast<size_t>(v[0]), static_cast<size_t>(v[1] - v[0])};
    }

  private:
    pcre2_code* code_ = nullptr;
    pcre2_match_data* match_ = nullptr;
    bool jit_ = false;
};

Hit qtFind(const QRegularExpression& re, const QString& line) {
    QRegularExpressionMatch m = re.match(line);
    if (!m.hasMatch()) return {};
    return {static_cast<size_t>(m.capturedStart(0)), static_cast<size_t>(m.capturedLength(0))};
}

Hit pocoFind(const Poco::RegularExpression& re, const std::string& line) {
    Poco::RegularExpression::Match m;
    if (re.match(line, 0, m) == 0 || m.offset == std::string::npos) return {};
    return {m.offset, m.length};
}

struct Data {
    std::vector<std::string> lines = vfcbench::makeLines(4.0);
    std::vector<vString> vlines;
    std::vector<QString> qlines;
    size_t bytes = vfcbench::totalBytes(lines);
    Data() {
        for (const std::string& l : lines) {
            vlines.emplace_back(l.data(), l.size());
            qlines.push_back(QString::fromLatin1(l.data(), static_cast<qsizetype>(l.size())));
        }
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

// The lines on which find disagrees with vfc.
template <class Find>
int linesDisagreeing(const PatternCase& c, Find find) {
    const Data& d = data();
    int n = 0;
    for (size_t i = 0; i < d.lines.size(); ++i)
        if (find(i) != vfcFind(c.pattern(), d.vlines[i])) ++n;
    return n;
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
    std::vector<std::unique_ptr<Pcre2>> pcres;
    std::vector<std::unique_ptr<QRegularExpression>> qts;
    std::vector<std::unique_ptr<Poco::RegularExpression>> pocos;
    std::string skipped;
    for (const PatternCase& c : kCases) {
        re2s.push_back(std::make_unique<RE2>(c.re2, re2Options()));
        stds.push_back(std::make_unique<std::regex>(c.posix, std::regex::extended));
        pcres.push_back(std::make_unique<Pcre2>(c.re2));
        qts.push_back(std::make_unique<QRegularExpression>(QString::fromLatin1(c.re2),
                                                           QRegularExpression::DontCaptureOption));
        qts.back()->optimize();
        pocos.push_back(std::make_unique<Poco::RegularExpression>(
            c.re2, Poco::RegularExpression::RE_DOLLAR_ENDONLY, true));
        const RE2& re2 = *re2s.back();
        const std::regex& stdre = *stds.back();
        const Pcre2& pcre = *pcres.back();
        const QRegularExpression& qt = *qts.back();
        const Poco::RegularExpression& poco = *pocos.back();
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
        // The Perl-style peers, each only where it gives vfc's answer on every line.
        auto pcreAt = [&pcre](size_t i) { return pcre.find(data().lines[i]); };
        auto qtAt = [&qt](size_t i) { return qtFind(qt, data().qlines[i]); };
        auto pocoAt = [&poco](size_t i) { return pocoFind(poco, data().lines[i]); };
        if (!pcre.jit()) skipped += " " + name + "/pcre2 (no JIT)";
        if (linesDisagreeing(c, pcreAt) == 0)
            benchmark::RegisterBenchmark((name + "/pcre2-jit").c_str(),
                                         [pcreAt](benchmark::State& s) { scanLines(s, pcreAt); });
        else
            skipped += " " + name + "/pcre2";
        if (linesDisagreeing(c, qtAt) == 0)
            benchmark::RegisterBenchmark((name + "/qt").c_str(),
                                         [qtAt](benchmark::State& s) { scanLines(s, qtAt); });
        else
            skipped += " " + name + "/qt";
        if (linesDisagreeing(c, pocoAt) == 0)
            benchmark::RegisterBenchmark((name + "/poco").c_str(),
                                         [pocoAt](benchmark::State& s) { scanLines(s, pocoAt); });
        else
            skipped += " " + name + "/poco";
    }
    std::printf("%zu lines, %.1f MB; engines agree on every line: %s\n", data().lines.size(),
                data().bytes / 1e6, disagreements ? "NO" : "yes");
    std::printf("Perl-style peers left out where their answers differ:%s\n",
                skipped.empty() ? " none" : skipped.c_str());
    vfcbench::runWithRatios(argc, argv, "vfc", "MB/s");
    return disagreements ? 1 : 0;
}
