#include "vfc/text/vTemplates.h"

#include "vfc/core/vString.h"

// Each accessor owns one pointer, set on the first call and never released.
#define VFC_DEFINE_FIXED_PATTERN(name, pattern)                                        \
    const vRegExp& name() {                                                            \
        static const vRegExp* re = new vRegExp(vString(pattern, sizeof(pattern) - 1)); \
        return *re;                                                                    \
    }
VFC_FIXED_PATTERN_TABLE(VFC_DEFINE_FIXED_PATTERN)
#undef VFC_DEFINE_FIXED_PATTERN
