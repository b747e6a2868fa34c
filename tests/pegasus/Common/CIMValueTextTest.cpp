#include <limits>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using testing::HasSubstr;

static std::string text(const CIMValue& value) {
    return utf8(value.toString());
}

TEST(CIMValueText, ANullIsEmpty) {
    EXPECT_EQ(text(CIMValue()), "");
    EXPECT_EQ(text(CIMValue(CIMTYPE_STRING, true)), "");
}

TEST(CIMValueText, BooleansAreUpperCase) {
    EXPECT_EQ(text(CIMValue(Boolean(true))), "TRUE");
    EXPECT_EQ(text(CIMValue(Boolean(false))), "FALSE");
}

TEST(CIMValueText, IntegersAreDecimal) {
    EXPECT_EQ(text(CIMValue(Uint8(200))), "200");
    EXPECT_EQ(text(CIMValue(Sint8(-100))), "-100");
    EXPECT_EQ(text(CIMValue(std::numeric_limits<Uint64>::max())), "18446744073709551615");
    EXPECT_EQ(text(CIMValue(std::numeric_limits<Sint64>::min())), "-9223372036854775808");
}

TEST(CIMValueText, RealsOfBothWidthsHaveSixteenDigits) {
    EXPECT_EQ(text(CIMValue(Real32(1.5))), "1.5000000000000000e+00");
    EXPECT_EQ(text(CIMValue(Real64(0.1))), "1.0000000000000001e-01");
    EXPECT_EQ(text(CIMValue(Real32(0.1F))), "1.0000000149011612e-01");
}

TEST(CIMValueText, StringsAreRaw) {
    EXPECT_EQ(text(CIMValue(String("a\"b\\ \xC3\xA9"))), "a\"b\\ \xC3\xA9");
    EXPECT_EQ(text(CIMValue(Char16(Uint16(0x20AC)))), "\xE2\x82\xAC");
}

TEST(CIMValueText, DatetimesHave25Characters) {
    EXPECT_EQ(text(CIMValue(CIMDateTime())), "00000000000000.000000:000");
}

TEST(CIMValueText, AReferenceIsItsPath) {
    EXPECT_EQ(text(CIMValue(CIMObjectPath("C.b=\"x\",a=1"))), "C.a=1,b=\"x\"");
}

TEST(CIMValueText, EachElementOfAnArrayIsFollowedByABlank) {
    Array<Uint32> numbers(1, 1);
    numbers.append(2);
    EXPECT_EQ(text(CIMValue(numbers)), "1 2 ");
    Array<String> strings(1, String("x y"));
    strings.append(String());
    EXPECT_EQ(text(CIMValue(strings)), "x y  ");
    EXPECT_EQ(text(CIMValue(Array<Boolean>(2, true))), "TRUE TRUE ");
    EXPECT_EQ(text(CIMValue(Array<CIMObjectPath>(1, CIMObjectPath("C.k=1")))), "C.k=1 ");
    EXPECT_EQ(text(CIMValue(Array<String>())), "");
}

TEST(CIMValueText, AnObjectIsItsXml) {
    CIMInstance instance(CIMName("C"));
    instance.addProperty(CIMProperty(CIMName("p"), CIMValue(Uint8(1))));
    EXPECT_THAT(text(CIMValue(CIMObject(instance))), HasSubstr("<VALUE>1</VALUE>"));
}
