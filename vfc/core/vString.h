#ifndef VFC_CORE_VSTRING_H
#define VFC_CORE_VSTRING_H

#include <cstddef>
#include <iosfwd>

#include "vfc/base/export.h"
#include "vfc/core/vSubString.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWCollectable.h"

class RWWString;
class vRegExp;
class vVBuffer;

/// The one text type of the library: a byte string that is at once an RWCString and an
/// RWCollectable.
///
/// It holds single- or multi-byte text in no fixed encoding (any bytes, zeros included). Every
/// RWCString operation applies unchanged, and as a collectable it can live in the library's
/// collections and persistent streams (as one string item).
///
/// Ownership: a vString owns its bytes. Copies are cheap and independent: they share one buffer
/// until either side changes (copy-on-write). A vSubString returned by operator() refers to this
/// very object; it stays valid while the string lives and is not resized by other means. The
/// objects returned by EOL() and nullString() live as long as the program.
///
/// Failure: nothing throws. Positions out of range give the zero byte or the null substring, failed
/// searches RW_NPOS or the null substring, and fReplaceAll answers false when nothing matched.
/// restoreGuts leaves the string unchanged when the stored item is malformed; the stream or file
/// then reports the failure, so check its state after restoring.
class VFC_API vString : public RWCollectable, public RWCString {
  public:
    vString() = default;
    vString(const char* s);            // up to the terminating zero
    vString(const char* s, size_t n);  // exactly n bytes, zeros included
    vString(const RWCString& s) : RWCString(s) {}
    vString(const RWWString& s);  // converted to bytes in the current C locale
    vString(const vString& s) = default;
    vString(vString&& s) noexcept = default;
    vString(const vSubString& s);
    ~vString() override = default;

    vString& operator=(const char* s);
    vString& operator=(const vSubString& s);
    vString& operator=(const vString& s);
    vString& operator=(vString&& s) noexcept;
    vString& operator=(const RWWString& s);
    vString& operator=(const RWCString& s);

    // The byte at i; past the end 0 (the writable form then refers to a scratch byte).
    char& operator()(size_t i) { return RWCString::operator()(i); }
    char operator()(size_t i) const { return RWCString::operator()(i); }
    // A view of [start, start + length); the null substring when that range does not fit.
    vSubString operator()(size_t start, size_t length);
    const vSubString operator()(size_t start, size_t length) const;
    // The first match of re at or after start; the null substring when there is none.
    vSubString operator()(const vRegExp& re, size_t start = 0);
    const vSubString operator()(const vRegExp& re, size_t start = 0) const;

    using RWCString::index;
    // Position of the first match of re at or after start, or RW_NPOS (*matchLength then 0).
    // The length form takes start without a default, so that index(re, 0) names the first
    // form and is not ambiguous with a null matchLength.
    size_t index(const vRegExp& re, size_t start = 0) const;
    size_t index(const vRegExp& re, size_t* matchLength, size_t start) const;

    // Exact and case-ignoring comparison (ASCII letters fold); negative, zero or positive.
    int fCompareTo(const vString& other) const { return RWCString::compareTo(other); }
    int fCompareToIgnoreCase(const vString& other) const {
        return RWCString::compareTo(other, ignoreCase);
    }
    bool fIsEqual(const vString& other) const { return fCompareTo(other) == 0; }
    bool fIsEqualIgnoreCase(const vString& other) const { return fCompareToIgnoreCase(other) == 0; }
    // Whether the last byte is c; false for the empty string.
    bool fLastCharIsEqual(unsigned char c) const;

    // The collectable protocol. compareTo takes other as a vString without checking its
    // class; isEqual is false for any object of another class; hash is case-sensitive.
    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    using RWCString::compareTo;
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override { return RWCString::hash(exact); }
    unsigned hash(caseCompare cmp) const { return RWCString::hash(cmp); }
    bool isEqual(const RWCollectable* other) const override;
    // Persisted as one string item (the byte string's own form).
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

    // Case mapping in place by a fixed rule that never depends on the C locale: in each
    // one-byte character, fToUpper maps 0x61-0x7A and 0xE0-0xFE down by 0x20, fToLower maps
    // 0x41-0x5A and 0xC0-0xDE up by 0x20 (the Latin-1 blocks, so 0xF7 and 0xD7 swap too);
    // 0xDF, 0xFF and characters of several bytes stay as they are. toUpper and toLower are the
    // same operations, hiding the locale-driven ones of RWCString.
    void fToUpper();
    void fToLower();
    void toUpper() { fToUpper(); }
    void toLower() { fToLower(); }

    // Removes the leading and the trailing run of blanks and tabs (only those two: carriage
    // returns, line feeds and other white space stay).
    void fTrim();
    // Replaces every match of re, left to right, with replacement; after an empty match the
    // next byte is skipped, so the walk always ends. False, with the string unchanged, when
    // nothing matched.
    bool fReplaceAll(const vRegExp& re, const vString& replacement);
    // Appends the whole content of buffer, segment by segment; true.
    bool fAppend(const vVBuffer& buffer);

    // "\r\n", the line end that every text writer of the library uses.
    static const vString& EOL();
    // An empty string, for operations that have no string to return.
    static const vString& nullString();
};

/// A new string holding the bytes of a followed by those of b.
VFC_API vString operator+(const vString& a, const vString& b);
/// A new string holding the text of a (up to its terminating zero; null counts as empty) followed
/// by the bytes of b.
VFC_API vString operator+(const char* a, const vString& b);
/// A new string holding the bytes of a followed by the text of b (up to its terminating zero;
/// null counts as empty). Without it, s + "text" would be ambiguous between the vString and the
/// RWCString forms.
VFC_API vString operator+(const vString& a, const char* b);

/// Writes the bytes of s to out as they are, zeros included; returns out, whose state reports a
/// failed write.
VFC_API std::ostream& operator<<(std::ostream& out, const vString& s);
/// Reads one word as std::string does: skips leading white space (when skipws is set), then takes
/// bytes up to the next white space or the stream's width. s is always replaced: when nothing could
/// be read it becomes empty and the stream's failbit is set.
VFC_API std::istream& operator>>(std::istream& in, vString& s);

#endif  // VFC_CORE_VSTRING_H
