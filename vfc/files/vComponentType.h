#ifndef VFC_FILES_VCOMPONENTTYPE_H
#define VFC_FILES_VCOMPONENTTYPE_H

#include "vfc/base/export.h"

/// The kinds of the components of a parsed path (see vPathComponent and vcListComponents).
///
/// Only a holder for the enumeration TypeEnum; it has no objects of interest. The root, root of
/// the current drive, up and current kinds carry no text; every other kind carries the text of
/// the component.
class VFC_API vComponentType {
  public:
    enum TypeEnum : int {
        eScheme = 0,       // scheme of a URL ("http")
        eHost = 1,         // host of a URL
        eRoot = 2,         // the root of a file system or a drive; no text
        eCurrentRoot = 3,  // the root of the current drive or host ("/x" without anchor); no text
        eDrive = 4,        // drive ("C:") or volume
        eName = 5,         // a directory or file name
        eUp = 6,           // up one level (".."); no text
        eCurrent = 7,      // the current directory ("."); no text
        eServer = 8,       // UNC server
        eShare = 9,        // the share after a UNC server
        ePort = 10,        // port of a URL host
        eFragment = 11,    // URL fragment, after "#"
        eQuery = 12        // URL query, after "?"
    };
};

#endif  // VFC_FILES_VCOMPONENTTYPE_H
