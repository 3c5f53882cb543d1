// vString against std::string and Qt's QByteArray on the operations collections and converters
// repeat: copy, compare, hash, trim, URL encode and decode, over short (file-name-sized) and
// long (path-sized) strings. Where the standard library has no such operation, a
// straightforward hand-written one on std::string stands in. Qt's are its own:
//  - copy: the QByteArray copy constructor; like vString's it shares the bytes (std::string
//    copies them).
//  - compare: QByteArray::compare; hash: qHash, another function than vString::hash and
//    std::hash, so the hash values are not compared, only the work.
//  - trim: QByteArray::trimmed, which also takes CR, LF, VT and FF as white space where vfc takes
//    blanks and tabs only; the strings here hold no other white space, so the answers agree.
//  - urlencode: QByteArray::toPercentEncoding escapes every byte but letters, digits and "-._~"
//    by default, vfc a fixed set (space " # % & ' / < > ? [ \ ] ^ ` { | } ~). Qt is given the
//    bytes vfc leaves as its exclude list and "~" as its include list, so both escape the same
//    bytes; Qt writes the hex digits in upper case and vfc in lower, so Qt's output is checked
//    against vfc's with the escapes' digits in upper case.
//  - urldecode: QByteArray::fromPercentEncoding; it decodes "%00" too, which vfc leaves, and
//    the encoded strings here hold none.
// Every engine's answers are checked against vfc's before timing (signs for compare; the
// decoded bytes for copy, trim and decode); an engine that differs on any string is left out of
// that case.
#include <QByteArray>
#include <QHash>

#include <cctype>
#include <cstdio>
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

std::vector<QByteArray> asQt(const std::vector<std::string>& in) {
    std::vector<QByteArray> out;
    for (const std::string& s : in)
        out.emplace_back(s.data(), static_cast<qsizetype>(s.size()));
    return out;
}

std::string fromQt(const QByteArray& b) {
    return std::string(b.constData(), static_cast<size_t>(b.size()));
}

std::string fromV(const vString& s) {
    return std::string(s.data(), s.length());
}

// The bytes vfc leaves as they are and Qt escapes unless told not to: Qt's exclude list for
// vfc's escape set. NUL cannot be listed (Qt reads the list up to a NUL); no string holds one.
QByteArray qtExclude() {
    const char* const vfcEscapes = " \"#%&'/<>?[\\]^`{|}~";
    QByteArray out;
    for (int c = 1; c < 256; ++c) {
        bool unreserved = std::isalnum(c) || c == '-' || c == '.' || c == '_' || c == '~';
        if (!unreserved && !std::strchr(vfcEscapes, c)) out.append(static_cast<char>(c));
    }
    return out;
}

// vfc's encoding with the hex digits of its escapes in upper case, as Qt writes them.
std::string upperEscapes(std::string s) {
    for (size_t i = 0; i + 2 < s.size(); ++i)
        if (s[i] == '%') {
            s[i + 1] = static_cast<char>(std::toupper(static_cast<unsigned char>(s[i + 1])));
            s[i + 2] = static_cast<char>(std::toupper(static_cast<unsigned char>(s[i + 2])));
            i += 2;
        }
    return s;
}

int sign(int x) {
    return (x > 0) - (x < 0);
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
    auto qstrs = std::make_shared<std::vector<QByteArray>>(asQt(*strs));
    auto encodedQ = std::make_shared<std::vector<QByteArray>>(asQt(*encodedStrs));
    auto exclude = std::make_shared<QByteArray>(qtExclude());
    auto include = std::make_shared<QByteArray>("~");
    size_t n = strs->size();
    std::string skipped;

    // Registers op/engine when answer(i) equals want(i) for every string, or when there is
    // nothing to compare (want empty); otherwise prints the first difference and leaves it out.
    using Answer = std::function<std::string(size_t)>;
    auto reg = [&](const char* op, const char* engine, std::function<size_t(size_t)> fn,
                   Answer want = nullptr, Answer answer = nullptr) {
        std::string name = std::string(op) + "-" + size + "/" + engine;
        if (want)
            for (size_t i = 0; i < n; ++i) {
                std::string w = want(i), got = answer(i);
                if (w == got) continue;
                std::printf("%s differs on \"%s\": \"%s\" against vfc's \"%s\"\n", name.c_str(),
                            (*strs)[i].c_str(), got.c_str(), w.c_str());
                skipped += " " + name;
                return;
            }
        benchmark::RegisterBenchmark(name.c_str(),
                                     [fn, n](benchmark::State& st) { vfcbench::timeEach(st, n, fn); });
    };

    Answer vfcCopy = [vstrs](size_t i) { return fromV(vString((*vstrs)[i])); };
    reg("copy", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        return c.length();
    });
    reg(
        "copy", "std",
        [strs](size_t i) {
            std::string c((*strs)[i]);
            return c.size();
        },
        vfcCopy, [strs](size_t i) { return std::string((*strs)[i]); });
    reg(
        "copy", "qt",
        [qstrs](size_t i) {
            QByteArray c((*qstrs)[i]);
            return static_cast<size_t>(c.size());
        },
        vfcCopy, [qstrs](size_t i) { return fromQt(QByteArray((*qstrs)[i])); });

    Answer vfcSign = [vstrs, n](size_t i) {
        return std::to_string(sign((*vstrs)[i].fCompareTo((*vstrs)[(i + 1) % n])));
    };
    reg("compare", "vfc", [vstrs, n](size_t i) {
        return static_cast<size_t>((*vstrs)[i].fCompareTo((*vstrs)[(i + 1) % n]) + 1);
    });
    reg(
        "compare", "std",
        [strs, n](size_t i) {
            return static_cast<size_t>((*strs)[i].compare((*strs)[(i + 1) % n]) + 1);
        },
        vfcSign,
        [strs, n](size_t i) {
            return std::to_string(sign((*strs)[i].compare((*strs)[(i + 1) % n])));
        });
    reg(
        "compare", "qt",
        [qstrs, n](size_t i) {
            return static_cast<size_t>((*qstrs)[i].compare((*qstrs)[(i + 1) % n]) + 1);
        },
        vfcSign,
        [qstrs, n](size_t i) {
            return std::to_string(sign((*qstrs)[i].compare((*qstrs)[(i + 1) % n])));
        });

    reg("hash", "vfc", [vstrs](size_t i) { return size_t{(*vstrs)[i].hash()}; });
    reg("hash", "std", [strs](size_t i) { return std::hash<std::string>()((*strs)[i]); });
    reg("hash", "qt", [qstrs](size_t i) { return qHash((*qstrs)[i]); });

    Answer vfcTrim = [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        c.fTrim();
        return fromV(c);
    };
    reg("trim", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        c.fTrim();
        return c.length();
    });
    reg(
        "trim", "std",
        [strs](size_t i) {
            std::string c((*strs)[i]);
            trimStd(c);
            return c.size();
        },
        vfcTrim,
        [strs](size_t i) {
            std::string c((*strs)[i]);
            trimStd(c);
            return c;
        });
    reg(
        "trim", "qt",
        [qstrs](size_t i) { return static_cast<size_t>((*qstrs)[i].trimmed().size()); }, vfcTrim,
        [qstrs](size_t i) { return fromQt((*qstrs)[i].trimmed()); });

    reg("urlencode", "vfc", [vstrs](size_t i) {
        vString c((*vstrs)[i]);
        return vStringUtils::sfURLEncode(c).length();
    });
    reg(
        "urlencode", "std", [strs](size_t i) { return encodeStd((*strs)[i]).size(); },
        [vstrs](size_t i) {
            vString c((*vstrs)[i]);
            return fromV(vStringUtils::sfURLEncode(c));
        },
        [strs](size_t i) { return encodeStd((*strs)[i]); });
    reg(
        "urlencode", "qt",
        [qstrs, exclude, include](size_t i) {
            return static_cast<size_t>((*qstrs)[i].toPercentEncoding(*exclude, *include).size());
        },
        [vstrs](size_t i) {
            vString c((*vstrs)[i]);
            return upperEscapes(fromV(vStringUtils::sfURLEncode(c)));
        },
        [qstrs, exclude, include](size_t i) {
            return fromQt((*qstrs)[i].toPercentEncoding(*exclude, *include));
        });

    Answer vfcDecode = [encodedV](size_t i) {
        vString c((*encodedV)[i]);
        return fromV(vStringUtils::sfURLDecode(c));
    };
    reg("urldecode", "vfc", [encodedV](size_t i) {
        vString c((*encodedV)[i]);
        return vStringUtils::sfURLDecode(c).length();
    });
    reg(
        "urldecode", "std", [encodedStrs](size_t i) { return decodeStd((*encodedStrs)[i]).size(); },
        vfcDecode, [encodedStrs](size_t i) { return decodeStd((*encodedStrs)[i]); });
    reg(
        "urldecode", "qt",
        [encodedQ](size_t i) {
            return static_cast<size_t>(QByteArray::fromPercentEncoding((*encodedQ)[i]).size());
        },
        vfcDecode,
        [encodedQ](size_t i) { return fromQt(QByteArray::fromPercentEncoding((*encodedQ)[i])); });
    std::printf("%s strings: engines left out where their answers differ:%s\n", size,
                skipped.empty() ? " none" : skipped.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("16B", 16);
    registerAll("96B", 96);
    return vfcbench::runWithRatios(argc, argv, "vfc", "Mop/s");
}
