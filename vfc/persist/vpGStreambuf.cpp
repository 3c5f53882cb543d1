#include "vfc/persist/vpGStreambuf.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr int kFailure = 255;

char* allocateBuffer(int size) {
    // One spare byte: overflow() with room left reads the byte after the one it steps over.
    char* p = static_cast<char*>(std::calloc(static_cast<size_t>(size) + 1, 1));
    if (!p) std::abort();
    return p;
}

}  // namespace

vpGStreambuf::vpGStreambuf(int size)
    : aSize(size > 0 ? size : 1), aGet(allocateBuffer(aSize)), aPut(allocateBuffer(aSize)) {
    setg(aGet, aGet, aGet);
    setp(aPut, aPut + aSize);
}

vpGStreambuf::vpGStreambuf(const vpGStreambuf& other) : vpGStreambuf(other.aSize) {}

vpGStreambuf::~vpGStreambuf() {
    sync();
    std::free(aGet);
    std::free(aPut);
}

int vpGStreambuf::consumer(char*, int) {
    return 0;
}

int vpGStreambuf::producer(char*, int) {
    return 0;
}

int vpGStreambuf::sync() {
    int n = static_cast<int>(pptr() - pbase());
    if (n <= 0) return 0;
    int taken = consumer(pbase(), n);
    if (taken < 1 || taken > n) return kFailure;
    if (taken == n) {
        setp(aPut, aPut + aSize);
        return 0;
    }
    // A partial take: the rest moves to the front and the room shrinks to its size, with the
    // write position at the start (every consumer of the library takes everything).
    std::memmove(aPut, pbase() + taken, static_cast<size_t>(n - taken));
    setp(aPut, aPut + (n - taken));
    return 0;
}

int vpGStreambuf::overflow(int c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return 0;
    if (pptr() < epptr()) {
        pbump(1);
        return static_cast<unsigned char>(*pptr());
    }
    sync();
    // A consumer that takes nothing leaves no room; putting c would only come back here.
    if (pptr() == epptr()) return traits_type::eof();
    return static_cast<unsigned char>(sputc(traits_type::to_char_type(c)));
}

int vpGStreambuf::underflow() {
    if (gptr() < egptr()) {
        unsigned char c = static_cast<unsigned char>(*gptr());
        gbump(1);
        return c;
    }
    sync();
    int m = producer(aGet, aSize);
    if (m > 0 && m <= aSize) {
        setg(aGet, aGet, aGet + m);
        return static_cast<unsigned char>(aGet[0]);
    }
    // No data: the reader sees the byte 255, taken from a one-byte get area so that the
    // standard read functions never step outside the buffer.
    aGet[0] = static_cast<char>(kFailure);
    setg(aGet, aGet, aGet + 1);
    return kFailure;
}

int vpGStreambuf::pbackfail(int c) {
    if (gptr() <= eback()) return kFailure;
    gbump(-1);
    if (!traits_type::eq_int_type(c, traits_type::eof())) *gptr() = traits_type::to_char_type(c);
    return static_cast<unsigned char>(*gptr());
}
