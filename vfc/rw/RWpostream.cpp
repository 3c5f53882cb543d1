#include "vfc/rw/RWpostream.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>

namespace {

// Appends the escape of byte c ("\ooo") at p; returns the new end.
char* octalEscape(char* p, unsigned char c) {
    *p++ = '\\';
    *p++ = static_cast<char>('0' + (c >> 6));
    *p++ = static_cast<char>('0' + ((c >> 3) & 7));
    *p++ = static_cast<char>('0' + (c & 7));
    return p;
}

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
            if (good() && sb_->sputn(p, static_cast<std::streamsize>(n)) !=
                              static_cast<std::streamsize>(n))
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
    if (good() &&
        sb_->sputn(buffer_, static_cast<std::streamsize>(n)) != static_cast<std::streamsize>(n))
        setstate(failbit | badbit);
}

void RWpostream::writeUnsigned(unsigned long long v) {
    char buf[24];
    auto r = std::to_chars(buf, buf + sizeof buf - 1, v);
    *r.ptr++ = '\n';
    write(buf, static_cast<size_t>(r.ptr - buf));
}

void RWpostream::writeSigned(long long v) {
    char buf[24];
    auto r = std::to_chars(buf, buf + sizeof buf - 1, v);
    *r.ptr++ = '\n';
    write(buf, static_cast<size_t>(r.ptr - buf));
}

RWvostream& RWpostream::operator<<(char c) {
    char buf[5];
    char* p = buf;
    auto u = static_cast<unsigned char>(c);
    if (u >= 0x21 && u <= 0x7E && u != '\\')
        *p++ = c;
    else
        p = octalEscape(p, u);
    *p++ = '\n';
    write(buf, static_cast<size_t>(p - buf));
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
    // Escaped in chunks: at most four bytes out per byte in.
    char buf[1024];
    char* p = buf;
    *p++ = '"';
    for (size_t i = 0; i < n; ++i) {
        if (p > buf + sizeof buf - 8) {
            write(buf, static_cast<size_t>(p - buf));
            p = buf;
        }
        auto u = static_cast<unsigned char>(s[i]);
        if (u == '"' || u == '\\') {
            *p++ = '\\';
            *p++ = static_cast<char>(u);
        } else if (u >= 0x20 && u <= 0x7E) {
            *p++ = static_cast<char>(u);
        } else {
            p = octalEscape(p, u);
        }
    }
    *p++ = '"';
    *p++ = '\n';
    write(buf, static_cast<size_t>(p - buf));
    return done();
}

RWvostream& RWpostream::putObjectStart() {
    write("\\[\n", 3);
    return done();
}

RWvostream& RWpostream::putObjectEnd() {
    write("\\]\n", 3);
    return done();
}

RWvostream& RWpostream::flush() {
    commit();
    if (sb_ && sb_->pubsync() != 0) setstate(failbit | badbit);
    return *this;
}
