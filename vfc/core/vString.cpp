#include "vfc/core/vString.h"

#include <cstring>
#include <istream>
#include <ostream>
#include <string>

#include "vfc/core/internal/vpCharWalker.h"
#include "vfc/core/vVBuffer.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWWString.h"
#include "vfc/text/vRegExp.h"

RW_DEFINE_COLLECTABLE(vString, vClassID::vString)

void vString::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    restoreFrom(s);
}

void vString::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    restoreFrom(f);
}

void vString::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    saveOn(s);
}

void vString::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    saveOn(f);
}

vString::vString(const char* s) : RWCString(s) {}

vString::vString(const char* s, size_t n) : RWCString(s, n) {}

vString::vString(const RWWString& s) : RWCString(s.toMultiByte()) {}

vString::vString(const vSubString& s) : RWCString(s) {}

vString& vString::operator=(const char* s) {
    RWCString::operator=(s);
    return *this;
}

vString& vString::operator=(const vSubString& s) {
    RWCString::operator=(RWCString(s));
    return *this;
}

vString& vString::operator=(const vString& s) {
    RWCString::operator=(s);
    return *this;
}

vString& vString::operator=(vString&& s) noexcept {
    RWCString::operator=(std::move(s));
    return *this;
}

vString& vString::operator=(const RWWString& s) {
    RWCString::operator=(s.toMultiByte());
    return *this;
}

vString& vString::operator=(const RWCString& s) {
    RWCString::operator=(s);
    return *this;
}

vSubString vString::operator()(size_t start, size_t length) {
    return vSubString(RWCString::operator()(start, length));
}

const vSubString vString::operator()(size_t start, size_t length) const {
    return vSubString(RWCString::operator()(start, length));
}

vSubString vString::operator()(const vRegExp& re, size_t start) {
    size_t extent = 0;
    size_t pos = re.index(*this, &extent, start);
    return pos == RW_NPOS ? (*this)(RW_NPOS, 0) : (*this)(pos, extent);
}

const vSubString vString::operator()(const vRegExp& re, size_t start) const {
    return const_cast<vString&>(*this)(re, start);
}

size_t vString::index(const vRegExp& re, size_t start) const {
    return re.index(*this, nullptr, start);
}

size_t vString::index(const vRegExp& re, size_t* matchLength, size_t start) const {
    return re.index(*this, matchLength, start);
}

bool vString::fLastCharIsEqual(unsigned char c) const {
    return length() > 0 && static_cast<unsigned char>(data()[length() - 1]) == c;
}

RWCollectable* vString::newSpecies() const {
    return new vString;
}

RWCollectable* vString::copy() const {
    return new vString(*this);
}

int vString::compareTo(const RWCollectable* other) const {
    if (!other) return 1;
    return RWCString::compareTo(*static_cast<const vString*>(other));
}

bool vString::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() &&
           RWCString::compareTo(*static_cast<const vString*>(other)) == 0;
}

namespace {

unsigned char upperByte(unsigned char c) {
    bool lower = (c >= 0x61 && c <= 0x7A) || (c >= 0xE0 && c <= 0xFE);
    return lower ? c - 0x20 : c;
}

unsigned char lowerByte(unsigned char c) {
    bool upper = (c >= 0x41 && c <= 0x5A) || (c >= 0xC0 && c <= 0xDE);
    return upper ? c + 0x20 : c;
}

// Maps every one-byte character of the n bytes at p in place; longer characters and bytes that
// start no character stay as they are.
void mapCase(char* p, size_t n, unsigned char (*map)(unsigned char)) {
    vpcForEachSingleByteChar(
        p, n, [&](size_t i) { p[i] = static_cast<char>(map(static_cast<unsigned char>(p[i]))); });
}

}  // namespace

void vString::fToUpper() {
    if (!isNull()) mapCase(uniqueData(), length(), upperByte);
}

void vString::fToLower() {
    if (!isNull()) mapCase(uniqueData(), length(), lowerByte);
}

void vString::fTrim() {
    // What the patterns "^[ \t]+" and "[ \t]+$" select, found without compiling them: the
    // leading run first, then the trailing run of what is left.
    auto blank = [](char c) { return c == ' ' || c == '\t'; };
    const char* p = data();
    const size_t n = length();
    size_t lead = 0;
    while (lead < n && blank(p[lead]))
        ++lead;
    size_t end = n;
    while (end > lead && blank(p[end - 1]))
        --end;
    keepOnly(lead, end - lead);
}

bool vString::fReplaceAll(const vRegExp& re, const vString& replacement) {
    // The result of the find / replace / advance walk, built in one pass. The walk searches the
    // edited string, in which the text before the cursor is output: ^ can match again only
    // while that output is empty, so the search then starts a fresh text at the cursor.
    const char* text = data();
    size_t n = length();
    RWCString out;
    bool replaced = false;
    size_t at = 0;  // cursor in the original text
    while (at <= n) {
        size_t extent = 0;
        size_t base = out.isNull() ? at : 0;
        size_t pos = re.index(text + base, n - base, &extent, at - base);
        if (pos == RW_NPOS) break;
        pos += base;
        out.append(text + at, pos - at).append(replacement);
        replaced = true;
        at = pos + extent;
        if (extent == 0) {
            if (at < n) out.append(text[at]);
            ++at;
        }
    }
    if (!replaced) return false;
    if (at < n) out.append(text + at, n - at);
    RWCString::operator=(out);
    return true;
}

bool vString::fAppend(const vVBuffer& buffer) {
    buffer.fForEachSegment([this](const char* bytes, size_t n) {
        append(bytes, n);
        return true;
    });
    return true;
}

const vString& vString::EOL() {
    static const vString* eol = new vString("\r\n");
    return *eol;
}

const vString& vString::nullString() {
    static const vString* empty = new vString;
    return *empty;
}

vString operator+(const vString& a, const vString& b) {
    vString r(a);
    r.append(b);
    return r;
}

vString operator+(const char* a, const vString& b) {
    vString r(a);
    r.append(b);
    return r;
}

vString operator+(const vString& a, const char* b) {
    vString r(a);
    if (b) r.append(b);
    return r;
}

std::ostream& operator<<(std::ostream& out, const vString& s) {
    return out.write(s.data(), static_cast<std::streamsize>(s.length()));
}

std::istream& operator>>(std::istream& in, vString& s) {
    std::string word;
    in >> word;
    s = vString(word.data(), word.size());
    return in;
}
