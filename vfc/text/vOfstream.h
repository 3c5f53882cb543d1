#ifndef VFC_TEXT_VOFSTREAM_H
#define VFC_TEXT_VOFSTREAM_H

#include <fstream>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/rw/RWCollectable.h"

/// The library's file writer: a standard output file stream opened from a vFile, in text or
/// binary mode, truncating or appending.
///
/// Writes are cut into chunks of at most 4096 bytes so that a failure stops a large write
/// early, line writes end with vString::EOL(), and fClose reports whether everything reached the
/// file (a full disk shows up at the flush or the close).
///
/// \code
/// vOfstream out;
/// if (out.fOpenText(vFile("index.htm"))) {
///     out.fWriteLine(vString("<html>"));
///     if (!out.fClose()) ...;   // the disk filled up
/// }
/// \endcode
///
/// A binary open of a file whose extension occurs (without regard to case) in the type name of
/// the persistent-object files, "vorlandix" (so ".vor", ".dix", ...), writes at once the
/// stream's own object in the portable object format, so that such a file starts with the
/// persistence header. "xml" files never get it; neither do files without an extension.
///
/// Ownership: the stream owns the file it opened and closes it at the latest when it is
/// destroyed (without reporting anything then; call fClose to learn the outcome). It owns a
/// copy of the vFile it was opened from (fFileInfo). A copy takes the mode and the file
/// description, never the open file or the state.
///
/// Failure: nothing throws. Every operation returns false once the stream has failed, and keeps
/// returning false until the next open clears the state.
class VFC_API vOfstream : public std::basic_ofstream<char>, public RWCollectable {
  public:
    vOfstream();
    // Unopened; takes the other's mode flag and file, not its open file or its state.
    vOfstream(const vOfstream& other);
    vOfstream& operator=(const vOfstream&) = delete;
    ~vOfstream() override;

    // Each open closes a file still open (without reporting on it), clears the state, records
    // the mode and the file, and opens the file's path for writing; a missing file is created.
    // The text forms write line ends as given; nothing is translated on POSIX either way.
    bool fOpenText(const vFile& file);
    bool fOpenTextAppend(const vFile& file);
    // Writes the persistence header for persistent-object extensions (see above).
    bool fOpenBinary(const vFile& file);
    bool fOpenBinaryAppend(const vFile& file);

    // Writes n bytes in chunks of at most 4096; true while the stream is good. Zero bytes (or
    // a null pointer) write nothing and report the stream's health.
    bool fWrite(const char* data, unsigned n);
    // The string's bytes, embedded zero bytes included.
    bool fWrite(const vString& s) { return fWrite(s.data(), static_cast<unsigned>(s.length())); }
    // The bytes, then vString::EOL(); the line end only when the bytes went out.
    bool fWriteLine(const char* data, unsigned n);
    bool fWriteLine(const vString& s) {
        return fWriteLine(s.data(), static_cast<unsigned>(s.length()));
    }
    // Flushes and closes; true when nothing failed, the flush and the close included. Closing a
    // stream without an open file is no failure.
    bool fClose();

    const bool& fBinary() const { return aBinary; }
    const vFile& fFileInfo() const { return aFileInfo; }

    // The collectable side: a new unopened stream, a copy as the copy constructor makes it;
    // nothing of the stream is persisted.
    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    bool open(const vFile& file, std::ios_base::openmode mode, bool binary);
    bool refresh() { return aFailed = fail(); }

    // True once the stream's fail or bad bit was seen; every operation refreshes it.
    bool aFailed = false;
    // True after a binary open.
    bool aBinary = false;
    // A copy of the file last opened.
    vFile aFileInfo;
    // The file buffer's storage, larger than the default so that line-by-line writers reach the
    // system less often; made at the first open and kept for later ones.
    std::unique_ptr<char[]> aBuffer;
};

#endif  // VFC_TEXT_VOFSTREAM_H
