#ifndef VFC_PERSIST_VPISTREAM_H
#define VFC_PERSIST_VPISTREAM_H

#include <istream>
#include <streambuf>

#include "vfc/base/export.h"
#include "vfc/rw/RWpistream.h"

class vDate;
class vFile;
class vInt;
class vPathComponent;
class vString;
class vTime;

/// The library's portable object input stream: RWpistream, plus operators that read an object
/// framed by its class identifier into an existing object.
///
/// It reads what vPostream writes. Use the operator>> overloads below for the value classes, or
/// RWCollectable::recursiveRestoreFrom(stream) for any registered class.
///
/// Ownership: the stream reads from a stream buffer it borrows (the one given, or is.rdbuf());
/// that buffer must outlive the stream. Objects read through the operators stay the caller's.
///
/// Failure: nothing throws; test good() after reading. A malformed token sets fail(); damaged
/// framing, an object of another class or a back reference where an object is expected set
/// fail() and bad(). A null buffer leaves the stream failed from the start. The target changes
/// only once its own state was read completely, so a failure before that leaves it as it was;
/// a nil item leaves it unchanged with the stream still good.
class VFC_API vPistream : public RWpistream {
  public:
    explicit vPistream(std::streambuf* sb) : RWpistream(sb) {}
    explicit vPistream(std::istream& is) : RWpistream(is) {}
    ~vPistream() override;
};

/// Reads the next object, which must be a vString, into x (see vPistream for failures).
VFC_API vPistream& operator>>(vPistream& in, vString& x);
/// Reads the next object, which must be a vInt, into x.
VFC_API vPistream& operator>>(vPistream& in, vInt& x);
/// Reads the next object, which must be a vPathComponent, into x.
VFC_API vPistream& operator>>(vPistream& in, vPathComponent& x);
/// Reads the next object, which must be a vDate, into x.
VFC_API vPistream& operator>>(vPistream& in, vDate& x);
/// Reads the next object, which must be a vTime, into x.
VFC_API vPistream& operator>>(vPistream& in, vTime& x);
/// Reads the file's state alone (path and type name, no class identifier), as written by the
/// matching output operator. On a damaged stream x keeps what it held and the stream fails.
VFC_API vPistream& operator>>(vPistream& in, vFile& x);

#endif  // VFC_PERSIST_VPISTREAM_H
