#ifndef VFC_FILES_VPATH_H
#define VFC_FILES_VPATH_H

#include <iosfwd>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vPathType.h"
#include "vfc/rw/RWCollectable.h"

/// A path held in its normalised form, with the notation it is written in.
///
/// The normalised form is the string that vcGeneratePath writes for the path's own component
/// list in the path's own notation: "a//b/" in UNIX notation is held as "a/b" (doubled
/// separators collapse; outside the URL-like notations a trailing separator goes). Paths
/// compare and hash by that string, so two spellings of one path are equal.
///
/// Ownership: a value class that owns its string; copies are independent.
///
/// Failure: nothing throws; any text parses into some path. Restoring from a stream takes the
/// stored string as it is (already normalised); a notation outside 0-39 fails the stream, and
/// a failed stream leaves the path unchanged. The RWFile forms write and read nothing.
class VFC_API vPath : public RWCollectable {
  public:
    // The empty path in the host notation.
    vPath() = default;
    // Parses path in the notation and keeps the normalised string.
    vPath(vPathType::TypeEnum notation, const vString& path);
    vPath(const vPath& other) = default;
    vPath& operator=(const vPath& other) = default;
    ~vPath() override;

    vPathType::TypeEnum fPathType() const { return aPathType; }
    const vString& fString() const { return aPath; }

    bool fIsEqual(const vPath& other) const { return aPath.fIsEqual(other.aPath); }
    // True when this path is dir or lies below it: dir's components (in dir's notation) begin
    // this path's components (in this path's notation), and dir is not empty.
    bool fIsInHier(const vPath& dir) const;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By the normalised string; -1 against another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override { return aPath.hash(); }
    bool isEqual(const RWCollectable* other) const override;
    // The notation (an int) and the string. The RWFile forms write and read nothing.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // Takes a string that is already normalised.
    void fConstructFromNormalized(vPathType::TypeEnum notation, const vString& normalized);

    vPathType::TypeEnum aPathType = vPathType::eHost;
    vString aPath;
};

/// Writes the normalised string to out; returns out.
VFC_API std::ostream& operator<<(std::ostream& out, const vPath& path);

#endif  // VFC_FILES_VPATH_H
