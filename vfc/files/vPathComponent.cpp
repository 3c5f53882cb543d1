#include "vfc/files/vPathComponent.h"

#include <string>
#include <string_view>

#include "vfc/core/vStringUtils.h"
#include "vfc/files/internal/vpNotation.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vPathComponent, vClassID::vPathComponent)

using vfc::path::Family;
using vfc::path::Member;
using vfc::path::Notation;

namespace {

constexpr char kHex[] = "0123456789abcdef";

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool hasText(vComponentType::TypeEnum kind) {
    return kind != vComponentType::eRoot && kind != vComponentType::eCurrentRoot &&
           kind != vComponentType::eUp && kind != vComponentType::eCurrent;
}

// Which kinds a flagged notation escapes.
bool escapes(const Notation& n, vComponentType::TypeEnum kind) {
    switch (n.family) {
        case Family::kFileSystem:
            if (n.member == Member::kDOS) return kind == vComponentType::eName;
            if (n.member == Member::kMac)
                return kind == vComponentType::eName || kind == vComponentType::eDrive;
            return false;
        case Family::kMIF:
        case Family::kMIFEscaped:
            return true;
        case Family::kURL:
        case Family::kPortable:
            return kind == vComponentType::eName || kind == vComponentType::eShare ||
                   kind == vComponentType::eFragment;
        case Family::kUnknown:
            break;
    }
    return false;
}

bool dosNeedsEscape(unsigned char c) {
    if (c < 0x20 || c == 0x7f) return true;
    switch (c) {
        case '%':
        case '\\':
        case '/':
        case ':':
        case '*':
        case '?':
        case '"':
        case '<':
        case '>':
        case '|':
            return true;
        default:
            return false;
    }
}

std::string dosEscape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    for (char ch : in) {
        unsigned char c = static_cast<unsigned char>(ch);
        if (!dosNeedsEscape(c)) {
            out += ch;
            continue;
        }
        out += '%';
        out += kHex[c >> 4];
        out += kHex[c & 15];
    }
    return out;
}

// "%" and two hex digits give their byte, except "%00", which would put a zero into a name.
std::string dosUnescape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    for (size_t i = 0; i < in.size(); ++i) {
        if (in[i] == '%' && i + 2 < in.size() && hexValue(in[i + 1]) >= 0 &&
            hexValue(in[i + 2]) >= 0) {
            int byte = hexValue(in[i + 1]) * 16 + hexValue(in[i + 2]);
            if (byte != 0) {
                out += static_cast<char>(byte);
                i += 2;
                continue;
            }
        }
        out += in[i];
    }
    return out;
}

// A colon cannot stand in a Mac name, a slash can: flagged Mac paths trade one for the other.
std::string macSwap(std::string_view in) {
    std::string out(in);
    for (char& c : out) {
        if (c == ':')
            c = '/';
        else if (c == '/')
            c = ':';
    }
    return out;
}

std::string mifEscape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    for (char c : in) {
        if (c == '\\' || c == '>') out += '\\';
        out += c;
    }
    return out;
}

std::string mifUnescape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    for (size_t i = 0; i < in.size(); ++i) {
        if (in[i] == '\\' && i + 1 < in.size()) ++i;
        out += in[i];
    }
    return out;
}

// Inside a MIF string the MIF escape is escaped once more ("\>" becomes "\\\>", "\\" becomes
// "\\\\") and bytes from 0x80 are written as "\xhh ".
std::string mifStringEscape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    for (char ch : in) {
        unsigned char c = static_cast<unsigned char>(ch);
        if (c == '\\') {
            out += "\\\\\\\\";
        } else if (c == '>') {
            out += "\\\\\\>";
        } else if (c >= 0x80) {
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 15];
            out += ' ';
        } else {
            out += ch;
        }
    }
    return out;
}

std::string mifStringUnescape(std::string_view in) {
    std::string out;
    out.reserve(in.size());
    size_t i = 0;
    while (i < in.size()) {
        std::string_view rest = in.substr(i);
        if (rest.size() >= 4 && rest.compare(0, 3, "\\\\\\") == 0) {
            out += rest[3];
            i += 4;
        } else if (rest.size() >= 5 && rest[0] == '\\' && rest[1] == 'x' &&
                   hexValue(rest[2]) >= 0 && hexValue(rest[3]) >= 0 && rest[4] == ' ') {
            out += static_cast<char>(hexValue(rest[2]) * 16 + hexValue(rest[3]));
            i += 5;
        } else if (rest.size() >= 2 && rest[0] == '\\') {
            out += rest[1];
            i += 2;
        } else {
            out += rest[0];
            ++i;
        }
    }
    return out;
}

vString toString(const std::string& s) {
    return vString(s.data(), s.size());
}

vString unescape(const Notation& n, const vString& text) {
    std::string_view in = text.view();
    switch (n.family) {
        case Family::kFileSystem:
            return toString(n.member == Member::kDOS ? dosUnescape(in) : macSwap(in));
        case Family::kMIF:
            return toString(mifUnescape(in));
        case Family::kMIFEscaped:
            return toString(mifStringUnescape(in));
        case Family::kURL:
        case Family::kPortable: {
            vString out(text);
            return vStringUtils::sfURLDecode(out);
        }
        case Family::kUnknown:
            break;
    }
    return text;
}

}  // namespace

vPathComponent::vPathComponent(vPathType::TypeEnum notation, vComponentType::TypeEnum kind,
                               const vString& text)
    : aComponentType(kind) {
    Notation n = vfc::path::classify(notation);
    aPathType = n.value;
    if (!hasText(kind)) return;
    aTextValue = (n.flagged && !text.isNull() && escapes(n, kind)) ? unescape(n, text) : text;
}

vPathComponent::~vPathComponent() = default;

void vPathComponent::fSet(vPathType::TypeEnum notation, vComponentType::TypeEnum kind,
                          const char* text, size_t length) {
    Notation n = vfc::path::classify(notation);
    aPathType = n.value;
    aComponentType = kind;
    if (!hasText(kind)) length = 0;
    if (n.flagged && length > 0 && escapes(n, kind))
        aTextValue = unescape(n, vString(text, length));
    else
        aTextValue.replace(0, aTextValue.length(), text, length);
}

vString& vPathComponent::fComponent(vPathType::TypeEnum notation, vString& out) const {
    Notation n = vfc::path::classify(notation);
    if (!n.flagged || aTextValue.isNull() || !escapes(n, aComponentType)) {
        out = aTextValue;
        return out;
    }
    std::string_view in = aTextValue.view();
    switch (n.family) {
        case Family::kFileSystem:
            out = toString(n.member == Member::kDOS ? dosEscape(in) : macSwap(in));
            break;
        case Family::kMIF:
            out = toString(mifEscape(in));
            break;
        case Family::kMIFEscaped:
            out = toString(mifStringEscape(in));
            break;
        case Family::kURL:
        case Family::kPortable:
            out = aTextValue;
            vStringUtils::sfURLEncode(out);
            // A colon could otherwise be read back as the end of a scheme.
            for (size_t at = out.first(':'); at != RW_NPOS; at = out.index(":", at + 3))
                out.replace(at, 1, "%3a");
            break;
        case Family::kUnknown:
            out = aTextValue;
            break;
    }
    return out;
}

bool vPathComponent::operator==(const vPathComponent& other) const {
    return aPathType == other.aPathType && aComponentType == other.aComponentType &&
           aTextValue.fIsEqual(other.aTextValue);
}

RWCollectable* vPathComponent::newSpecies() const {
    return new vPathComponent;
}

RWCollectable* vPathComponent::copy() const {
    return new vPathComponent(*this);
}

int vPathComponent::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const auto* o = static_cast<const vPathComponent*>(other);
    if (aPathType != o->aPathType) return aPathType < o->aPathType ? -1 : 1;
    if (aComponentType != o->aComponentType) return aComponentType < o->aComponentType ? -1 : 1;
    int c = aTextValue.fCompareTo(o->aTextValue);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

unsigned vPathComponent::hash() const {
    return aTextValue.hash() ^ (static_cast<unsigned>(aComponentType) * 0x9e3779b9u) ^
           static_cast<unsigned>(aPathType);
}

bool vPathComponent::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && *this == *static_cast<const vPathComponent*>(other);
}

namespace {

// A stored notation must be a normalised one and a kind one of the thirteen; anything else is a
// damaged stream.
bool validStored(int notation, int kind) {
    if (notation < 1 || notation >= 20 || notation % 4 == 0) return false;
    return kind >= vComponentType::eScheme && kind <= vComponentType::eQuery;
}

}  // namespace

void vPathComponent::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    int notation = 0;
    int kind = 0;
    vString text;
    s >> notation >> kind;
    text.restoreFrom(s);
    if (!s.good()) return;
    if (!validStored(notation, kind)) {
        s.setstate(RWvios::failbit);
        return;
    }
    *this = vPathComponent(static_cast<vPathType::TypeEnum>(notation),
                           static_cast<vComponentType::TypeEnum>(kind), text);
}

void vPathComponent::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    int notation = 0;
    int kind = 0;
    vString text;
    f.Read(notation);
    f.Read(kind);
    text.restoreFrom(f);
    if (!f.good()) return;
    if (!validStored(notation, kind)) {
        f.setFailed();
        return;
    }
    *this = vPathComponent(static_cast<vPathType::TypeEnum>(notation),
                           static_cast<vComponentType::TypeEnum>(kind), text);
}

void vPathComponent::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << static_cast<int>(aPathType) << static_cast<int>(aComponentType);
    aTextValue.saveOn(s);
}

void vPathComponent::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    f.Write(static_cast<int>(aPathType));
    f.Write(static_cast<int>(aComponentType));
    aTextValue.saveOn(f);
}
