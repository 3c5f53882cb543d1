#ifndef VFC_FILES_VFILEOPS_H
#define VFC_FILES_VFILEOPS_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/text/vTime.h"

/// \file
/// Operations on files and directories named by vFile: making directory trees, unique
/// temporary files and folders, removing, copying, renaming, and asking for access, size and
/// modification time. A converter makes its output tree, copies the images a document refers
/// to, works in a temporary folder and renames it into place with these.
///
/// \code
/// vFile out("site");
/// if (!vcMakeDirectoryTree(vFile("site/img"))) ...;
/// vcCopyFile(vFile("draft/logo.gif"), vFile("site/img/logo.gif"));  // keeps its time
/// vcRemoveTree(vFile("site.old"));                                   // links are not followed
/// \endcode
///
/// Paths take "/" between names on every platform (and "\" too on Windows). Nothing throws;
/// each function returns false when it failed and says below what a failure may leave behind.
/// Unlike std::filesystem (which throws or fills an error_code) and POCO's File (which throws),
/// a failure is a false result only, as everywhere in this library; unlike both, a tree is
/// removed without ever following a symbolic link (or, on Windows, a junction) out of it, and
/// copied without following links to directories, so neither can loop or reach outside.

/// Makes the directory and every missing parent. True when it is a directory afterwards (also
/// when it was one already); false when something else is in the way or a folder cannot be
/// made (the parents made before stay).
VFC_API bool vcMakeDirectoryTree(const vFile& dir);

/// Removes a file or a symbolic link (never what the link points to). False when nothing is
/// there, it is a directory, or the system refuses. A read-only file on Windows is removed too.
VFC_API bool vcRemoveFile(const vFile& file);
/// Removes an empty directory. False when it is missing, not empty or not a directory.
VFC_API bool vcRemoveDirectory(const vFile& dir);
/// Removes path and, for a directory, everything in it. A symbolic link inside is removed
/// itself: nothing outside the tree is touched, and a link loop ends nothing. False when
/// nothing was there or anything could not be removed; what could be removed is gone then.
VFC_API bool vcRemoveTree(const vFile& path);

/// Copies the file from into to (replaced when present), with from's modification time. False
/// when from is no regular file or a step fails (to may then be incomplete).
VFC_API bool vcCopyFile(const vFile& from, const vFile& to);
/// Copies the directory from into to (made with its parents when missing): files with their
/// modification times, folders too. A link to a file is copied as the file; a link to a
/// directory is not followed and not copied. False when from is no directory or anything could
/// not be copied (what could be stays).
VFC_API bool vcCopyTree(const vFile& from, const vFile& to);
/// Renames or moves from to to, replacing a file at to: in one atomic step on POSIX (within one
/// file system); on Windows by MoveFileExA, which also moves to another volume by copying.
/// False when from is missing or the system refuses (a directory at to, say).
VFC_API bool vcRenameFile(const vFile& from, const vFile& to);

/// Whether this process may read (write) the file or directory; false when it is missing.
VFC_API bool vcIsReadable(const vFile& file);
VFC_API bool vcIsWritable(const vFile& file);
/// The size in bytes; false when the file cannot be examined.
VFC_API bool vcFileSize(const vFile& file, unsigned long long& size);
/// The time of the last modification; false when the file cannot be examined.
VFC_API bool vcModificationTime(const vFile& file, vTime& time);
/// Sets the time of the last modification; false on failure.
VFC_API bool vcSetModificationTime(const vFile& file, const vTime& time);

/// The folder for temporary files: $TMPDIR or "/tmp" on POSIX, GetTempPathA on Windows.
VFC_API vFile vcTempFolder();
/// Creates a new empty file named prefix followed by eight random hexadecimal digits in folder
/// (vcTempFolder() when folder's path is empty), never one that exists; made receives it. The
/// caller removes it (or keeps it). False when none can be created.
VFC_API bool vcMakeTempFile(const vFile& folder, const vString& prefix, vFile& made);
/// The same for a new empty directory.
VFC_API bool vcMakeTempDirectory(const vFile& folder, const vString& prefix, vFile& made);

#endif  // VFC_FILES_VFILEOPS_H
