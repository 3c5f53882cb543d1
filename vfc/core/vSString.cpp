#include "vfc/core/vSString.h"

#include <istream>
#include <ostream>

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

namespace {

constexpr int kBufferSize = 1024;
constexpr size_t kReadChunk = 2048;

}  // namespace

RW_DEFINE_COLLECTABLE(vSString, vClassID::vSString)

vSString::vSString() : vpGStreambuf(kBufferSize) {
    init(static_cast<vpGStreambuf*>(this));
}

vSString::vSString(const vSString& other)
    : std::basic_ios<char>(), vpGStreambuf(other), RWCollectable(other), aString(other.aString) {
    init(static_cast<vpGStreambuf*>(this));
    aString.append(other.pbase(), static_cast<size_t>(other.pptr() - other.pbase()));
}

vSString::~vSString() {
    sync();
}

int vSString::consumer(char* data, int n) {
    aString.append(data, static_cast<size_t>(n));
    return n;
}

vString& vSString::string() {
    sync();
    return aString;
}

const char* vSString::data() {
    return string().data();
}

int vSString::length() {
    return static_cast<int>(string().length());
}

size_t vSString::write(std::istream& in) {
    if (!in.good()) return 0;
    sync();
    // One buffer for all instances: the library's string streams belong to one thread.
    static char chunk[kReadChunk];
    size_t total = 0;
    while (in) {
        in.read(chunk, kReadChunk);
        size_t got = static_cast<size_t>(in.gcount());
        aString.append(chunk, got);
        total += got;
    }
    return total;
}

RWCollectable* vSString::newSpecies() const {
    return new vSString;
}

RWCollectable* vSString::copy() const {
    return new vSString(*this);
}

std::ostream& operator<<(std::ostream& out, vSString& s) {
    s.sync();
    if (!s.aString.isNull()) {
        out << s.aString;
        s.aString = "";
    }
    return out;
}
