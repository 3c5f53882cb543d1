#ifndef VFC_FILES_VPATHALGEBRA_H
#define VFC_FILES_VPATHALGEBRA_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/files/vPathType.h"

/// \file
/// Combining, comparing and checking paths held as component lists (see vcListComponents), so
/// that one algorithm serves every notation.
///
/// None of these report errors: an operation that does not apply gives its fallback (see each
/// function). Results are written into lists the caller passes in and owns; an output list may
/// be one of the inputs.

/// Goes up one level at the end of list: drops a last name, adds an up after an up or to an
/// empty list, turns a lone current directory into up; a fragment or query at the end goes
/// first; at a drive, root, server, share, scheme, host or port nothing changes.
VFC_API void vpUpOneLevel(vPathComponentList& list);
/// Sets first and last to the positions of the first and the last name, up or current
/// component of list; both -1 when there is none.
VFC_API void vpNameRange(const vPathComponentList& list, int& first, int& last);
/// Removes a last name into removed (a fragment or query after it goes too); without a last
/// name, only trailing fragments and queries go and removed is untouched. Returns false
/// whatever it did: test the list, not the result.
VFC_API bool vcTrimLastComponent(vPathComponentList& list, vPathComponent& removed);
/// Writes into out rel resolved against the directory base: rel itself when it is absolute, base
/// when rel is empty; ups remove names of base and are dropped when there is none left. out
/// takes the trailing-separator flag of rel (of base when rel is empty).
VFC_API void vcResolvePath(const vPathComponentList& base, const vPathComponentList& rel,
                           vPathComponentList& out);
/// Writes into out the relative path that leads from the directory from to to; "." (one current
/// component) when the two are equal or either is relative. out takes the trailing-separator
/// flag of to; the parameter flag is not used.
VFC_API void vcMakeRelative(bool flag, const vPathComponentList& from,
                            const vPathComponentList& to, vPathComponentList& out);
/// Writes into out the directory from which rel leads to full; empty when rel does not end full
/// (or full is relative, or rel is not). out is always flagged as a directory.
VFC_API void vcMakeReference(const vPathComponentList& full, const vPathComponentList& rel,
                             vPathComponentList& out);
/// In DOS notation, whether every component is a valid 8.3 name (upper- or lower-case base,
/// lower-case extension); every list is valid in any other notation.
VFC_API bool vcValidPath(vPathType::TypeEnum notation, const vPathComponentList& list);
/// Replaces the extension of the path string (the last "." and what follows, when no "/" or "."
/// follows it) by ext, adding a "." in front when ext has none, or appends it; an empty ext
/// removes the extension. Assumes "/" separators. ext may be path itself.
VFC_API void vcSetPathExtension(const vString& ext, vString& path);

#endif  // VFC_FILES_VPATHALGEBRA_H
