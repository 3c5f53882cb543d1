#include "vfc/rw/RWBitVec.h"

#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

namespace {

size_t wordsFor(size_t n) {
    return (n + 63) / 64;
}

}  // namespace

RWBitVec::RWBitVec(size_t n, bool value) : words_(wordsFor(n)), length_(n) {
    setAll(value);
}

void RWBitVec::setAll(bool value) {
    for (uint64_t& w : words_)
        w = value ? ~uint64_t{0} : 0;
    trimTail();
}

void RWBitVec::resize(size_t n) {
    words_.resize(wordsFor(n), 0);
    length_ = n;
    trimTail();
}

void RWBitVec::trimTail() {
    if (length_ % 64 != 0) words_.back() &= (uint64_t{1} << (length_ % 64)) - 1;
}

size_t RWBitVec::sum() const {
    size_t count = 0;
    for (uint64_t w : words_)
        count += static_cast<size_t>(__builtin_popcountll(w));
    return count;
}

unsigned RWBitVec::hash() const {
    uint64_t h = 0x243F6A8885A308D3ull ^ length_;
    for (uint64_t w : words_) {
        h ^= w;
        h *= 0x9E3779B97F4A7C15ull;
        h ^= h >> 29;
    }
    return static_cast<unsigned>(h >> 32);
}

std::vector<unsigned char> RWBitVec::packed() const {
    // Never empty, so that data() is a valid pointer; the caller writes (length + 7) / 8 bytes.
    std::vector<unsigned char> bytes((length_ + 7) / 8 + 1);
    for (size_t b = 0; b + 1 < bytes.size(); ++b)
        bytes[b] = static_cast<unsigned char>(words_[b / 8] >> (8 * (b % 8)));
    return bytes;
}

bool RWBitVec::unpack(size_t n, const char* bytes, size_t byteCount) {
    if (byteCount != (n + 7) / 8) return false;
    std::vector<uint64_t> words(wordsFor(n), 0);
    for (size_t b = 0; b < byteCount; ++b)
        words[b / 8] |= uint64_t{static_cast<unsigned char>(bytes[b])} << (8 * (b % 8));
    words_.swap(words);
    length_ = n;
    trimTail();
    return true;
}

// The length is written as an unsigned integer, not as a collection count: a count is checked
// against the bytes left in the stream, and n bits take only n / 8 bytes. The reader trusts the
// length only when the byte string that follows has the matching size.
void RWBitVec::saveOn(RWvostream& s) const {
    std::vector<unsigned char> bytes = packed();
    s << static_cast<unsigned>(length_);
    s.putString(reinterpret_cast<const char*>(bytes.data()), bytes.size() - 1);
}

void RWBitVec::saveOn(RWFile& f) const {
    std::vector<unsigned char> bytes = packed();
    f.Write(static_cast<unsigned>(length_));
    f.WriteString(reinterpret_cast<const char*>(bytes.data()), bytes.size() - 1);
}

void RWBitVec::restoreFrom(RWvistream& s) {
    unsigned n = 0;
    RWCString bytes;
    s >> n;
    s.getString(bytes);
    if (!s.good()) return;
    if (!unpack(n, bytes.data(), bytes.length())) s.setstate(RWvios::failbit | RWvios::badbit);
}

void RWBitVec::restoreFrom(RWFile& f) {
    unsigned n = 0;
    RWCString bytes;
    if (!f.Read(n) || !f.ReadString(bytes)) return;
    if (!unpack(n, bytes.data(), bytes.length())) f.setFailed();
}
