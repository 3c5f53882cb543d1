#include "vfc/persist/vPostream.h"

#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vPathComponent.h"
#include "vfc/text/vDate.h"
#include "vfc/text/vTime.h"

vPostream::~vPostream() = default;

vPostream& operator<<(vPostream& out, const vString& x) {
    x.recursiveSaveOn(out);
    return out;
}

vPostream& operator<<(vPostream& out, const vInt& x) {
    x.recursiveSaveOn(out);
    return out;
}

vPostream& operator<<(vPostream& out, const vPathComponent& x) {
    x.recursiveSaveOn(out);
    return out;
}

vPostream& operator<<(vPostream& out, const vDate& x) {
    x.recursiveSaveOn(out);
    return out;
}

vPostream& operator<<(vPostream& out, const vTime& x) {
    x.recursiveSaveOn(out);
    return out;
}

vPostream& operator<<(vPostream& out, const vFile& x) {
    x.saveGuts(out);
    return out;
}
