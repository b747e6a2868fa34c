// How the walks find their start in the keys of a path.

#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

using iSCSIPipesKeysTest = iSCSIPipesTest;

TEST_F(iSCSIPipesKeysTest, AnEndpointWithoutANameIsOutOfBounds) {
    const CIMObjectPath target = requestPath(ISCSI_ENDPOINT, {{"InstanceID", "iqn.t1,t,0x0001"}});
    const CIMObjectPath portal = requestPath(TCP_ENDPOINT, {{"InstanceID", keyText(ENDPOINT1)}});
    EXPECT_THAT(outOfBounds([&] { associators(target, PIPE_END, SESSION); }),
                ElementsAre("processing", ASSOCIATORS));
    EXPECT_THAT(outOfBounds([&] { associatorNames(target, PIPE_END, SESSION); }),
                ElementsAre("processing", ASSOCIATOR_NAMES));
    EXPECT_THAT(outOfBounds([&] { references(portal, PIPE_END); }),
                ElementsAre("processing", REFERENCES));
    EXPECT_THAT(outOfBounds([&] { referenceNames(portal, PIPE_END); }),
                ElementsAre("processing", REFERENCE_NAMES));
}

TEST_F(iSCSIPipesKeysTest, APipeWithoutKeysIsOutOfBounds) {
    EXPECT_THAT(outOfBounds([&] { associators(requestPath(SESSION), PIPE_END, ISCSI_ENDPOINT); }),
                ElementsAre("processing", ASSOCIATORS));
    EXPECT_THAT(
        outOfBounds([&] { associatorNames(requestPath(CONNECTION), PIPE_END, TCP_ENDPOINT); }),
        ElementsAre("processing", ASSOCIATOR_NAMES));
    EXPECT_THAT(outOfBounds([&] { references(requestPath(SESSION), COMPOSITION); }),
                ElementsAre("processing", REFERENCES));
    EXPECT_THAT(outOfBounds([&] { referenceNames(requestPath(CONNECTION), PIPE_END); }),
                ElementsAre("processing", REFERENCE_NAMES));
}

TEST_F(iSCSIPipesKeysTest, EndpointsAreNamedByNameAndPipesByTheirFirstKey) {
    connect(SESSION1, {});
    referenceNames(requestPath(TCP_ENDPOINT, {{"A", "no id"}, {"NAME", keyText(ENDPOINT2)}}),
                   PIPE_END);
    referenceNames(requestPath(SESSION, {{"A", keyText(SESSION1)}, {"InstanceID", "no id"}}),
                   COMPOSITION);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x09000002, 16)",
                                     "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000003)",
                                     "enumerateAssociatedObjects(0x11000001, 16)"));

    for (const auto& [pipe, id] :
         {std::pair(SESSION, SESSION3), std::pair(CONNECTION, CONNECTION3)}) {
        references(requestPath(pipe, {{"Any", keyText(id)}, {"InstanceID", "no id"}}), PIPE_END);
    }
    EXPECT_EQ(objects.delivered.size(), 2u);
}

TEST_F(iSCSIPipesKeysTest, FromAKeyThatIsNoKeyTextNoPipesAreFound) {
    for (const CIMObjectPath& source : {requestPath(TCP_ENDPOINT, {{"Name", "no id"}}),
                                        requestPath(SESSION, {{"InstanceID", "no id"}}),
                                        requestPath(CONNECTION, {{"InstanceID", "no id"}})}) {
        clearLog();
        references(source, PIPE_END);
        EXPECT_EQ(log().back(), "complete");
    }
    EXPECT_THAT(objects.delivered, testing::IsEmpty());
}

// The target's name in an iSCSI endpoint's.

TEST_F(iSCSIPipesKeysTest, TheTargetKeyIsTheNameWithoutNineCharactersWhateverTheyAre) {
    associatorNames(iscsiEndpointPath("iqn.t1#########"), PIPE_END, SESSION);

    EXPECT_EQ(calls().at(0), "getiSCSIObjectIDByName(14, \"iqn.t1\")");
}

TEST_F(iSCSIPipesKeysTest, ANameOfNineCharactersHasAnEmptyTargetKey) {
    associatorNames(iscsiEndpointPath("123456789"), PIPE_END, SESSION);

    EXPECT_EQ(calls().at(0), "getiSCSIObjectIDByName(14, \"\")");
}

TEST_F(iSCSIPipesKeysTest, AShorterNameIsTheTargetKeyAsAWhole) {
    setIdByName(CLASSID_TARGET, "12345678", TARGET1);
    associatorNames(iscsiEndpointPath("12345678"), PIPE_END, SESSION);
    referenceNames(iscsiEndpointPath(""), PIPE_END);

    EXPECT_EQ(
        log(),
        Lines({"processing", ASSOCIATOR_NAMES, "trace AN:EONP:IPE Extracted Target Key: 12345678",
               "getiSCSIObjectIDByName(14, \"12345678\")",
               "trace AN:EONP:IPE ObjectIDByName is: 234881025", "getObject(14, 0x0E000001)",
               "enumerateAssociatedObjects(0x0E000001, 17)",
               "iSCSISessionPath(CIM_iSCSISession, 0x11000001)", "deliver " + session(SESSION1),
               "complete", "processing", REFERENCE_NAMES,
               "trace REFN:EONP:IPE Extracted Target Key: ", "getiSCSIObjectIDByName(14, \"\")",
               "trace REFN:EONP:IPE ObjectIDByName is: 0", "complete"}));
}

TEST_F(iSCSIPipesKeysTest, AnUnknownTargetHasNoSessions) {
    const CIMObjectPath source = iscsiEndpointPath("iqn.unknown,t,0x0001");
    associators(source, PIPE_END, SESSION);
    references(source, PIPE_END);

    EXPECT_EQ(log(), Lines({"processing", ASSOCIATORS,
                            "trace A:EONP:IPE Extracted Target Key: iqn.unknown",
                            "getiSCSIObjectIDByName(14, \"iqn.unknown\")",
                            "trace A:EONP:IPE ObjectIDByName is: 0", "complete", "processing",
                            REFERENCES, "trace REF:EONP:IPE Extracted Target Key: iqn.unknown",
                            "getiSCSIObjectIDByName(14, \"iqn.unknown\")",
                            "trace REF:EONP:IPE ObjectIDByName is: 0", "complete"}));
}

TEST_F(iSCSIPipesKeysTest, ThePipesOfATargetCarryTheNameThatTheClientGave) {
    setIdByName(CLASSID_TARGET, "IQN.T1", TARGET1);
    references(iscsiEndpointPath("IQN.T1,t,0x0001"), PIPE_END);
    referenceNames(iscsiEndpointPath("IQN.T1,t,0x0001"), PIPE_END);

    const Lines lines = calls();
    for (const char* call :
         {"EndpointOfNetworkPipeInstance(true, \"IQN.T1\", CIM_iSCSISession, 0x11000001)",
          "EndpointOfNetworkPipePath(\"IQN.T1\", CIM_iSCSISession, 0x11000001)"}) {
        EXPECT_THAT(lines, testing::Contains(call));
    }
}

TEST_F(iSCSIPipesKeysTest, ATargetKeyIsWrittenAsUTF8) {
    referenceNames(iscsiEndpointPath("iqn.b\u00FCro,t,0x0001"), PIPE_END);

    EXPECT_EQ(traces().at(1), "REFN:EONP:IPE Extracted Target Key: iqn.b\u00FCro");
}

TEST_F(iSCSIPipesKeysTest, TheIdOfATargetIsWrittenAsAnUnsignedNumber) {
    setIdByName(CLASSID_TARGET, "iqn.big", 0xFFFFFFFF);
    addNullRecord(0xFFFFFFFF);
    referenceNames(iscsiEndpointPath("iqn.big,t,0x0001"), PIPE_END);

    EXPECT_EQ(traces().back(), "REFN:EONP:IPE ObjectIDByName is: 4294967295");
    EXPECT_EQ(log().back(), "complete");
}

} // namespace
