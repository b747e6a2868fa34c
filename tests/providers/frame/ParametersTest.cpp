#include "providers/frame/Parameters.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

Array<CIMParamValue> parameters(std::initializer_list<std::pair<const char*, CIMValue>> values) {
    Array<CIMParamValue> result;
    for (const auto& [name, value] : values) {
        result.append(CIMParamValue(name, value));
    }
    return result;
}

TEST(ParametersTest, AParameterIsFoundByItsExactName) {
    const auto given = parameters({{"lunames", String("a")}, {"LUNames", String("b")}});

    EXPECT_EQ(text(inParameter<String>(given, "LUNames")), "b");
    EXPECT_EQ(text(inParameter<String>(given, "LUNAMES")), "");
}

TEST(ParametersTest, TheLastOfTwoCounts) {
    const auto given = parameters({{"N", Uint16(1)}, {"N", Uint16(2)}, {"M", Uint16(3)}});

    EXPECT_EQ(inParameter<Uint16>(given, "N"), 2);
}

TEST(ParametersTest, AMissingParameterIsEmpty) {
    EXPECT_EQ(inParameter<Uint16>(parameters({}), "N"), 0);
    EXPECT_EQ(inParameter<Array<String>>(parameters({}), "N").size(), 0u);
}

TEST(ParametersTest, ANullValueLeavesWhatWasThere) {
    const auto given = parameters({{"N", Uint16(7)}, {"N", CIMValue(CIMTYPE_UINT16, false)}});

    EXPECT_EQ(inParameter<Uint16>(given, "N"), 7);
}

TEST(ParametersTest, AnotherTypeIsATypeMismatchEvenBeforeAGoodOne) {
    const auto given = parameters({{"N", Uint32(1)}, {"N", Uint16(2)}});

    EXPECT_EQ(
        thrownBy<TypeMismatchException>([&] { inParameter<Uint16>(given, "N"); }).find("type"), 0u);
}

TEST(ParametersTest, AnArrayIsNotAScalar) {
    const auto given = parameters({{"N", Array<String>(1, String("a"))}});

    EXPECT_EQ(inParameter<Array<String>>(given, "N").size(), 1u);
    EXPECT_EQ(
        thrownBy<TypeMismatchException>([&] { inParameter<String>(given, "N"); }).find("type"), 0u);
}

} // namespace
