#ifndef VFC_FILES_VMATCHLIST_H
#define VFC_FILES_VMATCHLIST_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/rw/RWCollectable.h"

class vRegExp;
class vString;

/// A list of file-name patterns in which "*" is the only wildcard; a name matches the list when
/// it matches any one pattern as a whole.
///
/// Each pattern is compiled once into a regular expression anchored at both ends. Every other
/// character stands for itself ("?" included); with ignoreCase the codes from "A" to "z" match
/// either case. The patterns keep the order of insertion and each stands in the list once.
///
/// \code
/// vMatchList exclude;
/// exclude.fInsert("*.bak");
/// exclude.fInsert("core");
/// exclude.fCheckForMatch("index.htm.bak");   // true
/// exclude.fCheckForMatch("core.txt");        // false
/// \endcode
///
/// The persistent form on the virtual streams is the number of patterns, each pattern as a
/// string item, then the ignoreCase flag; restoring compiles the patterns again. The RWFile
/// forms write and read nothing.
///
/// Ownership: a value class that owns its patterns and their compiled expressions; copies are
/// independent. The reference fPatterns() returns stays valid while the list lives. As with
/// vRegExp, one list must not be matched against from two threads at once.
///
/// Failure: nothing throws. fInsert and fDelete answer false when there was nothing to do; a
/// damaged stream keeps the patterns read completely before the damage (check the stream's
/// state after restoring).
class VFC_API vMatchList : public RWCollectable {
  public:
    // An empty list (which matches nothing); case significant.
    vMatchList() = default;
    // The patterns of the list in their order, a repeated pattern kept once (the first time).
    vMatchList(const vSlistvString& patterns, bool ignoreCase);
    vMatchList(const vMatchList& other) = default;
    vMatchList& operator=(const vMatchList& other) = default;
    ~vMatchList() override;

    // Adds one pattern at the end; false, with nothing changed, when it is present already.
    bool fInsert(const vString& pattern);
    // Removes one pattern; false when it is not present.
    bool fDelete(const vString& pattern);
    // True when name as a whole matches at least one pattern.
    bool fCheckForMatch(const vString& name) const;

    const vSlistvString& fPatterns() const { return aPatterns; }
    size_t fEntries() const { return aPatterns.fEntries(); }
    bool fIgnoreCase() const { return aIgnoreCase; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Consistent with isEqual: equal lists have equal counts.
    unsigned hash() const override;
    // Another vMatchList with the same flag and the same patterns in the same order.
    bool isEqual(const RWCollectable* other) const override;
    // A damaged stream leaves the patterns read completely before the damage, compiled under
    // the flag the list had.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // Translates a pattern into its anchored expression under the list's flag and compiles it
    // into out.
    void fStringToRegExp(const vString& pattern, vRegExp& out) const;
    // Compiles the pattern list again from scratch through fInsert, dropping repeats.
    void fStringListToMatchHash();

    vSlistvString aPatterns;        // in order of insertion
    vHashvStringvRegExp aMatchers;  // each pattern to its compiled expression
    bool aIgnoreCase = false;
};

#endif  // VFC_FILES_VMATCHLIST_H
