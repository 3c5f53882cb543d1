#include "vfc/core/vStringUtils.h"

#include <cstring>

#include "vfc/core/internal/vpCharWalker.h"
#include "vfc/text/vRegExp.h"

namespace {

bool needsEscape(unsigned char c) {
    static const char kEscaped[] = " \"#%&'/<>?[\\]^`{|}~";
    return c != '\0' && std::strchr(kEscaped, c) != nullptr;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return c - 'A' + 10;
}

// The decoding pattern, compiled once and kept for the life of the process.
const vRegExp& escapeTemplate() {
    static const vRegExp* re = new vRegExp(vString("%[0-9a-fA-F][0-9a-fA-F]"));
    return *re;
}

}  // namespace

vString& vStringUtils::sfURLEncode(vString& s) {
    static const char kHex[] = "0123456789abcdef";
    const char* p = s.data();
    size_t n = s.length();
    vString out;
    vpCharWalker walker;
    size_t copied = 0;  // bytes of p already in out
    for (size_t i = 0; i < n;) {
        size_t len = walker.length(p + i, n - i);
        unsigned char c = static_cast<unsigned char>(p[i]);
        if (len == 1 && needsEscape(c)) {
            out.append(p + copied, i - copied);
            char code[3] = {'%', kHex[c >> 4], kHex[c & 15]};
            out.append(code, 3);
            copied = i + 1;
        }
        i += len ? len : 1;
    }
    if (copied == 0) return s;
    out.append(p + copied, n - copied);
    s = out;
    return s;
}

vString& vStringUtils::sfURLDecode(vString& s) {
    const vRegExp& re = escapeTemplate();
    const char* p = s.data();
    size_t n = s.length();
    vString out;
    size_t copied = 0;
    size_t extent = 0;
    for (size_t at = re.index(s, &extent, 0); at != RW_NPOS; at = re.index(s, &extent, at + 1)) {
        int value = hexValue(p[at + 1]) * 16 + hexValue(p[at + 2]);
        if (value == 0) continue;  // "%00" stays as written
        out.append(p + copied, at - copied);
        out.append(static_cast<char>(value));
        copied = at + 3;
    }
    if (copied == 0) return s;
    out.append(p + copied, n - copied);
    s = out;
    return s;
}
