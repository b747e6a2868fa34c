#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using Key = CIMKeyBinding;

TEST(CIMKeyBinding, TypesAreNumbered) {
    EXPECT_EQ(Key::BOOLEAN, 0);
    EXPECT_EQ(Key::STRING, 1);
    EXPECT_EQ(Key::NUMERIC, 2);
    EXPECT_EQ(Key::REFERENCE, 3);
}

TEST(CIMKeyBinding, DefaultIsAnEmptyTextWithoutName) {
    const Key key;
    EXPECT_TRUE(key.getName().isNull());
    EXPECT_EQ(key.getValue(), "");
}

TEST(CIMKeyBinding, NothingIsValidatedOnConstruction) {
    EXPECT_EQ(Key(CIMName(), "no number", Key::NUMERIC).getValue(), "no number");
    EXPECT_EQ(Key(CIMName("k"), "no path", Key::REFERENCE).getValue(), "no path");
    EXPECT_EQ(Key(CIMName("k"), "no boolean", Key::BOOLEAN).getValue(), "no boolean");
}

TEST(CIMKeyBinding, SettersReplace) {
    Key key(CIMName("k"), "1", Key::NUMERIC);
    key.setName(CIMName("j"));
    key.setValue("2");
    key.setType(Key::STRING);
    EXPECT_TRUE(key == Key(CIMName("j"), "2", Key::STRING));
}

struct FromValue {
    CIMValue value;
    Key::Type type;
    const char* text;
};

class CIMKeyBindingFromValue : public testing::TestWithParam<FromValue> {};

TEST_P(CIMKeyBindingFromValue, TakesTypeAndText) {
    Key key(CIMName("k"), GetParam().value);
    EXPECT_EQ(key.getType(), GetParam().type);
    EXPECT_EQ(utf8(key.getValue()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Types, CIMKeyBindingFromValue,
    testing::Values(FromValue{CIMValue(Boolean(true)), Key::BOOLEAN, "TRUE"},
                    FromValue{CIMValue(Uint8(5)), Key::NUMERIC, "5"},
                    FromValue{CIMValue(Sint64(-9)), Key::NUMERIC, "-9"},
                    FromValue{CIMValue(Real32(1.5)), Key::NUMERIC, "1.5000000000000000e+00"},
                    FromValue{CIMValue(Char16('c')), Key::STRING, "c"},
                    FromValue{CIMValue(String("a\"b\\")), Key::STRING, "a\"b\\"},
                    FromValue{CIMValue(CIMDateTime()), Key::STRING, "00000000000000.000000:000"},
                    FromValue{CIMValue(CIMObjectPath("//h/root:C.b=\"x\",a=1")), Key::REFERENCE,
                              "//h/root:C.a=1,b=\"x\""},
                    FromValue{CIMValue(CIMTYPE_STRING, false), Key::STRING, ""},
                    FromValue{CIMValue(CIMTYPE_UINT8, false), Key::NUMERIC, ""},
                    FromValue{CIMValue(CIMTYPE_BOOLEAN, false), Key::BOOLEAN, ""},
                    FromValue{CIMValue(CIMTYPE_REFERENCE, false), Key::REFERENCE, ""}));

TEST(CIMKeyBinding, AnArrayOrAnObjectIsNoKey) {
    const CIMName k("k");
    EXPECT_THROW(Key(k, CIMValue(Array<String>())), TypeMismatchException);
    EXPECT_THROW(Key(k, CIMValue(CIMTYPE_STRING, true)), TypeMismatchException);
    EXPECT_THROW(Key(k, CIMValue(CIMObject(CIMInstance(CIMName("C"))))), TypeMismatchException);
}

struct Equality {
    Key::Type type;
    const char* text1;
    const char* text2;
    bool equal;
};

class CIMKeyBindingEquality : public testing::TestWithParam<Equality> {};

TEST_P(CIMKeyBindingEquality, IsByType) {
    const Key x(CIMName("k"), GetParam().text1, GetParam().type);
    const Key y(CIMName("K"), GetParam().text2, GetParam().type);
    EXPECT_EQ(x == y, GetParam().equal);
    EXPECT_EQ(y == x, GetParam().equal);
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, CIMKeyBindingEquality,
    testing::Values(
        Equality{Key::STRING, "a", "a", true}, Equality{Key::STRING, "a", "A", false},
        Equality{Key::BOOLEAN, "true", "TRUE", true},
        Equality{Key::BOOLEAN, "true", "FALSE", false}, Equality{Key::NUMERIC, "10", "0xA", true},
        Equality{Key::NUMERIC, "10", "0xa", true}, Equality{Key::NUMERIC, "10", "+10", true},
        Equality{Key::NUMERIC, "10", "11", false}, Equality{Key::NUMERIC, "10", "010", false},
        Equality{Key::NUMERIC, "010", "010", true}, Equality{Key::NUMERIC, "1.0", "1.00", false},
        Equality{Key::NUMERIC, "-10", "-0xA", true}, Equality{Key::NUMERIC, "-10", "10", false},
        Equality{Key::REFERENCE, "C.a=1,b=2", "c.B=2,A=0x1", true},
        Equality{Key::REFERENCE, "C.a=1", "C.a=2", false},
        Equality{Key::REFERENCE, "//h/r:C.a=1", "//H/R:C.a=1", true},
        Equality{Key::REFERENCE, "//h/r:C.a=1", "r:C.a=1", false},
        Equality{Key::REFERENCE, "no path", "no path", true},
        Equality{Key::REFERENCE, "no path", "No path", false}));

TEST(CIMKeyBinding, OtherNamesAndTypesAreUnequal) {
    const Key key(CIMName("k"), "1", Key::NUMERIC);
    EXPECT_FALSE(key == Key(CIMName("j"), "1", Key::NUMERIC));
    EXPECT_FALSE(key == Key(CIMName("k"), "1", Key::STRING));
}

TEST(CIMKeyBinding, EqualsAValueOfItsKind) {
    Key number(CIMName("k"), "5", Key::NUMERIC);
    EXPECT_TRUE(number.equal(CIMValue(Uint8(5))));
    EXPECT_TRUE(number.equal(CIMValue(Sint64(5))));
    EXPECT_FALSE(number.equal(CIMValue(Uint8(6))));
    EXPECT_FALSE(number.equal(CIMValue(String("5"))));
    EXPECT_FALSE(number.equal(CIMValue(CIMTYPE_UINT8, false)));
    Key reference(CIMName("k"), "C.b=1,a=2", Key::REFERENCE);
    EXPECT_TRUE(reference.equal(CIMValue(CIMObjectPath("C.a=2,b=1"))));
}
