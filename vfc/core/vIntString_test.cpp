#include "vfc/core/vIntString.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"

namespace {

TEST(vIntString, HoldsIdAndNameWithIdentityEquality) {
    vIntString a(vInt(7), vString("seven"));
    vIntString b(a);
    EXPECT_EQ(b.fID().value(), 7);
    EXPECT_EQ(b.fName(), "seven");
    EXPECT_FALSE(a.isEqual(&b));  // same contents, different objects
    EXPECT_TRUE(a.isEqual(&a));
    b.fSetID(8);
    b.fSetName("eight");
    a = b;
    EXPECT_EQ(a.fID().value(), 8);
    EXPECT_EQ(a.fName(), "eight");
    const vIntString& ca = a;
    EXPECT_EQ(ca.fName(), "eight");
    std::unique_ptr<RWCollectable> c(a.copy());
    EXPECT_EQ(static_cast<vIntString*>(c.get())->fName(), "eight");
    EXPECT_EQ(c->isA(), 275);

    // Persisted as its header alone: a restored object has the default members.
    std::stringbuf buf;
    RWpostream out(&buf);
    a.recursiveSaveOn(out);
    EXPECT_EQ(buf.str(), ":\n275\n\\[\n\\]\n");
    RWpistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(static_cast<vIntString*>(back.get())->fID().value(), 0);
    EXPECT_EQ(static_cast<vIntString*>(back.get())->fName(), "");
}

}  // namespace
