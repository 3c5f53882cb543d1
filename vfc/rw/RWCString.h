#ifndef VFC_RW_RWCSTRING_H
#define VFC_RW_RWCSTRING_H

#include <atomic>
#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <string_view>

#include "vfc/base/export.h"

class RWCRegexp;
class RWCSubString;
class RWFile;
class RWvistream;
class RWvostream;

/// The position that means "no position": what a failed search answers, and the start of a null
/// substring.
constexpr size_t RW_NPOS = static_cast<size_t>(-1);

/// The reference-counted byte string of the platform layer.
///
/// Bytes are arbitrary (zeros included); the buffer is always followed by a terminating zero so
/// data() can go to C APIs. Each string owns its bytes as far as the caller can tell: copies share
/// one buffer until either side changes (copy on write, with an atomic count, so copies held by
/// different threads can be used independently), and a change through one string is never seen
/// through another. Once a writable byte reference (non-const operator() or operator[]) has been
/// handed out, the buffer is never shared again, so writes through it reach only this string.
///
/// Lifetimes: data(), view() and a byte reference stay valid until the string is next changed or
/// destroyed; an RWCSubString refers to the string and must not outlive it.
///
/// Nothing here throws: positions out of range are answered with the zero byte, the no-position
/// value RW_NPOS or a null substring (RWCSubString::isNull()), as each function says, and
/// insert(), remove() and replace() clamp their positions to the string. When memory cannot be
/// allocated the process aborts.
class VFC_API RWCString {
  public:
    // How comparisons, searches and hashes treat letters: exact compares bytes as they are,
    // ignoreCase folds only the ASCII letters A-Z to a-z, so it never depends on the C locale.
    enum caseCompare { exact, ignoreCase };

    RWCString() noexcept : p_(emptyChars()) {}
    RWCString(const char* s);  // up to the terminating zero; null is the empty string
    RWCString(const char* s, size_t n);
    RWCString(char c, size_t n);  // n copies of c
    RWCString(const RWCSubString& sub);
    explicit RWCString(std::string_view s) : RWCString(s.data(), s.size()) {}
    // Copies share the buffer: inline, since copies are the commonest thing done to a string.
    RWCString(const RWCString& other) noexcept : p_(other.p_) {
        Rep* r = rep();
        if (r == &empty_.rep) return;
        if (r->leaked) {
            copyLeaked(other);
            return;
        }
        r->refs.fetch_add(1, std::memory_order_relaxed);
    }
    RWCString(RWCString&& other) noexcept : p_(other.p_) { other.p_ = emptyChars(); }
    ~RWCString() { release(); }

    RWCString& operator=(const RWCString& other) noexcept;
    RWCString& operator=(RWCString&& other) noexcept;
    RWCString& operator=(const char* s);

    size_t length() const noexcept { return rep()->len; }
    bool isNull() const noexcept { return rep()->len == 0; }
    // The bytes, followed by a zero byte.
    const char* data() const noexcept { return p_; }
    std::string_view view() const noexcept { return {p_, rep()->len}; }
    size_t capacity() const noexcept { return rep()->cap; }
    // Makes room for n bytes in all, so that appends up to that length do not reallocate.
    void reserve(size_t n) {
        if (n > length()) reserveUnique(n);
    }
    // Gives op(char* p, size_t n) an unshared buffer of n writable bytes, which start with the
    // current text (as far as it reaches); op writes the new text and returns its length (at
    // most n), which becomes the string's length. For building a string in one pass.
    template <class Op>
    void resizeAndOverwrite(size_t n, Op op) {
        if (!hasCapacity(n)) reserveUnique(n);
        size_t len = op(p_, n);
        p_[len] = '\0';
        rep()->len = len;
    }

    // The byte at i. Past the end the const form gives 0 and the other form a scratch byte that
    // reads 0, so a bad index never touches memory outside the string.
    char operator()(size_t i) const noexcept { return i < length() ? p_[i] : '\0'; }
    char& operator()(size_t i);
    char operator[](size_t i) const noexcept { return (*this)(i); }
    char& operator[](size_t i) { return (*this)(i); }

    // A view of [start, start + len); the null substring when the range does not fit.
    RWCSubString operator()(size_t start, size_t len);
    const RWCSubString operator()(size_t start, size_t len) const;
    // The first match of re at or after start; the null substring when there is none.
    RWCSubString operator()(const RWCRegexp& re, size_t start = 0);
    const RWCSubString operator()(const RWCRegexp& re, size_t start = 0) const;

    RWCString& append(const char* s) { return append(s, s ? std::strlen(s) : 0); }
    // Appends in place when the buffer is unshared and has room (the common case when a string
    // is built piece by piece); the source may lie in this string, as it cannot overlap the end.
    RWCString& append(const char* s, size_t n) {
        if (n > 0 && hasRoomFor(n)) {
            std::memcpy(p_ + rep()->len, s, n);
            setLength(rep()->len + n);
            return *this;
        }
        return replace(length(), 0, s, n);
    }
    RWCString& append(const RWCString& s) { return append(s.data(), s.length()); }
    RWCString& append(char c, size_t n = 1) {
        if (n == 1 && hasRoomFor(1)) {
            p_[rep()->len] = c;
            setLength(rep()->len + 1);
            return *this;
        }
        return appendRepeated(c, n);
    }
    RWCString& operator+=(const char* s) { return append(s); }
    RWCString& operator+=(const RWCString& s) { return append(s); }
    RWCString& operator+=(char c) { return append(c, 1); }

    RWCString& prepend(const char* s) { return prepend(s, s ? std::strlen(s) : 0); }
    RWCString& prepend(const char* s, size_t n) { return replace(0, 0, s, n); }
    RWCString& prepend(const RWCString& s) { return prepend(s.data(), s.length()); }

    // Positions past the end are clamped to the end.
    RWCString& insert(size_t pos, const char* s) { return replace(pos, 0, s); }
    RWCString& insert(size_t pos, const char* s, size_t n) { return replace(pos, 0, s, n); }
    RWCString& insert(size_t pos, const RWCString& s) { return replace(pos, 0, s); }

    // Removes from pos to the end, or n bytes from pos; out-of-range parts are ignored.
    RWCString& remove(size_t pos) { return replace(pos, RW_NPOS, "", 0); }
    RWCString& remove(size_t pos, size_t n) { return replace(pos, n, "", 0); }

    // Replaces n bytes at pos (clamped to the string) with the given text. The text may lie
    // inside this string.
    RWCString& replace(size_t pos, size_t n, const char* s) {
        return replace(pos, n, s, s ? std::strlen(s) : 0);
    }
    RWCString& replace(size_t pos, size_t n, const RWCString& s) {
        return replace(pos, n, s.data(), s.length());
    }
    RWCString& replace(size_t pos, size_t n, const char* s, size_t sn);

    // Negative, zero or positive, bytes compared as unsigned; ignoreCase folds ASCII letters
    // only, so the result never depends on the C locale.
    int compareTo(const char* s, caseCompare cmp = exact) const {
        return compareViews(view(), std::string_view(s ? s : ""), cmp);
    }
    int compareTo(const RWCString& s, caseCompare cmp = exact) const {
        return compareViews(view(), s.view(), cmp);
    }
    unsigned hash(caseCompare cmp = exact) const;

    // The string as one string item of a persistent stream; restoreFrom leaves the string
    // unchanged when the item is malformed (the stream then reports the failure).
    void saveOn(RWvostream& s) const;
    void saveOn(RWFile& f) const;
    void restoreFrom(RWvistream& s);
    void restoreFrom(RWFile& f);

    // Position of the first occurrence of pat at or after start, or RW_NPOS.
    size_t index(const char* pat, size_t start = 0, caseCompare cmp = exact) const {
        return index(pat, pat ? std::strlen(pat) : 0, start, cmp);
    }
    size_t index(const RWCString& pat, size_t start = 0, caseCompare cmp = exact) const {
        return index(pat.data(), pat.length(), start, cmp);
    }
    size_t index(const char* pat, size_t patLength, size_t start, caseCompare cmp) const;
    // Leftmost-longest match of re at or after start, or RW_NPOS; *extent gets its length. The
    // extent form has no default start, so that index(re, 0) is the first form, not a null extent.
    size_t index(const RWCRegexp& re, size_t start = 0) const;
    size_t index(const RWCRegexp& re, size_t* extent, size_t start) const;

    bool contains(const char* pat, caseCompare cmp = exact) const {
        return index(pat, 0, cmp) != RW_NPOS;
    }
    bool contains(const RWCString& pat, caseCompare cmp = exact) const {
        return index(pat, 0, cmp) != RW_NPOS;
    }
    // Position of the first (last) byte c, or RW_NPOS.
    size_t first(char c) const noexcept;
    size_t last(char c) const noexcept;

    // Case mapping of every byte through the C library's tolower/toupper in the current locale.
    void toLower();
    void toUpper();

  protected:
    // The bytes, writable and no longer shared, for subclasses that rewrite them in place and do
    // not hand the pointer out.
    char* uniqueData() {
        reserveUnique(length());
        return p_;
    }
    // Cuts the text down to its n bytes at pos (pos + n <= length()): moved to the front of an
    // unshared buffer, or copied alone into a buffer of their own when the buffer is shared.
    void keepOnly(size_t pos, size_t n);

  private:
    static int compareViews(std::string_view a, std::string_view b, caseCompare cmp) {
        if (cmp != exact) return compareFolded(a, b);
        int c = a.compare(b);
        return (c > 0) - (c < 0);
    }
    static int compareFolded(std::string_view a, std::string_view b);

    struct Rep {
        std::atomic<int> refs;
        // Set once a writable reference to a byte was handed out: the buffer is then never
        // shared again, so writes through that reference cannot reach a copy.
        bool leaked;
        size_t len;
        size_t cap;
    };
    struct EmptyStorage {
        Rep rep;
        char zero[8];
    };
    static EmptyStorage empty_;

    static char* emptyChars() noexcept { return reinterpret_cast<char*>(&empty_.rep + 1); }
    Rep* rep() const noexcept { return reinterpret_cast<Rep*>(p_) - 1; }
    static char* allocate(size_t cap);
    // Drops this string's reference; the last one frees the buffer. The only owner frees
    // without the atomic decrement: nobody else can reach the buffer to take a new reference.
    void release() noexcept {
        Rep* r = rep();
        if (r == &empty_.rep) return;
        if (r->refs.load(std::memory_order_acquire) == 1 ||
            r->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
            freeRep(r);
    }
    static void freeRep(Rep* r) noexcept;
    // A copy of a buffer that handed out a writable byte gets a buffer of its own.
    void copyLeaked(const RWCString& other);
    // Makes the buffer unshared with room for cap bytes, keeping as much of the text as fits.
    void reserveUnique(size_t cap);
    // Unshared with a buffer of at least n bytes.
    bool hasCapacity(size_t n) const noexcept {
        const Rep* r = rep();
        return r != &empty_.rep && n <= r->cap && r->refs.load(std::memory_order_acquire) == 1;
    }
    bool hasRoomFor(size_t n) const noexcept {
        const Rep* r = rep();
        return r != &empty_.rep && r->len + n <= r->cap &&
               r->refs.load(std::memory_order_acquire) == 1;
    }
    void setLength(size_t n) noexcept {
        p_[n] = '\0';
        rep()->len = n;
    }
    RWCString& appendRepeated(char c, size_t n);

    char* p_;  // the bytes; the Rep header stands right before them
};

/// A new string: the bytes of a followed by those of b (a null C string counts as empty).
VFC_API RWCString operator+(const RWCString& a, const RWCString& b);
/// As above, with a C string operand (null counts as empty).
VFC_API RWCString operator+(const RWCString& a, const char* b);
/// As above, with a C string operand (null counts as empty).
VFC_API RWCString operator+(const char* a, const RWCString& b);

/// Equal when the lengths and all bytes agree; a C string is compared up to its terminating zero
/// and a null one counts as empty.
inline bool operator==(const RWCString& a, const RWCString& b) noexcept {
    return a.length() == b.length() && std::memcmp(a.data(), b.data(), a.length()) == 0;
}
/// As above, against a C string.
inline bool operator==(const RWCString& a, const char* b) noexcept {
    return a.view() == std::string_view(b ? b : "");
}
/// As above, against a C string.
inline bool operator==(const char* a, const RWCString& b) noexcept {
    return b == a;
}
/// Not equal; see operator==.
inline bool operator!=(const RWCString& a, const RWCString& b) noexcept {
    return !(a == b);
}
/// As above, against a C string.
inline bool operator!=(const RWCString& a, const char* b) noexcept {
    return !(a == b);
}
/// As above, against a C string.
inline bool operator!=(const char* a, const RWCString& b) noexcept {
    return !(b == a);
}
/// Orders as compareTo() with exact comparison: bytes as unsigned, a prefix before the longer
/// string.
inline bool operator<(const RWCString& a, const RWCString& b) {
    return a.compareTo(b) < 0;
}
/// Orders as operator< does.
inline bool operator>(const RWCString& a, const RWCString& b) {
    return a.compareTo(b) > 0;
}
/// Orders as operator< does.
inline bool operator<=(const RWCString& a, const RWCString& b) {
    return a.compareTo(b) <= 0;
}
/// Orders as operator< does.
inline bool operator>=(const RWCString& a, const RWCString& b) {
    return a.compareTo(b) >= 0;
}

/// Writes the bytes to out as they are, zeros included; out reports failures in its own state.
VFC_API std::ostream& operator<<(std::ostream& out, const RWCString& s);

#endif  // VFC_RW_RWCSTRING_H
