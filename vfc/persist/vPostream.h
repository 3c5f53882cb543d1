#ifndef VFC_PERSIST_VPOSTREAM_H
#define VFC_PERSIST_VPOSTREAM_H

#include <ostream>
#include <streambuf>

#include "vfc/base/export.h"
#include "vfc/rw/RWpostream.h"

class vDate;
class vFile;
class vInt;
class vPathComponent;
class vString;
class vTime;

/// The library's portable object output stream: the portable text format of RWpostream, nothing
/// added, plus operators that frame an object for it.
///
/// Each operator writes the class identifier, then the object's state, with a back reference for
/// an object written twice in one operation. A vFile is the exception: it is written as its
/// state alone and read back into a known vFile. vPistream reads what this writes.
///
/// Ownership: the stream writes into a stream buffer it borrows (the one given, or os.rdbuf());
/// that buffer must outlive the stream. The objects written are only read.
///
/// Failure: nothing throws. A buffer that refuses bytes sets fail() and bad(), and a null buffer
/// leaves the stream failed from the start; check good() when the output matters.
class VFC_API vPostream : public RWpostream {
  public:
    explicit vPostream(std::streambuf* sb) : RWpostream(sb) {}
    // Writes into os's stream buffer.
    explicit vPostream(std::ostream& os) : RWpostream(os) {}
    ~vPostream() override;
};

/// Writes x framed by its class identifier (see vPostream).
VFC_API vPostream& operator<<(vPostream& out, const vString& x);
/// Writes x framed by its class identifier.
VFC_API vPostream& operator<<(vPostream& out, const vInt& x);
/// Writes x framed by its class identifier.
VFC_API vPostream& operator<<(vPostream& out, const vPathComponent& x);
/// Writes x framed by its class identifier.
VFC_API vPostream& operator<<(vPostream& out, const vDate& x);
/// Writes x framed by its class identifier.
VFC_API vPostream& operator<<(vPostream& out, const vTime& x);
/// Writes the file's state alone (path and type name), without the class identifier; read it
/// back with the matching vPistream operator.
VFC_API vPostream& operator<<(vPostream& out, const vFile& x);

#endif  // VFC_PERSIST_VPOSTREAM_H
