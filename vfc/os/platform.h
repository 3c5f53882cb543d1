// What the library's documented behaviour needs to know about the platform it was built for,
// decided here once at compile time. It is public (vPathType's host notation depends on it),
// but holds constants only; every call into the system stays behind os.h.
#ifndef VFC_OS_PLATFORM_H
#define VFC_OS_PLATFORM_H

namespace vfc {
namespace os {

#if defined(_WIN32)
// Windows: DOS paths, ";" between PATH entries, the registry and the shell's folders.
constexpr bool kWindows = true;
// The member of each notation family that the host notation stands for (1: DOS).
constexpr int kHostPathMember = 1;
constexpr char kPathListSeparator = ';';
// The separator the host writes between names, and the characters it accepts as one.
constexpr char kNativeSeparator = '\\';
constexpr const char* kPathSeparators = "/\\";
#else
constexpr bool kWindows = false;
// 3: UNIX.
constexpr int kHostPathMember = 3;
constexpr char kPathListSeparator = ':';
constexpr char kNativeSeparator = '/';
constexpr const char* kPathSeparators = "/";
#endif

// True for a character the host takes as a separator between names.
constexpr bool IsPathSeparator(char c) {
    return c == '/' || (kWindows && c == '\\');
}

}  // namespace os
}  // namespace vfc

#endif  // VFC_OS_PLATFORM_H
