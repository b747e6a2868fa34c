#include "providers/frame/EngineAccess.h"

#include <Pegasus/Provider/ProviderException.h>

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

constexpr Uint32 ID = 0x0D000001;

class EngineRecordTest : public testing::Test {
protected:
    EngineRecordTest() {
        resetEngine();
        addRecord(ID, DRAVInitiator("iqn.host"));
    }

    DRAVEngine& engine = *DRAVEngine::_getInstance();
};

TEST_F(EngineRecordTest, ARecordIsViewedAsItsClassAndDeletedInTheEnd) {
    {
        const EngineRecord<DRAVInitiator> initiator(engine, CLASSID_INITIATOR, ID);

        ASSERT_TRUE(initiator);
        EXPECT_EQ(text(initiator->name), "iqn.host");
        EXPECT_EQ(text((*initiator).name), "iqn.host");
        EXPECT_EQ(recordsHandedOut(), 1);
    }
    EXPECT_EQ(recordsHandedOut(), 0);
}

TEST_F(EngineRecordTest, TheUseOfARecordOfAnotherClassIsNotFound) {
    const EngineRecord<DRAVTarget> target(engine, CLASSID_INITIATOR, ID);

    EXPECT_FALSE(target);
    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { target->name.size(); }),
              "Ovrin:0D000001: the engine has no record of class 13");
}

TEST_F(EngineRecordTest, ARecordOfAnotherClassIsDeletedToo) {
    { const EngineRecord<DRAVTarget> target(engine, CLASSID_INITIATOR, ID); }
    EXPECT_EQ(recordsHandedOut(), 0);
}

TEST_F(EngineRecordTest, TheUseOfNoRecordIsNotFound) {
    addNullRecord(ID);
    const EngineRecord<DRAVInitiator> initiator(engine, CLASSID_INITIATOR, ID);

    EXPECT_FALSE(initiator);
    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { (*initiator).name.size(); }),
              "Ovrin:0D000001: the engine has no record of class 13");
}

TEST_F(EngineRecordTest, TheEnginesErrorPasses) {
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] {
                  const EngineRecord<DRAVInitiator> none(engine, CLASSID_INITIATOR, ID + 1);
              }),
              "no record Ovrin:0D000002");
}

} // namespace
