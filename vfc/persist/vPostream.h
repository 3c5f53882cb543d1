// vPostream: the library's portable object output stream (the portable format of RWpostream,
// nothing added). The stream operators below frame an object for it: the class identifier, then
// the object's state, with back references for an object written twice in one operation. A vFile
// is the exception: it is written as its state alone and read back into a known vFile.
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

class VFC_API vPostream : public RWpostream {
  public:
    explicit vPostream(std::streambuf* sb) : RWpostream(sb) {}
    // Writes into os's stream buffer.
    explicit vPostream(std::ostream& os) : RWpostream(os) {}
    ~vPostream() override;
};

VFC_API vPostream& operator<<(vPostream& out, const vString& x);
VFC_API vPostream& operator<<(vPostream& out, const vInt& x);
VFC_API vPostream& operator<<(vPostream& out, const vPathComponent& x);
VFC_API vPostream& operator<<(vPostream& out, const vDate& x);
VFC_API vPostream& operator<<(vPostream& out, const vTime& x);
// The file's state alone, without the class identifier.
VFC_API vPostream& operator<<(vPostream& out, const vFile& x);

#endif  // VFC_PERSIST_VPOSTREAM_H
