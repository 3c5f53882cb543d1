#ifndef VFC_FILES_VPATHTYPE_H
#define VFC_FILES_VPATHTYPE_H

#include "vfc/base/export.h"
#include "vfc/os/platform.h"

/// The path notations: a holder for the enumeration TypeEnum and the function that normalises
/// a notation.
///
/// Five families of four, each family once plain (0-19) and once flagged (20-39, the same
/// notation plus 20). In every family the members are, in order, the host notation, DOS, Mac
/// and UNIX:
/// \code{.unparsed}
///    0- 3  file-system paths     "C:/dir/file", "HD:dir:file", "/dir/file"
///    4- 7  MIF paths             "<v>C:<r><c>dir<c>file", markers <h> <r> <v> <c> <u>
///    8-11  MIF paths inside a MIF string, whose markers end in "\>": "<r\><c\>dir"
///   12-15  URLs                  "http://host:8080/dir/file?query#fragment"
///   16-19  portable references   "dir/file#fragment", "/dir/file", "//server/share/dir"
/// \endcode
/// Inside the MIF, URL and portable families the four members write the same syntax. The flag
/// (values 20-39) makes the parser unescape and the generator escape the text of components;
/// see vPathComponent. On this platform the host member of each family is its UNIX member.
///
/// Every switch on a notation goes through sfTransPathType first, so it never sees a host
/// member or a flagged value. The enumeration holds any int; nothing fails on a value outside
/// 0-39, which is parsed and written like UNIX.
class VFC_API vPathType {
  public:
    enum TypeEnum : int {
        eHost = 0,
        eDOS,
        eMac,
        eUNIX,
        eMIFHost,
        eMIFDOS,
        eMIFMac,
        eMIFUNIX,
        eMIFEscapedHost,
        eMIFEscapedDOS,
        eMIFEscapedMac,
        eMIFEscapedUNIX,
        eURLHost,
        eURLDOS,
        eURLMac,
        eURLUNIX,
        ePortableHost,
        ePortableDOS,
        ePortableMac,
        ePortableUNIX,
        eHostFlagged,
        eDOSFlagged,
        eMacFlagged,
        eUNIXFlagged,
        eMIFHostFlagged,
        eMIFDOSFlagged,
        eMIFMacFlagged,
        eMIFUNIXFlagged,
        eMIFEscapedHostFlagged,
        eMIFEscapedDOSFlagged,
        eMIFEscapedMacFlagged,
        eMIFEscapedUNIXFlagged,
        eURLHostFlagged,
        eURLDOSFlagged,
        eURLMacFlagged,
        eURLUNIXFlagged,
        ePortableHostFlagged,
        ePortableDOSFlagged,
        ePortableMacFlagged,
        ePortableUNIXFlagged
    };

    // The member that stands for the host notation: DOS (1) on Windows, UNIX (3) on POSIX.
    static constexpr int kHostMember = vfc::os::kHostPathMember;

    // Normalises a notation: flagged is set for 20-39 and the 20 is taken off; then the host
    // member of each family becomes the family's kHostMember. A value outside 0-39 passes
    // through unflagged, unchanged.
    static void sfTransPathType(TypeEnum in, TypeEnum& out, bool& flagged);
};

#endif  // VFC_FILES_VPATHTYPE_H
