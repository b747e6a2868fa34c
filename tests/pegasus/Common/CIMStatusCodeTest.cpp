#include <Pegasus/Common/CIMStatusCode.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using testing::StartsWith;

TEST(CIMStatusCode, NumbersAreThoseOfTheProtocol) {
    EXPECT_EQ(CIM_ERR_SUCCESS, 0);
    EXPECT_EQ(CIM_ERR_FAILED, 1);
    EXPECT_EQ(CIM_ERR_ACCESS_DENIED, 2);
    EXPECT_EQ(CIM_ERR_INVALID_NAMESPACE, 3);
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, 4);
    EXPECT_EQ(CIM_ERR_INVALID_CLASS, 5);
    EXPECT_EQ(CIM_ERR_NOT_FOUND, 6);
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, 7);
    EXPECT_EQ(CIM_ERR_CLASS_HAS_CHILDREN, 8);
    EXPECT_EQ(CIM_ERR_CLASS_HAS_INSTANCES, 9);
    EXPECT_EQ(CIM_ERR_INVALID_SUPERCLASS, 10);
    EXPECT_EQ(CIM_ERR_ALREADY_EXISTS, 11);
    EXPECT_EQ(CIM_ERR_NO_SUCH_PROPERTY, 12);
    EXPECT_EQ(CIM_ERR_TYPE_MISMATCH, 13);
    EXPECT_EQ(CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED, 14);
    EXPECT_EQ(CIM_ERR_INVALID_QUERY, 15);
    EXPECT_EQ(CIM_ERR_METHOD_NOT_AVAILABLE, 16);
    EXPECT_EQ(CIM_ERR_METHOD_NOT_FOUND, 17);
}

TEST(CIMStatusCode, TextStartsWithTheName) {
    EXPECT_THAT(cimStatusCodeToString(CIM_ERR_FAILED), StartsWith("CIM_ERR_FAILED"));
    EXPECT_THAT(cimStatusCodeToString(CIM_ERR_NOT_SUPPORTED), StartsWith("CIM_ERR_NOT_SUPPORTED"));
    EXPECT_THAT(cimStatusCodeToString(CIM_ERR_METHOD_NOT_FOUND),
                StartsWith("CIM_ERR_METHOD_NOT_FOUND"));
}

TEST(CIMStatusCode, AnUnknownNumberHasNoName) {
    EXPECT_THAT(cimStatusCodeToString(static_cast<CIMStatusCode>(31)),
                StartsWith("Unrecognized CIM status code"));
}
