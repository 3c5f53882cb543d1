#include "vfc/core/vInt.h"

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <ios>
#include <ostream>

#include "vfc/core/vSString.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vInt, vClassID::vInt)

namespace {

// strtol as on a platform whose long is 32 bits: results beyond int are clamped, as strtol
// clamps to its own range.
int parse(const vString& text, int base) {
    long v = std::strtol(text.data(), nullptr, base);
    if (v > INT_MAX) return INT_MAX;
    if (v < INT_MIN) return INT_MIN;
    return static_cast<int>(v);
}

// 32-bit two's complement arithmetic without signed overflow.
int wrap(uint32_t bits) {
    return static_cast<int>(bits);
}

}  // namespace

vInt::vInt(const vString& text, int base) : RWInteger(parse(text, base)) {}

vInt::~vInt() = default;

vInt& vInt::operator=(int v) {
    value(v);
    return *this;
}

vInt& vInt::operator=(const vInt& other) {
    value(other.value());
    return *this;
}

vInt& vInt::operator=(const vString& text) {
    value(parse(text, 0));
    return *this;
}

vInt& vInt::operator+=(int n) {
    value(wrap(static_cast<uint32_t>(value()) + static_cast<uint32_t>(n)));
    return *this;
}

vInt& vInt::operator-=(int n) {
    value(wrap(static_cast<uint32_t>(value()) - static_cast<uint32_t>(n)));
    return *this;
}

bool vInt::operator==(int n) const {
    vInt other(n);
    return isEqual(&other);
}

bool vInt::operator==(const vInt& other) const {
    return isEqual(&other);
}

vString& vInt::fAsString(vString& out, bool hex) const {
    vSString text;
    std::ostream os(&text);
    if (hex)
        os << std::hex << static_cast<uint32_t>(value());
    else
        os << value();
    out = text.string();
    return out;
}

RWCollectable* vInt::newSpecies() const {
    return new vInt;
}

RWCollectable* vInt::copy() const {
    return new vInt(*this);
}

int vInt::compareTo(const RWCollectable* other) const {
    const vInt* o = dynamic_cast<const vInt*>(other);
    if (!o) return -1;
    return wrap(static_cast<uint32_t>(value()) - static_cast<uint32_t>(o->value()));
}

unsigned vInt::hash() const {
    return static_cast<unsigned>(value());
}

bool vInt::isEqual(const RWCollectable* other) const {
    // The class identifier names the class, so the object is a vInt.
    return other && other->isA() == isA() && static_cast<const vInt*>(other)->value() == value();
}

void vInt::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    restoreFrom(s);
}

void vInt::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    restoreFrom(f);
}

void vInt::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    saveOn(s);
}

void vInt::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    saveOn(f);
}
