#ifndef VFC_RW_RWCSUBSTRING_H
#define VFC_RW_RWCSUBSTRING_H

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "vfc/base/export.h"
#include "vfc/rw/RWCString.h"

/// A writable view of a range of an RWCString, as RWCString::operator()(start, len) and the
/// regular-expression lookups return it.
///
/// Assigning to it replaces that range in the string, which may grow or shrink; assigning ""
/// deletes the range. The view owns nothing: it refers to its string, and is valid only while the
/// string lives and is not resized through other paths. A view of a const string must not be
/// assigned to, not even through a copy of it.
///
/// Failure: a lookup that finds nothing, or a range that does not fit, yields the null substring
/// (isNull(): start RW_NPOS, length 0); assigning to it changes nothing.
class VFC_API RWCSubString {
  public:
    RWCSubString(const RWCSubString&) = default;

    RWCSubString& operator=(const char* s);
    RWCSubString& operator=(const RWCString& s);
    RWCSubString& operator=(const RWCSubString& s);

    size_t start() const noexcept { return begin_; }
    size_t length() const noexcept { return extent_; }
    bool isNull() const noexcept { return begin_ == RW_NPOS; }
    // The viewed bytes (not zero-terminated); "" for the null substring.
    const char* data() const noexcept { return isNull() ? "" : str_->data() + begin_; }
    std::string_view view() const noexcept { return {data(), extent_}; }

    // The byte at i of the view; 0 past its end.
    char operator()(size_t i) const noexcept { return i < extent_ ? data()[i] : '\0'; }

  protected:
    RWCSubString(const RWCString& s, size_t start, size_t len)
        : str_(const_cast<RWCString*>(&s)), begin_(start), extent_(len) {}

  private:
    friend class RWCString;
    void assign(const char* s, size_t n);

    RWCString* str_;
    size_t begin_;
    size_t extent_;
};

/// Equal when the viewed bytes and the other text agree in length and content (a null C string,
/// like the null substring, counts as empty).
inline bool operator==(const RWCSubString& a, const char* b) noexcept {
    return a.view() == std::string_view(b ? b : "");
}
/// As above, against an RWCString.
inline bool operator==(const RWCSubString& a, const RWCString& b) noexcept {
    return a.view() == b.view();
}
/// Not equal; see operator==.
inline bool operator!=(const RWCSubString& a, const char* b) noexcept {
    return !(a == b);
}
/// As above, against an RWCString.
inline bool operator!=(const RWCSubString& a, const RWCString& b) noexcept {
    return !(a == b);
}

/// Writes the viewed bytes to out (nothing for the null substring).
VFC_API std::ostream& operator<<(std::ostream& out, const RWCSubString& s);

#endif  // VFC_RW_RWCSUBSTRING_H
