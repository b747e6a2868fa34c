#include "engine/ManagedObject.h"

#include <gtest/gtest.h>

#include "array/engine/Text.h"

namespace Pegasus {
namespace {

TEST(HexToBin, GivesOneCharacterForTwoDigits) {
    const String key = ManagedObject::hexToBin("00417FfF");
    ASSERT_EQ(key.size(), 4u);
    EXPECT_EQ(Uint16(key[0]), 0x00);
    EXPECT_EQ(Uint16(key[1]), 0x41);
    EXPECT_EQ(Uint16(key[2]), 0x7F);
    EXPECT_EQ(Uint16(key[3]), 0xFF);
}

TEST(HexToBin, DigitsOfEitherCaseGiveTheSameKey) {
    EXPECT_EQ(ManagedObject::hexToBin("60014051A2B3C4D5"),
              ManagedObject::hexToBin("60014051a2b3c4d5"));
}

TEST(HexToBin, GivesTheEmptyKeyForAnyOtherText) {
    for (const char* text : {"", "0", "001", "0G", "G0", "0x", " 00", "-1"})
        EXPECT_EQ(ManagedObject::hexToBin(text).size(), 0u) << text;
    String wide("0");
    wide.append(Char16(0x0130)); // its low byte is a digit
    EXPECT_EQ(ManagedObject::hexToBin(wide).size(), 0u);
}

TEST(HexToBin, HexTextOfReadsAKeyBack) {
    EXPECT_EQ(array::hexTextOf(ManagedObject::hexToBin("00417fFF")), "00417FFF");
    EXPECT_EQ(array::hexTextOf(String()), "");
    String wide("A");
    wide.append(Char16(0x0100));
    EXPECT_EQ(array::hexTextOf(wide), "");
}

} // namespace
} // namespace Pegasus
