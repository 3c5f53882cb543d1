#include "vfc/core/vSubString.h"

#include "vfc/core/vString.h"

vSubString::vSubString(const vString& s, size_t start, size_t extent)
    : RWCSubString(s, start, extent) {}

vSubString::~vSubString() = default;

vSubString& vSubString::operator=(const char* s) {
    RWCSubString::operator=(s);
    return *this;
}

vSubString& vSubString::operator=(const vString& s) {
    RWCSubString::operator=(static_cast<const RWCString&>(s));
    return *this;
}

vSubString& vSubString::operator=(const vSubString& s) {
    RWCSubString::operator=(static_cast<const RWCSubString&>(s));
    return *this;
}
