#include <Pegasus/Common/CIMParamValue.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

TEST(CIMParamValue, HasWhatItWasMadeWith) {
    const CIMParamValue p("any text!", CIMValue(Uint8(1)));
    EXPECT_EQ(p.getParameterName(), "any text!");
    EXPECT_EQ(p.getValue(), CIMValue(Uint8(1)));
    EXPECT_TRUE(p.isTyped());
    EXPECT_FALSE(CIMParamValue("p", CIMValue(), false).isTyped());
}

TEST(CIMParamValue, AnEmptyNameThrows) {
    EXPECT_THROW(CIMParamValue("", CIMValue()), UninitializedObjectException);
    CIMParamValue p("p", CIMValue());
    String empty;
    EXPECT_THROW(p.setParameterName(empty), UninitializedObjectException);
}

TEST(CIMParamValue, CopiesShareAndACloneDoesNot) {
    CIMParamValue p("p", CIMValue(Uint8(1)));
    CIMParamValue alias(p);
    const CIMParamValue clone = p.clone();
    String name("q");
    CIMValue value(String("v"));
    alias.setParameterName(name);
    alias.setValue(value);
    alias.setIsTyped(false);
    EXPECT_EQ(p.getParameterName(), "q");
    EXPECT_EQ(p.getValue(), value);
    EXPECT_FALSE(p.isTyped());
    EXPECT_EQ(clone.getParameterName(), "p");
    EXPECT_EQ(clone.getValue(), CIMValue(Uint8(1)));
    EXPECT_TRUE(clone.isTyped());
}

TEST(CIMParamValue, AnUninitializedOneThrows) {
    const CIMParamValue p;
    EXPECT_TRUE(p.isUninitialized());
    EXPECT_THROW(p.getParameterName(), UninitializedObjectException);
    EXPECT_THROW(p.getValue(), UninitializedObjectException);
}
