#include "vfc/persist/vClassIds.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

TEST(vClassIds, AreUniqueAndLeaveTheReservedGapsUnassigned) {
    std::set<RWClassID> ids;
    std::set<std::string> names;
#define VFC_COLLECT(name, id)                                     \
    EXPECT_TRUE(ids.insert(id).second) << #name " reuses " << id; \
    names.insert(#name);
    VFC_CLASS_ID_TABLE(VFC_COLLECT)
#undef VFC_COLLECT
    EXPECT_EQ(ids.size(), 84u);
    EXPECT_EQ(names.size(), 84u);
    std::set<RWClassID> gaps = {258, 260, 261, 262, 271, 558, 574, 575, 576};
    for (RWClassID id = 276; id <= 290; ++id)
        gaps.insert(id);
    for (RWClassID id = 600; id <= 607; ++id)
        gaps.insert(id);
    for (RWClassID gap : gaps)
        EXPECT_EQ(ids.count(gap), 0u) << gap << " must stay free";
    // Every identifier lies in one of the documented ranges.
    for (RWClassID id : ids)
        EXPECT_TRUE((id >= 0x100 && id < 0x200) || (id >= 0x200 && id <= 0x205) ||
                    (id >= 0x220 && id < 0x300) || (id >= 0x300 && id < 0x400))
            << id;
    EXPECT_EQ(vClassID::vString, 263);
    EXPECT_EQ(vClassID::vSlist, 515);
    EXPECT_EQ(vClassID::vHashvStringvPathComponentList, 609);
}

}  // namespace
