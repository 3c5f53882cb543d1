#include "vfc/rw/RWWString.h"

#include <climits>
#include <cwchar>

RWCString RWWString::toMultiByte() const {
    RWCString out;
    std::mbstate_t state{};
    char buffer[MB_LEN_MAX];
    for (wchar_t c : text_) {
        size_t n = std::wcrtomb(buffer, c, &state);
        if (n == static_cast<size_t>(-1)) {
            out.append('?');
            state = std::mbstate_t{};
        } else {
            out.append(buffer, n);
        }
    }
    return out;
}
