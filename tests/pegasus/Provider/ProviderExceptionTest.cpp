#include <Pegasus/Provider/ProviderException.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

template<class E>
static void expectCode(CIMStatusCode code) {
    try {
        throw E("the text");
    } catch (const CIMOperationFailedException& e) {
        EXPECT_EQ(e.getCode(), code);
        EXPECT_EQ(e.getMessage(), "the text");
    }
}

TEST(ProviderException, EachHasItsCodeAndIsAnOperationFailedException) {
    expectCode<CIMOperationFailedException>(CIM_ERR_FAILED);
    expectCode<CIMAccessDeniedException>(CIM_ERR_ACCESS_DENIED);
    expectCode<CIMInvalidParameterException>(CIM_ERR_INVALID_PARAMETER);
    expectCode<CIMObjectNotFoundException>(CIM_ERR_NOT_FOUND);
    expectCode<CIMNotSupportedException>(CIM_ERR_NOT_SUPPORTED);
    expectCode<CIMObjectAlreadyExistsException>(CIM_ERR_ALREADY_EXISTS);
    expectCode<CIMPropertyNotFoundException>(CIM_ERR_NO_SUCH_PROPERTY);
    expectCode<CIMMethodNotFoundException>(CIM_ERR_METHOD_NOT_FOUND);
}

TEST(ProviderException, IsACIMExceptionWithTheBareText) {
    EXPECT_EQ(messageOf<CIMException>([] { throw CIMNotSupportedException("T::op"); }), "T::op");
    EXPECT_EQ(messageOf([] { throw CIMNotSupportedException(String::EMPTY); }), "");
}

class OwnException : public CIMOperationFailedException {
public:
    explicit OwnException(const String& text)
        : CIMOperationFailedException(CIM_ERR_ACCESS_DENIED, text) {}
};

TEST(ProviderException, ASubclassMayChooseItsCode) {
    EXPECT_EQ(OwnException("x").getCode(), CIM_ERR_ACCESS_DENIED);
}
