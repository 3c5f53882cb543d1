// Combining, comparing and checking paths held as component lists, so that one algorithm serves
// every notation. None of these report errors: an operation that does not apply gives its
// fallback (see each function).
#ifndef VFC_FILES_VPATHALGEBRA_H
#define VFC_FILES_VPATHALGEBRA_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/files/vPathType.h"

// Goes up one level at the end of list: drops a last name, adds an up after an up or to an
// empty list, turns a lone current directory into up; a fragment or query at the end goes
// first; at a drive, root, server, share, scheme, host or port nothing changes.
VFC_API void vpUpOneLevel(vPathComponentList& list);
// first and last: the positions of the first and the last name, up or current component; -1
// when there is none.
VFC_API void vpNameRange(const vPathComponentList& list, int& first, int& last);
// Removes a last name into removed (a fragment or query after it goes too). Returns false
// whatever it did: test the list, not the result.
VFC_API bool vcTrimLastComponent(vPathComponentList& list, vPathComponent& removed);
// rel resolved against the directory base: rel itself when it is absolute, base when rel is
// empty; ups remove names of base and are dropped when there is none left.
VFC_API void vcResolvePath(const vPathComponentList& base, const vPathComponentList& rel,
                           vPathComponentList& out);
// The relative path that leads from the directory from to to; "." (one current component) when
// the two are equal or either is relative. The flag is not read.
VFC_API void vcMakeRelative(bool flag, const vPathComponentList& from,
                            const vPathComponentList& to, vPathComponentList& out);
// The directory from which rel leads to full; empty when rel does not end full. out is always
// flagged as a directory.
VFC_API void vcMakeReference(const vPathComponentList& full, const vPathComponentList& rel,
                             vPathComponentList& out);
// In DOS notation, whether every component is a valid 8.3 name (upper- or lower-case base,
// lower-case extension); every list is valid in any other notation.
VFC_API bool vcValidPath(vPathType::TypeEnum notation, const vPathComponentList& list);
// Replaces the extension of the path string (the last "." and what follows, when no "/" or "."
// follows it) by ext, adding a "." in front when ext has none, or appends it; an empty ext
// removes the extension. Assumes "/" separators.
VFC_API void vcSetPathExtension(const vString& ext, vString& path);

#endif  // VFC_FILES_VPATHALGEBRA_H
