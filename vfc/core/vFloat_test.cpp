#include "vfc/core/vFloat.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "vfc/core/vString.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

TEST(vFloat, KeepsIdentityEquality) {
    vFloat a(2.0), b(2.0);
    EXPECT_FALSE(a.isEqual(&b));
    EXPECT_TRUE(a.isEqual(&a));
    EXPECT_NE(a.compareTo(&b), 0);
    std::unique_ptr<RWCollectable> c(a.copy());
    EXPECT_EQ(static_cast<vFloat*>(c.get())->aValue(), 2.0);
    EXPECT_FALSE(c->isEqual(&a));
    EXPECT_EQ(c->isA(), 274);
}

TEST(vFloat, ConvertsTextThroughTheGlobalLocale) {
    EXPECT_EQ(vFloat(vString("2.5kg")).aValue(), 2.5);
    EXPECT_EQ(vFloat(vString("junk")).aValue(), 0.0);
    vFloat f(1.25);
    f = vString("-3e2");
    EXPECT_EQ(f.aValue(), -300.0);
    f = vString("junk");  // the conversion's failure is not examined: the value stays
    EXPECT_EQ(f.aValue(), -300.0);
    f = 0.1;
    vString out("stale");
    EXPECT_EQ(&f.fAsString(out), &out);
    EXPECT_EQ(out, "0.1");
    f.aValue() = 1e21;
    EXPECT_EQ(f.fAsString(out), "1e+21");
}

TEST(vFloat, PersistsOnVirtualStreamsOnly) {
    const double v = 0.1 + 0.2;  // needs all 17 digits
    std::stringbuf buf;
    {
        RWpostream out(&buf);
        vFloat(v).recursiveSaveOn(out);
    }
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    double got = static_cast<vFloat*>(back.get())->aValue();
    EXPECT_EQ(std::memcmp(&got, &v, sizeof v), 0);

    // The binary file form writes and reads nothing: only the object header reaches the file.
    auto path = std::filesystem::temp_directory_path() /
                ("vfc_vfloat_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    {
        RWFile f(path.string().c_str(), "wb");
        vFloat(v).saveGuts(f);
        EXPECT_EQ(f.CurOffset(), 0);
        vFloat(v).recursiveSaveOn(f);
        vFloat(v).recursiveSaveOn(f);
    }
    {
        RWFile f(path.string().c_str(), "rb");
        vFloat target(5.0);
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &target), &target);
        EXPECT_EQ(target.aValue(), 5.0);
        std::unique_ptr<RWCollectable> fresh(RWCollectable::recursiveRestoreFrom(f));
        ASSERT_NE(fresh, nullptr);
        EXPECT_EQ(static_cast<vFloat*>(fresh.get())->aValue(), 0.0);
        EXPECT_TRUE(f.good());
    }
    std::filesystem::remove(path);
}

}  // namespace
