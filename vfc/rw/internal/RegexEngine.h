// The single-expression regular-expression engine behind RWCRegexp and vRegExp. Private to the
// library: not installed, not exported.
//
// A pattern parses into an Expression: optional ^, a sequence of items (a byte set with a
// quantifier: once, ?, *, +), optional $. A Matcher searches for the leftmost-longest match of
// the union of one or more expressions. It builds a deterministic automaton lazily, one state at
// a time as the text demands, keeps it in a bounded cache, and never re-parses: a search costs
// time linear in the text it reads.
#ifndef VFC_RW_INTERNAL_REGEXENGINE_H
#define VFC_RW_INTERNAL_REGEXENGINE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "vfc/base/export.h"

namespace vfc::rx {

enum class ParseStatus { ok, illegal, tooLong };

class Expression;  // defined in RegexTables.h; immutable once parsed
struct Compiled;   // the automaton's fixed tables, shared by copies of a Matcher
struct DfaCache;   // the lazily built states of one Matcher

// Parses one single expression of the RWCRegexp dialect. On ok, *out holds it; otherwise *out
// is null.
ParseStatus parse(const char* pattern, size_t length, std::shared_ptr<const Expression>* out);

// Searching builds automaton states inside the Matcher, without locking: one thread at a time
// may use a Matcher. Copies share only immutable tables and may be used by different threads.
class Matcher {
  public:
    // A matcher for the union of the given expressions; with none it never matches.
    explicit Matcher(const std::vector<std::shared_ptr<const Expression>>& alternatives);
    // Shares the fixed tables; the copy builds its own states.
    Matcher(const Matcher& other);
    Matcher& operator=(const Matcher&) = delete;
    ~Matcher();

    // Leftmost, then longest, match starting at or after start. Returns its position and stores
    // its length in *extent, or returns static_cast<size_t>(-1) (and *extent = 0) when there is
    // none or start > length. ^ matches only at position 0 of text, $ only at length.
    size_t search(const char* text, size_t length, size_t start, size_t* extent) const;
    // The automaton positions looked at while building states so far, both directions: each
    // step looks at every position at most once, so this stays below the positions times the
    // steps built.
    uint64_t positionsLookedAt() const;

  private:
    size_t findEnd(const unsigned char* text, size_t length, size_t start) const;
    size_t findStart(const unsigned char* text, size_t length, size_t start, size_t end) const;

    std::shared_ptr<const Compiled> compiled_;
    mutable std::unique_ptr<DfaCache> forward_;
    mutable std::unique_ptr<DfaCache> reverse_;
    // A union of alternatives that each begin at 0 (^A) or each end at the text's end (B$),
    // with some of both, is searched as two unions: the first from position 0 forward, the
    // second from the end backward, so that neither reads more than its match needs.
    std::unique_ptr<Matcher> atStart_;
    std::unique_ptr<Matcher> atEnd_;
};

// For the tests only: searches text from its start for the union of patterns (single
// expressions; those that do not parse are left out) with a fresh Matcher, and returns the
// positions it looked at; *found gets the match position or static_cast<size_t>(-1).
VFC_TEST_API uint64_t positionsLookedAtSearching(const std::vector<const char*>& patterns,
                                                 const char* text, size_t length, size_t* found);

}  // namespace vfc::rx

#endif  // VFC_RW_INTERNAL_REGEXENGINE_H
