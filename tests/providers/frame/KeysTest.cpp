#include "providers/frame/Keys.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

CIMObjectPath path(std::initializer_list<std::pair<const char*, std::string>> keys) {
    return requestPath("CIM_Some", keys);
}

TEST(KeysTest, AKeyIsFoundByItsNameWithoutRegardToCase) {
    EXPECT_EQ(text(keyValue(path({{"A", "1"}, {"NAME", "two"}, {"Z", "3"}}), "Name")), "two");
}

TEST(KeysTest, TheFirstOfTwoKeysOfANameCounts) {
    EXPECT_EQ(text(keyValue(path({{"Name", "1"}, {"Name", "2"}}), "Name")), "1");
}

TEST(KeysTest, AMissingKeyIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] {
                  keyValue(path({{"A", "1"}}), "Name");
              }),
              "index out of bounds");
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] { keyValue(path({}), "Name"); }),
              "index out of bounds");
}

TEST(KeysTest, TheFirstKeyGivesAnIdWhateverItsName) {
    EXPECT_EQ(idFromFirstKey(path({{"Whatever", keyText(0x0D00002A)}})), 0x0D00002Au);
}

TEST(KeysTest, TheFirstKeyIsTheFirstInTheOrderOfNames) {
    EXPECT_EQ(idFromFirstKey(path({{"B", "no id"}, {"A", keyText(0x0D00002A)}})), 0x0D00002Au);
}

TEST(KeysTest, WithoutKeysTheFirstIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] { idFromFirstKey(path({})); }),
              "index out of bounds");
}

TEST(KeysTest, ATextThatIsNoIdIsTheEnginesError) {
    EXPECT_THAT(thrownBy<DRAVOperationFailedException>([] {
                    idFromFirstKey(path({{"A", "x1"}}));
                }),
                testing::HasSubstr("x1"));
}

TEST(KeysTest, TheDeviceIDGivesAnId) {
    EXPECT_EQ(idFromDeviceID(path({{"A", "no id"}, {"deviceid", keyText(0x0E000001)}})),
              0x0E000001u);
}

TEST(KeysTest, AMissingDeviceIDIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([] {
                  idFromDeviceID(path({{"InstanceID", keyText(0x0E000001)}}));
              }),
              "index out of bounds");
}

} // namespace
