#include "vfc/files/vPathType.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr int vPathType::kHostMember;

void vPathType::sfTransPathType(TypeEnum in, TypeEnum& out, bool& flagged) {
    int value = static_cast<int>(in);
    flagged = false;
    if (value >= 20 && value <= 39) {
        value -= 20;
        flagged = true;
    }
    // The first member of each family (0, 4, 8, 12, 16) is the host notation.
    if (value >= 0 && value < 20 && value % 4 == 0) value += kHostMember;
    out = static_cast<TypeEnum>(value);
}
