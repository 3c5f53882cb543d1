// vSString: an output stream buffer that accumulates everything written to it in a vString.
// Write to it through a std::ostream over it (std::ostream out(&s)); read the text with string().
// Writing it to another std::ostream drains it: the text goes out and the accumulator empties.
//
//   vSString s;
//   std::ostream out(&s);
//   out << "pages: " << 12;
//   s.string();        // "pages: 12"
//   std::cout << s;    // prints "pages: 12"; s is now empty
#ifndef VFC_CORE_VSSTRING_H
#define VFC_CORE_VSSTRING_H

#include <cstddef>
#include <ios>
#include <iosfwd>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vpGStreambuf.h"
#include "vfc/rw/RWCollectable.h"

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

// Writes what s has accumulated to out and empties s (pending output included).
VFC_API std::ostream& operator<<(std::ostream& out, vSString& s);

#endif  // VFC_CORE_VSSTRING_H
