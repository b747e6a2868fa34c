#include "providers/frame/Records.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

constexpr Uint32 ID = 0x0D000001;

class RecordsTest : public testing::Test {
protected:
    RecordsTest() {
        resetEngine();
        addRecord(ID, DRAVInitiator("iqn.host"));
    }

    DRAVEngine& engine = *DRAVEngine::_getInstance();
};

TEST_F(RecordsTest, ARecordIsViewedAsItsClassAndDeletedWithThePointer) {
    auto initiator = readRecord<DRAVInitiator>(engine, CLASSID_INITIATOR, ID);

    ASSERT_TRUE(initiator);
    EXPECT_EQ(text(initiator->name), "iqn.host");
    EXPECT_EQ(recordsHandedOut(), 1);
    initiator.reset();
    EXPECT_EQ(recordsHandedOut(), 0);
}

TEST_F(RecordsTest, ARecordOfAnotherClassIsNullAndDeleted) {
    EXPECT_FALSE(readRecord<DRAVTarget>(engine, CLASSID_INITIATOR, ID));
    EXPECT_EQ(recordsHandedOut(), 0);
}

TEST_F(RecordsTest, NoRecordIsNull) {
    addNullRecord(ID);

    EXPECT_FALSE(readRecord<DRAVInitiator>(engine, CLASSID_INITIATOR, ID));
}

TEST_F(RecordsTest, TheEnginesErrorPasses) {
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { readRecord<DRAVInitiator>(engine, CLASSID_INITIATOR, ID + 1); }),
              "no record Ovrin:0D000002");
}

} // namespace
