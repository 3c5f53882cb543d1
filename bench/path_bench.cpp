// The path model beside std::filesystem::path on the same strings in the same run:
//  - parse + generate: split a path into components and write it again. vfc lists the
//    components (vcListComponents) and writes the list (vcGeneratePath); std assigns the string
//    to a path, walks its components and builds a new path from them with operator/=. Parsing
//    alone is not enough (the parsed form would then never be read), and generic_string()
//    after the walk would copy the original string instead of writing one from components, so
//    the rebuild is the closest match to writing a component list.
//  - make-relative: the relative path from one absolute UNIX path to another (both parsed,
//    made relative, written): vcMakeRelative against lexically_relative().generic_string().
//  - URLs: std::filesystem has no URL parser; the same URLs go through std::filesystem::path
//    as plain paths ("std-url-as-path"), which splits only at "/" and so does less work.
//
// Both sides keep their parsed objects from item to item (vfc lists into the same component
// lists, std assigns to the same paths), as a loop over many paths would. The data, 200k UNIX
// paths, 100k URLs and 100k pairs, come from a fixed seed and are checked once before timing:
// both sides must write the same strings.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

namespace fs = std::filesystem;

const char* const kDirs[] = {"usr",     "local",   "share",  "doc",     "src",    "include",
                             "project", "assets",  "images", "docs",    "build",  "release",
                             "manual",  "chapter", "book",   "output",  "markup", "templates",
                             "styles",  "scripts", "vendor", "archive", "notes",  "reference"};
const char* const kFiles[] = {"index", "figure", "table", "logo",   "README", "config",
                              "main",  "intro",  "part",  "banner", "toc",    "glossary"};
const char* const kExtensions[] = {".html", ".png", ".xml", ".txt", ".css",
                                   ".js",   ".pdf", ".mif", ".svg", ".json"};
const char* const kHosts[] = {"www.example.com", "docs.example.org", "cdn3.images.net",
                              "api.vendor.io",   "intranet.corp",    "mirror.archive.edu"};

template <size_t N>
const char* pick(std::mt19937& rng, const char* const (&from)[N]) {
    return from[rng() % N];
}

std::string directory(std::mt19937& rng) {
    switch (rng() % 8) {
        case 0:
            return "v" + std::to_string(rng() % 5) + "." + std::to_string(rng() % 20);
        case 1:
            return std::to_string(2015 + rng() % 12);
        case 2:
            return std::string(pick(rng, kDirs)) + "-" + std::to_string(rng() % 40);
        default:
            return pick(rng, kDirs);
    }
}

std::string fileName(std::mt19937& rng) {
    std::string name = pick(rng, kFiles);
    if (rng() % 3 == 0) name += std::to_string(rng() % 100);
    return name + pick(rng, kExtensions);
}

// 2 to 10 components: directories, then a file name most of the time.
std::vector<std::string> components(std::mt19937& rng) {
    std::vector<std::string> out;
    size_t n = 2 + rng() % 9;
    for (size_t i = 0; i + 1 < n; ++i)
        out.push_back(directory(rng));
    out.push_back(rng() % 5 ? fileName(rng) : directory(rng));
    return out;
}

std::string join(const std::vector<std::string>& parts, size_t from, size_t to) {
    std::string out;
    for (size_t i = from; i < to; ++i)
        out += (i > from ? "/" : "") + parts[i];
    return out;
}

// Absolute paths, and relative ones that may start with "." or "..".
std::string unixPath(std::mt19937& rng) {
    std::vector<std::string> parts = components(rng);
    switch (rng() % 6) {
        case 0:
            return "../" + join(parts, 0, parts.size());
        case 1:
            return "./" + join(parts, 0, parts.size());
        case 2:
            return join(parts, 0, parts.size());
        default:
            return "/" + join(parts, 0, parts.size());
    }
}

std::string url(std::mt19937& rng) {
    std::string s = rng() % 3 ? "https://" : "http://";
    s += pick(rng, kHosts);
    if (rng() % 6 == 0) s += ":" + std::to_string(8000 + rng() % 100);
    std::vector<std::string> parts = components(rng);
    s += "/" + join(parts, 0, parts.size() - rng() % 2);
    if (rng() % 4 == 0)
        s += "?q=" + std::string(pick(rng, kFiles)) + "&page=" + std::to_string(rng() % 50);
    if (rng() % 5 == 0) s += "#section-" + std::to_string(rng() % 12);
    return s;
}

// Two absolute paths that share their first one to five directories.
std::pair<std::string, std::string> pathPair(std::mt19937& rng) {
    std::vector<std::string> shared;
    for (size_t n = 1 + rng() % 5; shared.size() < n;)
        shared.push_back(directory(rng));
    auto tail = [&](std::vector<std::string> parts) {
        for (size_t n = rng() % 5; n > 0; --n)
            parts.push_back(n == 1 && rng() % 2 ? fileName(rng) : directory(rng));
        return "/" + join(parts, 0, parts.size());
    };
    std::string from = tail(shared);
    return {from, rng() % 20 ? tail(shared) : from};
}

struct Data {
    std::vector<std::string> paths, urls, from, to;
    std::vector<vString> vpaths, vurls, vfrom, vto;

    Data() {
        std::mt19937 rng(20261219);
        for (int i = 0; i < 200000; ++i)
            paths.push_back(unixPath(rng));
        for (int i = 0; i < 100000; ++i)
            urls.push_back(url(rng));
        for (int i = 0; i < 100000; ++i) {
            auto [f, t] = pathPair(rng);
            from.push_back(f);
            to.push_back(t);
        }
        auto convert = [](const std::vector<std::string>& in, std::vector<vString>& out) {
            for (const std::string& s : in)
                out.emplace_back(s.data(), s.size());
        };
        convert(paths, vpaths);
        convert(urls, vurls);
        convert(from, vfrom);
        convert(to, vto);
    }
};

std::string asString(const vString& s) {
    return std::string(s.data(), s.length());
}

// The two sides' work for one item, returning the string written.
std::string vfcRoundTrip(vPathType::TypeEnum notation, const vString& s, vPathComponentList& list,
                         vString& out) {
    vcListComponents(notation, s, list);
    vcGeneratePath(notation, list, out);
    return asString(out);
}

std::string stdRoundTrip(const std::string& s, size_t& parts) {
    fs::path p(s);
    fs::path rebuilt;
    for (const fs::path& c : p) {
        parts += c.native().size();
        rebuilt /= c;
    }
    return rebuilt.native();
}

std::string vfcRelative(const vString& from, const vString& to) {
    vPathComponentList a, b, rel;
    vcListComponents(vPathType::eUNIX, from, a);
    vcListComponents(vPathType::eUNIX, to, b);
    vcMakeRelative(false, a, b, rel);
    vString out;
    return asString(vcGeneratePath(vPathType::eUNIX, rel, out));
}

// Both sides must agree before their speeds mean anything.
bool sameResults(const Data& d) {
    size_t bad = 0;
    vPathComponentList list;
    vString out;
    size_t parts = 0;
    for (size_t i = 0; i < d.paths.size(); i += 7)
        if (vfcRoundTrip(vPathType::eUNIX, d.vpaths[i], list, out) !=
            stdRoundTrip(d.paths[i], parts)) {
            if (bad++ < 3) std::printf("parse differs: %s\n", d.paths[i].c_str());
        }
    for (size_t i = 0; i < d.from.size(); i += 7) {
        std::string mine = vfcRelative(d.vfrom[i], d.vto[i]);
        std::string theirs = fs::path(d.to[i]).lexically_relative(d.from[i]).generic_string();
        if (mine != theirs && bad++ < 6)
            std::printf("relative differs: %s -> %s: %s / %s\n", d.from[i].c_str(), d.to[i].c_str(),
                        mine.c_str(), theirs.c_str());
    }
    // vfc writes back every URL as it was given (the ports are not defaults).
    for (size_t i = 0; i < d.urls.size(); i += 7)
        if (vfcRoundTrip(vPathType::eURLUNIX, d.vurls[i], list, out) != d.urls[i] && bad++ < 9)
            std::printf("URL differs: %s -> %s\n", d.urls[i].c_str(), asString(out).c_str());
    return bad == 0;
}

void count(benchmark::State& state, size_t items, size_t sum) {
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * items));
}

void registerAll() {
    using benchmark::State;
    auto d = std::make_shared<const Data>();
    if (!sameResults(*d)) std::printf("WARNING: vfc and std give different results\n");
    auto reg = [](const char* kase, const char* engine, std::function<void(State&)> fn) {
        std::string name = std::string(kase) + "/" + engine;
        benchmark::RegisterBenchmark(name.c_str(), fn)->Unit(benchmark::kMillisecond);
    };

    auto vfcParse = [d](vPathType::TypeEnum notation, const std::vector<vString>* in) {
        return [d, notation, in](State& s) {
            vPathComponentList list;
            vString out;
            size_t sum = 0;
            for (auto _ : s)
                for (const vString& path : *in) {
                    vcListComponents(notation, path, list);
                    sum += list.fEntries() + vcGeneratePath(notation, list, out).length();
                }
            count(s, in->size(), sum);
        };
    };
    auto stdParse = [d](const std::vector<std::string>* in) {
        return [d, in](State& s) {
            fs::path p;
            fs::path rebuilt;
            size_t sum = 0;
            for (auto _ : s)
                for (const std::string& path : *in) {
                    p.assign(path);
                    rebuilt.clear();
                    for (const fs::path& c : p) {
                        sum += c.native().size();
                        rebuilt /= c;
                    }
                    sum += rebuilt.native().size();
                }
            count(s, in->size(), sum);
        };
    };
    reg("parse-generate-unix", "vfc", vfcParse(vPathType::eUNIX, &d->vpaths));
    reg("parse-generate-unix", "std", stdParse(&d->paths));
    reg("parse-generate-url", "vfc", vfcParse(vPathType::eURLUNIX, &d->vurls));
    reg("parse-generate-url", "std-url-as-path", stdParse(&d->urls));

    reg("make-relative", "vfc", [d](State& s) {
        vPathComponentList from, to, rel;
        vString out;
        size_t sum = 0;
        for (auto _ : s)
            for (size_t i = 0; i < d->vfrom.size(); ++i) {
                vcListComponents(vPathType::eUNIX, d->vfrom[i], from);
                vcListComponents(vPathType::eUNIX, d->vto[i], to);
                vcMakeRelative(false, from, to, rel);
                sum += vcGeneratePath(vPathType::eUNIX, rel, out).length();
            }
        count(s, d->vfrom.size(), sum);
    });
    reg("make-relative", "std", [d](State& s) {
        fs::path from;
        fs::path to;
        size_t sum = 0;
        for (auto _ : s)
            for (size_t i = 0; i < d->from.size(); ++i) {
                from.assign(d->from[i]);
                to.assign(d->to[i]);
                sum += to.lexically_relative(from).generic_string().size();
            }
        count(s, d->from.size(), sum);
    });

    // N names, then N ".." and one more name: each ".." must cost the same whatever N is, so
    // the items (the ups) per second stay level from 40k to 160k. std resolves by appending and
    // normalising lexically, which gives the same "/x".
    for (size_t n : {40000, 160000}) {
        auto deep = std::make_shared<std::pair<std::string, std::string>>();
        for (size_t i = 0; i < n; ++i) {
            deep->first += "/d" + std::to_string(i % 10);
            deep->second += "../";
        }
        deep->second += "x";
        {
            vPathComponentList base, rel, out;
            vcListComponents(vPathType::eUNIX, vString(deep->first.c_str()), base);
            vcListComponents(vPathType::eUNIX, vString(deep->second.c_str()), rel);
            vcResolvePath(base, rel, out);
            vString text;
            if (asString(vcGeneratePath(vPathType::eUNIX, out, text)) !=
                (fs::path(deep->first) / deep->second).lexically_normal().native())
                std::printf("WARNING: resolving %zu ups differs between vfc and std\n", n);
        }
        std::string kase = "resolve-" + std::to_string(n / 1000) + "k-ups";
        reg(kase.c_str(), "vfc", [deep, n](State& s) {
            vPathComponentList base, rel, out;
            vString text;
            size_t sum = 0;
            for (auto _ : s) {
                vcListComponents(vPathType::eUNIX, vString(deep->first.c_str()), base);
                vcListComponents(vPathType::eUNIX, vString(deep->second.c_str()), rel);
                vcResolvePath(base, rel, out);
                sum += vcGeneratePath(vPathType::eUNIX, out, text).length();
            }
            count(s, n, sum);
        });
        reg(kase.c_str(), "std", [deep, n](State& s) {
            size_t sum = 0;
            for (auto _ : s)
                sum += (fs::path(deep->first) / deep->second).lexically_normal().native().size();
            count(s, n, sum);
        });
    }
}

}  // namespace

int main(int argc, char** argv) {
    registerAll();
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mitem/s");
}
