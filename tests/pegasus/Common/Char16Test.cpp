#include <Pegasus/Common/Char16.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(Char16, DefaultIsZero) {
    EXPECT_EQ(Uint16(Char16()), 0);
}

TEST(Char16, TakesItsUnitByConstructionAndAssignment) {
    Char16 c(Uint16(0x20AC));
    EXPECT_EQ(Uint16(c), 0x20AC);
    c = Uint16(0x41);
    EXPECT_EQ(Uint16(c), 0x41);
    c = Char16(Uint16(0x42));
    EXPECT_EQ(Uint16(c), 0x42);
}

TEST(Char16, ComparesWithItsLikeAndWithChar) {
    const Char16 a('a');
    EXPECT_TRUE(a == Char16('a'));
    EXPECT_TRUE(a == 'a');
    EXPECT_TRUE('a' == a);
    EXPECT_TRUE(a != Char16('b'));
    EXPECT_TRUE(a != 'b');
    EXPECT_TRUE('b' != a);
    EXPECT_FALSE(a != 'a');
}
