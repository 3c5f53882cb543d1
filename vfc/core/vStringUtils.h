#ifndef VFC_CORE_VSTRINGUTILS_H
#define VFC_CORE_VSTRINGUTILS_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

/// URL escaping of strings, in place.
///
/// Both functions rewrite the string they are given and return a reference to it; they never fail.
/// Only characters of one byte in the current locale are escaped; the bytes of longer characters
/// stay as they are.
///
/// \code
/// vString s("a b/c:d~");
/// vStringUtils::sfURLEncode(s);   // "a%20b%2fc:d%7e"
/// vStringUtils::sfURLDecode(s);   // "a b/c:d~" again
/// \endcode
class VFC_API vStringUtils {
  public:
    // Replaces each one-byte character of the set  space " # % & ' / < > ? [ \ ] ^ ` { | } ~
    // by "%" and two lower-case hex digits; everything else, multi-byte characters included,
    // stays. "/" is escaped and ":" is not.
    //   "a b/c:d~"  =>  "a%20b%2fc:d%7e"
    static vString& sfURLEncode(vString& s);
    // Replaces each "%" followed by two hex digits (either case) by the byte they give, except
    // "%00", which stays as written; a "%" without two hex digits stays too.
    //   "a%20b%2F%00%zz"  =>  "a b/%00%zz"
    static vString& sfURLDecode(vString& s);
};

#endif  // VFC_CORE_VSTRINGUTILS_H
