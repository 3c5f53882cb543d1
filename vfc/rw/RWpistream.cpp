#include "vfc/rw/RWpistream.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <istream>
#include <limits>
#include <memory>

#include "vfc/rw/RWCString.h"
#include "vfc/rw/internal/PortableText.h"

namespace {

// The stream buffer's get area, reached through member pointers of a class derived from it.
// The reader works on it directly while it holds the bytes it needs, and falls back to the
// buffer's own calls at its end (which refill it) or when there is none.
struct GetArea : std::streambuf {
    static const char* next(std::streambuf* b) { return (b->*&GetArea::gptr)(); }
    static const char* end(std::streambuf* b) { return (b->*&GetArea::egptr)(); }
    static void bump(std::streambuf* b, size_t n) { (b->*&GetArea::gbump)(static_cast<int>(n)); }
};

bool isSpace(int c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool isOctal(int c) {
    return c >= '0' && c <= '7';
}

// Longest token we accept for a number: digits of a 64-bit value, a sign, a floating form.
constexpr int kMaxNumberChars = 64;

}  // namespace

RWpistream::RWpistream(std::streambuf* sb) : sb_(sb) {
    if (!sb_) setstate(failbit | badbit);
}

RWpistream::RWpistream(std::istream& is) : RWpistream(is.rdbuf()) {}

RWpistream::~RWpistream() = default;

int RWpistream::nextToken() {
    if (!good()) return -1;
    // Within the get area: skip the white space and take the token's first byte in one step.
    const char* p = GetArea::next(sb_);
    const char* q = p;
    for (const char* end = GetArea::end(sb_); q < end; ++q) {
        if (!isSpace(static_cast<unsigned char>(*q))) {
            size_t n = static_cast<size_t>(q - p) + 1;
            GetArea::bump(sb_, n);
            addBytesRead(n);
            return static_cast<unsigned char>(*q);
        }
    }
    if (q != p) {
        GetArea::bump(sb_, static_cast<size_t>(q - p));
        addBytesRead(static_cast<size_t>(q - p));
    }
    int c = bump();
    while (c != std::char_traits<char>::eof() && isSpace(c)) c = bump();
    if (c == std::char_traits<char>::eof()) {
        setstate(eofbit | failbit);
        return -1;
    }
    return c;
}

bool RWpistream::readInteger(long long lo, unsigned long long hi, bool& negative,
                             unsigned long long& magnitude) {
    int c = nextToken();
    if (c < 0) return false;
    negative = c == '-';
    if (negative) c = bump();
    if (c < '0' || c > '9') {
        setstate(failbit);
        return false;
    }
    unsigned long long value = 0;
    bool overflow = false;
    int digits = 0;
    // Nineteen digits always fit in 64 bits; from the twentieth on, every step is checked.
    auto take = [&](unsigned d) {
        if (digits < 19) {
            value = value * 10 + d;
        } else if (__builtin_mul_overflow(value, 10ULL, &value) ||
                   __builtin_add_overflow(value, static_cast<unsigned long long>(d), &value)) {
            overflow = true;
        }
        if (++digits > kMaxNumberChars) overflow = true;
    };
    for (;;) {
        take(static_cast<unsigned>(c - '0'));
        // The digits that follow in the get area, without a call per byte; at its end the
        // buffer's own calls refill it.
        const char* p = GetArea::next(sb_);
        const char* q = p;
        for (const char* end = GetArea::end(sb_); q < end && !overflow; ++q) {
            unsigned d = static_cast<unsigned char>(*q) - static_cast<unsigned>('0');
            if (d > 9) break;
            take(d);
        }
        if (q != p) {
            GetArea::bump(sb_, static_cast<size_t>(q - p));
            addBytesRead(static_cast<size_t>(q - p));
        }
        c = sb_->sgetc();
        if (c < '0' || c > '9' || overflow) break;
        bump();
    }
    if (overflow || (negative ? value > static_cast<unsigned long long>(-(lo + 1)) + 1
                              : value > hi)) {
        setstate(failbit);
        return false;
    }
    magnitude = value;
    // Every token is followed by a line feed: one that runs into the end of the data may have
    // been cut short, so the value is delivered but the stream is no longer good.
    if (c == std::char_traits<char>::eof()) setstate(eofbit);
    return true;
}

template <class T>
RWvistream& RWpistream::readSigned(T& v) {
    bool negative = false;
    unsigned long long magnitude = 0;
    if (readInteger(std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), negative,
                    magnitude)) {
        // Two's complement negation in unsigned arithmetic, so the minimum value is exact.
        unsigned long long bits = negative ? 0ULL - magnitude : magnitude;
        v = static_cast<T>(static_cast<long long>(bits));
    }
    return *this;
}

template <class T>
RWvistream& RWpistream::readUnsigned(T& v) {
    bool negative = false;
    unsigned long long magnitude = 0;
    if (readInteger(0, std::numeric_limits<T>::max(), negative, magnitude)) {
        if (negative && magnitude != 0) {
            setstate(failbit);
        } else {
            v = static_cast<T>(magnitude);
        }
    }
    return *this;
}

template <class T>
RWvistream& RWpistream::readFloating(T& v) {
    int c = nextToken();
    if (c < 0) return *this;
    char buf[kMaxNumberChars + 1];
    int n = 0;
    buf[n++] = static_cast<char>(c);
    for (;;) {
        c = sb_->sgetc();
        if (c == std::char_traits<char>::eof() || isSpace(c)) break;
        if (n == kMaxNumberChars) {
            setstate(failbit);
            return *this;
        }
        buf[n++] = static_cast<char>(bump());
    }
    std::string_view text(buf, static_cast<size_t>(n));
    if (text == "inf") {
        v = std::numeric_limits<T>::infinity();
    } else if (text == "-inf") {
        v = -std::numeric_limits<T>::infinity();
    } else if (text == "nan") {
        v = std::numeric_limits<T>::quiet_NaN();
    } else {
        T parsed{};
        auto r = std::from_chars(buf, buf + n, parsed);
        if (r.ec != std::errc() || r.ptr != buf + n) {
            setstate(failbit);
            return *this;
        }
        v = parsed;
    }
    if (c == std::char_traits<char>::eof()) setstate(eofbit);  // cut short, as for integers
    return *this;
}

RWvistream& RWpistream::operator>>(char& c) {
    int t = nextToken();
    if (t < 0) return *this;
    if (t != '\\') {
        if (t < 0x21 || t > 0x7E) {
            setstate(failbit);
            return *this;
        }
        c = static_cast<char>(t);
        return *this;
    }
    int d[3];
    for (int& x : d) {
        x = bump();
        if (!isOctal(x) || (&x == &d[0] && x > '3')) {
            setstate(failbit);
            return *this;
        }
    }
    c = static_cast<char>(((d[0] - '0') << 6) | ((d[1] - '0') << 3) | (d[2] - '0'));
    return *this;
}

RWvistream& RWpistream::operator>>(bool& v) {
    unsigned value = 0;
    bool negative = false;
    unsigned long long magnitude = 0;
    if (readInteger(0, 1, negative, magnitude) && !negative) {
        value = static_cast<unsigned>(magnitude);
        v = value != 0;
    } else if (good()) {
        setstate(failbit);
    }
    return *this;
}

RWvistream& RWpistream::operator>>(short& v) {
    return readSigned(v);
}
RWvistream& RWpistream::operator>>(unsigned short& v) {
    return readUnsigned(v);
}
RWvistream& RWpistream::operator>>(int& v) {
    return readSigned(v);
}
RWvistream& RWpistream::operator>>(unsigned& v) {
    return readUnsigned(v);
}
RWvistream& RWpistream::operator>>(long& v) {
    return readSigned(v);
}
RWvistream& RWpistream::operator>>(unsigned long& v) {
    return readUnsigned(v);
}
RWvistream& RWpistream::operator>>(long long& v) {
    return readSigned(v);
}
RWvistream& RWpistream::operator>>(unsigned long long& v) {
    return readUnsigned(v);
}
RWvistream& RWpistream::operator>>(float& v) {
    return readFloating(v);
}
RWvistream& RWpistream::operator>>(double& v) {
    return readFloating(v);
}

RWvistream& RWpistream::get(char& c) {
    // put() writes the byte's value 0..255; a signed value of the char type reads too.
    bool negative = false;
    unsigned long long magnitude = 0;
    if (readInteger(-128, 255, negative, magnitude))
        c = static_cast<char>(negative ? 0ULL - magnitude : magnitude);
    return *this;
}

RWvistream& RWpistream::getCount(size_t& n) {
    bool negative = false;
    unsigned long long magnitude = 0;
    if (!readInteger(0, kMaxCount, negative, magnitude) || (negative && magnitude != 0)) {
        setstate(failbit | badbit);
        return *this;
    }
    n = static_cast<size_t>(magnitude);
    return *this;
}

bool RWpistream::decodeString(char* out, size_t n) {
    // Every byte of the text takes at least one byte in the stream, so reading as many stream
    // bytes as text bytes are still missing never reads past the closing quote. The bytes are
    // read into out and decoded in place (the text is never longer than its encoding); the rest
    // of an escape cut off at the end of a read comes byte by byte.
    // While the get area holds the longest encoding of n bytes (four stream bytes each), the
    // text is decoded straight out of it, run of plain bytes by run.
    const char* p = GetArea::next(sb_);
    if (p && static_cast<size_t>(GetArea::end(sb_) - p) / 4 >= n) {
        size_t r = 0, w = 0;
        for (;;) {
            size_t k = vfc::rw::plainTextPrefix(p + r, n - w);
            std::memcpy(out + w, p + r, k);
            r += k;
            w += k;
            if (w == n) break;
            // An escape: r + 4 <= 4 * (w + 1) <= 4 * n, so its bytes are in the area.
            int e = p[r] == '\\' ? static_cast<unsigned char>(p[r + 1]) : -1;
            if (e == '"' || e == '\\') {
                out[w++] = static_cast<char>(e);
                r += 2;
            } else if (e >= '0' && e <= '3' && isOctal(p[r + 2]) && isOctal(p[r + 3])) {
                out[w++] = static_cast<char>(((e - '0') << 6) | ((p[r + 2] - '0') << 3) |
                                             (p[r + 3] - '0'));
                r += 4;
            } else {
                // A raw control or high byte, a quote before the length is reached, or a
                // malformed escape.
                setstate(failbit | badbit);
                return false;
            }
        }
        GetArea::bump(sb_, r);
        addBytesRead(r);
        return true;
    }
    size_t w = 0;
    while (w < n) {
        auto got = sb_->sgetn(out + w, static_cast<std::streamsize>(n - w));
        if (got <= 0) {
            setstate(eofbit | failbit | badbit);
            return false;
        }
        addBytesRead(static_cast<size_t>(got));
        size_t r = w;
        const size_t end = w + static_cast<size_t>(got);
        auto nextByte = [&]() -> int {
            return r < end ? static_cast<unsigned char>(out[r++]) : bump();
        };
        while (r < end) {
            auto c = static_cast<unsigned char>(out[r++]);
            if (vfc::rw::isPlainTextByte(c)) {
                out[w++] = static_cast<char>(c);
                continue;
            }
            if (c != '\\') {
                // A raw control or high byte, or a quote before the length is reached.
                setstate(failbit | badbit);
                return false;
            }
            int e = nextByte();
            if (e == '"' || e == '\\') {
                out[w++] = static_cast<char>(e);
            } else if (e >= '0' && e <= '3') {
                int d1 = nextByte();
                int d2 = isOctal(d1) ? nextByte() : -1;
                if (!isOctal(d1) || !isOctal(d2)) {
                    setstate(failbit | badbit);
                    return false;
                }
                out[w++] = static_cast<char>(((e - '0') << 6) | ((d1 - '0') << 3) | (d2 - '0'));
            } else {
                setstate(e == std::char_traits<char>::eof() ? (eofbit | failbit | badbit)
                                                             : (failbit | badbit));
                return false;
            }
        }
    }
    return true;
}

RWvistream& RWpistream::getString(RWCString& s) {
    size_t length = 0;
    getCount(length);
    if (!good()) return *this;
    if (nextToken() != '"') {
        setstate(failbit | badbit);
        return *this;
    }
    // The length is not trusted for allocation: a long text is decoded block by block, so the
    // string grows only as bytes actually arrive.
    constexpr size_t kBlock = 65536;
    // A short text goes through the stack, so that a target with room keeps its buffer.
    constexpr size_t kShort = 256;
    if (length <= kShort) {
        char text[kShort];
        if (!decodeString(text, length)) return *this;
        if (bump() != '"') {
            setstate(failbit | badbit);
            return *this;
        }
        s.resizeAndOverwrite(length, [&](char* p, size_t n) {
            std::memcpy(p, text, n);
            return n;
        });
        return *this;
    }
    RWCString text;
    bool ok = true;
    if (length <= kBlock) {
        text.resizeAndOverwrite(length, [&](char* p, size_t n) {
            ok = decodeString(p, n);
            return ok ? n : 0;
        });
    } else {
        std::unique_ptr<char[]> block(new char[kBlock]);
        for (size_t done = 0; ok && done < length; done += kBlock) {
            size_t n = std::min(kBlock, length - done);
            ok = decodeString(block.get(), n);
            if (ok) text.append(block.get(), n);
        }
    }
    if (!ok) return *this;
    if (bump() != '"') {
        setstate(failbit | badbit);
        return *this;
    }
    s = std::move(text);
    return *this;
}

bool RWpistream::readMarker(char closing) {
    if (nextToken() != '\\' || bump() != closing) {
        setstate(failbit | badbit);
        return false;
    }
    return true;
}

bool RWpistream::getObjectStart() {
    return readMarker('[');
}

bool RWpistream::getObjectEnd() {
    return readMarker(']');
}
