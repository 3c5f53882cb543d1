#ifndef VFC_FILES_VFILE_H
#define VFC_FILES_VFILE_H

#include <iosfwd>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"

class vIfstream;

/// A file named by its path, with the content type the library knows for it.
///
/// The path is kept as given (in the host's notation); files compare, hash and are equal by that
/// path alone. The type starts unset (eNone) and is set by the input file stream when it opens
/// the file in binary mode and looks at its first bytes, or by restoring; the type names are the
/// stored form of the type.
///
/// \code
/// vIfstream in;
/// if (in.fOpenBinary(vFile("chapter1.mif")))
///     std::cout << in.fFileInfo().fTypeName();   // "application/vnd.mif" for a MIF file
/// \endcode
///
/// Nothing here touches the file except QueryStat, fIsDirectory and fKind, which ask the system
/// each time; a vFile may name a file that does not exist.
///
/// Ownership: a value class that owns its path string; copies are independent.
///
/// Failure: nothing throws. QueryStat and fIsDirectory answer false, and fKind eMissing, when the
/// system cannot tell;
/// unknown type names give eUnknown. restoreGuts leaves the file unchanged when the stream
/// fails; check the stream's state. The RWFile forms persist nothing.
class VFC_API vFile : public RWCollectable {
  public:
    // The content types; each has the fixed name given by sfFileTypeToConstChar.
    enum FileTypeEnum : int {
        eNone = 0,                  // ""  (no type set)
        eUnknown = 1,               // ""  (a type name that is not known)
        eDirectory = 2,             // "directory"
        eText = 3,                  // "text/plain"
        eBinary = 4,                // "binary"
        eMIF = 5,                   // "application/vnd.mif"
        eMIFBook = 6,               // "application/vnd.mifbook"
        eMaker = 7,                 // "application/vnd.framemaker"
        eMakerBook = 8,             // "application/vnd.framemakerbook"
        eHTML = 9,                  // "text/html"
        eGIF = 10,                  // "image/gif"
        ePNG = 11,                  // "image/png"
        eJPEG = 12,                 // "image/jpeg"
        ePostScript = 13,           // "text/postscript"
        eXML = 14,                  // "text/xml"
        eVorlandix = 15,            // "vorlandix" (the persistent-object file)
        eVorlandixVApp94 = 16,      // "vorlandix-v-app-94"
        eVorlandixFileset95 = 17,   // "vorlandix-ndt-fileset-95"
        eVorlandixFileset97 = 18,   // "vorlandix-ndt-fileset-97"
        eVorlandixFileset40 = 19,   // "vorlandix-ndt-fileset-40"
        eVorlandixNDT70 = 20,       // "vorlandix-ndt-70"
        eVorlandixNDT80 = 21,       // "vorlandix-ndt-80"
        eVorlandixIndex94 = 22,     // "vorlandix-nse-index-94"
        eVorlandixNDTXML = 23       // "vorlandix-ndt-xml"
    };

    vFile() = default;
    vFile(const vString& path) : aPath(path) {}
    vFile(const char* path) : aPath(path) {}
    vFile(const vFile& other) = default;
    vFile& operator=(const vFile& other) = default;
    ~vFile() override;

    // The path as given.
    const vString& fPath() const { return aPath; }
    // Names another file; the type is reset to eNone.
    void fSetPath(const vString& path);
    // True when something exists at the path.
    bool QueryStat() const;
    // True when the path names a directory.
    bool fIsDirectory() const;

    // What the path names, as the system sees it now (symbolic links followed). Only regular
    // files have content worth typing; the others are told apart without opening them, since
    // opening a FIFO waits for a writer and reading a device may never end.
    enum class KindEnum : int {
        eMissing = 0,      // nothing there, or the path cannot be examined
        eRegular = 1,      // a regular file
        eDirectory = 2,
        eFifo = 3,         // a named pipe
        eSocket = 4,       // a local socket
        eCharDevice = 5,   // a character device (a terminal, /dev/null)
        eBlockDevice = 6,  // a block device (a disk)
        eOther = 7         // anything else the system has
    };
    KindEnum fKind() const;
    // The media-type name of a kind: "inode/fifo", "inode/socket", "inode/chardevice",
    // "inode/blockdevice", "inode/directory"; "" for a regular file, a missing one and eOther.
    static const char* sfKindToConstChar(KindEnum kind);
    // The text after the last "." of the last name ("/", and on Windows "\", separate names),
    // "" when that name has none.
    vString fExtension() const;
    // The path as the host system writes it: on Windows with every "/" turned into "\" (the DOS
    // form), on POSIX the path itself.
    vString fDOSPath() const;

    FileTypeEnum fType() const { return aType; }
    const char* fTypeName() const { return sfFileTypeToConstChar(aType); }

    // The name of a type: "" outside 2..23.
    static const char* sfFileTypeToConstChar(FileTypeEnum type);
    // The type of a name, compared byte for byte with case: "" is eNone, an unknown name eUnknown.
    static FileTypeEnum sfConstCharToFileType(const char* name);

    bool fIsEqual(const vFile& other) const { return aPath.fIsEqual(other.aPath); }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // By path; -1 against another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override { return aPath.hash(); }
    bool isEqual(const RWCollectable* other) const override;
    // The path and the type name. The RWFile forms write and read nothing.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // The input file stream records what it detected.
    friend class vIfstream;
    void setType(FileTypeEnum type) { aType = type; }
    void setType(const vString& typeName) { aType = sfConstCharToFileType(typeName.data()); }

    vString aPath;
    FileTypeEnum aType = eNone;
};

/// Writes the path's bytes to out as they are (not the type); returns out.
VFC_API std::ostream& operator<<(std::ostream& out, const vFile& file);

#endif  // VFC_FILES_VFILE_H
