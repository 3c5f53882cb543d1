// vString against std::string on the operations collections and converters repeat: copy,
// compare, hash, trim, URL encode and decode, over short (file-name-sized) and long (path-sized)
// strings. Where the standard library has no such operation, a straightforward hand-written one
// on std::string stands in.
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "benchCommon.h"

namespace {

std::vector<std::string> sample(size_t length) {
    std::vector<std::string> out;
    for (const std::string& line : vfcbench::makeLines(0.5)) {
        std::string s = "  " + line + "\t ";
        while (s.size() < length)
            s += s;
        out.push_back(s.substr(0, length - 2) + " \t");
    }
    out.resize(2000);
    return out;
}

std::vector<vString> asVStrings(const std::vector<std::string>& in) {
    std::vector<vString> out;
    for (const std::string& s : in)
        out.emplace_back(s.data(), s.size());
    return out;
}

template <class Op>
void each(benchmark::State& state, size_t count, Op op) {
    size_t sum = 0;
    for (auto _ : state)
        for (size_t i = 0; i < count; ++i)
            sum += op(i);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
}

void trimStd(std::string& s) {
    size_t a = s.find_first_not_of(" \t");
    if (a == std::string::npos) {
        s.clear();
        return;
    }
    s.erase(s.find_last_not_of(" \t") + 1);
    s.erase(0, a);
}

std::string encodeStd(const std::string& s) {
    static const char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(s.size() + 16);
    for (unsigned char c : s) {
        if (c && std::strchr(" \"#%&'/<>?[\\]^`{|}~", c)) {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 15];
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::string decodeStd(const std::string& s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        int hi, lo;
        if (s[i] == '%' && i + 2 < s.size() && (hi = hexDigit(s[i + 1])) >= 0 &&
            (lo = hexDigit(s[i + 2])) >= 0 && (hi | lo)) {
            out += static_cast<char>(hi * 16 + lo);
            i += 2;
        } else {
            out += s[i];
        }
    }
    return out;
}

void registerAll(const char* size, size_t length) {
    auto strs = std::make_shared<std::vector<std::string>>(sample(length));
    auto vstrs = std::make_shared<std::vector<vString>>(asVStrings(*strs));
    auto encodedStrs = std::make_shared<std::vector<std::string>>();
    auto encodedV = std::make_shared<std::vector<vString>>();
    for (const std::string& s : *strs) {
        encodedStrs->push_back(encodeStd(s));
        encodedV->emplace_back(encodedStrs->back().data(), encodedStrs->back().size());
    }
    size_t n = strs->size();
    auto reg = [&](const char* op, const char* engine, std::function<size_t(size_t)> fn) {
        std::string name = std::string(op) + "-" + size + "/" + engine;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [fn, n](benchmark::State& st) { each(st, n, fn); });
    };
    reg("copy", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        return c.length();
    });
    reg("copy", "std", [strs](size_t i) {
        std::string c((*strs)[i]);
        return c.size();
    });
    reg("compare", "vfc", [vstrs, n](size_t i) {
        return static_cast<size_t>((*vstrs)[i].fCompareTo((*vstrs)[(i + 1) % n]) + 1);
    });
    reg("compare", "std", [strs, n](size_t i) {
        return static_cast<size_t>((*strs)[i].compare((*strs)[(i + 1) % n]) + 1);
    });
    reg("hash", "vfc", [vstrs](size_t i) { return size_t{(*vstrs)[i].hash()}; });
    reg("hash", "std", [strs](size_t i) { return std::hash<std::string>()((*strs)[i]); });
    reg("trim", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        c.fTrim();
        return c.length();
    });
    reg("trim", "std", [strs](size_t i) {
        std::string c((*strs)[i]);
        trimStd(c);
        return c.size();
    });
    reg("urlencode", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        return vStringUtils::sfURLEncode(c).length();
    });
    reg("urlencode", "std", [strs](size_t i) { return encodeStd((*strs)[i]).size(); });
    reg("urldecode", "vfc", [encodedV](size_t i) {
        vString c((*encodedV)[i]);
        return vStringUtils::sfURLDecode(c).length();
    });
    reg("urldecode", "std",
        [encodedStrs](size_t i) { return decodeStd((*encodedStrs)[i]).size(); });
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("16B", 16);
    registerAll("96B", 96);
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mop/s");
}
