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

/// \def VFC_EXTERN_TEMPLATE
/// Declares that the library compiles (and exports) an instantiation of a class template, so
/// that its users do not compile it again: `VFC_EXTERN_TEMPLATE(vTypedList<A, B, 1>)`.
///
/// Users of the Windows DLL see no such declaration and instantiate what they use themselves:
/// the compiler exports no inline member of an explicit instantiation from a DLL, so an importer
/// that relied on the DLL for them would find them missing.
#if defined(_WIN32) && !defined(VFC_STATIC) && !defined(vfc_EXPORTS)
#define VFC_EXTERN_TEMPLATE(...)
#else
#define VFC_EXTERN_TEMPLATE(...) extern template class VFC_API __VA_ARGS__;
#endif

/// \def VFC_TEST_API
/// Exports an internal function for the library's own tests only (a work counter, say). Nothing
/// declared with it is part of the public interface: no public header declares it.
#define VFC_TEST_API VFC_API

#endif  // VFC_BASE_EXPORT_H
