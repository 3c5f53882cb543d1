#ifndef VFC_FILES_VSFILE_H
#define VFC_FILES_VSFILE_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/text/vTime.h"

/// One entry of a sorted file dictionary (vSFileDict): a file, the value a tool keeps for it
/// (an output path, a title, a checksum: any text), and the size and modification time the
/// file had when it was last stamped, so that a tool can tell which inputs changed since its
/// last run without reading them.
///
/// \code
/// vSFile entry(vFile("book/ch1.mif"), "out/ch1.htm");
/// entry.fStamp();          // remember the size and time it has now
/// ...                      // next run, after restoring the catalogue
/// if (entry.fIsChanged())  // edited, replaced, removed, or never stamped
///     convert(entry);
/// \endcode
///
/// A change is seen when the size or the modification time (to the second) differs, as make
/// and most build tools see it; a file rewritten within the same second with the same size
/// looks unchanged.
///
/// Persistence: on the virtual streams the file (vFile's form, without class identifier), the
/// value, the size (64-bit) and the time (vTime's form); the RWFile forms write and read
/// nothing, as with vFile. Order and hash are by path first, so a sorted collection of entries
/// is sorted by path; equality is by all four parts.
///
/// Ownership: a value class; copies are independent.
///
/// Failure: nothing throws. fStamp answers false, and clears the stamp, when the file cannot be
/// examined; a failed stream leaves the entry unchanged.
class VFC_API vSFile : public RWCollectable {
  public:
    vSFile() = default;
    explicit vSFile(const vFile& file, const vString& value = vString());
    vSFile(const vSFile& other) = default;
    vSFile& operator=(const vSFile& other) = default;
    ~vSFile() override;

    const vFile& fFile() const { return aFile; }
    const vString& fPath() const { return aFile.fPath(); }
    const vString& fValue() const { return aValue; }
    void fSetValue(const vString& value) { aValue = value; }

    // Records the file's size and modification time as they are now. False, with the stamp
    // cleared, when the file is missing or cannot be examined.
    bool fStamp();
    // True once stamped.
    bool fIsStamped() const { return aTime.isValid(); }
    // The stamp: 0 and the invalid time until fStamp succeeds.
    unsigned long long fSize() const { return aSize; }
    const vTime& fModificationTime() const { return aTime; }
    // True when the file is missing, has never been stamped, or its size or time differs from
    // the stamp.
    bool fIsChanged() const;

    bool operator==(const vSFile& other) const;
    bool operator!=(const vSFile& other) const { return !(*this == other); }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By path (byte order), then value, size and time; -1 against another class.
    int compareTo(const RWCollectable* other) const override;
    // By path.
    unsigned hash() const override { return aFile.hash(); }
    bool isEqual(const RWCollectable* other) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    vFile aFile;
    vString aValue;
    unsigned long long aSize = 0;
    vTime aTime{vTime::kInvalidSecond};
};

#endif  // VFC_FILES_VSFILE_H
