#ifndef VFC_SYSTEM_VLIBRARY_H
#define VFC_SYSTEM_VLIBRARY_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/rw/RWCollectable.h"

/// A dynamically loaded library named by its file, with a prefix put in front of every function
/// name looked up in it.
///
/// Nothing is loaded until fConstruct. Libraries are collectables that order, compare and hash
/// as their files do: two libraries over one file are equal whatever their prefixes. They
/// persist as file and prefix; a restored library is not loaded.
///
/// \code
/// vLibrary lib("Plugin_", vFile("/opt/tools/libconvert.so"));
/// int state = 0;
/// if (lib.fConstruct() && lib.fExecute("Init", &state)) ...;   // calls Plugin_Init(&state)
/// \endcode
///
/// Ownership: the object holds the system's handle but never releases it: a loaded library is
/// never unloaded again (not by the destructor, not by anything else), so function addresses
/// taken from it stay valid until the process ends. A copy of a loaded library holds the same
/// handle. The arguments handed to fExecute and fExecuteCollectable stay the caller's.
/// fLastSymbol() is updated by the const lookups, so one object must not run lookups from two
/// threads at once.
///
/// Failure: nothing throws. fConstruct answers false when the file cannot be loaded;
/// fExecute and fExecuteCollectable answer false when the library is not loaded, the symbol is
/// missing, or the function returned 0 (fLastSymbol() tells which name was looked up). A
/// damaged stream leaves the library as it was.
class VFC_API vLibrary : public RWCollectable {
  public:
    vLibrary() = default;
    // A copy of a loaded library is loaded too: both hold the same handle.
    vLibrary(const vLibrary& other) = default;
    // Stores the prefix and the file; nothing is loaded yet.
    vLibrary(const vString& prefix, const vFile& file);
    vLibrary& operator=(const vLibrary& other) = default;
    ~vLibrary() override;

    // Loads the file (every symbol resolved now). True when a handle was obtained; on failure
    // nothing changes (an unloaded library stays unloaded, a loaded one keeps its handle). A
    // library already loaded is loaded again, which the system answers with the same handle for
    // the same file.
    bool fConstruct();
    // Looks up the exported function named prefix + function, taking one pointer and returning
    // int, and calls it with argument: true when it returned non-zero. False, without calling
    // anything, when the library is not loaded or does not export that name.
    bool fExecute(const vString& function, void* argument) const;
    // The same for a C++ function `int prefix+function(const RWCollectable&, RWCollectable&)`,
    // looked up by its decorated name (see fMungeName); the function reads in and may fill out.
    bool fExecuteCollectable(const vString& function, const RWCollectable& in,
                             RWCollectable& out) const;

    bool fIsLoaded() const { return aModule != nullptr; }
    const vFile& fFile() const { return aFile; }
    const vString& fPrefix() const { return aPrefix; }
    // The path the library was loaded from; empty until fConstruct succeeds.
    const vString& fLoadedPath() const { return aLoadedPath; }
    // The symbol name the last fExecute or fExecuteCollectable looked up, found or not (the
    // decorated name for the latter); empty before the first lookup.
    const vString& fLastSymbol() const { return aLastSymbol; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By file: as the files compare, are equal and hash; against another class -1 and false.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override { return aFile.hash(); }
    bool isEqual(const RWCollectable* other) const override;
    // The file's path and type name, then the prefix. The handle and the two records above are
    // not written; a restored library is unloaded.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    friend class vLibraryTestAccess;

    // The decorated (Itanium C++ ABI) symbol of a global function `int name(const
    // RWCollectable&, RWCollectable&)`: "_Z", the length of name in decimal, name, then the
    // parameter list "RK13RWCollectableRS_". name must be a plain identifier (no namespace).
    void fMungeName(const vString& name, vString& decorated) const;
    // The address exported under symbol, or null; records symbol as the last one looked up.
    void* fFind(const vString& symbol) const;
    void fForget();

    void* aModule = nullptr;
    vFile aFile;
    vString aLoadedPath;
    mutable vString aLastSymbol;
    vString aPrefix;
};

#endif  // VFC_SYSTEM_VLIBRARY_H
