#ifndef VFC_FILES_VSFILEDICT_H
#define VFC_FILES_VSFILEDICT_H

#include <cstddef>
#include <utility>
#include <vector>

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/files/vSFile.h"
#include "vfc/rw/RWCollectable.h"

/// The sorted file dictionary: the catalogue a tool keeps of its inputs or outputs, one entry
/// (vSFile) per path with a value and a stamp, kept sorted by path and stored with the rest of
/// a project.
///
/// \code
/// vSFileDict inputs;
/// vSlistvFile found;
/// vDirHierFilter(vFile("book"), mifOnly, none).fCollect(found);
/// inputs.fInsertAll(found);                  // new paths get an empty value
/// inputs.fStampAll();
/// ...                                        // next run
/// vSlistvFile todo;
/// inputs.fCollectChanged(todo);              // edited since the last stamp
/// \endcode
///
/// Keys are paths as given, compared byte for byte (no case folding, no normalisation: "a/b"
/// and "./a/b" are two keys), which is the order vDirHierFilter walks a tree in; so a
/// directory's entries lie together, and everything below a folder is one range (fFindBelow).
/// Lookups take O(log n); inserting in path order, as a walk yields paths, appends in
/// constant time, anywhere else moves the entries after it.
///
/// Where it differs: std::map<path, T> and QMap<QString, T> would hold the same data; here the
/// entries are contiguous (faster to walk and look up), the value is always text so the
/// catalogue persists with the rest of the library's objects, and "what is below this folder"
/// and "what changed since last time" are part of the interface. Qt's QFileSystemWatcher and
/// POCO's DirectoryWatcher watch a tree while a program runs; a tool that runs once per build
/// needs the stamp kept from the last run instead.
///
/// Persistence: on the virtual streams the number of entries, then each entry in path order in
/// vSFile's form (without class identifier). The RWFile forms write and read nothing, as for
/// the file classes. Equality and order compare the entries in path order.
///
/// Ownership: a value class that owns its entries; copies are independent. Pointers returned
/// by fFind and fAt stay valid until the dictionary is next changed.
///
/// Failure: nothing throws; lookups of a missing path answer null or false. A stream that
/// fails, or whose entries are not in strictly ascending path order (damaged or forged),
/// leaves the dictionary unchanged and the stream failed.
class VFC_API vSFileDict : public RWCollectable {
  public:
    vSFileDict() = default;
    vSFileDict(const vSFileDict& other) = default;
    vSFileDict& operator=(const vSFileDict& other) = default;
    ~vSFileDict() override;

    size_t fEntries() const { return aEntries.size(); }
    bool fIsEmpty() const { return aEntries.empty(); }
    void fClear() { aEntries.clear(); }

    // Adds entry, or replaces the entry of its path. True when the path was new.
    bool fInsert(const vSFile& entry);
    bool fInsert(const vFile& file, const vString& value = vString());
    // Adds every file of files not there yet, with value; existing entries are kept as they
    // are. Returns how many were added.
    size_t fInsertAll(const vSlistvFile& files, const vString& value = vString());
    // The entry of the path, or null.
    const vSFile* fFind(const vFile& file) const;
    vSFile* fFind(const vFile& file);
    bool fContains(const vFile& file) const { return fFind(file) != nullptr; }
    // The value of the path into value; false, with value unchanged, when the path is absent.
    bool fLookup(const vFile& file, vString& value) const;
    // Removes the entry of the path; false when there was none.
    bool fRemove(const vFile& file);
    // Removes folder's own entry and every entry below it; returns how many went.
    size_t fRemoveBelow(const vFile& folder);

    // The entry at index in path order (0 is the first); null from fEntries() on.
    const vSFile* fAt(size_t index) const;
    // The index of the first entry whose path is not before file's (fEntries() when none).
    size_t fIndexOf(const vFile& file) const;
    // Appends folder's own entry and every entry below it ("folder/..."; on Windows "\" too)
    // to out in path order; returns how many.
    size_t fFindBelow(const vFile& folder, vSlistvFile& out) const;

    // Stamps every entry (vSFile::fStamp); returns how many could not be stamped.
    size_t fStampAll();
    // Appends, in path order, every file that changed since its stamp (vSFile::fIsChanged:
    // edited, removed or never stamped); returns how many.
    size_t fCollectChanged(vSlistvFile& out) const;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Entry by entry in path order, then by size; -1 against another class.
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
    // Adds entry where its path belongs; an entry already there is replaced when replace is
    // set, else kept. True when the path was new.
    bool insert(const vSFile& entry, bool replace);
    // The positions [first, end) of the entries whose paths begin with path.
    std::pair<size_t, size_t> prefixRun(const vString& path) const;

    std::vector<vSFile> aEntries;  // strictly ascending by path
};

#endif  // VFC_FILES_VSFILEDICT_H
