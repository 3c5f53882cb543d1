#ifndef VFC_FILES_VFILEMAP_H
#define VFC_FILES_VFILEMAP_H

#include <cstdint>

#include "vfc/base/export.h"

#if defined(__GNUC__)
#define VFC_PRINTF_FORMAT(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define VFC_PRINTF_FORMAT(fmt, args)
#endif

/// A file (or a block of memory with no file behind it) mapped into the address space, with a
/// cursor.
///
/// Writers fill it by formatted printing at the cursor; when a file mapped for writing is
/// unmapped it is cut back to the cursor, so a file can be mapped much larger than needed
/// (64 MiB when nothing better is known) and still ends with exactly the bytes written.
///
/// \code
/// vFileMap out;
/// if (out.Map("toc.txt", 0, 0)) {        // a new file, 64 MiB of room
///     out.Print(false, "%s\r\n", "Contents");
///     out.Unmap();                       // toc.txt now holds 10 bytes
/// }
/// \endcode
///
/// Ownership: the object owns the view and the open file until Unmap (the destructor unmaps).
/// The pointers that Map, GetOffsetPtr and Print return point into the view and are valid only
/// until the next Map or Unmap. Copies are shallow and not counted: a copy holds the same view
/// and file handle, and the Unmap of each object (its destructor included) releases them again.
/// So copy only an object that maps nothing; two live objects over one mapping would both
/// release it when they go.
///
/// Failure: reported by a null pointer or 0, never by a message or an exception. A failed map
/// leaves the object unmapped with every handle closed.
class VFC_API vFileMap {
  public:
    // Flag bits of Map.
    enum : unsigned {
        kReadOnly = 1,  // map an existing file for reading only
        kGrow = 2,      // with kKeep: map the file's size plus the size asked for
        kMemory = 4,    // no file: memory only, the path naming the mapping
        kKeep = 8       // open an existing file instead of creating it anew
    };

    vFileMap() = default;
    // Shallow: both objects share the view and the file (see above).
    vFileMap(const vFileMap& other) = default;
    vFileMap& operator=(const vFileMap& other) = default;
    virtual ~vFileMap();

    // Maps the file at path and returns the view's base, or null. A mapping still held is
    // unmapped first. The length mapped: the file's size plus length with kGrow|kKeep;
    // otherwise length when it is smaller than the file's size (0: the whole file); otherwise
    // 64 MiB for an empty file, or the file's size. A writable mapping longer than the file
    // lengthens the file first; a read-only one cannot, and fails instead (so an empty file cannot
    // be mapped read-only). Without kKeep (and without kReadOnly) the file is created or truncated.
    char* Map(const char* path, unsigned length, unsigned flags);
    // Unmaps the view and closes everything; a file mapped for writing is cut to the cursor.
    // A memory mapping leaves nothing behind.
    void Unmap();

    // The cursor's offset from the base; 0 when nothing is mapped.
    unsigned GetPos() const;
    // Moves the cursor to pos; 0 (cursor unchanged) when nothing is mapped or pos >= the
    // mapped length, else 1.
    unsigned SetPos(unsigned pos);
    // base + off when something is mapped and off is inside the mapping, else null.
    char* GetOffsetPtr(unsigned off) const;

    // Writes the bytes from the base up to the cursor to a file created (or truncated) at path;
    // 1 on success, 0 when nothing is mapped or the file cannot be made or written. The file is
    // created before anything else is checked, so with nothing mapped it is left empty.
    unsigned SaveAs(const char* path);

    // Formats at the cursor and advances the cursor past the text (the terminating zero is not
    // counted); returns the new cursor, or null when nothing is mapped or formatting fails.
    // In place, the text is formatted straight at the cursor without any bound: the caller
    // guarantees room for the text and its terminating zero. Otherwise the text (at most 4095
    // bytes) is formatted into a local buffer and copied only when it ends strictly before the
    // end of the mapping; else null and the cursor stays.
    char* Print(bool inPlace, const char* format, ...) VFC_PRINTF_FORMAT(3, 4);

  private:
    // Maps length bytes of memory (0: 64 MiB) with no file behind it; a non-empty name names
    // it.
    char* MapMem(const char* name, unsigned length);

    // Length of the mapping in bytes.
    unsigned size = 0;
    // Start of the view; null when nothing is mapped.
    char* base = nullptr;
    // Current position inside the view.
    char* cursor = nullptr;
    // True for a memory mapping with no file behind it.
    bool memoryOnly = false;
    // The open file's handle of the host system, a descriptor or a HANDLE (-1: none).
    std::intptr_t file = -1;
    // Whether a view exists. The mapping object behind it (a Windows file mapping) is closed as
    // soon as its view is made, since the view keeps it alive, so a flag stands where a mapping
    // handle would be kept.
    bool mapping = false;
};

#undef VFC_PRINTF_FORMAT

#endif  // VFC_FILES_VFILEMAP_H
