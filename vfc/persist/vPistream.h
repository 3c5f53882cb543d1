// vPistream: the library's portable object input stream. The stream operators read an object
// framed by its class identifier into an existing object; on malformed data or an object of
// another class the stream fails and the object keeps what it held.
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

class VFC_API vPistream : public RWpistream {
  public:
    explicit vPistream(std::streambuf* sb) : RWpistream(sb) {}
    explicit vPistream(std::istream& is) : RWpistream(is) {}
    ~vPistream() override;
};

VFC_API vPistream& operator>>(vPistream& in, vString& x);
VFC_API vPistream& operator>>(vPistream& in, vInt& x);
VFC_API vPistream& operator>>(vPistream& in, vPathComponent& x);
VFC_API vPistream& operator>>(vPistream& in, vDate& x);
VFC_API vPistream& operator>>(vPistream& in, vTime& x);
// The file's state alone, as written by the matching output operator.
VFC_API vPistream& operator>>(vPistream& in, vFile& x);

#endif  // VFC_PERSIST_VPISTREAM_H
