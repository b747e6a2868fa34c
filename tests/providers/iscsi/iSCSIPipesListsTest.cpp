// What the walks do with lists that the engine gives, and with its failures.

#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using iSCSIPipesListsTest = iSCSIPipesTest;

// Targets that cannot be listed.

TEST_F(iSCSIPipesListsTest, ATargetWithoutSessionPresenceHasNoSessions) {
    associatorNames(iscsiEndpointPath("iqn.quiet,t,0x0001"), PIPE_END, SESSION);

    EXPECT_THAT(calls(), ElementsAre("getiSCSIObjectIDByName(14, \"iqn.quiet\")",
                                     "getObject(14, 0x0E000003)"));
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesListsTest, ATargetWithoutSessionPresenceIsNotFoundFromASession) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {QUIET});
    associatorNames(sessionPath(HIDDEN), PIPE_END, ISCSI_ENDPOINT);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x03000000, 14)",
                                     "getObject(14, 0x0E000003)"));
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesListsTest, ATargetWithoutARecordIsSkipped) {
    addNullRecord(TARGET1);
    associatorNames(sessionPath(SESSION2), PIPE_END, ISCSI_ENDPOINT);

    EXPECT_EQ(paths.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "complete");
}

// Pairings by position.

TEST_F(iSCSIPipesListsTest, ASessionBeyondTheLastTargetIsOutOfBounds) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2});
    associate(TARGET2, CLASSID_ISCSI_SESSION, {SESSION2, SESSION2});

    EXPECT_EQ(outOfBounds([&] { associators(sessionPath(SESSION2), PIPE_END, ISCSI_ENDPOINT); }),
              left(ASSOCIATORS,
                   {"enumerateAssociatedObjects(0x03000000, 14)", "getObject(14, 0x0E000002)",
                    "enumerateAssociatedObjects(0x0E000002, 17)",
                    "iSCSIProtocolEndpointInstance(true, [Name], 0x0E000002)",
                    "deliver " + objectText("CIM_iSCSIProtocolEndpoint", "Name", TARGET2)}));
    EXPECT_EQ(objects.delivered.size(), 1u);
}

TEST_F(iSCSIPipesListsTest, TheOtherOperationsGoByTheTargetThatListsTheSession) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2});
    associatorNames(sessionPath(SESSION3), PIPE_END, ISCSI_ENDPOINT);
    referenceNames(sessionPath(SESSION3), PIPE_END);
    references(sessionPath(SESSION3), PIPE_END);

    EXPECT_EQ(paths.delivered.size(), 2u);
    EXPECT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesListsTest, AConnectionBeyondTheLastEndpointIsOutOfBounds) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT, {ENDPOINT1});
    const CIMObjectPath second = connectionPath(CONNECTION2);
    const Lines lines = {"enumerateAssociatedObjects(0x03000000, 9)",
                         "enumerateAssociatedObjects(0x09000001, 16)"};

    EXPECT_EQ(outOfBounds([&] { associators(second, PIPE_END, TCP_ENDPOINT); }),
              left(ASSOCIATORS, lines));
    EXPECT_EQ(outOfBounds([&] { associatorNames(second, PIPE_END, TCP_ENDPOINT); }),
              left(ASSOCIATOR_NAMES, lines));
    EXPECT_EQ(outOfBounds([&] { references(second, PIPE_END); }), left(REFERENCES, lines));
    EXPECT_EQ(outOfBounds([&] { referenceNames(second, PIPE_END); }), left(REFERENCE_NAMES, lines));

    associatorNames(connectionPath(CONNECTION1), PIPE_END, TCP_ENDPOINT);
    EXPECT_EQ(text(paths.delivered.at(0)), tcpEndpoint(ENDPOINT1));
}

TEST_F(iSCSIPipesListsTest, AnIndexErrorLeavesWhatWasDelivered) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT, {ENDPOINT1});
    connect(ENDPOINT1, {CONNECTION1, CONNECTION1});

    EXPECT_EQ(outOfBounds([&] {
                  associatorNames(connectionPath(CONNECTION1), PIPE_END, TCP_ENDPOINT);
              }).back(),
              "deliver " + tcpEndpoint(ENDPOINT1));
    EXPECT_EQ(paths.delivered.size(), 1u);
}

// The engine.

TEST_F(iSCSIPipesListsTest, TheEnginesFailureLeavesTheOperation) {
    connect(SESSION1, {CONNECTION1, CONNECTION2});
    failNext("iSCSIConnectionPath", 5, "the connection is gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { associatorNames(sessionPath(SESSION1), COMPOSITION, CONNECTION); }),
              "the connection is gone");
    EXPECT_EQ(paths.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000002)");
}

TEST_F(iSCSIPipesListsTest, ALookUpThatFailsLeavesTheOperationAfterTheTargetKeysLine) {
    failNext("getiSCSIObjectIDByName", 5, "the array is gone");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { referenceNames(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END); }),
              "the array is gone");
    EXPECT_EQ(log(), left(REFERENCE_NAMES, {"trace REFN:EONP:IPE Extracted Target Key: iqn.t1",
                                            "getiSCSIObjectIDByName(14, \"iqn.t1\")"}));
}

} // namespace
