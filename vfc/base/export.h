// The export macro of libvfc. Every public class and free function of the library carries VFC_API;
// everything else is hidden (the library is built with hidden visibility).
#ifndef VFC_BASE_EXPORT_H
#define VFC_BASE_EXPORT_H

#if defined(VFC_STATIC)
#define VFC_API
#elif defined(_WIN32)
#if defined(vfc_EXPORTS)
#define VFC_API __declspec(dllexport)
#else
#define VFC_API __declspec(dllimport)
#endif
#else
#define VFC_API __attribute__((visibility("default")))
#endif

#endif  // VFC_BASE_EXPORT_H
