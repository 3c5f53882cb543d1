#ifndef VFC_FILES_VPFILEREFCMPNTS_H
#define VFC_FILES_VPFILEREFCMPNTS_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vPathType.h"
#include "vfc/rw/RWCollectable.h"

/// The stored parts of one file reference (see vFileReference, which does the work): the
/// referring file, the reference text as written in it, the notation of that text and the
/// target the text resolves to. It is what a list of references (vpSlistvpFRefCs) holds and
/// what goes into a persistent store; it checks nothing and resolves nothing itself.
///
/// Persistence: on the virtual streams the referrer (vFile's form, without class identifier),
/// the text, the notation as an int and the target (vFile's form). The RWFile forms write and
/// read nothing. Equality, order and hash are by all four parts, referrer first.
///
/// Ownership: a value class that owns its parts; copies are independent.
///
/// Failure: nothing throws. A stream that fails, or holds a notation outside 0-39, leaves the
/// object unchanged (the stream's state says so).
class VFC_API vpFileRefCmpnts : public RWCollectable {
  public:
    vpFileRefCmpnts() = default;
    vpFileRefCmpnts(const vFile& referrer, const vString& text, vPathType::TypeEnum notation,
                    const vFile& target);
    vpFileRefCmpnts(const vpFileRefCmpnts& other) = default;
    vpFileRefCmpnts& operator=(const vpFileRefCmpnts& other) = default;
    ~vpFileRefCmpnts() override;

    const vFile& fReferrer() const { return aReferrer; }
    const vString& fText() const { return aText; }
    vPathType::TypeEnum fNotation() const { return aNotation; }
    // Empty for a reference that leaves the file system (an "http:" URL, say).
    const vFile& fTarget() const { return aTarget; }
    void fSetReferrer(const vFile& referrer) { aReferrer = referrer; }
    void fSetText(const vString& text) { aText = text; }
    void fSetNotation(vPathType::TypeEnum notation) { aNotation = notation; }
    void fSetTarget(const vFile& target) { aTarget = target; }

    // Same four parts (the files by path).
    bool operator==(const vpFileRefCmpnts& other) const;
    bool operator!=(const vpFileRefCmpnts& other) const { return !(*this == other); }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By referrer, text, notation, then target; -1 against another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    vFile aReferrer;
    vString aText;
    vPathType::TypeEnum aNotation = vPathType::eHost;
    vFile aTarget;
};

#endif  // VFC_FILES_VPFILEREFCMPNTS_H
