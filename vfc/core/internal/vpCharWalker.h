// vpCharWalker: steps through a byte string one character of the process locale at a time.
// In a locale whose characters are all one byte (the C locale among them) every byte is one
// character. Otherwise a byte below 0x80 is one character, and a longer one is measured with
// mbrlen; a byte that does not start a valid character counts as one byte of its own.
#ifndef VFC_CORE_INTERNAL_VPCHARWALKER_H
#define VFC_CORE_INTERNAL_VPCHARWALKER_H

#include <cstddef>
#include <cstdlib>
#include <cwchar>

class vpCharWalker {
  public:
    vpCharWalker() : singleByte_(MB_CUR_MAX == 1) {}

    bool singleByte() const { return singleByte_; }

    // Bytes in the character at p, where n > 0 bytes remain; 0 when that character is a lone
    // byte that the locale does not accept (it is then to be taken as one byte, unchanged).
    size_t length(const char* p, size_t n) {
        if (singleByte_ || static_cast<unsigned char>(*p) < 0x80) return 1;
        size_t len = std::mbrlen(p, n, &state_);
        if (len == 0 || len > n) {  // NUL, invalid (-1) or incomplete (-2)
            state_ = std::mbstate_t{};
            return 0;
        }
        return len;
    }

  private:
    bool singleByte_;
    std::mbstate_t state_{};
};

// Calls visit(i) with the position i of every one-byte character of the n bytes at p, in order.
// Longer characters, and bytes that start no character, are passed over.
template <class Visit>
void vpcForEachSingleByteChar(const char* p, size_t n, Visit visit) {
    vpCharWalker walker;
    if (walker.singleByte()) {
        for (size_t i = 0; i < n; ++i)
            visit(i);
        return;
    }
    for (size_t i = 0; i < n;) {
        size_t len = walker.length(p + i, n - i);
        if (len == 1) visit(i);
        i += len ? len : 1;
    }
}

#endif  // VFC_CORE_INTERNAL_VPCHARWALKER_H
