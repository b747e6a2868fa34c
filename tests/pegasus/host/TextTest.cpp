#include "pegasus/host/Text.h"

#include <string>

#include <gtest/gtest.h>

using namespace Pegasus;

TEST(Text, KeepsWhatWasAppendedWhileItGrows) {
    Text text;
    std::string expected;
    EXPECT_TRUE(text.empty());
    for (int i = 0; i < 1000; ++i) {
        const std::string piece(std::size_t(i % 7), static_cast<char>('a' + i % 26));
        text.append(piece) += '.';
        expected += piece + '.';
    }
    EXPECT_EQ(text.view(), expected);
    EXPECT_EQ(text.size(), expected.size());
}

TEST(Text, TakesAPieceLongerThanItself) {
    Text text;
    text += "x";
    const std::string piece(100000, 'y');
    text += piece;
    EXPECT_EQ(text.view(), "x" + piece);
}

TEST(Text, HasRoomForWhatIsWrittenThere) {
    Text text;
    text += "ab";
    std::memcpy(text.room(1000), "cdef", 4);
    text.added(2);
    EXPECT_EQ(text.view(), "abcd");
    text.cut(1);
    EXPECT_EQ(text.view(), "a");
    text.clear();
    EXPECT_TRUE(text.empty());
    text += "z";
    EXPECT_EQ(text.view(), "z");
}
