#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

// Each CIM type with its C++ type and two different values.
template<CIMType type_, class T>
struct Case {
    using Type = T;
    static constexpr CIMType type = type_;
};

template<class T>
T value(int i) {
    return static_cast<T>(i);
}
template<>
Boolean value<Boolean>(int i) {
    return i != 0;
}
template<>
Char16 value<Char16>(int i) {
    return Char16(static_cast<Uint16>('a' + i));
}
template<>
String value<String>(int i) {
    return i ? "one" : "none";
}
template<>
CIMDateTime value<CIMDateTime>(int i) {
    return CIMDateTime(Uint64(i) * 1000000, true);
}
template<>
CIMObjectPath value<CIMObjectPath>(int i) {
    return CIMObjectPath(i ? "C.k=1" : "C.k=0");
}
template<>
CIMObject value<CIMObject>(int i) {
    return CIMObject(CIMInstance(CIMName(i ? "One" : "None")));
}

template<class T>
bool same(const T& x, const T& y) {
    return x == y;
}
bool same(const CIMObject& x, const CIMObject& y) {
    return x.identical(y);
}

template<class C>
class CIMValueOf : public testing::Test {};

using Cases = testing::Types<
    Case<CIMTYPE_BOOLEAN, Boolean>, Case<CIMTYPE_UINT8, Uint8>, Case<CIMTYPE_SINT8, Sint8>,
    Case<CIMTYPE_UINT16, Uint16>, Case<CIMTYPE_SINT16, Sint16>, Case<CIMTYPE_UINT32, Uint32>,
    Case<CIMTYPE_SINT32, Sint32>, Case<CIMTYPE_UINT64, Uint64>, Case<CIMTYPE_SINT64, Sint64>,
    Case<CIMTYPE_REAL32, Real32>, Case<CIMTYPE_REAL64, Real64>, Case<CIMTYPE_CHAR16, Char16>,
    Case<CIMTYPE_STRING, String>, Case<CIMTYPE_DATETIME, CIMDateTime>,
    Case<CIMTYPE_REFERENCE, CIMObjectPath>, Case<CIMTYPE_OBJECT, CIMObject>>;
TYPED_TEST_SUITE(CIMValueOf, Cases);

TYPED_TEST(CIMValueOf, AScalarComesOutAsItWentIn) {
    using T = typename TypeParam::Type;
    const CIMValue v(value<T>(1));
    EXPECT_EQ(v.getType(), TypeParam::type);
    EXPECT_FALSE(v.isArray());
    EXPECT_FALSE(v.isNull());
    EXPECT_EQ(v.getArraySize(), 0u);
    T out = value<T>(0);
    v.get(out);
    EXPECT_TRUE(same(out, value<T>(1)));
}

TYPED_TEST(CIMValueOf, AnArrayComesOutAsItWentIn) {
    using T = typename TypeParam::Type;
    Array<T> in;
    in.append(value<T>(1));
    in.append(value<T>(0));
    const CIMValue v(in);
    EXPECT_EQ(v.getType(), TypeParam::type);
    EXPECT_TRUE(v.isArray());
    EXPECT_EQ(v.getArraySize(), 2u);
    Array<T> out;
    v.get(out);
    ASSERT_EQ(out.size(), 2u);
    EXPECT_TRUE(same(const_cast<const Array<T>&>(out)[0], value<T>(1)));
    EXPECT_TRUE(same(const_cast<const Array<T>&>(out)[1], value<T>(0)));
}

TYPED_TEST(CIMValueOf, SetChangesTheTypeFreely) {
    using T = typename TypeParam::Type;
    CIMValue v(String("text"));
    v.set(value<T>(1));
    EXPECT_EQ(v.getType(), TypeParam::type);
    EXPECT_EQ(v, CIMValue(value<T>(1)));
    v.set(Array<T>());
    EXPECT_TRUE(v.isArray());
    EXPECT_FALSE(v.isNull());
    EXPECT_EQ(v.getArraySize(), 0u);
    v.set(String("text"));
    EXPECT_EQ(v, CIMValue(String("text")));
}

TYPED_TEST(CIMValueOf, GetOfANullLeavesTheVariable) {
    using T = typename TypeParam::Type;
    T out = value<T>(1);
    CIMValue(TypeParam::type, false).get(out);
    EXPECT_TRUE(same(out, value<T>(1)));
    Array<T> array(1, value<T>(1));
    CIMValue(TypeParam::type, true).get(array);
    EXPECT_EQ(array.size(), 1u);
}

TYPED_TEST(CIMValueOf, GetOfTheOtherArraynessThrows) {
    using T = typename TypeParam::Type;
    T scalar = value<T>(0);
    Array<T> array;
    EXPECT_THROW(CIMValue(value<T>(1)).get(array), TypeMismatchException);
    EXPECT_THROW(CIMValue(Array<T>()).get(scalar), TypeMismatchException);
    EXPECT_THROW(CIMValue(TypeParam::type, true).get(scalar), TypeMismatchException);
}

TYPED_TEST(CIMValueOf, EqualityIsByTypeArraynessNullAndContent) {
    using T = typename TypeParam::Type;
    const CIMValue v(value<T>(1)), null(TypeParam::type, false);
    EXPECT_TRUE(v == CIMValue(value<T>(1)));
    EXPECT_TRUE(v != CIMValue(value<T>(0)));
    EXPECT_TRUE(v.equal(v));
    EXPECT_FALSE(v == null);
    EXPECT_TRUE(null == CIMValue(TypeParam::type, false));
    EXPECT_FALSE(null == CIMValue(TypeParam::type, true));
    EXPECT_TRUE(CIMValue(Array<T>(2, value<T>(1))) == CIMValue(Array<T>(2, value<T>(1))));
    EXPECT_FALSE(CIMValue(Array<T>(2, value<T>(1))) == CIMValue(Array<T>(3, value<T>(1))));
    EXPECT_FALSE(CIMValue(Array<T>(1, value<T>(1))) == CIMValue(Array<T>(1, value<T>(0))));
    EXPECT_FALSE(CIMValue(Array<T>()) == CIMValue(TypeParam::type, true));
}

TYPED_TEST(CIMValueOf, CopiesAreIndependent) {
    using T = typename TypeParam::Type;
    CIMValue v(value<T>(1));
    CIMValue copy(v), assigned;
    assigned = v;
    v.set(value<T>(0));
    EXPECT_EQ(copy, CIMValue(value<T>(1)));
    EXPECT_EQ(assigned, CIMValue(value<T>(1)));
    copy.assign(v);
    EXPECT_EQ(copy, v);
    copy = *&copy;
    EXPECT_EQ(copy, v);
}

TEST(CIMValue, DefaultIsANullBoolean) {
    const CIMValue v;
    EXPECT_EQ(v.getType(), CIMTYPE_BOOLEAN);
    EXPECT_FALSE(v.isArray());
    EXPECT_TRUE(v.isNull());
    EXPECT_TRUE(v == CIMValue(CIMTYPE_BOOLEAN, false));
}

TEST(CIMValue, ALiteralIsTrueAndNotAString) {
    const char* const literal = "text";
    const CIMValue v(literal);
    EXPECT_EQ(v.getType(), CIMTYPE_BOOLEAN);
    EXPECT_EQ(v, CIMValue(Boolean(true)));
}

TEST(CIMValue, AnIntIsSint32) {
    EXPECT_EQ(CIMValue(5).getType(), CIMTYPE_SINT32);
}

TEST(CIMValue, GetOfAnotherTypeOrWidthThrowsEvenOfANull) {
    Uint16 wide = 7;
    String text("kept");
    EXPECT_THROW(CIMValue(Uint8(1)).get(wide), TypeMismatchException);
    EXPECT_THROW(CIMValue(Uint8(1)).get(text), TypeMismatchException);
    EXPECT_THROW(CIMValue(CIMTYPE_UINT8, false).get(wide), TypeMismatchException);
    EXPECT_EQ(wide, 7);
    EXPECT_EQ(text, "kept");
}

TEST(CIMValue, ClearReturnsToNullBoolean) {
    CIMValue v(String("text"));
    v.clear();
    EXPECT_TRUE(v == CIMValue());
}

TEST(CIMValue, SetNullValueKeepsTheTypeGiven) {
    CIMValue v(String("text"));
    v.setNullValue(CIMTYPE_UINT16, true);
    EXPECT_TRUE(v.isNull());
    EXPECT_TRUE(v.isArray());
    EXPECT_EQ(v.getType(), CIMTYPE_UINT16);
}

TEST(CIMValue, TypeCompatibleMeansTypeAndArrayness) {
    const CIMValue v(Uint8(1));
    EXPECT_TRUE(v.typeCompatible(CIMValue(CIMTYPE_UINT8, false)));
    EXPECT_FALSE(v.typeCompatible(CIMValue(CIMTYPE_UINT8, true)));
    EXPECT_FALSE(v.typeCompatible(CIMValue(Uint16(1))));
}

TEST(CIMValue, StringsCompareWithCaseAndReferencesAsPaths) {
    EXPECT_FALSE(CIMValue(String("a")) == CIMValue(String("A")));
    EXPECT_TRUE(CIMValue(CIMObjectPath("C.k=10")) == CIMValue(CIMObjectPath("c.K=0xA")));
}

TEST(CIMValue, AnArrayOfReferencesIsAReference) {
    const CIMValue v(Array<CIMObjectPath>(1, CIMObjectPath("C.k=1")));
    EXPECT_EQ(v.getType(), CIMTYPE_REFERENCE);
    EXPECT_TRUE(v.isArray());
}

TEST(CIMValue, AnUninitializedObjectThrows) {
    EXPECT_THROW(CIMValue{CIMObject()}, UninitializedObjectException);
    EXPECT_THROW(CIMValue(Array<CIMObject>(1)), UninitializedObjectException);
}

TEST(CIMValue, HoldsItsOwnCopyOfAnObject) {
    CIMInstance instance(CIMName("C"));
    const CIMValue v{CIMObject(instance)};
    instance.addProperty(CIMProperty(CIMName("p"), CIMValue(Uint8(1))));
    CIMObject out;
    v.get(out);
    EXPECT_EQ(out.getPropertyCount(), 0u);
    out.addProperty(CIMProperty(CIMName("q"), CIMValue(Uint8(1))));
    CIMObject again;
    v.get(again);
    EXPECT_EQ(again.getPropertyCount(), 0u);
}
