#ifndef VFC_CORE_VSUBSTRING_H
#define VFC_CORE_VSUBSTRING_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWCSubString.h"

class vString;

/// A writable view of a range of a vString, as returned by vString's substring operators.
///
/// Assigning to the view replaces that range in the string it refers to, which grows or shrinks;
/// assigning "" deletes the range. The view then covers the new text, so it can be assigned again.
///
/// Ownership: the view owns nothing. It refers to the string object it was made from and is valid
/// only while that string lives and is not resized through other paths; copies of that string made
/// before the assignment keep their bytes.
///
/// Failure: failed lookups return the null substring (isNull(); start RW_NPOS, length 0), which
/// reads as empty and ignores assignment. Check isNull() before relying on an assignment.
class VFC_API vSubString : public RWCSubString {
  public:
    vSubString(const vSubString& other) = default;
    vSubString(const RWCSubString& other) : RWCSubString(other) {}
    virtual ~vSubString();

    vSubString& operator=(const char* s);
    vSubString& operator=(const vString& s);
    vSubString& operator=(const vSubString& s);

  private:
    friend class vString;
    vSubString(const vString& s, size_t start, size_t extent);
};

#endif  // VFC_CORE_VSUBSTRING_H
