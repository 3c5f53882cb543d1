// vSubString: a writable view of a range of a vString. Assigning to it replaces that range in
// the owning string (which grows or shrinks); assigning "" deletes it. Only vString's substring
// operators make new views. A view is valid while its string lives and is not resized by others;
// the null substring, which failed lookups return, ignores assignment.
#ifndef VFC_CORE_VSUBSTRING_H
#define VFC_CORE_VSUBSTRING_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/rw/RWCSubString.h"

class vString;

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
