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

/// One compiled regular expression of a small dialect; the matcher beneath vRegExp.
///
/// \code{.unparsed}
///   c        a literal byte (any byte but the special ones below)
///   .        any byte, line feed and zero included
///   [set]    a byte class: ranges a-z, a leading ^ negates, \x is x inside, a ] right after
///            [ or [^ is literal, a - first or last is literal
///   x* x+ x? zero or more, one or more, zero or one of the preceding item
///   ^ $      start and end of the text, when first (last) in the pattern; literal elsewhere
///   \x       the byte x literally
///   | ( ) { }  are ordinary bytes
/// \endcode
/// Matching is leftmost, then longest, and runs in time linear in the text (a lazily built
/// deterministic automaton, made by the first search: at most one state per text byte, each in
/// time proportional to the pattern, in a cache of at most 10,000 states or 8 MB). Compiling
/// takes time and memory in proportion to the pattern. The object owns its automaton; a copy
/// shares the immutable compiled expression and builds its own automaton as it searches. A search
/// adds states to the automaton, so one object must not be searched from two threads at once:
/// give each thread its own copy.
///
/// Failure: a pattern that does not compile reports it through status() (ILLEGAL or TOOLONG) and
/// never matches. index() answers RW_NPOS when there is no match.
/// \code
/// size_t extent = 0;
/// RWCRegexp("a+").index("baaab", &extent);         // 1, extent 3
/// RWCRegexp("x*").index("abc", &extent);           // 0, extent 0
/// RWCRegexp("[^/]+$").index("/usr/bin", &extent);  // 5, extent 3
/// RWCRegexp("^b").index("ab");                     // RW_NPOS
/// \endcode
class VFC_API RWCRegexp {
  public:
    // The outcome of compiling the pattern, as status() reports it.
    enum statVal {
        // The pattern compiled.
        OK = 0,
        // Malformed: an unclosed [, a quantifier with nothing before it, a trailing backslash,
        // a reversed range.
        ILLEGAL,
        // More items than the matcher accepts.
        TOOLONG
    };

    // Compiles the pattern: a C string (null counts as empty), length bytes, or a string. Check
    // status() before relying on matches.
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
    mutable std::unique_ptr<vfc::rx::Matcher> matcher_;  // built by the first search
};

#endif  // VFC_RW_RWCREGEXP_H
