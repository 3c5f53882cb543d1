#ifndef VFC_RW_RWBITVEC_H
#define VFC_RW_RWBITVEC_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vfc/base/export.h"

class RWFile;
class RWvistream;
class RWvostream;

/// A vector of bits of a given length, all false at first.
///
/// Bits outside the length read as false and cannot be set. The vector owns its bits; copies are
/// independent. Equal vectors (same length, same bits) have the same hash().
///
/// The persistent form is the length as an unsigned integer item, then the bits packed into bytes
/// (bit i in byte i / 8, at bit i % 8) as one string item. restoreFrom() accepts the data only
/// when the byte string has the size the length calls for; on malformed data the stream fails (an
/// RWvistream gets fail and bad, an RWFile stops being good()) and the vector is left as it was.
/// Check the stream's state after restoring.
class VFC_API RWBitVec {
  public:
    RWBitVec() = default;
    // n bits, each set to value.
    explicit RWBitVec(size_t n, bool value = false);

    size_t length() const { return length_; }
    // Set, clear or test bit i; out of range setBit and clearBit do nothing and testBit is false.
    void setBit(size_t i) {
        if (i < length_) words_[i / 64] |= bitOf(i);
    }
    void clearBit(size_t i) {
        if (i < length_) words_[i / 64] &= ~bitOf(i);
    }
    bool testBit(size_t i) const { return i < length_ && (words_[i / 64] & bitOf(i)) != 0; }
    bool operator[](size_t i) const { return testBit(i); }
    // Sets every bit to value.
    void setAll(bool value);
    // Changes the length; bits that come in are false, bits beyond the new length are dropped.
    void resize(size_t n);
    // The number of bits that are set.
    size_t sum() const;
    unsigned hash() const;

    // Equal when the lengths and all bits agree.
    bool operator==(const RWBitVec& other) const {
        return length_ == other.length_ && words_ == other.words_;
    }
    bool operator!=(const RWBitVec& other) const { return !(*this == other); }

    void saveOn(RWvostream& s) const;
    void saveOn(RWFile& f) const;
    // On malformed data the stream fails and the vector is left as it was.
    void restoreFrom(RWvistream& s);
    void restoreFrom(RWFile& f);

  private:
    static uint64_t bitOf(size_t i) { return uint64_t{1} << (i % 64); }
    // Zeroes the bits of the last word beyond the length, so that equality can compare words.
    void trimTail();
    std::vector<unsigned char> packed() const;
    bool unpack(size_t n, const char* bytes, size_t byteCount);

    std::vector<uint64_t> words_;
    size_t length_ = 0;
};

#endif  // VFC_RW_RWBITVEC_H
