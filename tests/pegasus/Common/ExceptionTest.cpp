#include <type_traits>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using testing::EndsWith;

TEST(Exception, KeepsItsMessage) {
    EXPECT_EQ(Exception("what happened").getMessage(), "what happened");
    const Exception original("text");
    EXPECT_EQ(Exception(original).getMessage(), "text");
}

TEST(Exception, IsNoStdException) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, Exception>));
}

TEST(Exception, MessagesOfItsSubclasses) {
    EXPECT_EQ(IndexOutOfBoundsException().getMessage(), "index out of bounds");
    EXPECT_EQ(AlreadyExistsException("x").getMessage(), "already exists: x");
    EXPECT_EQ(InvalidNamespaceNameException("x").getMessage(), "invalid CIM namespace name: x");
    EXPECT_EQ(UninitializedObjectException().getMessage(), "uninitialized object");
    EXPECT_EQ(TypeMismatchException().getMessage(), "type mismatch");
    EXPECT_EQ(TypeMismatchException("x").getMessage(), "type mismatch: x");
    EXPECT_EQ(DynamicCastFailedException().getMessage(), "dynamic cast failed");
    EXPECT_EQ(InvalidDateTimeFormatException().getMessage(), "invalid datetime format");
    EXPECT_EQ(DateTimeOutOfRangeException("x").getMessage(), "DateTime is out of range : x");
    EXPECT_EQ(MalformedObjectNameException("x").getMessage(), "malformed object name: x");
    EXPECT_EQ(BindFailedException("x").getMessage(), "Bind failed: x");
    EXPECT_EQ(InvalidLocatorException("x").getMessage(), "Invalid locator: x");
    EXPECT_EQ(CannotCreateSocketException().getMessage(), "Cannot create socket");
    EXPECT_EQ(CannotConnectException("x").getMessage(), "x");
    EXPECT_EQ(AlreadyConnectedException().getMessage(), "already connected");
    EXPECT_EQ(NotConnectedException().getMessage(), "not connected");
    EXPECT_EQ(ConnectionTimeoutException().getMessage(), "connection timed out");
    EXPECT_EQ(SSLException("x").getMessage(), "SSL Exception: x");
}

TEST(Exception, AnInvalidNameIsQuoted) {
    EXPECT_THAT(utf8(InvalidNameException("x").getMessage()), EndsWith(": x"));
}

TEST(CIMException, MessageIsTheTextWithoutPrefix) {
    const CIMException e(CIM_ERR_NOT_FOUND, "no such thing");
    EXPECT_EQ(e.getMessage(), "no such thing");
    EXPECT_EQ(e.getCode(), CIM_ERR_NOT_FOUND);
}

TEST(CIMException, DefaultsToSuccessWithoutText) {
    EXPECT_EQ(CIMException().getCode(), CIM_ERR_SUCCESS);
    EXPECT_EQ(CIMException().getMessage(), "");
    EXPECT_EQ(CIMException(CIM_ERR_FAILED).getMessage(), "");
}

TEST(CIMException, IsCopiedAndAssigned) {
    const CIMException original(CIM_ERR_FAILED, "text");
    CIMException copy(original), assigned;
    assigned = copy;
    EXPECT_EQ(assigned.getCode(), CIM_ERR_FAILED);
    EXPECT_EQ(assigned.getMessage(), "text");
}

TEST(CIMException, IsCaughtAsException) {
    EXPECT_EQ(messageOf([] { throw CIMException(CIM_ERR_FAILED, "text"); }), "text");
}
