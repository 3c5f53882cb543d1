#include "vfc/core/vBitVector.h"

bool vBitVector::fSetBit(size_t i) {
    if (i >= length()) return false;
    setBit(i);
    return true;
}

bool vBitVector::fClearBit(size_t i) {
    if (i >= length()) return false;
    clearBit(i);
    return true;
}

bool vBitVector::fSetAll(bool value) {
    setAll(value);
    return true;
}

bool vBitVector::fResize(size_t n) {
    resize(n);
    return true;
}
