#include "server/dispatch/DeclaredValue.h"

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

using namespace Pegasus;

namespace smisd {
namespace {

CIMValue text(const char* value) {
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
    EXPECT_EQ(declaredValue(text("5"), CIMTYPE_SINT64, false), CIMValue(Sint64(5)));
    EXPECT_EQ(declaredValue(text("true"), CIMTYPE_BOOLEAN, false), CIMValue(Boolean(true)));
    EXPECT_EQ(declaredValue(text("x"), CIMTYPE_STRING, false), text("x"));
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
    expectError(text("x"), CIMTYPE_UINT32, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed uint32 value");
    expectError(text("4294967296"), CIMTYPE_UINT32, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed uint32 value");
    expectError(CIMValue(Array<String>(1, String("x"))), CIMTYPE_BOOLEAN, true,
                CIM_ERR_INVALID_PARAMETER, "Malformed boolean value");
    expectError(text("X.k=1"), CIMTYPE_REFERENCE, false, CIM_ERR_INVALID_PARAMETER,
                "Malformed reference value");
}

TEST(DeclaredValue, AnArrayForAScalarIsAMismatch) {
    expectError(CIMValue(Array<String>(1, String("1"))), CIMTYPE_UINT8, false,
                CIM_ERR_TYPE_MISMATCH, "");
    expectError(text("1"), CIMTYPE_UINT8, true, CIM_ERR_TYPE_MISMATCH, "");
}

} // namespace
} // namespace smisd
