#include "vfc/rw/RWLocale.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// For a number that does not fit a double: whether its magnitude is huge (rather than tiny).
// Estimates the decimal exponent from the position of the first significant digit and the
// written exponent; only its sign matters.
bool overflows(const char* p, const char* end) {
    long long position = 0;  // the power of ten of the first significant digit
    bool found = false;
    bool afterPoint = false;
    long long intDigits = 0;
    long long leadingFractionZeros = 0;
    for (; p < end && (isDigit(*p) || *p == '.'); ++p) {
        if (*p == '.') {
            afterPoint = true;
        } else if (!found) {
            if (*p != '0') {
                found = true;
                if (!afterPoint) intDigits = 1;
            } else if (afterPoint) {
                ++leadingFractionZeros;
            }
        } else if (!afterPoint) {
            ++intDigits;
        }
    }
    if (!found) return false;  // all zeros: never out of range, but answer "tiny"
    position = intDigits > 0 ? intDigits - 1 : -(leadingFractionZeros + 1);
    if (p < end && (*p == 'e' || *p == 'E')) {
        ++p;
        bool negative = p < end && *p == '-';
        if (p < end && (*p == '-' || *p == '+')) ++p;
        long long exponent = 0;
        for (; p < end && isDigit(*p); ++p)
            if (exponent < 1000000000LL) exponent = exponent * 10 + (*p - '0');
        position += negative ? -exponent : exponent;
    }
    return position >= 0;
}

}  // namespace

const RWLocale& RWLocale::global() {
    // Never freed, like every object of the library built on first use.
    static const RWLocale* const locale = new RWLocale;
    return *locale;
}

RWCString RWLocale::asString(double value) const {
    char buffer[64];
    std::to_chars_result r = std::to_chars(buffer, buffer + sizeof buffer, value);
    return RWCString(buffer, static_cast<size_t>(r.ptr - buffer));
}

bool RWLocale::stringToNum(const RWCString& text, double* out) const {
    const char* p = text.data();
    const char* end = p + text.length();
    while (p < end && isSpace(*p))
        ++p;
    bool negative = false;
    if (p < end && (*p == '+' || *p == '-')) {
        negative = *p == '-';
        ++p;
    }
    // from_chars takes no '+', and a '-' after our own sign would be a second sign.
    if (p < end && (*p == '+' || *p == '-')) return false;
    double value = 0;
    std::from_chars_result r = std::from_chars(p, end, value, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range) {
        value = overflows(p, r.ptr) ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (r.ec != std::errc()) {
        return false;
    }
    if (out) *out = negative ? -value : value;
    return true;
}
