#include <gtest/gtest.h>

#include "array/model/Text.h"
#include "engine/DRAVCodes.h"
#include "engine/DRAVKeys.h"
#include "engine/ManagedObject.h"
#include "tests/array/ArrayFixture.h"

namespace Pegasus {
namespace {

TEST(DRAVDigestFromSMI, FollowsTheValueMap) {
    EXPECT_EQ(DRAVDigestFromSMI(1).code, DRAV_DIGEST_OTHER);
    EXPECT_EQ(DRAVDigestFromSMI(2).code, DRAV_DIGEST_NONE);
    EXPECT_EQ(DRAVDigestFromSMI(3).code, DRAV_DIGEST_CRC32C);
    EXPECT_EQ(DRAVDigestFromSMI(4).code, DRAV_DIGEST_NO_PREFERENCE);
}

TEST(DRAVDigestFromSMI, GivesUnknownForEveryOtherNumber) {
    for (const Uint16 number : std::initializer_list<Uint16>{0, 5, 6, 100, 65535}) {
        EXPECT_EQ(DRAVDigestFromSMI(number).code, DRAV_DIGEST_UNKNOWN) << number;
    }
}

TEST(DRAVAuthSettingFromSMI, FollowsTheValueMap) {
    EXPECT_EQ(DRAVAuthSettingFromSMI(2).code, DRAV_AUTH_NONE);
    EXPECT_EQ(DRAVAuthSettingFromSMI(3).code, DRAV_AUTH_NO_AUTHENTICATION);
    EXPECT_EQ(DRAVAuthSettingFromSMI(4).code, DRAV_AUTH_SRP);
    EXPECT_EQ(DRAVAuthSettingFromSMI(5).code, DRAV_AUTH_CHAP);
    EXPECT_EQ(DRAVAuthSettingFromSMI(6).code, DRAV_AUTH_KERBEROS);
}

TEST(DRAVAuthSettingFromSMI, GivesUnknownForEveryOtherNumber) {
    for (const Uint16 number : std::initializer_list<Uint16>{0, 1, 7, 100, 65535}) {
        EXPECT_EQ(DRAVAuthSettingFromSMI(number).code, DRAV_AUTH_UNKNOWN) << number;
    }
}

} // namespace
} // namespace Pegasus

namespace array {
namespace {

using Pegasus::DRAVObjectID;
using Pegasus::DRAVObjectIDDecimal;
using Pegasus::DRAVObjectKey;
using Pegasus::String;
using Pegasus::Uint32;

TEST(DRAVObjectKey, IsOvrinAndEightUpperCaseHexadecimalDigits) {
    EXPECT_EQ(toUtf8(DRAVObjectKey(0x0D00002A)), "Ovrin:0D00002A");
    EXPECT_EQ(toUtf8(DRAVObjectKey(0)), "Ovrin:00000000");
    EXPECT_EQ(toUtf8(DRAVObjectKey(0xFFFFFFFF)), "Ovrin:FFFFFFFF");
}

TEST(DRAVObjectID, ReadsBackEveryKeyText) {
    for (const Uint32 id : {0u, 1u, 0x0D000001u, 0x17ABCDEFu, 0xFFFFFFFFu}) {
        EXPECT_EQ(DRAVObjectID(DRAVObjectKey(id)).id, id);
    }
}

TEST(DRAVObjectID, OfATextOfAnyOtherFormIsNoObjects) {
    const std::string longText(100000, 'x');
    for (const char* text :
         {"", "Ovrin:", "Ovrin:0D00002", "Ovrin:0D00002A0", "Ovrin:0d00002a", "ovrin:0D00002A",
          "Ovrin:0D00002G", "Ovrin:+D00002A", "Ovrin: D00002A", " Ovrin:0D00002A", "0D00002A",
          "218103850", "a\n\xC3\xA4", longText.c_str()}) {
        EXPECT_EQ(DRAVObjectID(fromUtf8(text)).id, 0xFFFFFFFF) << text;
    }
}

TEST(DRAVObjectIDDecimal, ReadsDigitsOnly) {
    EXPECT_EQ(DRAVObjectIDDecimal(String("0")).id, 0u);
    EXPECT_EQ(DRAVObjectIDDecimal(String("007")).id, 7u);
    EXPECT_EQ(DRAVObjectIDDecimal(String("4294967295")).id, 4294967295u);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "0x1", "1.0", "4294967296", "one"}) {
        expectFailure(ErrorCode::BadNumber,
                      "\"" + std::string(text) + "\" is not a decimal number below 4294967296.",
                      [&] { DRAVObjectIDDecimal number{String(text)}; });
    }
}

} // namespace
} // namespace array

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
    for (const char* text : {"", "0", "001", "0G", "G0", "0x", " 00", "-1"}) {
        EXPECT_EQ(ManagedObject::hexToBin(text).size(), 0u) << text;
    }
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
