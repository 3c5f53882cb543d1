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

// Hex digit values by byte, -1 for anything else.
struct HexTable {
    signed char value[256] = {};
    constexpr HexTable() {
        for (int c = 0; c < 256; ++c)
            value[c] = -1;
        for (int c = 0; c < 10; ++c)
            value['0' + c] = static_cast<signed char>(c);
        for (int c = 0; c < 6; ++c)
            value['a' + c] = value['A' + c] = static_cast<signed char>(10 + c);
    }
};
constexpr HexTable kHexTable;

// Decodes buf[0, n), whose first "%" is at first, in place (the text only shrinks, so no write
// overtakes a byte still to be read); returns the new length.
size_t decodeInPlace(char* buf, size_t n, size_t first) {
    size_t out = first;
    for (size_t i = first; i < n;) {
        const char c = buf[i];
        if (c == '%' && i + 2 < n) {
            const int hi = kHexTable.value[static_cast<unsigned char>(buf[i + 1])];
            const int lo = kHexTable.value[static_cast<unsigned char>(buf[i + 2])];
            // Both digits (neither is -1) and not "%00".
            if ((hi | lo) > 0) {
                buf[out++] = static_cast<char>(hi * 16 + lo);
                i += 3;
                continue;
            }
        }
        buf[out++] = c;
        ++i;
    }
    return out;
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
    // match: a decoded "%" never starts a new escape, and "%00" stays.
    const size_t n = s.length();
    const char* p = s.data();
    size_t at = 0;
    if (n < 64) {
        // A plain loop beats the set-up of memchr on names and short paths.
        while (at < n && p[at] != '%')
            ++at;
        if (at == n) return s;
    } else {
        const char* first = static_cast<const char*>(std::memchr(p, '%', n));
        if (!first) return s;
        at = static_cast<size_t>(first - p);
    }
    // An unshared buffer is decoded where it is; a shared one is copied once first.
    s.resizeAndOverwrite(n, [at](char* buf, size_t size) { return decodeInPlace(buf, size, at); });
    return s;
}
