#ifndef VFC_TEXT_VSERE_H
#define VFC_TEXT_VSERE_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/core/vSubString.h"
#include "vfc/rw/RWCString.h"

class vRegExp;

/// A search-and-replace cursor over one vString.
///
/// The intended loop:
/// \code
/// vSeRe cursor(text);
/// while (cursor.fFind(re)) {
///     cursor.fReplace("-");   // optional
///     cursor.fAdvance();
/// }
/// \endcode
/// After a match the cursor steps past it (past the replacement, which is never searched
/// again); after an empty match it steps one byte further, so the loop always ends: with re "x*"
/// over "abc" the loop above leaves "-a-b-c-". A cursor built over a const string ignores
/// fReplace.
///
/// Ownership: the cursor borrows the string (and, during fFind, the pattern); the string must
/// outlive the cursor, and editing it by other paths leaves the cursor stale. The substring
/// fSubString() returns refers to the string, valid until the string changes. Copies are
/// independent cursors over the same string.
///
/// Failure: nothing throws. fFind answers false when there is no further match; fReplace does
/// nothing without a current match or on a read-only cursor; fSubString() is then the null
/// substring.
class VFC_API vSeRe {
  public:
    explicit vSeRe(const vString& text);  // read-only
    explicit vSeRe(vString& text);        // editable
    vSeRe(const vSeRe& other) = default;
    vSeRe& operator=(const vSeRe& other) = default;

    // Finds the next match at or after the cursor; false (the cursor stays) when there is none.
    bool fFind(const vRegExp& re);
    // Replaces the current match with replacement, on an editable cursor after a successful
    // fFind; otherwise does nothing.
    void fReplace(const vString& replacement);
    // Steps past the current match (and one byte more after an empty one), or one byte when
    // there is no current match.
    void fAdvance();
    // Back to before the start of the text.
    void fReset();
    // The current match (or its replacement); the null substring when there is none.
    vSubString fSubString() const;

  private:
    const vString* aText;
    vString* aEditable;
    size_t aPosition = RW_NPOS;  // RW_NPOS: before the start
    size_t aLength = 0;          // what now occupies the match
    size_t aMatchLength = 0;     // the match as found
    bool aFound = false;
};

#endif  // VFC_TEXT_VSERE_H
