// vStringUtils: URL escaping of strings, in place.
#ifndef VFC_CORE_VSTRINGUTILS_H
#define VFC_CORE_VSTRINGUTILS_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

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
