#include "vfc/core/vVoid.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "vfc/core/vInt.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

TEST(vVoid, OrdersByAddress) {
    int cells[2] = {};
    vVoid null(nullptr), low(&cells[0]), high(&cells[1]), sameLow(&cells[0]);
    EXPECT_EQ(null.compareTo(&low), -1);
    EXPECT_EQ(low.compareTo(&null), 1);
    EXPECT_EQ(low.compareTo(&high), -1);
    EXPECT_EQ(high.compareTo(&low), 1);
    EXPECT_EQ(low.compareTo(&sameLow), 0);
    EXPECT_TRUE(low.isEqual(&sameLow));
    EXPECT_FALSE(low.isEqual(&high));
    EXPECT_EQ(low.hash(), sameLow.hash());
    // Another class is always "less", from either side of an equal address.
    vInt zero(0);
    EXPECT_EQ(null.compareTo(&zero), -1);
    EXPECT_FALSE(null.isEqual(&zero));
    EXPECT_FALSE(null.isEqual(nullptr));

    vVoid copy(low);
    copy.aValue() = &cells[1];
    EXPECT_TRUE(copy.isEqual(&high));
    copy = null;
    EXPECT_EQ(copy.aValue(), nullptr);
    std::unique_ptr<RWCollectable> c(high.copy());
    EXPECT_TRUE(c->isEqual(&high));
}

TEST(vVoid, PersistsOnlyItsHeader) {
    int x = 0;
    std::stringbuf buf;
    RWpostream out(&buf);
    vVoid(&x).recursiveSaveOn(out);
    EXPECT_EQ(buf.str(), ":\n265\n\\[\n\\]\n");
    RWpistream in(&buf);
    vVoid target(&x);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(in, &target), &target);
    EXPECT_EQ(target.aValue(), &x);  // nothing was read into it
}

}  // namespace
