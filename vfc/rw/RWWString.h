#ifndef VFC_RW_RWWSTRING_H
#define VFC_RW_RWWSTRING_H

#include <cstddef>
#include <string>

#include "vfc/base/export.h"
#include "vfc/rw/RWCString.h"

/// A wide-character string, kept only so that wide text can be turned into the library's byte
/// strings.
///
/// It owns its characters; copies are independent. toMultiByte() does not fail: what the current
/// C locale cannot encode becomes "?".
class VFC_API RWWString {
  public:
    RWWString() = default;
    RWWString(const wchar_t* s) : text_(s ? s : L"") {}
    RWWString(const wchar_t* s, size_t n) : text_(s, n) {}

    size_t length() const noexcept { return text_.size(); }
    const wchar_t* data() const noexcept { return text_.c_str(); }

    // The multi-byte form in the current C locale. A character that the locale cannot encode
    // becomes "?"; in the C locale only the 7-bit range can be encoded.
    RWCString toMultiByte() const;

  private:
    std::wstring text_;
};

#endif  // VFC_RW_RWWSTRING_H
