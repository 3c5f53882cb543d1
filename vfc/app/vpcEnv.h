#ifndef VFC_APP_VPCENV_H
#define VFC_APP_VPCENV_H

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"

/// \file
/// The environment functions: reading and setting variables, splitting the search path,
/// sleeping, and expanding the variable references users write into paths and settings.
///
/// \code
/// vString path("%VORLANDIXHOME%/styles/$LANG/site.css");
/// vpcUserEnvExpand(path);   // "/opt/vorlandix/styles/en/site.css"
/// \endcode
///
/// None of them throws or reports an error beyond the results described; results are written
/// into the caller's objects.

/// The variable's value; false, with value untouched, when it is not set (a variable set to
/// the empty string gives true and an empty value).
VFC_API bool vpcGetEnv(const vString& name, vString& value);
/// Sets the variable for this process. On POSIX the system keeps its own copy of name and
/// value; on Windows the text "name=value" goes to _putenv and is never freed (the runtime
/// keeps pointing at it), and an empty value removes the variable there. Nothing reports a
/// failure: an empty name or one holding "=" leaves the environment unchanged.
VFC_API void vpcPutEnv(const vString& name, const vString& value);
/// Replaces the contents of list with the entries of "PATH" in order, split at the platform's
/// list separator (runs of "[^;]+" on Windows, "[^:]+" on POSIX); empty entries vanish. An unset "PATH" leaves the list empty.
VFC_API void vpcGetPathList(vSlistvString& list);
/// Sleeps for whole seconds, one Sleep(1000) at a time (nothing for zero or less).
VFC_API void vpcSleep(const vInt& seconds);
/// Expands the variable references of text in place.
///
/// A reference is "%" name "%" or "$" name (the name running to the next "$", "/", ":" or "\").
/// "VORLANDIXHOME" is the current application's product directory whatever the environment
/// says (without an application, what one would compute); then come environment variables; then
/// the folder names CSIDL_PERSONAL (the user's documents folder), CSIDL_APPDATA (the user's
/// roaming application data; on POSIX the configuration folder) and CSIDL_WINDOWS (the Windows
/// directory; on POSIX it has no counterpart and stays as written). On Windows the folders come
/// from SHGetFolderPathA, with "SHFolder.dll" loaded on first use and kept; when it is missing
/// they stay as written. Each folder is asked for afresh at every expansion. Unknown references
/// stay as written, and expanded values are not expanded again.
VFC_API void vpcUserEnvExpand(vString& text);
/// The list separator of "PATH" on this platform: ";" on Windows, ":" on POSIX.
VFC_API char vpcPathListSeparator();

#endif  // VFC_APP_VPCENV_H
