#include "providers/frame/Requests.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

CIMObjectPath path(std::initializer_list<std::pair<const char*, std::string>> keys) {
    return requestPath("CIM_Some", keys);
}

TEST(RequestKeysTest, AKeyIsFoundByItsNameWithoutRegardToCase) {
    EXPECT_EQ(text(keyValue(path({{"A", "1"}, {"NAME", "two"}, {"Z", "3"}}), "Name")), "two");
}

TEST(RequestKeysTest, TheFirstOfTwoKeysOfANameCounts) {
    EXPECT_EQ(text(keyValue(path({{"Name", "1"}, {"Name", "2"}}), "Name")), "1");
}

TEST(RequestKeysTest, AMissingKeyIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] {
                  keyValue(path({{"A", "1"}}), "Name");
              }),
              "index out of bounds");
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] { keyValue(path({}), "Name"); }),
              "index out of bounds");
}

TEST(RequestKeysTest, TheFirstKeyGivesAnIdWhateverItsName) {
    EXPECT_EQ(idFromFirstKey(path({{"Whatever", keyText(0x0D00002A)}})), 0x0D00002Au);
}

TEST(RequestKeysTest, TheFirstKeyIsTheFirstInTheOrderOfNames) {
    EXPECT_EQ(idFromFirstKey(path({{"B", "no id"}, {"A", keyText(0x0D00002A)}})), 0x0D00002Au);
}

TEST(RequestKeysTest, WithoutKeysTheFirstIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] { idFromFirstKey(path({})); }),
              "index out of bounds");
}

TEST(RequestKeysTest, ATextThatIsNoKeyTextGivesAnIdThatNamesNothing) {
    EXPECT_EQ(idFromFirstKey(path({{"A", "x1"}})), 0xFFFFFFFFu);
    EXPECT_EQ(idFromDeviceID(path({{"DeviceID", "x1"}})), 0xFFFFFFFFu);
}

TEST(RequestKeysTest, TheDeviceIDGivesAnId) {
    EXPECT_EQ(idFromDeviceID(path({{"A", "no id"}, {"deviceid", keyText(0x0E000001)}})),
              0x0E000001u);
}

TEST(RequestKeysTest, AMissingDeviceIDIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] {
                  idFromDeviceID(path({{"InstanceID", keyText(0x0E000001)}}));
              }),
              "index out of bounds");
}

Array<CIMParamValue> parameters(std::initializer_list<std::pair<const char*, CIMValue>> values) {
    Array<CIMParamValue> result;
    for (const auto& [name, value] : values) {
        result.append(CIMParamValue(name, value));
    }
    return result;
}

TEST(RequestParametersTest, AParameterIsFoundByItsExactName) {
    const auto given = parameters({{"lunames", String("a")}, {"LUNames", String("b")}});

    EXPECT_EQ(text(inParameter<String>(given, "LUNames")), "b");
    EXPECT_EQ(text(inParameter<String>(given, "LUNAMES")), "");
}

TEST(RequestParametersTest, TheLastOfTwoCounts) {
    const auto given = parameters({{"N", Uint16(1)}, {"N", Uint16(2)}, {"M", Uint16(3)}});

    EXPECT_EQ(inParameter<Uint16>(given, "N"), 2);
}

TEST(RequestParametersTest, AMissingParameterIsEmpty) {
    EXPECT_EQ(inParameter<Uint16>(parameters({}), "N"), 0);
    EXPECT_EQ(inParameter<Array<String>>(parameters({}), "N").size(), 0u);
}

TEST(RequestParametersTest, ANullValueLeavesWhatWasThere) {
    const auto given = parameters({{"N", Uint16(7)}, {"N", CIMValue(CIMTYPE_UINT16, false)}});

    EXPECT_EQ(inParameter<Uint16>(given, "N"), 7);
}

TEST(RequestParametersTest, AnotherTypeIsATypeMismatchEvenBeforeAGoodOne) {
    const auto given = parameters({{"N", Uint32(1)}, {"N", Uint16(2)}});

    EXPECT_EQ(
        thrownBy<TypeMismatchException>([&] { inParameter<Uint16>(given, "N"); }).find("type"), 0u);
}

TEST(RequestParametersTest, AnArrayIsNotAScalar) {
    const auto given = parameters({{"N", Array<String>(1, String("a"))}});

    EXPECT_EQ(inParameter<Array<String>>(given, "N").size(), 1u);
    EXPECT_EQ(
        thrownBy<TypeMismatchException>([&] { inParameter<String>(given, "N"); }).find("type"), 0u);
}

} // namespace
