// What the walks do with requests and lists that lead nowhere or too far.

#include "tests/providers/iscsi/iSCSIPipesTest.h"

#include <algorithm>

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class iSCSIPipesGuardsTest : public iSCSIPipesTest {
protected:
    // Whether both operations of a kind deliver nothing, ask nothing and complete.

    void expectNoAssociators(const CIMObjectPath& source, const CIMName& association,
                             const CIMName& result) {
        clearLog();
        associators(source, association, result);
        associatorNames(source, association, result);
        EXPECT_THAT(log(), ElementsAre("processing", ASSOCIATORS, "complete", "processing",
                                       ASSOCIATOR_NAMES, "complete"));
    }

    void expectNoReferences(const CIMObjectPath& source, const CIMName& association) {
        clearLog();
        references(source, association);
        referenceNames(source, association);
        EXPECT_THAT(log(), ElementsAre("processing", REFERENCES, "complete", "processing",
                                       REFERENCE_NAMES, "complete"));
    }

    // Whether both operations of a kind are refused after their line.

    void expectAssociatorsRefused(const CIMObjectPath& source, const CIMName& association,
                                  const CIMName& result) {
        clearLog();
        EXPECT_EQ(
            thrownBy<CIMNotSupportedException>([&] { associators(source, association, result); }),
            "IPProtocolEndpoints::associators");
        EXPECT_EQ(thrownBy<CIMNotSupportedException>(
                      [&] { associatorNames(source, association, result); }),
                  "IPProtocolEndpoints::associators");
        EXPECT_THAT(log(), ElementsAre("processing", ASSOCIATORS, "processing", ASSOCIATOR_NAMES));
    }

    void expectReferencesRefused(const CIMObjectPath& source, const CIMName& association) {
        clearLog();
        EXPECT_EQ(thrownBy<CIMNotSupportedException>([&] { references(source, association); }),
                  "IPProtocolEndpoints::associators");
        EXPECT_EQ(thrownBy<CIMNotSupportedException>([&] { referenceNames(source, association); }),
                  "IPProtocolEndpoints::associators");
        EXPECT_THAT(log(), ElementsAre("processing", REFERENCES, "processing", REFERENCE_NAMES));
    }

    // The log after a call that must be out of bounds.
    template<class Call>
    static Lines outOfBounds(Call call) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(call), "index out of bounds");
        return log();
    }
};

const CIMName ALL_CLASSES[] = {SESSION,      CONNECTION,  ISCSI_ENDPOINT,
                               TCP_ENDPOINT, COMPOSITION, CIMName("CIM_ManagedElement")};

// Classes.

TEST_F(iSCSIPipesGuardsTest, OnlyFourPairsOfClassesHavePipeEnds) {
    const std::pair<CIMName, CIMName> served[] = {{ISCSI_ENDPOINT, SESSION},
                                                  {TCP_ENDPOINT, CONNECTION},
                                                  {SESSION, ISCSI_ENDPOINT},
                                                  {CONNECTION, TCP_ENDPOINT}};
    for (const CIMName& source : ALL_CLASSES) {
        for (const CIMName& result : ALL_CLASSES) {
            if (std::find(std::begin(served), std::end(served), std::pair(source, result)) ==
                std::end(served))
                expectNoAssociators(requestPath(source), PIPE_END, result);
        }
    }
}

TEST_F(iSCSIPipesGuardsTest, OnlyASessionAndItsConnectionsHaveACompositionsEnds) {
    for (const CIMName& source : ALL_CLASSES) {
        for (const CIMName& result : ALL_CLASSES) {
            if (source != SESSION || result != CONNECTION)
                expectAssociatorsRefused(requestPath(source), COMPOSITION, result);
        }
    }
}

TEST_F(iSCSIPipesGuardsTest, OtherSourcesHaveNoPipeEnds) {
    expectNoReferences(requestPath(COMPOSITION), PIPE_END);
    expectNoReferences(requestPath("CIM_ManagedElement"), PIPE_END);
}

TEST_F(iSCSIPipesGuardsTest, CompositionsOfOtherSourcesAreRefused) {
    for (const CIMName& source : ALL_CLASSES) {
        if (source != SESSION)
            expectReferencesRefused(requestPath(source), COMPOSITION);
    }
}

TEST_F(iSCSIPipesGuardsTest, OtherAssociationsAreRefused) {
    for (const CIMName& association : {CIMName("CIM_Dependency"), SESSION, CIMName()}) {
        expectAssociatorsRefused(sessionPath(SESSION1), association, ISCSI_ENDPOINT);
        expectReferencesRefused(sessionPath(SESSION1), association);
    }
}

TEST_F(iSCSIPipesGuardsTest, WithoutAResultClassNoWalkIsChosen) {
    expectNoAssociators(sessionPath(SESSION1), PIPE_END, CIMName());
    expectAssociatorsRefused(sessionPath(SESSION1), COMPOSITION, CIMName());
}

TEST_F(iSCSIPipesGuardsTest, ClassesAreComparedWithoutRegardToCase) {
    const CIMObjectPath source =
        requestPath("cim_TCPprotocolendpoint", {{"name", keyText(ENDPOINT2)}});
    references(source, "CIM_ENDPOINTOFNETWORKPIPE");

    EXPECT_EQ(text(objects.delivered.at(0).getClassName()), "CIM_EndpointOfNetworkPipe");
    EXPECT_THAT(properties(CIMInstance(objects.delivered.at(0))).at(0),
                testing::HasSubstr(" of cim_TCPprotocolendpoint from CIM_EndpointOfNetworkPipe"));

    references(requestPath("cim_ISCSIconnection", {{"InstanceID", keyText(CONNECTION1)}}),
               PIPE_END);
    EXPECT_THAT(properties(CIMInstance(objects.delivered.at(1))).at(1),
                testing::HasSubstr(" of cim_ISCSIconnection from CIM_EndpointOfNetworkPipe"));
}

TEST_F(iSCSIPipesGuardsTest, TheResultClassGoesToTheBuildersAsSpelled) {
    const CIMName sessionClass("cim_ISCSIsession");
    const CIMName connectionClass("cim_ISCSIconnection");
    connect(SESSION1, {CONNECTION1});
    associatorNames(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END, sessionClass);
    associators(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END, sessionClass);
    associatorNames(tcpEndpointPath(ENDPOINT2), PIPE_END, connectionClass);
    associators(tcpEndpointPath(ENDPOINT2), PIPE_END, connectionClass);
    associatorNames(sessionPath(SESSION1), COMPOSITION, connectionClass);
    associators(sessionPath(SESSION1), COMPOSITION, connectionClass);

    const Lines lines = calls();
    for (const char* call : {"iSCSISessionPath(cim_ISCSIsession, 0x11000001)",
                             "iSCSISessionInstance(cim_ISCSIsession, true, [Name], 0x11000001)",
                             "iSCSIConnectionPath(cim_ISCSIconnection, 0x10000003)",
                             "iSCSIConnectionInstance(cim_ISCSIconnection, true, [Name], "
                             "0x10000003)",
                             "iSCSIConnectionPath(cim_ISCSIconnection, 0x10000001)",
                             "iSCSIConnectionInstance(cim_ISCSIconnection, true, [Name], "
                             "0x10000001)"})
        EXPECT_THAT(lines, testing::Contains(call));
}

TEST_F(iSCSIPipesGuardsTest, TheBuildersAddNoQualifiersUnlessAskedFor) {
    connect(SESSION1, {CONNECTION1});
    associators(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END, SESSION, false);
    associators(tcpEndpointPath(ENDPOINT2), PIPE_END, CONNECTION, false);
    associators(sessionPath(SESSION1), PIPE_END, ISCSI_ENDPOINT, false);
    associators(connectionPath(CONNECTION1), PIPE_END, TCP_ENDPOINT, false);
    references(sessionPath(SESSION1), PIPE_END, false);
    references(sessionPath(SESSION1), COMPOSITION, false);

    const Lines lines = calls();
    for (const char* call :
         {"iSCSISessionInstance(CIM_iSCSISession, false, [Name], 0x11000001)",
          "iSCSIConnectionInstance(CIM_iSCSIConnection, false, [Name], 0x10000003)",
          "iSCSIProtocolEndpointInstance(false, [Name], 0x0E000001)",
          "TCPProtocolEndpointInstance(false, [Name], 0x09000001)",
          "EndpointOfNetworkPipeInstance(false, \"iqn.t1\", CIM_iSCSISession, 0x11000001)",
          "NetworkPipeCompositionInstance(CIM_NetworkPipeComposition, false, 0x11000001, "
          "0x10000001)"})
        EXPECT_THAT(lines, testing::Contains(call));
}

// Keys.

TEST_F(iSCSIPipesGuardsTest, AnEndpointWithoutANameIsOutOfBounds) {
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

TEST_F(iSCSIPipesGuardsTest, APipeWithoutKeysIsOutOfBounds) {
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

TEST_F(iSCSIPipesGuardsTest, EndpointsAreNamedByNameAndPipesByTheirFirstKey) {
    connect(SESSION1, {});
    referenceNames(requestPath(TCP_ENDPOINT, {{"A", "no id"}, {"NAME", keyText(ENDPOINT2)}}),
                   PIPE_END);
    referenceNames(requestPath(SESSION, {{"A", keyText(SESSION1)}, {"InstanceID", "no id"}}),
                   COMPOSITION);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x09000002, 16)",
                                     "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000003)",
                                     "enumerateAssociatedObjects(0x11000001, 16)"));

    for (const auto& [pipe, id] :
         {std::pair(SESSION, SESSION3), std::pair(CONNECTION, CONNECTION3)})
        references(requestPath(pipe, {{"Any", keyText(id)}, {"InstanceID", "no id"}}), PIPE_END);
    EXPECT_EQ(objects.delivered.size(), 2u);
}

TEST_F(iSCSIPipesGuardsTest, AKeyThatIsNoKeyTextIsTheEnginesError) {
    const CIMObjectPath sources[] = {requestPath(TCP_ENDPOINT, {{"Name", "no id"}}),
                                     requestPath(SESSION, {{"InstanceID", "no id"}}),
                                     requestPath(CONNECTION, {{"InstanceID", "no id"}})};
    for (const CIMObjectPath& source : sources) {
        clearLog();
        EXPECT_EQ(thrownBy<DRAVOperationFailedException>([&] {
                      references(source, PIPE_END);
                  }).find("\"no id\""),
                  0u);
        EXPECT_THAT(log(), ElementsAre("processing", REFERENCES));
    }
}

// The target's name in an iSCSI endpoint's.

TEST_F(iSCSIPipesGuardsTest, TheTargetKeyIsTheNameWithoutNineCharactersWhateverTheyAre) {
    associatorNames(iscsiEndpointPath("iqn.t1#########"), PIPE_END, SESSION);

    EXPECT_EQ(calls().at(0), "getiSCSIObjectIDByName(14, \"iqn.t1\")");
}

TEST_F(iSCSIPipesGuardsTest, ANameOfNineCharactersHasAnEmptyTargetKey) {
    associatorNames(iscsiEndpointPath("123456789"), PIPE_END, SESSION);

    EXPECT_EQ(calls().at(0), "getiSCSIObjectIDByName(14, \"\")");
}

TEST_F(iSCSIPipesGuardsTest, AShorterNameIsTheTargetKeyAsAWhole) {
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

TEST_F(iSCSIPipesGuardsTest, AnUnknownTargetHasNoSessions) {
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

TEST_F(iSCSIPipesGuardsTest, ThePipesOfATargetCarryTheNameThatTheClientGave) {
    setIdByName(CLASSID_TARGET, "IQN.T1", TARGET1);
    references(iscsiEndpointPath("IQN.T1,t,0x0001"), PIPE_END);
    referenceNames(iscsiEndpointPath("IQN.T1,t,0x0001"), PIPE_END);

    const Lines lines = calls();
    for (const char* call :
         {"EndpointOfNetworkPipeInstance(true, \"IQN.T1\", CIM_iSCSISession, 0x11000001)",
          "EndpointOfNetworkPipePath(\"IQN.T1\", CIM_iSCSISession, 0x11000001)"})
        EXPECT_THAT(lines, testing::Contains(call));
}

TEST_F(iSCSIPipesGuardsTest, ATargetKeyIsWrittenAsUTF8) {
    referenceNames(iscsiEndpointPath("iqn.b\u00FCro,t,0x0001"), PIPE_END);

    EXPECT_EQ(traces().at(1), "REFN:EONP:IPE Extracted Target Key: iqn.b\u00FCro");
}

TEST_F(iSCSIPipesGuardsTest, TheIdOfATargetIsWrittenAsAnUnsignedNumber) {
    setIdByName(CLASSID_TARGET, "iqn.big", 0xFFFFFFFF);
    addNullRecord(0xFFFFFFFF);
    referenceNames(iscsiEndpointPath("iqn.big,t,0x0001"), PIPE_END);

    EXPECT_EQ(traces().back(), "REFN:EONP:IPE ObjectIDByName is: 4294967295");
    EXPECT_EQ(log().back(), "complete");
}

// Targets that cannot be listed.

TEST_F(iSCSIPipesGuardsTest, ATargetWithoutSessionPresenceHasNoSessions) {
    associatorNames(iscsiEndpointPath("iqn.quiet,t,0x0001"), PIPE_END, SESSION);

    EXPECT_THAT(calls(), ElementsAre("getiSCSIObjectIDByName(14, \"iqn.quiet\")",
                                     "getObject(14, 0x0E000003)"));
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesGuardsTest, ATargetWithoutSessionPresenceIsNotFoundFromASession) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {QUIET});
    associatorNames(sessionPath(HIDDEN), PIPE_END, ISCSI_ENDPOINT);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x03000000, 14)",
                                     "getObject(14, 0x0E000003)"));
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesGuardsTest, ATargetWithoutARecordIsSkipped) {
    addNullRecord(TARGET1);
    associatorNames(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END, SESSION);
    EXPECT_THAT(paths.delivered, IsEmpty());
    EXPECT_EQ(log().back(), "complete");

    associatorNames(sessionPath(SESSION2), PIPE_END, ISCSI_ENDPOINT);
    EXPECT_EQ(paths.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "complete");
}

// Pairings by position.

TEST_F(iSCSIPipesGuardsTest, ASessionBeyondTheLastTargetIsOutOfBounds) {
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

TEST_F(iSCSIPipesGuardsTest, TheOtherOperationsGoByTheTargetThatListsTheSession) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2});
    associatorNames(sessionPath(SESSION3), PIPE_END, ISCSI_ENDPOINT);
    referenceNames(sessionPath(SESSION3), PIPE_END);
    references(sessionPath(SESSION3), PIPE_END);

    EXPECT_EQ(paths.delivered.size(), 2u);
    EXPECT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesGuardsTest, AConnectionBeyondTheLastEndpointIsOutOfBounds) {
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

TEST_F(iSCSIPipesGuardsTest, AnIndexErrorLeavesWhatWasDelivered) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT, {ENDPOINT1});
    connect(ENDPOINT1, {CONNECTION1, CONNECTION1});

    EXPECT_EQ(outOfBounds([&] {
                  associatorNames(connectionPath(CONNECTION1), PIPE_END, TCP_ENDPOINT);
              }).back(),
              "deliver " + tcpEndpoint(ENDPOINT1));
    EXPECT_EQ(paths.delivered.size(), 1u);
}

// The engine.

TEST_F(iSCSIPipesGuardsTest, TheEnginesFailureLeavesTheOperation) {
    connect(SESSION1, {CONNECTION1, CONNECTION2});
    failNext("iSCSIConnectionPath", 5, "the connection is gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { associatorNames(sessionPath(SESSION1), COMPOSITION, CONNECTION); }),
              "the connection is gone");
    EXPECT_EQ(paths.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000002)");
}

TEST_F(iSCSIPipesGuardsTest, ALookUpThatFailsLeavesTheOperationAfterTheTargetKeysLine) {
    failNext("getiSCSIObjectIDByName", 5, "the array is gone");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { referenceNames(iscsiEndpointPath("iqn.t1,t,0x0001"), PIPE_END); }),
              "the array is gone");
    EXPECT_EQ(log(), left(REFERENCE_NAMES, {"trace REFN:EONP:IPE Extracted Target Key: iqn.t1",
                                            "getiSCSIObjectIDByName(14, \"iqn.t1\")"}));
}

} // namespace
