#include "vfc/rw/RWCString.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <utility>

#include "vfc/rw/RWCRegexp.h"
#include "vfc/rw/RWCSubString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

// The shared empty string: constant-initialised, so it is usable before any constructor runs, and
// never counted or freed.
RWCString::EmptyStorage RWCString::empty_ = {{{1}, false, 0, 0}, {}};

namespace {

unsigned char foldAscii(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? c + 0x20 : c;
}

// The scratch byte that a writable out-of-range index refers to.
thread_local char outOfRange;

}  // namespace

char* RWCString::allocate(size_t cap) {
    void* block = std::malloc(sizeof(Rep) + cap + 1);
    if (!block) std::abort();  // out of memory: there is no sensible way to continue
    Rep* r = new (block) Rep{{1}, false, 0, cap};
    char* chars = reinterpret_cast<char*>(r + 1);
    chars[0] = '\0';
    return chars;
}

void RWCString::freeRep(Rep* r) noexcept {
    r->~Rep();
    std::free(r);
}

void RWCString::reserveUnique(size_t cap) {
    Rep* r = rep();
    bool shared = r == &empty_.rep || r->refs.load(std::memory_order_acquire) != 1;
    if (!shared && cap <= r->cap) return;
    size_t newCap = std::max<size_t>(shared ? cap : std::max(cap, r->cap + r->cap / 2), 15);
    char* fresh = allocate(newCap);
    size_t keep = std::min(r->len, newCap);
    std::memcpy(fresh, p_, keep);
    fresh[keep] = '\0';
    reinterpret_cast<Rep*>(fresh)[-1].len = keep;
    release();
    p_ = fresh;
}

void RWCString::keepOnly(size_t pos, size_t n) {
    Rep* r = rep();
    if (pos == 0 && n == r->len) return;  // the shared empty string always returns here
    if (r->refs.load(std::memory_order_acquire) == 1) {
        std::memmove(p_, p_ + pos, n);
        setLength(n);
        return;
    }
    RWCString part(p_ + pos, n);
    std::swap(p_, part.p_);
}

RWCString::RWCString(const char* s) : RWCString(s, s ? std::strlen(s) : 0) {}

RWCString::RWCString(const char* s, size_t n) : p_(emptyChars()) {
    if (n == 0) return;
    p_ = allocate(n);
    std::memcpy(p_, s, n);
    p_[n] = '\0';
    rep()->len = n;
}

RWCString::RWCString(char c, size_t n) : p_(emptyChars()) {
    if (n == 0) return;
    p_ = allocate(n);
    std::memset(p_, static_cast<unsigned char>(c), n);
    p_[n] = '\0';
    rep()->len = n;
}

RWCString::RWCString(const RWCSubString& sub) : RWCString(sub.data(), sub.length()) {}

void RWCString::copyLeaked(const RWCString& other) {
    p_ = emptyChars();
    *this = RWCString(other.data(), other.length());
}

RWCString& RWCString::operator=(const RWCString& other) noexcept {
    if (p_ != other.p_) {
        RWCString copy(other);
        std::swap(p_, copy.p_);
    }
    return *this;
}

RWCString& RWCString::operator=(RWCString&& other) noexcept {
    std::swap(p_, other.p_);
    return *this;
}

RWCString& RWCString::operator=(const char* s) {
    return replace(0, RW_NPOS, s, s ? std::strlen(s) : 0);
}

char& RWCString::operator()(size_t i) {
    if (i >= length()) {
        outOfRange = '\0';
        return outOfRange;
    }
    reserveUnique(length());
    rep()->leaked = true;
    return p_[i];
}

RWCSubString RWCString::operator()(size_t start, size_t len) {
    if (start > length() || len > length() - start) return RWCSubString(*this, RW_NPOS, 0);
    return RWCSubString(*this, start, len);
}

const RWCSubString RWCString::operator()(size_t start, size_t len) const {
    return const_cast<RWCString&>(*this)(start, len);
}

RWCSubString RWCString::operator()(const RWCRegexp& re, size_t start) {
    size_t extent = 0;
    size_t pos = re.index(*this, &extent, start);
    if (pos == RW_NPOS) return RWCSubString(*this, RW_NPOS, 0);
    return RWCSubString(*this, pos, extent);
}

const RWCSubString RWCString::operator()(const RWCRegexp& re, size_t start) const {
    return const_cast<RWCString&>(*this)(re, start);
}

RWCString& RWCString::appendRepeated(char c, size_t n) {
    size_t len = length();
    reserveUnique(len + n);
    std::memset(p_ + len, static_cast<unsigned char>(c), n);
    p_[len + n] = '\0';
    rep()->len = len + n;
    return *this;
}

RWCString& RWCString::replace(size_t pos, size_t n, const char* s, size_t sn) {
    size_t len = length();
    pos = std::min(pos, len);
    n = std::min(n, len - pos);
    if (sn == 0 && n == 0) return *this;
    if (s >= p_ && s < p_ + len) {
        // The new text lies inside this string: work from a private copy of it.
        RWCString text(s, sn);
        return replace(pos, n, text.data(), sn);
    }
    size_t newLen = len - n + sn;
    size_t tail = len - pos - n;
    Rep* r = rep();
    bool shared = r == &empty_.rep || r->refs.load(std::memory_order_acquire) != 1;
    if (!shared && newLen <= r->cap) {
        std::memmove(p_ + pos + sn, p_ + pos + n, tail);
    } else {
        // A private buffer grows geometrically so that repeated appends stay linear; a shared
        // one is copied at the size it needs.
        size_t cap = shared ? newLen : std::max(newLen, r->cap + r->cap / 2);
        char* fresh = allocate(std::max(cap, size_t{15}));
        std::memcpy(fresh, p_, pos);
        std::memcpy(fresh + pos + sn, p_ + pos + n, tail);
        release();
        p_ = fresh;
    }
    if (sn) std::memcpy(p_ + pos, s, sn);
    p_[newLen] = '\0';
    rep()->len = newLen;
    return *this;
}

int RWCString::compareFolded(std::string_view a, std::string_view b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        unsigned char x = foldAscii(static_cast<unsigned char>(a[i]));
        unsigned char y = foldAscii(static_cast<unsigned char>(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

namespace {

// A small multiplicative hash over 8-byte words: fast on the short keys collections use, and
// well mixed in the low bits that bucket indexes take.
uint64_t mix(uint64_t h, uint64_t word) {
    h ^= word;
    h *= 0x9E3779B97F4A7C15ull;
    return h ^ (h >> 29);
}

template <bool Fold>
uint64_t loadWord(const unsigned char* p) {
    uint64_t w;
    std::memcpy(&w, p, 8);
    if (Fold) {
        // Set bit 5 of every byte that is an upper-case ASCII letter.
        uint64_t high = 0x8080808080808080ull;
        uint64_t ge_a = (w | high) - 0x4141414141414141ull;  // byte >= 'A'
        uint64_t gt_z = (w | high) - 0x5B5B5B5B5B5B5B5Bull;  // byte >= 'Z' + 1
        uint64_t upper = ge_a & ~gt_z & ~w & high;           // 'A' <= byte <= 'Z'
        w |= upper >> 2;
    }
    return w;
}

// The exact and the case-folding hash are compiled apart, so that the exact one, the common
// case, needs no registers for the folding masks.
template <bool Fold>
unsigned hashBytes(const unsigned char* p, size_t n) {
    const unsigned char* const end = p + n;
    uint64_t h = 0x243F6A8885A308D3ull ^ n;
    // Sixteen bytes a step: the two words are multiplied apart and folded in together, which
    // halves the chain of dependent multiplications.
    for (; end - p >= 16; p += 16) {
        uint64_t a = loadWord<Fold>(p) * 0x9E3779B97F4A7C15ull;
        uint64_t b = loadWord<Fold>(p + 8) * 0xC2B2AE3D27D4EB4Full;
        h = mix(h, a ^ (b >> 32 | b << 32));
    }
    if (end - p >= 8) {
        h = mix(h, loadWord<Fold>(p));
        p += 8;
    }
    if (const size_t rest = static_cast<size_t>(end - p)) {
        // The last bytes, as the low bytes of a word: one load ending at the end when the text
        // has eight bytes, else byte by byte.
        uint64_t last = 0;
        if (n >= 8) {
            last = loadWord<Fold>(end - 8) >> (8 * (8 - rest));
        } else {
            for (size_t i = 0; i < rest; ++i) {
                unsigned char c = Fold ? foldAscii(p[i]) : p[i];
                last |= static_cast<uint64_t>(c) << (8 * i);
            }
        }
        h = mix(h, last);
    }
    // Every step ends in a multiplication whose high half depends on all the bytes so far.
    return static_cast<unsigned>(h >> 32);
}

[[gnu::noinline]] unsigned hashFolded(const unsigned char* p, size_t n) {
    return hashBytes<true>(p, n);
}

}  // namespace

unsigned RWCString::hash(caseCompare cmp) const {
    const auto* p = reinterpret_cast<const unsigned char*>(p_);
    return cmp == ignoreCase ? hashFolded(p, length()) : hashBytes<false>(p, length());
}

size_t RWCString::index(const char* pat, size_t patLength, size_t start, caseCompare cmp) const {
    size_t len = length();
    if (start > len || patLength > len - start) return RW_NPOS;
    if (cmp == exact) {
        size_t pos = view().find(std::string_view(pat, patLength), start);
        return pos == std::string_view::npos ? RW_NPOS : pos;
    }
    for (size_t i = start; i + patLength <= len; ++i) {
        size_t k = 0;
        while (k < patLength && foldAscii(static_cast<unsigned char>(p_[i + k])) ==
                                    foldAscii(static_cast<unsigned char>(pat[k])))
            ++k;
        if (k == patLength) return i;
    }
    return RW_NPOS;
}

size_t RWCString::index(const RWCRegexp& re, size_t start) const {
    return re.index(*this, nullptr, start);
}

size_t RWCString::index(const RWCRegexp& re, size_t* extent, size_t start) const {
    return re.index(*this, extent, start);
}

size_t RWCString::first(char c) const noexcept {
    const void* hit = std::memchr(p_, static_cast<unsigned char>(c), length());
    return hit ? static_cast<const char*>(hit) - p_ : RW_NPOS;
}

size_t RWCString::last(char c) const noexcept {
    for (size_t i = length(); i-- > 0;)
        if (p_[i] == c) return i;
    return RW_NPOS;
}

void RWCString::toLower() {
    reserveUnique(length());
    for (size_t i = 0; i < length(); ++i)
        p_[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(p_[i])));
}

void RWCString::toUpper() {
    reserveUnique(length());
    for (size_t i = 0; i < length(); ++i)
        p_[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(p_[i])));
}

RWCString operator+(const RWCString& a, const RWCString& b) {
    RWCString r(a);
    return r.append(b);
}

RWCString operator+(const RWCString& a, const char* b) {
    RWCString r(a);
    return r.append(b);
}

RWCString operator+(const char* a, const RWCString& b) {
    RWCString r(a);
    return r.append(b);
}

std::ostream& operator<<(std::ostream& out, const RWCString& s) {
    return out.write(s.data(), static_cast<std::streamsize>(s.length()));
}

void RWCString::saveOn(RWvostream& s) const {
    s.putString(data(), length());
}

void RWCString::saveOn(RWFile& f) const {
    f.WriteString(data(), length());
}

void RWCString::restoreFrom(RWvistream& s) {
    s.getString(*this);
}

void RWCString::restoreFrom(RWFile& f) {
    f.ReadString(*this);
}
