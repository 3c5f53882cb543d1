// What the path code needs to know about a notation once it is normalised: its family and, for
// file-system paths, which of DOS, Mac and UNIX it is.
#ifndef VFC_FILES_INTERNAL_VPNOTATION_H
#define VFC_FILES_INTERNAL_VPNOTATION_H

#include "vfc/files/vPathType.h"

namespace vfc::path {

enum class Family { kFileSystem, kMIF, kMIFEscaped, kURL, kPortable, kUnknown };
enum class Member { kDOS = 1, kMac = 2, kUNIX = 3 };

struct Notation {
    vPathType::TypeEnum value;  // normalised
    bool flagged;
    Family family;
    Member member;  // DOS, Mac or UNIX; for the other families the member only names a flavour
};

inline Notation classify(vPathType::TypeEnum in) {
    Notation n{};
    vPathType::sfTransPathType(in, n.value, n.flagged);
    int v = static_cast<int>(n.value);
    if (v < 0 || v >= 20) {
        n.family = Family::kUnknown;
        n.member = Member::kUNIX;
        return n;
    }
    n.family = static_cast<Family>(v / 4);
    n.member = static_cast<Member>(v % 4 == 0 ? vPathType::kHostMember : v % 4);
    return n;
}

}  // namespace vfc::path

#endif  // VFC_FILES_INTERNAL_VPNOTATION_H
