// RWCRegexp: one compiled single expression, the matcher beneath vRegExp. The dialect:
//   c        a literal byte (any byte but the special ones below)
//   .        any byte, line feed and zero included
//   [set]    a byte class: ranges a-z, a leading ^ negates, \x is x inside, a ] right after
//            [ or [^ is literal, a - first or last is literal
//   x* x+ x? zero or more, one or more, zero or one of the preceding item
//   ^ $      start and end of the text, when first (last) in the pattern; literal elsewhere
//   \x       the byte x literally
//   | ( ) { }  are ordinary bytes
// Matching is leftmost, then longest, and runs in time linear in the text (a lazily built
// deterministic automaton). A pattern that does not compile reports it through status() and
// never matches.
//
//   pattern      text         index  extent
//   "a+"         "baaab"      1      3
//   "x*"         "abc"        0      0
//   "[^/]+$"     "/usr/bin"   5      3
//   "^b"         "ab"         RW_NPOS
#ifndef VFC_RW_RWCREGEXP_H
#define VFC_RW_RWCREGEXP_H

#include <cstddef>
#include <memory>

#include "vfc/base/export.h"

class RWCString;
class vRegExp;

namespace vfc::rx {
class Expression;
class Matcher;
}  // namespace vfc::rx

class VFC_API RWCRegexp {
  public:
    enum statVal {
        OK = 0,
        ILLEGAL,  // malformed: unclosed [, a quantifier with nothing before it, a trailing \,
                  // a reversed range
        TOOLONG   // more items than the matcher accepts
    };

    RWCRegexp(const char* pattern);
    RWCRegexp(const char* pattern, size_t length);
    RWCRegexp(const RWCString& pattern);
    // A copy shares the compiled expression and builds its own automaton as it searches.
    RWCRegexp(const RWCRegexp& other);
    RWCRegexp& operator=(const RWCRegexp& other);
    ~RWCRegexp();

    statVal status() const noexcept { return status_; }

    // The leftmost-longest match at or after start: its position, or RW_NPOS when there is none
    // (or start is past the end, or the pattern did not compile). *extent, when given, gets the
    // match length (0 without a match). ^ matches only at position 0 of the text, whatever start.
    size_t index(const RWCString& text, size_t* extent = nullptr, size_t start = 0) const;
    size_t index(const char* text, size_t length, size_t* extent, size_t start) const;

  private:
    friend class vRegExp;  // compiles the expressions of its alternatives into one automaton

    void compile(const char* pattern, size_t length);

    statVal status_;
    std::shared_ptr<const vfc::rx::Expression> expression_;
    std::unique_ptr<vfc::rx::Matcher> matcher_;
};

#endif  // VFC_RW_RWCREGEXP_H
