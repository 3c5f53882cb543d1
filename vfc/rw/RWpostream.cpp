#include "vfc/rw/RWpostream.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>

#include "vfc/rw/internal/PortableText.h"

namespace {

// Appends the escape of byte c ("\ooo") at p; returns the new end.
char* octalEscape(char* p, unsigned char c) {
    *p++ = '\\';
    *p++ = static_cast<char>('0' + (c >> 6));
    *p++ = static_cast<char>('0' + ((c >> 3) & 7));
    *p++ = static_cast<char>('0' + (c & 7));
    return p;
}

// Appends the escape of a byte that is not plain text inside a string item: a backslash before
// the quote and the backslash, the octal form for the rest.
char* escapeByte(char* p, unsigned char c) {
    if (c != '"' && c != '\\') return octalEscape(p, c);
    *p++ = '\\';
    *p++ = static_cast<char>(c);
    return p;
}

// Room for an integer's line: 20 digits and a sign at most, and the line feed.
constexpr size_t kIntegerRoom = 24;

// Writes v and its line feed at p, which has kIntegerRoom bytes; returns the end.
template <class T>
char* integerLine(char* p, T v) {
    char* end = std::to_chars(p, p + kIntegerRoom - 1, v).ptr;
    *end++ = '\n';
    return end;
}

// The stream buffer's put area, reached through member pointers of a class derived from it.
struct PutArea : std::streambuf {
    static char* next(std::streambuf* b) { return (b->*&PutArea::pptr)(); }
    static char* end(std::streambuf* b) { return (b->*&PutArea::epptr)(); }
    static void bump(std::streambuf* b, int n) { (b->*&PutArea::pbump)(n); }
};

}  // namespace

RWpostream::RWpostream(std::streambuf* sb) : sb_(sb) {
    if (!sb_) setstate(failbit | badbit);
}

RWpostream::RWpostream(std::ostream& os) : RWpostream(os.rdbuf()) {}

RWpostream::~RWpostream() {
    commit();
}

void RWpostream::write(const char* p, size_t n) {
    if (!good()) return;
    if (pending_ + n > sizeof buffer_) {
        commit();
        if (n > sizeof buffer_) {
            if (good() &&
                sb_->sputn(p, static_cast<std::streamsize>(n)) != static_cast<std::streamsize>(n))
                setstate(failbit | badbit);
            return;
        }
    }
    std::memcpy(buffer_ + pending_, p, n);
    pending_ += n;
}

void RWpostream::commit() {
    if (pending_ == 0) return;
    size_t n = pending_;
    pending_ = 0;
    if (!good()) return;
    // Most objects are small: copied into the put area when it has room, without a call
    // through the buffer's virtual sputn.
    char* next = PutArea::next(sb_);
    if (next && static_cast<size_t>(PutArea::end(sb_) - next) >= n) {
        std::memcpy(next, buffer_, n);
        PutArea::bump(sb_, static_cast<int>(n));
        return;
    }
    if (sb_->sputn(buffer_, static_cast<std::streamsize>(n)) != static_cast<std::streamsize>(n))
        setstate(failbit | badbit);
}

void RWpostream::writeUnsigned(unsigned long long v) {
    if (char* p = room(kIntegerRoom)) pending_ = static_cast<size_t>(integerLine(p, v) - buffer_);
}

void RWpostream::writeSigned(long long v) {
    if (char* p = room(kIntegerRoom)) pending_ = static_cast<size_t>(integerLine(p, v) - buffer_);
}

RWvostream& RWpostream::operator<<(char c) {
    if (char* p = room(5)) {
        auto u = static_cast<unsigned char>(c);
        if (u >= 0x21 && u <= 0x7E && u != '\\')
            *p++ = c;
        else
            p = octalEscape(p, u);
        *p++ = '\n';
        pending_ = static_cast<size_t>(p - buffer_);
    }
    return done();
}

RWvostream& RWpostream::operator<<(const char* s) {
    return putString(s, s ? std::strlen(s) : 0);
}

RWvostream& RWpostream::operator<<(bool v) {
    write(v ? "1\n" : "0\n", 2);
    return done();
}

RWvostream& RWpostream::operator<<(short v) {
    writeSigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(unsigned short v) {
    writeUnsigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(int v) {
    writeSigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(unsigned v) {
    writeUnsigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(long v) {
    writeSigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(unsigned long v) {
    writeUnsigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(long long v) {
    writeSigned(v);
    return done();
}
RWvostream& RWpostream::operator<<(unsigned long long v) {
    writeUnsigned(v);
    return done();
}

namespace {
// The shortest text that reads back to the same value; inf, -inf and nan spelled out.
template <class T>
size_t floatingText(char* buf, size_t size, T v) {
    if (std::isnan(v)) {
        std::memcpy(buf, "nan", 3);
        return 3;
    }
    if (std::isinf(v)) {
        const char* text = v < 0 ? "-inf" : "inf";
        std::memcpy(buf, text, std::strlen(text));
        return std::strlen(text);
    }
    auto r = std::to_chars(buf, buf + size, v);
    return static_cast<size_t>(r.ptr - buf);
}
}  // namespace

RWvostream& RWpostream::operator<<(float v) {
    char buf[48];
    size_t n = floatingText(buf, sizeof buf - 1, v);
    buf[n++] = '\n';
    write(buf, n);
    return done();
}

RWvostream& RWpostream::operator<<(double v) {
    char buf[48];
    size_t n = floatingText(buf, sizeof buf - 1, v);
    buf[n++] = '\n';
    write(buf, n);
    return done();
}

RWvostream& RWpostream::put(char c) {
    writeUnsigned(static_cast<unsigned char>(c));
    return done();
}

RWvostream& RWpostream::putString(const char* s, size_t n) {
    writeUnsigned(n);
    // At most four bytes out per byte in, the quotes and the line feed: a string that fits is
    // escaped straight into the buffer, a longer one in chunks.
    if (4 * n + 3 <= sizeof buffer_) {
        char* p = room(4 * n + 3);
        if (!p) return *this;
        *p++ = '"';
        for (size_t i = 0;;) {
            // Runs of plain bytes are copied as they are.
            size_t k = vfc::rw::plainTextPrefix(s + i, n - i);
            std::memcpy(p, s + i, k);
            p += k;
            i += k;
            if (i == n) break;
            p = escapeByte(p, static_cast<unsigned char>(s[i++]));
        }
        *p++ = '"';
        *p++ = '\n';
        pending_ = static_cast<size_t>(p - buffer_);
        return done();
    }
    char buf[1024];
    char* p = buf;
    *p++ = '"';
    for (size_t i = 0; i < n; ++i) {
        if (p > buf + sizeof buf - 8) {
            write(buf, static_cast<size_t>(p - buf));
            p = buf;
        }
        auto u = static_cast<unsigned char>(s[i]);
        if (vfc::rw::isPlainTextByte(u))
            *p++ = static_cast<char>(u);
        else
            p = escapeByte(p, u);
    }
    *p++ = '"';
    *p++ = '\n';
    write(buf, static_cast<size_t>(p - buf));
    return done();
}

RWvostream& RWpostream::putObjectStart() {
    if (char* p = room(3)) {
        p[0] = '\\';
        p[1] = '[';
        p[2] = '\n';
        pending_ += 3;
    }
    return done();
}

RWvostream& RWpostream::putObjectEnd() {
    if (char* p = room(3)) {
        p[0] = '\\';
        p[1] = ']';
        p[2] = '\n';
        pending_ += 3;
    }
    return done();
}

RWvostream& RWpostream::flush() {
    commit();
    if (sb_ && sb_->pubsync() != 0) setstate(failbit | badbit);
    return *this;
}
