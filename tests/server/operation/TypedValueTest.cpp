#include "server/operation/TypedValue.h"

#include <string>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

using namespace Pegasus;

namespace smisd::test {
namespace {

// "uint8: 5", or "invalid: why"
std::string shown(const char* text, CIMType type) {
    try {
        const CIMValue value = valueFromText(text, type);
        return std::string(cimTypeToString(value.getType())) + ": " +
               std::string(value.toString().getCString());
    } catch (const InvalidLiteral& invalid) {
        return std::string("invalid: ") + invalid.what();
    }
}

TEST(ValueFromText, IntegersReachTheirLimits) {
    EXPECT_EQ(shown("255", CIMTYPE_UINT8), "uint8: 255");
    EXPECT_EQ(shown("256", CIMTYPE_UINT8), "invalid: Uint8 value out of range");
    EXPECT_EQ(shown("-128", CIMTYPE_SINT8), "sint8: -128");
    EXPECT_EQ(shown("-129", CIMTYPE_SINT8), "invalid: Sint8 value out of range");
    EXPECT_EQ(shown("32768", CIMTYPE_SINT16), "invalid: Sint16 value out of range");
    EXPECT_EQ(shown("65535", CIMTYPE_UINT16), "uint16: 65535");
    EXPECT_EQ(shown("4294967296", CIMTYPE_UINT32), "invalid: Uint32 value out of range");
    EXPECT_EQ(shown("-2147483648", CIMTYPE_SINT32), "sint32: -2147483648");
    EXPECT_EQ(shown("18446744073709551615", CIMTYPE_UINT64), "uint64: 18446744073709551615");
    EXPECT_EQ(shown("18446744073709551616", CIMTYPE_UINT64),
              "invalid: Invalid unsigned integer value");
    EXPECT_EQ(shown("-9223372036854775808", CIMTYPE_SINT64), "sint64: -9223372036854775808");
    EXPECT_EQ(shown("-9223372036854775809", CIMTYPE_SINT64),
              "invalid: Invalid signed integer value");
    EXPECT_EQ(shown("9223372036854775808", CIMTYPE_SINT64),
              "invalid: Invalid signed integer value");
}

TEST(ValueFromText, IntegersAreDecimalOrHexadecimal) {
    EXPECT_EQ(shown("0x1F", CIMTYPE_UINT8), "uint8: 31");
    EXPECT_EQ(shown("-0x10", CIMTYPE_SINT8), "sint8: -16");
    EXPECT_EQ(shown("+5", CIMTYPE_SINT32), "sint32: 5");
    EXPECT_EQ(shown("0", CIMTYPE_UINT32), "uint32: 0");
    for (const char* text : {"", "abc", "1x", "010", "0x", "0b1", " 1", "1.0", "+5", "-5"}) {
        EXPECT_EQ(shown(text, CIMTYPE_UINT32), "invalid: Invalid unsigned integer value") << text;
    }
    for (const char* text : {"", "-", "--5", "+-5", "-010"}) {
        EXPECT_EQ(shown(text, CIMTYPE_SINT32), "invalid: Invalid signed integer value") << text;
    }
}

TEST(ValueFromText, RealsNeedAPointAndADigitAfterIt) {
    EXPECT_EQ(shown("1.5", CIMTYPE_REAL64), "real64: 1.5000000000000000e+00");
    EXPECT_EQ(shown("+.5e-3", CIMTYPE_REAL64), "real64: 5.0000000000000001e-04");
    EXPECT_EQ(shown("-1.5E+2", CIMTYPE_REAL32), "real32: -1.5000000000000000e+02");
    for (const char* text :
         {"", "1", "1.", "1e5", "inf", "nan", "1.5x", "1.5e", "0x1.0", "1.0e999"}) {
        EXPECT_EQ(shown(text, CIMTYPE_REAL64), "invalid: Invalid real number value") << text;
    }
}

TEST(ValueFromText, BooleansAreWordsInAnyCase) {
    EXPECT_EQ(shown("TRUE", CIMTYPE_BOOLEAN), "boolean: TRUE");
    EXPECT_EQ(shown("false", CIMTYPE_BOOLEAN), "boolean: FALSE");
    EXPECT_EQ(shown("1", CIMTYPE_BOOLEAN), "invalid: Invalid boolean value");
    EXPECT_EQ(shown("", CIMTYPE_BOOLEAN), "invalid: Invalid boolean value");
}

TEST(ValueFromText, Char16IsOneUnit) {
    EXPECT_EQ(shown("\xC3\xA9", CIMTYPE_CHAR16), "char16: \xC3\xA9");
    EXPECT_EQ(shown("", CIMTYPE_CHAR16), "invalid: Invalid char16 value");
    EXPECT_EQ(shown("ab", CIMTYPE_CHAR16), "invalid: Invalid char16 value");
    EXPECT_EQ(shown("\xF0\x9F\x98\x80", CIMTYPE_CHAR16), "invalid: Invalid char16 value");
}

TEST(ValueFromText, DateTimes) {
    EXPECT_EQ(shown("20260102030405.678901+060", CIMTYPE_DATETIME),
              "datetime: 20260102030405.678901+060");
    EXPECT_EQ(shown("", CIMTYPE_DATETIME), "datetime: 00000000000000.000000:000");
    EXPECT_EQ(shown("yesterday", CIMTYPE_DATETIME), "invalid: Invalid datetime value");
}

TEST(ValueFromText, StringsStandAsTheyAre) {
    EXPECT_EQ(shown(" a  b ", CIMTYPE_STRING), "string:  a  b ");
    EXPECT_EQ(shown("", CIMTYPE_STRING), "string: ");
}

TEST(ValueFromText, ReferencesHaveNoLiteral) {
    EXPECT_EQ(shown("C.k=1", CIMTYPE_REFERENCE), "invalid: No literal has the type reference");
}

TEST(ArrayFromText, EmptyArrayHasItsType) {
    const CIMValue value = arrayFromText(Array<String>(), CIMTYPE_UINT16);
    EXPECT_EQ(value.getType(), CIMTYPE_UINT16);
    EXPECT_TRUE(value.isArray());
    EXPECT_FALSE(value.isNull());
    EXPECT_EQ(value.getArraySize(), 0U);
}

TEST(ArrayFromText, OneBadElementSpoilsTheArray) {
    Array<String> texts;
    texts.append("1");
    texts.append("2");
    EXPECT_EQ(std::string(arrayFromText(texts, CIMTYPE_SINT8).toString().getCString()), "1 2 ");
    texts.append("x");
    EXPECT_THROW(arrayFromText(texts, CIMTYPE_SINT8), InvalidLiteral);
}

// Values that were sent without a type

CIMValue textValue(const char* value) {
    return CIMValue(String(value));
}

void expectError(const CIMValue& value, CIMType type, bool isArray, CIMStatusCode code,
                 const char* message) {
    try {
        declaredValue(value, type, isArray);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const CIMException& error) {
        EXPECT_EQ(error.getCode(), code);
        EXPECT_EQ(error.getMessage(), String(message));
    }
}

TEST(DeclaredValue, TextsBecomeValuesOfTheType) {
    EXPECT_EQ(declaredValue(textValue("5"), CIMTYPE_SINT64, false), CIMValue(Sint64(5)));
    EXPECT_EQ(declaredValue(textValue("true"), CIMTYPE_BOOLEAN, false), CIMValue(Boolean(true)));
    EXPECT_EQ(declaredValue(textValue("x"), CIMTYPE_STRING, false), textValue("x"));
}

TEST(DeclaredValue, ArraysBecomeArraysOfTheType) {
    EXPECT_EQ(declaredValue(CIMValue(Array<String>(2, String("1"))), CIMTYPE_UINT16, true),
              CIMValue(Array<Uint16>(2, Uint16(1))));
    EXPECT_EQ(declaredValue(CIMValue(Array<String>()), CIMTYPE_UINT16, true),
              CIMValue(Array<Uint16>()));
}

TEST(DeclaredValue, NullBecomesANullOfTheType) {
    const CIMValue null = declaredValue(CIMValue(CIMTYPE_STRING, false), CIMTYPE_UINT8, true);
    EXPECT_TRUE(null.isNull());
    EXPECT_TRUE(null.isArray());
    EXPECT_EQ(null.getType(), CIMTYPE_UINT8);
}

TEST(DeclaredValue, AValueThatIsNoTextStaysAsItIs) {
    const CIMValue reference(CIMObjectPath(String(), CIMNamespaceName(), CIMName("X")));
    EXPECT_EQ(declaredValue(reference, CIMTYPE_STRING, false), reference);
}

TEST(DeclaredValue, ATextThatIsNoLiteralIsRefused) {
    expectError(textValue("x"), CIMTYPE_UINT32, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed uint32 value");
    expectError(textValue("4294967296"), CIMTYPE_UINT32, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed uint32 value");
    expectError(CIMValue(Array<String>(1, String("x"))), CIMTYPE_BOOLEAN, true,
                CIM_ERR_INVALID_PARAMETER, "Malformed boolean value");
    expectError(textValue("X.k=1"), CIMTYPE_REFERENCE, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed reference value");
}

TEST(DeclaredValue, AnArrayForAScalarIsAMismatch) {
    expectError(CIMValue(Array<String>(1, String("1"))), CIMTYPE_UINT8, false,
                CIM_ERR_TYPE_MISMATCH, "");
    expectError(textValue("1"), CIMTYPE_UINT8, true, CIM_ERR_TYPE_MISMATCH, "");
}

} // namespace
} // namespace smisd::test
