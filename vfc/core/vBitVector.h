#ifndef VFC_CORE_VBITVECTOR_H
#define VFC_CORE_VBITVECTOR_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWBitVec.h"

/// The library's bit vector: a value class on RWBitVec with the library's member names.
///
/// It owns its bits; copies are independent. Bits outside the size read as false; fSetBit and
/// fClearBit answer false for them and change nothing. The other operations always succeed.
class VFC_API vBitVector : public RWBitVec {
  public:
    vBitVector() = default;
    // n bits, each set to value.
    explicit vBitVector(size_t n, bool value = false) : RWBitVec(n, value) {}

    size_t fSize() const { return length(); }
    // Set or clear bit i; false, with nothing changed, when i is not below the size.
    bool fSetBit(size_t i);
    bool fClearBit(size_t i);
    // Whether bit i is set; false out of range.
    bool fTestBit(size_t i) const { return testBit(i); }
    // Sets every bit to value; true.
    bool fSetAll(bool value);
    // Changes the size; new bits are false. True.
    bool fResize(size_t n);
    // The number of set bits.
    size_t fCount() const { return sum(); }
    // Same size and the same bits.
    bool fIsEqual(const vBitVector& other) const { return *this == other; }
};

#endif  // VFC_CORE_VBITVECTOR_H
