// For tests that read back what a text-mode stream wrote: the C runtime of Windows writes every
// line feed of a text-mode stream as carriage return and line feed; POSIX writes bytes as they
// are.
#ifndef VFC_TESTING_TEXTMODE_H
#define VFC_TESTING_TEXTMODE_H

#include <string>

#include "vfc/os/platform.h"

namespace vfc {
namespace testing {

// The bytes a text-mode write of text leaves in the file on this platform.
inline std::string InTextMode(const std::string& text) {
    if (!vfc::os::kWindows) return text;
    std::string bytes;
    for (char c : text) {
        if (c == '\n') bytes += '\r';
        bytes += c;
    }
    return bytes;
}

}  // namespace testing
}  // namespace vfc

#endif  // VFC_TESTING_TEXTMODE_H
