#include "vfc/persist/vPistream.h"

#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vPathComponent.h"
#include "vfc/text/vDate.h"
#include "vfc/text/vTime.h"

vPistream::~vPistream() = default;

namespace {
// Reads the next object into x; an object of another class, a reference or a malformed object
// fails the stream. Nil leaves x as it was.
vPistream& restoreInto(vPistream& in, RWCollectable& x) {
    RWCollectable::recursiveRestoreFrom(in, &x);
    return in;
}
}  // namespace

vPistream& operator>>(vPistream& in, vString& x) {
    return restoreInto(in, x);
}

vPistream& operator>>(vPistream& in, vInt& x) {
    return restoreInto(in, x);
}

vPistream& operator>>(vPistream& in, vPathComponent& x) {
    return restoreInto(in, x);
}

vPistream& operator>>(vPistream& in, vDate& x) {
    return restoreInto(in, x);
}

vPistream& operator>>(vPistream& in, vTime& x) {
    return restoreInto(in, x);
}

vPistream& operator>>(vPistream& in, vFile& x) {
    x.restoreGuts(in);
    return in;
}
