#include "vfc/rw/RWCSubString.h"

#include <cstring>
#include <ostream>

void RWCSubString::assign(const char* s, size_t n) {
    if (isNull()) return;
    str_->replace(begin_, extent_, s, n);
    extent_ = n;
}

RWCSubString& RWCSubString::operator=(const char* s) {
    assign(s ? s : "", s ? std::strlen(s) : 0);
    return *this;
}

RWCSubString& RWCSubString::operator=(const RWCString& s) {
    assign(s.data(), s.length());
    return *this;
}

RWCSubString& RWCSubString::operator=(const RWCSubString& s) {
    // The source may view the very string being edited; replace() copes with that.
    assign(s.data(), s.length());
    return *this;
}

std::ostream& operator<<(std::ostream& out, const RWCSubString& s) {
    return out.write(s.data(), static_cast<std::streamsize>(s.length()));
}
