#ifndef VFC_CORE_VSSTRING_H
#define VFC_CORE_VSSTRING_H

#include <cstddef>
#include <ios>
#include <iosfwd>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vpGStreambuf.h"
#include "vfc/rw/RWCollectable.h"

/// An output stream buffer that accumulates everything written to it in a vString.
///
/// Write to it through a std::ostream over it and read the text with string(). Writing it to
/// another std::ostream drains it: the text goes out and the accumulator empties. It is for output
/// only: it has no input, and a reader gets vpGStreambuf's end-of-input answer (the byte 255, not
/// end-of-file).
///
/// Ownership: the object owns its text. string() returns a reference to the accumulator itself,
/// valid as long as the vSString; data() is valid until the text next changes. Everything that
/// reads the text first flushes pending output into it. A copy holds its own copy of the text
/// written so far; copy assignment is not available.
///
/// Failure: appending to the accumulator cannot fail. write(std::istream&) answers 0 at once for a
/// stream that is not good; otherwise it reads to the end, which leaves that stream with eofbit and
/// failbit set. As a collectable it compares by identity and persists nothing but its class
/// identifier. The read buffer of write() is shared by all instances, so use string streams from
/// one thread only.
///
/// \code
/// vSString s;
/// std::ostream out(&s);
/// out << "pages: " << 12;
/// s.string();        // "pages: 12"
/// std::cout << s;    // prints "pages: 12"; s is now empty
/// \endcode
class VFC_API vSString : public virtual std::basic_ios<char>,
                         public vpGStreambuf,
                         public RWCollectable {
  public:
    vSString();
    // The copy holds the text written to other so far, its pending output included.
    vSString(const vSString& other);
    ~vSString() override;

    // The accumulated text (pending output is flushed into it first).
    vString& string();
    const char* data();
    int length();

    // Appends the rest of in, read in chunks of up to 2048 bytes, and returns the number of bytes
    // appended; 0 at once when in has already failed or reached its end.
    size_t write(std::istream& in);

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    friend VFC_API std::ostream& operator<<(std::ostream& out, vSString& s);
    int consumer(char* data, int n) override;

    vString aString;  // the accumulator
};

/// Writes what s has accumulated to out and empties s (pending output included); returns out.
VFC_API std::ostream& operator<<(std::ostream& out, vSString& s);

#endif  // VFC_CORE_VSSTRING_H
