#include <string>

#include <Pegasus/Common/CIMType.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(CIMType, NamesStandInTheOrderOfTheNumbers) {
    const char* const names[] = {"boolean", "uint8",    "sint8",     "uint16", "sint16", "uint32",
                                 "sint32",  "uint64",   "sint64",    "real32", "real64", "char16",
                                 "string",  "datetime", "reference", "object"};
    for (int i = 0; i <= CIMTYPE_OBJECT; ++i) {
        EXPECT_STREQ(cimTypeToString(static_cast<CIMType>(i)), names[i]);
    }
}
