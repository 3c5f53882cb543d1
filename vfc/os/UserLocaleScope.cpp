// The locale switch around opening a file: the C runtime's own interface, the same on every
// platform.
#include <clocale>
#include <cstring>

#include "vfc/os/os.h"

namespace vfc {
namespace os {

UserLocaleScope::UserLocaleScope() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (current && std::strlen(current) < sizeof aSaved) {
        std::strcpy(aSaved, current);
        aRestore = true;
    }
    std::setlocale(LC_CTYPE, "");
}

UserLocaleScope::~UserLocaleScope() {
    if (aRestore) std::setlocale(LC_CTYPE, aSaved);
}

}  // namespace os
}  // namespace vfc
