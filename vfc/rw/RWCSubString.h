// RWCSubString: a writable view of a range of an RWCString. Assigning to it replaces that range in
// the string, which may grow or shrink; assigning "" deletes the range. A view is valid only while
// its string lives and is not resized through other paths. The null substring (start RW_NPOS,
// length 0) is what failed lookups return; assigning to it changes nothing.
#ifndef VFC_RW_RWCSUBSTRING_H
#define VFC_RW_RWCSUBSTRING_H

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "vfc/base/export.h"
#include "vfc/rw/RWCString.h"

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

inline bool operator==(const RWCSubString& a, const char* b) noexcept {
    return a.view() == std::string_view(b ? b : "");
}
inline bool operator==(const RWCSubString& a, const RWCString& b) noexcept {
    return a.view() == b.view();
}
inline bool operator!=(const RWCSubString& a, const char* b) noexcept {
    return !(a == b);
}
inline bool operator!=(const RWCSubString& a, const RWCString& b) noexcept {
    return !(a == b);
}

// Writes the viewed bytes.
VFC_API std::ostream& operator<<(std::ostream& out, const RWCSubString& s);

#endif  // VFC_RW_RWCSUBSTRING_H
