#ifndef VFC_FILES_VDIRHIERFILTER_H
#define VFC_FILES_VDIRHIERFILTER_H

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vMatchList.h"
#include "vfc/rw/RWCollectable.h"

/// The files of a directory tree whose names pass an include and an exclude list, walked in a
/// stable order: what a converter runs over when it is given a folder instead of a file.
///
/// \code
/// vDirHierFilter filter(vFile("docs"));
/// filter.fSetInclude(htmlPatterns);   // a vMatchList of "*.htm", "*.html"
/// filter.fSetExclude(skipPatterns);   // "CVS", "*.bak": a CVS folder is not even entered
/// vSlistvFile pages;
/// if (!filter.fCollect(pages)) ...;   // "docs" cannot be read
/// \endcode
///
/// The walk: the entries of each folder are taken sorted by name, byte for byte, and a folder's
/// contents follow it at once (depth first, so the order is that of the sorted paths with "/"
/// before any other byte). Each name (never the path) is matched against the lists: an excluded
/// entry is neither yielded nor, for a folder, entered; an included one is yielded, and an
/// empty include list takes every name. Folders are entered whatever the include list says.
/// The root's own entries are on level 0 and folders are entered down to the depth limit (0:
/// the root's entries only; negative: no limit). Regular files are yielded, and folders too
/// when fDirectories() is set (files only by default); pipes, sockets, devices and dangling
/// links are left out. A yielded path is the root's path, "/" (unless the root ends in a
/// separator already) and the relative path with "/" between names, on every platform.
///
/// Symbolic links (and on Windows junctions): a link to a file is yielded as a file; a link to
/// a folder is yielded as a folder when folders are asked for, but never entered. The root
/// itself is read wherever it leads.
///
/// Where it differs from other tree walkers, and why: std::filesystem's
/// recursive_directory_iterator, POCO's DirectoryIterator and RecursiveDirectoryIterator and
/// Qt's QDirIterator give the entries in the order the system lists them; here the order is
/// sorted, so output and everything built from it is the same on every machine. They can be
/// told to follow links to folders (and then can run in circles); here such links are never
/// followed, so a link loop cannot hang the walk and nothing outside the tree is reached. An
/// unreadable folder makes the first two throw or report an error that ends the iteration;
/// here it is skipped with a warning and the walk goes on, since one locked folder should not
/// cost the rest of a site. Filtering by wildcard lists and a depth limit are built in.
///
/// Persistence: on the virtual streams the root's path and type name, the include list, the
/// exclude list (each in vMatchList's form, without class identifier), the depth and the
/// folder flag. The RWFile forms write and read nothing. Equality, order and hash are by these
/// settings.
///
/// Ownership: a value class that owns its root and lists; copies are independent. A walk only
/// reads the object; as with vMatchList, one object must not be walked from two threads at
/// once.
///
/// Failure: nothing throws. fCollect and fWalk return false when the root cannot be read as a
/// folder (missing, no folder, refused); a folder below it that cannot be read is skipped and
/// reported through vAppInfo().fLogMsg at warning level (1). A damaged stream leaves the object
/// unchanged.
class VFC_API vDirHierFilter : public RWCollectable {
  public:
    // Called for each match in walk order with the yielded path and the caller's data; returns
    // false to stop the walk.
    using Visitor = bool (*)(const vFile& file, void* data);

    // No root (walks fail), empty lists, no depth limit, files only.
    vDirHierFilter() = default;
    explicit vDirHierFilter(const vFile& root);
    vDirHierFilter(const vFile& root, const vMatchList& include, const vMatchList& exclude,
                   int depth = -1, bool directories = false);
    vDirHierFilter(const vDirHierFilter& other) = default;
    vDirHierFilter& operator=(const vDirHierFilter& other) = default;
    ~vDirHierFilter() override;

    // Appends every match to out in walk order. False, with out unchanged, when the root cannot
    // be read; unreadable folders below it are reported and skipped.
    bool fCollect(vSlistvFile& out) const;
    // Calls visit for every match in walk order until it returns false. True when the walk
    // went to its end; false when the root cannot be read (visit is not called) or visit
    // stopped it.
    bool fWalk(Visitor visit, void* data) const;

    const vFile& fRoot() const { return aRoot; }
    const vMatchList& fInclude() const { return aInclude; }
    const vMatchList& fExclude() const { return aExclude; }
    int fDepth() const { return aDepth; }
    bool fDirectories() const { return aDirectories; }
    void fSetRoot(const vFile& root) { aRoot = root; }
    void fSetInclude(const vMatchList& include) { aInclude = include; }
    void fSetExclude(const vMatchList& exclude) { aExclude = exclude; }
    // 0: the root's entries only; negative: no limit.
    void fSetDepth(int depth) { aDepth = depth; }
    void fSetDirectories(bool directories) { aDirectories = directories; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By root path, then depth, folder flag and the two lists' patterns; -1 against another
    // class.
    int compareTo(const RWCollectable* other) const override;
    // Consistent with isEqual.
    unsigned hash() const override;
    // Another vDirHierFilter with the same root path, lists, depth and flag.
    bool isEqual(const RWCollectable* other) const override;
    // Read into temporaries first: a damaged stream leaves the object as it was.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    vFile aRoot;
    vMatchList aInclude;  // empty: every name
    vMatchList aExclude;
    int aDepth = -1;
    bool aDirectories = false;
};

#endif  // VFC_FILES_VDIRHIERFILTER_H
