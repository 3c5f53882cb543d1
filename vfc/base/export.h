#ifndef VFC_BASE_EXPORT_H
#define VFC_BASE_EXPORT_H

/// \def VFC_API
/// The export macro of libvfc: every public class and free function of the library carries it.
///
/// In the shared library it gives the declaration default visibility (on Windows, dllexport while
/// the library itself is built and dllimport for its users); everything without it is hidden, as
/// the library is built with hidden visibility. When VFC_STATIC is defined (the static build
/// defines it for its users too) the macro is empty.

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

/// \def VFC_TEST_API
/// Exports an internal function for the library's own tests only (a work counter, say). Nothing
/// declared with it is part of the public interface: no public header declares it.
#define VFC_TEST_API VFC_API

#endif  // VFC_BASE_EXPORT_H
