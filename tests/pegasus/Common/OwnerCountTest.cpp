#include <Pegasus/Common/OwnerCount.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(OwnerCount, TellsTheLastOwner) {
    OwnerCount count;
    EXPECT_FALSE(count.shared());
    count.add();
    EXPECT_TRUE(count.shared());
    EXPECT_FALSE(count.drop());
    EXPECT_FALSE(count.shared());
    EXPECT_TRUE(count.drop());
}

TEST(OwnerCount, OfABodyThatIsKeptNeverEndsAndIsShared) {
    OwnerCount count;
    count.keepForever();
    count.add();
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(count.drop());
    }
    EXPECT_TRUE(count.shared());
}
