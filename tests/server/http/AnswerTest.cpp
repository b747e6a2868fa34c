#include "server/http/Answer.h"

#include <gtest/gtest.h>

namespace smisd {
namespace {

TEST(SparePieces, RoomOfASentPieceIsThereForTheNext) {
    SparePieces spares;
    EXPECT_EQ(spares.take(), "");
    std::string sent(5000, 'x');
    const char* const room = sent.data();
    spares.give(std::move(sent));
    const std::string next = spares.take();
    EXPECT_EQ(next, "");
    EXPECT_EQ(next.data(), room);
    EXPECT_LT(spares.take().capacity(), 5000U);
}

TEST(SparePieces, KeepsFew) {
    SparePieces spares;
    for (int i = 0; i < 20; ++i) {
        spares.give(std::string(5000, 'x'));
    }
    int kept = 0;
    while (spares.take().capacity() >= 5000) {
        ++kept;
    }
    EXPECT_EQ(kept, 4);
}

TEST(SparePieces, KeepsNothingWhenCleared) {
    SparePieces spares;
    spares.give(std::string(5000, 'x'));
    spares.clear();
    EXPECT_LT(spares.take().capacity(), 5000U);
}

} // namespace
} // namespace smisd
