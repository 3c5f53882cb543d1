#include "vfc/rw/RWInteger.h"

#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

void RWInteger::saveOn(RWvostream& s) const {
    s << value_;
}

void RWInteger::saveOn(RWFile& f) const {
    f.Write(value_);
}

void RWInteger::restoreFrom(RWvistream& s) {
    s >> value_;
}

void RWInteger::restoreFrom(RWFile& f) {
    f.Read(value_);
}
