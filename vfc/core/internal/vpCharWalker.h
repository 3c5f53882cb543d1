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

#endif  // VFC_CORE_INTERNAL_VPCHARWALKER_H
