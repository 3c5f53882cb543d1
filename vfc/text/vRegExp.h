#ifndef VFC_TEXT_VREGEXP_H
#define VFC_TEXT_VREGEXP_H

#include <cstddef>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/collections/vSlist.h"
#include "vfc/rw/RWCollectable.h"

class vString;

namespace vfc::rx {
class Matcher;
}

/// The library's pattern type: a list of alternatives separated by "|", each a single expression
/// of the RWCRegexp dialect.
///
/// A search returns the leftmost match over all alternatives and, among matches at that
/// position, the longest. Two more forms build the alternatives from wildcards, where only * and
/// ? are special. An alternative that does not compile is kept but never matches; an empty
/// pattern matches nothing. No search ever recompiles.
///
/// \code{.unparsed}
///   pattern                      form            text        index  extent
///   "a|b"                        alternation     "xbya"      1      1
///   "ab|abc"                     alternation     "abcd"      0      3
///   "a\|b"  (escaped bar)        alternation     "a|b"       0      3
///   "[a|b]" (bar in brackets)    alternation     "|"         0      1
///   "*.txt"  (becomes ^.*\.txt$) wildcard        "a.txt"     0      5
///   "a*|b*"  (^a.* and b.*$)     wildcard        "xb"        1      1
///   "*.htm;*.html"               semicolon list  "x.html"    0      6
/// \endcode
///
/// Ownership: a value class that owns its compiled alternatives; copies are independent. A
/// search builds the matching automaton lazily inside the object, without locking, so one
/// vRegExp must not be searched from two threads at once; give each thread its own copy.
/// Nothing of the pattern is persisted: saving writes none of it and restoring reads none, so a
/// vRegExp that restoring makes anew matches nothing.
///
/// Cost, whatever the pattern (patterns may come from users): compiling takes time and memory in
/// proportion to the pattern's length, at most about 120 bytes per pattern byte (one-character
/// alternatives; longer ones take less). A search builds automaton states as the text demands,
/// keeps at most 10,000 of them or 8 MB per direction (then starts the cache afresh), and builds
/// at most one state per text byte, each in time proportional to the number of items of all
/// alternatives: a search is linear in the text, and at worst as slow per byte as the pattern is
/// long. One alternative may hold at most 4096 items; a longer one does not compile.
///
/// Failure: nothing throws; a pattern that does not compile simply does not match. index()
/// answers RW_NPOS (with extent 0) when there is no match.
class VFC_API vRegExp : public RWCollectable {
  public:
    // No alternatives: matches nothing.
    vRegExp();
    // Alternation form: the pattern is split at every "|" that is neither escaped ("\|" is a
    // literal bar) nor inside brackets; empty alternatives are dropped.
    explicit vRegExp(const vString& pattern);
    // Wildcard forms. With semicolonList false the whole pattern becomes one anchored expression
    // (a "|" in it still splits, so only the first alternative is anchored at the start and only
    // the last at the end). With semicolonList true each ";"-separated piece becomes its own
    // alternative anchored at both ends; "\|" puts a literal ";" into a piece.
    vRegExp(const vString& pattern, bool semicolonList);
    vRegExp(const vRegExp& other);
    vRegExp& operator=(const vRegExp& other);
    ~vRegExp() override;

    // The leftmost-longest match at or after start: its position, or RW_NPOS when there is none.
    // *extent gets the match length (0 without a match).
    size_t index(const vString& text, size_t* extent, size_t start) const;
    size_t index(const char* text, size_t length, size_t* extent, size_t start) const;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    void fInitialize(const vString& pattern);
    static void fNormalize(const vString& in, vString& out);
    void fInitializeWithSemis(const vString& pattern);
    // Compiles one alternative and appends it (nothing for an empty text).
    void fAddAlternative(const vString& text);
    // Builds the one automaton that searches all valid alternatives at once.
    void fBuildMatcher();

    vSlist aList;                                // the alternatives, in pattern order
    std::unique_ptr<vfc::rx::Matcher> aMatcher;  // null when no alternative is valid
};

#endif  // VFC_TEXT_VREGEXP_H
