#ifndef VFC_FILES_VPATHMODEL_H
#define VFC_FILES_VPATHMODEL_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/files/vPathType.h"

/// \file
/// Parsing and writing paths in every notation (see vPathType), and translating between them.
///
/// The rules the parser follows, notation by notation, so that writing a parsed list gives the
/// input back for an ordinary path. Everywhere, an empty string gives an empty list, empty
/// entries between doubled separators are dropped, and "." and ".." entries are the current
/// directory and up one level (not in Mac and MIF, which have their own up).
///
/// \code{.unparsed}
///  DOS      "C:" (a letter and a colon) first is a drive, and a drive is always written with
///           a "/" before the next entry ("C:x" reads as "C:/x"). "\\server/share" or
///           "//server/share" first is a server and its share; the server ends at "/" or "\".
///           A "/" first without a drive is the root of the current drive. Entries end at "/"
///           only. Written: server with "\\" in front, entries joined with "/".
///  Mac      "Volume:a:b" is absolute (the volume is a drive), ":a:b" relative, a lone name "a"
///           relative; after the first colon every further empty entry is up one level
///           ("HD:a::b" is HD, a, up, b); a final ":" marks a directory. Written the same way,
///           with a lone relative name written without a colon.
///  UNIX     "/" first is the root. Written: root "/", entries joined with "/"; a drive or a
///           volume from another notation is written "/C:", a server or host "//server".
///  MIF      markers <r> root, <v> volume (drive), <h> host (server), <c> name, <u> up; the text
///           of a marker runs to the next "<". Text before any marker is a name. In a MIF string
///           the markers end in "\>" instead of ">".
///  URL      "scheme://host:port/a/b?query#fragment". The fragment starts at the first "#", the
///           query at the first "?" before it. A host (with a port when it ends in ":digits")
///           follows "scheme://" when the next character is not "/"; the "/" after the host
///           only separates. "scheme:///a" has no host and a root; "file:///C:/a" a drive;
///           "file://///server/share/a" a UNC server and its share. "news:" and "mailto:"
///           take everything after the colon as one name; "scheme:/a" and "scheme:a" are read
///           like "scheme:///a" and "scheme://a"'s path. Without a scheme, "/" first is the root
///           of the host. Written: the scheme with "://" (":" for news and mailto), the host,
///           the port unless it is the scheme's default (http 80, https 443, ftp 21, telnet 23,
///           gopher 70, smtp and mailto 25, nntp and news 119), entries joined with "/", "?"
///           before the query, "#" before the fragment; a drive or a server in a list without a
///           scheme gets "file://" in front.
///  portable "/" first is the root, "//server/share" a server and its share, a first entry that
///           is only a drive ("C:") a drive; fragment and query as in URLs; no scheme or host.
///           Written like UNIX, with "#" and "?" as in URLs.
/// \endcode
///
/// A trailing separator sets the list's flag; only the URL and portable notations write it back.
/// Scheme, host, port, fragment and query are left out when a list is written in a file-system
/// notation (a host is written like a server); a notation with no way to write a kind leaves it
/// out.
///
/// Results are written into the caller's objects; nothing here throws or reports an error, and
/// any text parses into some list.

/// Splits path, written in the notation, into out (emptied first). When isDirectory is true the
/// list's trailing-separator flag is set even without a separator at the end. Host-notation
/// lists of more than one component are kept in a process-wide cache of about 1024 paths, which
/// is not locked: do not call this function from two threads at once.
VFC_API void vcListComponents(vPathType::TypeEnum notation, const vString& path,
                              vPathComponentList& out, bool isDirectory = false);
/// Writes the list as a path in the notation into out (replacing its contents); returns out.
VFC_API vString& vcGeneratePath(vPathType::TypeEnum notation, const vPathComponentList& in,
                                vString& out);
/// Lists path in notation from and writes it in notation to into out; returns out. The same
/// threading rule as for vcListComponents applies.
VFC_API vString& vcPathTrans(vPathType::TypeEnum from, const vString& path,
                             vPathType::TypeEnum to, vString& out, bool isDirectory = false);
/// False when the list starts with a scheme, host, root, drive or server; true otherwise (an
/// empty list included).
VFC_API bool vcIsRelative(const vPathComponentList& list);

#endif  // VFC_FILES_VPATHMODEL_H
