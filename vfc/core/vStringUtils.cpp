#include "vfc/core/vStringUtils.h"

#include <algorithm>
#include <cstring>

#include "vfc/core/internal/vpCharWalker.h"

namespace {

// The bytes that encoding escapes.
struct EscapeSet {
    bool escaped[256] = {};
    constexpr EscapeSet() {
        for (const char* p = " \"#%&'/<>?[\\]^`{|}~"; *p; ++p)
            escaped[static_cast<unsigned char>(*p)] = true;
    }
};
constexpr EscapeSet kEscapeSet;

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

vString& vStringUtils::sfURLEncode(vString& s) {
    static const char kHex[] = "0123456789abcdef";
    const char* p = s.data();
    size_t n = s.length();
    size_t escapes = 0;
    vpcForEachSingleByteChar(
        p, n, [&](size_t i) { escapes += kEscapeSet.escaped[static_cast<unsigned char>(p[i])]; });
    if (escapes == 0) return s;
    vString out;
    out.resizeAndOverwrite(n + 2 * escapes, [&](char* dst, size_t size) {
        char* end = dst;
        size_t copied = 0;  // bytes of p already written
        vpcForEachSingleByteChar(p, n, [&](size_t i) {
            unsigned char c = static_cast<unsigned char>(p[i]);
            if (!kEscapeSet.escaped[c]) return;
            end = std::copy(p + copied, p + i, end);
            *end++ = '%';
            *end++ = kHex[c >> 4];
            *end++ = kHex[c & 15];
            copied = i + 1;
        });
        std::copy(p + copied, p + n, end);
        return size;
    });
    s = std::move(out);
    return s;
}

vString& vStringUtils::sfURLDecode(vString& s) {
    // Every match of "%[0-9a-fA-F][0-9a-fA-F]", left to right, each search going on after the
    // match's first byte: a decoded "%" never starts a new escape, and "%00" stays.
    const char* p = s.data();
    size_t n = s.length();
    const char* first = static_cast<const char*>(std::memchr(p, '%', n));
    if (!first) return s;
    vString out;
    out.resizeAndOverwrite(n, [&](char* dst, size_t) {
        char* end = dst;
        const char* copied = p;  // start of what is still to be written
        for (const char* at = first; at && at + 2 < p + n;
             at = static_cast<const char*>(std::memchr(at + 1, '%', p + n - at - 1))) {
            int hi = hexValue(at[1]);
            int lo = hexValue(at[2]);
            if (hi < 0 || lo < 0 || (hi | lo) == 0) continue;  // not an escape, or "%00"
            end = std::copy(copied, at, end);
            *end++ = static_cast<char>(hi * 16 + lo);
            copied = at + 3;
        }
        end = std::copy(copied, p + n, end);
        return static_cast<size_t>(end - dst);
    });
    s = std::move(out);
    return s;
}
