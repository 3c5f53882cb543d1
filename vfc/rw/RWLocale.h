#ifndef VFC_RW_RWLOCALE_H
#define VFC_RW_RWLOCALE_H

#include "vfc/base/export.h"
#include "vfc/rw/RWCString.h"

/// Number formatting and parsing for the library's text conversions, independent of the C
/// library's locale.
///
/// Only the default locale exists: global() answers a "C"-like locale whose decimal point is always
/// '.', whatever the C library's locale is. It is built on first use, never freed and cannot be
/// copied; it keeps no state, so it may be used from any thread. stringToNum() reports a text that
/// does not start with a number by returning false.
/// \code
/// double d = 0;
/// RWLocale::global().stringToNum("2.5 pages", &d);  // true, d == 2.5
/// RWLocale::global().asString(0.1);                 // "0.1"
/// \endcode
class VFC_API RWLocale {
  public:
    RWLocale(const RWLocale&) = delete;
    RWLocale& operator=(const RWLocale&) = delete;

    static const RWLocale& global();

    // The shortest text that reads back to the same value: "1.5", "0.1", "1e+20", "-0", "inf",
    // "-inf", "nan".
    RWCString asString(double value) const;
    // The number at the start of text, after optional white space: an optional sign, digits with
    // an optional '.' fraction and an optional exponent, or "inf"/"infinity"/"nan" (any case).
    // Trailing text is ignored. A value too large becomes an infinity, one too small a zero of
    // the same sign. False, with *out unchanged, when no number starts the text.
    bool stringToNum(const RWCString& text, double* out) const;

  private:
    RWLocale() = default;
    ~RWLocale() = default;
};

#endif  // VFC_RW_RWLOCALE_H
