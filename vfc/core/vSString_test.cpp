#include "vfc/core/vSString.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string str(const RWCString& s) {
    return std::string(s.data(), s.length());
}

TEST(vSString, AccumulatesWhatAStreamWritesIntoIt) {
    vSString s;
    std::ostream out(&s);
    out << "pages: " << 12;
    EXPECT_EQ(str(s.string()), "pages: 12");
    EXPECT_EQ(s.length(), 9);
    out << std::string(5000, 'x');  // several buffers' worth
    EXPECT_EQ(s.length(), 5009);
    out << "tail";  // still pending in the buffer when the copy is made
    vSString copy(s);
    EXPECT_EQ(str(copy.string()), str(s.string()));
    EXPECT_EQ(copy.length(), 5013);
    EXPECT_EQ(copy.isA(), 776);
}

TEST(vSString, OutputToAnotherStreamDrainsIt) {
    vSString s;
    std::ostream out(&s);
    out << "once";
    std::ostringstream sink;
    sink << s;
    sink << s;
    EXPECT_EQ(sink.str(), "once");
    EXPECT_EQ(s.length(), 0);
}

TEST(vSString, CopiesAnInputStreamInChunks) {
    std::string big(2048 * 3 + 17, '\0');
    for (size_t i = 0; i < big.size(); ++i)
        big[i] = static_cast<char>(i * 7);
    std::istringstream in(big);
    vSString s;
    std::ostream out(&s);
    out << "head:";
    EXPECT_EQ(s.write(in), big.size());
    EXPECT_EQ(str(s.string()), "head:" + big);
    EXPECT_EQ(s.write(in), 0u);  // in has reached its end
    std::istringstream failed("x");
    failed.setstate(std::ios::failbit);
    EXPECT_EQ(s.write(failed), 0u);
}

}  // namespace
