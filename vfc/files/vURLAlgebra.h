#ifndef VFC_FILES_VURLALGEBRA_H
#define VFC_FILES_VURLALGEBRA_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

/// \file
/// URL references as RFC 3986 defines them, the way browsers and HTML resolve links:
/// resolution against a base (section 5.2, with the removal of dot segments), normalisation
/// (section 6.2.2 and the scheme-based rules of 6.2.3) and the shortest relative reference from
/// one URL to another.
///
/// \code
/// vString out;
/// vcResolveURL("http://a/b/c/d;p?q", "../g", out);           // "http://a/b/g"
/// vcMakeRelativeURL("http://a/b/c/d", "http://a/b/e/f", out);  // "../e/f"
/// vcNormalizeURL("HTTP://Example.COM:80/a/./b/../%7euser", out);  // "http://example.com/a/~user"
/// \endcode
///
/// These sit beside the path algebra (vcResolvePath, vcMakeRelative) and do not change it. The
/// algebra works on component lists in one of forty notations and keeps its documented answers,
/// which differ from the standard's: it resolves against a directory, so a base's last name is
/// kept; it leaves "." and ".." of an absolute reference alone; a query or fragment of the base
/// stays in front of what follows; and a relative path between two URLs of different schemes
/// drops the scheme. Nor is its URL notation used to split a URL here: it decodes
/// percent-escapes, which the standard keeps as written, and takes "file:" drives and "news:" or
/// "mailto:" names apart specially. The five parts of a reference (scheme, authority, path,
/// query, fragment) are split here as the standard's appendix B does.
///
/// The functions compare and copy bytes: text outside ASCII passes through unchanged, and
/// nothing is percent-encoded that was not. Inputs and outputs are vStrings; out may be one of
/// the inputs. Failure (not a URL) returns false and leaves out untouched: a URL must have a
/// scheme (a letter, then letters, digits, "+", "-" or "."), and no text may hold a control
/// character (below 0x20, or 0x7F). Running time is linear in the length of the texts.

/// Resolves the reference ref (a URL, or a relative reference such as "../g", "?y", "#s" or
/// "//host/p") against the URL base, as section 5.2.2 does it (strictly: a reference with a
/// scheme stands for itself even when the base has the same one). The base's fragment is not
/// used. False when base is not a URL or either text holds a control character.
VFC_API bool vcResolveURL(const vString& base, const vString& ref, vString& out);

/// Writes the normal form of url: scheme and host in lower case; percent-escapes with
/// upper-case hexadecimal digits, and those of unreserved characters (letters, digits, "-",
/// ".", "_", "~") decoded; the dot segments of the path removed; an empty port and the default
/// port of http, https, ws, wss (80, 443) and ftp (21) removed; an empty path after an
/// authority written as "/". URLs equal after this are the same resource by the standard. False
/// when url is not a URL.
VFC_API bool vcNormalizeURL(const vString& url, vString& out);

/// Writes the shortest reference that resolves against from (with vcResolveURL) to to: a
/// relative path ("../e/f", "./", "g?y"), a path from the root, a network path
/// ("//host/p"), or to itself when nothing shorter leads there (another scheme, say). Only the
/// fragment or query differing gives "#s" or "?y", and the same URL the empty reference. The
/// reference resolves to to with its dot segments removed (to's own resolution): schemes and
/// authorities are compared as written, so normalise both first (vcNormalizeURL) to have
/// "HTTP://A" and "http://a" taken as one. False when either is not a URL.
VFC_API bool vcMakeRelativeURL(const vString& from, const vString& to, vString& out);

#endif  // VFC_FILES_VURLALGEBRA_H
