#ifndef VFC_CORE_VINT_H
#define VFC_CORE_VINT_H

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/rw/RWInteger.h"

class vString;

/// A 32-bit integer that is a collectable value, so it can live in the library's collections and
/// persistent streams.
///
/// It is also the position type of vSlist and of the typed lists and vectors. Arithmetic wraps on
/// overflow; order, hash and equality follow the value. It owns its value; copies are independent.
///
/// Failure: the conversions from text never fail visibly: text that does not start with a number
/// (after white space) gives 0, and numbers beyond the range of int are clamped to it. restoreGuts
/// leaves the value unchanged when the item cannot be read; the stream or file then reports the
/// failure.
class VFC_API vInt : public RWCollectable, public RWInteger {
  public:
    vInt() = default;
    vInt(int value) : RWInteger(value) {}
    vInt(const vInt& other) = default;
    // The value of strtol(text, 0, base), limited to the range of int.
    vInt(const vString& text, int base);
    ~vInt() override;

    vInt& operator=(int value);
    vInt& operator=(const vInt& other);
    // The value of strtol(text, 0, 0): the base follows the text's prefix ("0x" hexadecimal, a
    // leading "0" octal, else decimal), limited to the range of int.
    vInt& operator=(const vString& text);

    vInt& operator+=(int n);
    vInt& operator+=(const vInt& n) { return *this += n.value(); }
    vInt& operator-=(int n);
    vInt& operator-=(const vInt& n) { return *this -= n.value(); }

    // Equality through isEqual.
    bool operator==(int n) const;
    bool operator==(const vInt& other) const;

    // out becomes the value in decimal, or in lower-case hexadecimal without prefix (a negative
    // value shows its 32-bit two's complement); returns out.
    vString& fAsString(vString& out, bool hex = false) const;

    // compareTo is this value minus the other's as a 32-bit subtraction (it wraps for values far
    // apart), and -1 for a null pointer or an object that is not a vInt; hash is the value;
    // isEqual needs the same class and value.
    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    // Persisted as one integer item.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;
};

#endif  // VFC_CORE_VINT_H
