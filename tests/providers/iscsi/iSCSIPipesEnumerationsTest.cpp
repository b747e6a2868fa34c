#include <algorithm>

#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using iSCSIPipesEnumerationsTest = iSCSIPipesTest;

// All of a class.

TEST_F(iSCSIPipesEnumerationsTest, SessionsAreEnumeratedInTheEnginesOrder) {
    associate(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION, {SESSION2, SESSION1});
    enumerateInstances(SESSION);

    EXPECT_EQ(log(),
              completed(EI, {"enumerateAssociatedObjects(0x02000000, 17)",
                             "iSCSISessionInstance(CIM_iSCSISession, true, [Name], 0x11000002)",
                             "deliver " + session(SESSION2),
                             "iSCSISessionInstance(CIM_iSCSISession, true, [Name], 0x11000001)",
                             "deliver " + session(SESSION1)}));
}

TEST_F(iSCSIPipesEnumerationsTest, NamesOfSessionsAreEnumerated) {
    associate(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION, {SESSION2, SESSION1});
    enumerateInstanceNames(SESSION);

    EXPECT_EQ(log(), completed(EIN, {"enumerateAssociatedObjects(0x02000000, 17)",
                                     "iSCSISessionPath(CIM_iSCSISession, 0x11000002)",
                                     "deliver " + session(SESSION2),
                                     "iSCSISessionPath(CIM_iSCSISession, 0x11000001)",
                                     "deliver " + session(SESSION1)}));
}

TEST_F(iSCSIPipesEnumerationsTest, ConnectionsAreEnumeratedInTheEnginesOrder) {
    connect(SESSION_ROOT_OBJECT_ID, {CONNECTION3, CONNECTION1});
    enumerateInstances(CONNECTION);

    EXPECT_EQ(
        log(),
        completed(EI, {"enumerateAssociatedObjects(0x02000000, 16)",
                       "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000003)",
                       "deliver " + connection(CONNECTION3),
                       "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000001)",
                       "deliver " + connection(CONNECTION1)}));
}

TEST_F(iSCSIPipesEnumerationsTest, NamesOfConnectionsAreEnumerated) {
    connect(SESSION_ROOT_OBJECT_ID, {CONNECTION3, CONNECTION1});
    enumerateInstanceNames(CONNECTION);

    EXPECT_EQ(log(), completed(EIN, {"enumerateAssociatedObjects(0x02000000, 16)",
                                     "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000003)",
                                     "deliver " + connection(CONNECTION3),
                                     "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
                                     "deliver " + connection(CONNECTION1)}));
}

TEST_F(iSCSIPipesEnumerationsTest, EnumerationsPassTheClientsSpellingOfTheClassOn) {
    associate(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION, {SESSION1});
    connect(SESSION_ROOT_OBJECT_ID, {CONNECTION1});
    for (const char* className : {"cim_ISCSIsession", "cim_ISCSIconnection"}) {
        enumerateInstances(className);
        enumerateInstanceNames(className);
    }

    EXPECT_THAT(calls(),
                ElementsAre("enumerateAssociatedObjects(0x02000000, 17)",
                            "iSCSISessionInstance(cim_ISCSIsession, true, [Name], 0x11000001)",
                            "enumerateAssociatedObjects(0x02000000, 17)",
                            "iSCSISessionPath(cim_ISCSIsession, 0x11000001)",
                            "enumerateAssociatedObjects(0x02000000, 16)",
                            "iSCSIConnectionInstance(cim_ISCSIconnection, true, [Name], "
                            "0x10000001)",
                            "enumerateAssociatedObjects(0x02000000, 16)",
                            "iSCSIConnectionPath(cim_ISCSIconnection, 0x10000001)"));
}

TEST_F(iSCSIPipesEnumerationsTest, WithoutObjectsEachEnumerationIsEmptyAndCompleted) {
    resetEngine();
    for (const CIMName& className : {SESSION, CONNECTION, PIPE_END, COMPOSITION}) {
        enumerateInstances(className);
        enumerateInstanceNames(className);
    }

    EXPECT_THAT(instances.delivered, IsEmpty());
    EXPECT_THAT(paths.delivered, IsEmpty());
    const Lines lines = log();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "complete"), 8);
}

TEST_F(iSCSIPipesEnumerationsTest, EnumeratingAnotherClassIsNotSupported) {
    for (const CIMName& className : {ISCSI_ENDPOINT, TCP_ENDPOINT, CIMName("CIM_NetworkPipe"),
                                     CIMName("CIM_iSCSISessionStatistics")}) {
        clearLog();
        EXPECT_EQ(thrownBy<CIMNotSupportedException>([&] { enumerateInstances(className); }),
                  "IPProtocolEndpoints::associators");
        EXPECT_EQ(thrownBy<CIMNotSupportedException>([&] { enumerateInstanceNames(className); }),
                  "IPProtocolEndpoints::associators");
        EXPECT_THAT(log(), ElementsAre("processing", EI, "processing", EIN));
    }
}

// Links between pipes and endpoints: those of the targets, then those of the TCP endpoints.

const Lines PIPES_OF_TARGETS = {
    "enumerateAssociatedObjects(0x03000000, 14)",
    "getObject(14, 0x0E000001)",
    "enumerateAssociatedObjects(0x0E000001, 17)",
    "EndpointOfNetworkPipePath(\"iqn.t1\", CIM_iSCSISession, 0x11000001)",
    "deliver " + pipeEnd(iscsiEndpoint("iqn.t1"), session(SESSION1)),
    "getObject(14, 0x0E000002)",
    "enumerateAssociatedObjects(0x0E000002, 17)",
    "EndpointOfNetworkPipePath(\"iqn.t2\", CIM_iSCSISession, 0x11000002)",
    "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION2)),
    "EndpointOfNetworkPipePath(\"iqn.t2\", CIM_iSCSISession, 0x11000003)",
    "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION3)),
    "getObject(14, 0x0E000003)"};

// CONNECTION2 and CONNECTION3 are each paired with the endpoint at their own position.
const Lines PIPES_OF_TCP_ENDPOINTS = {
    "enumerateAssociatedObjects(0x03000000, 9)",
    "enumerateAssociatedObjects(0x09000001, 16)",
    "TCPProtocolEndpointPath(0x09000001)",
    "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
    "deliver " + pipeEnd(tcpEndpoint(ENDPOINT1), connection(CONNECTION1)),
    "TCPProtocolEndpointPath(0x09000002)",
    "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000002)",
    "deliver " + pipeEnd(tcpEndpoint(ENDPOINT2), connection(CONNECTION2)),
    "enumerateAssociatedObjects(0x09000002, 16)",
    "TCPProtocolEndpointPath(0x09000001)",
    "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000003)",
    "deliver " + pipeEnd(tcpEndpoint(ENDPOINT1), connection(CONNECTION3))};

Lines joined(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// The same with the builder of instances.
Lines withInstances(Lines lines, bool includeQualifiers) {
    const std::string path = "EndpointOfNetworkPipePath(";
    for (std::string& line : lines) {
        if (line.starts_with(path)) {
            line = "EndpointOfNetworkPipeInstance(" + text(includeQualifiers) + ", " +
                   line.substr(path.size());
        }
    }
    return lines;
}

TEST_F(iSCSIPipesEnumerationsTest, PipeEndsAreThoseOfTargetsThenThoseOfTCPEndpoints) {
    enumerateInstances(PIPE_END);

    EXPECT_EQ(log(),
              completed(EI, joined(withInstances(PIPES_OF_TARGETS, true), PIPES_OF_TCP_ENDPOINTS)));
}

TEST_F(iSCSIPipesEnumerationsTest, NamesOfPipeEndsAreThoseOfTargetsThenThoseOfTCPEndpoints) {
    enumerateInstanceNames(PIPE_END);

    EXPECT_EQ(log(), completed(EIN, joined(PIPES_OF_TARGETS, PIPES_OF_TCP_ENDPOINTS)));
}

TEST_F(iSCSIPipesEnumerationsTest, AHandBuiltPipeEndNamesTheClassesOfItsReferences) {
    enumerateInstances(PIPE_END, true);

    EXPECT_THAT(properties(instances.delivered.at(3)),
                ElementsAre("Antecedent: reference " + tcpEndpoint(ENDPOINT1) +
                                " of CIM_TCPProtocolEndpoint from CIM_EndpointOfNetworkPipe "
                                "[Key=TRUE]",
                            "Dependent: reference " + connection(CONNECTION1) +
                                " of CIM_iSCSIConnection from CIM_EndpointOfNetworkPipe "
                                "[Key=TRUE]"));
}

TEST_F(iSCSIPipesEnumerationsTest, AHandBuiltPipeEndHasNoQualifiersUnlessAskedFor) {
    enumerateInstances(PIPE_END, false);

    EXPECT_EQ(log(), completed(EI, joined(withInstances(PIPES_OF_TARGETS, false),
                                          PIPES_OF_TCP_ENDPOINTS)));
    EXPECT_THAT(properties(instances.delivered.at(3)),
                ElementsAre("Antecedent: reference " + tcpEndpoint(ENDPOINT1) +
                                " of CIM_TCPProtocolEndpoint from CIM_EndpointOfNetworkPipe",
                            "Dependent: reference " + connection(CONNECTION1) +
                                " of CIM_iSCSIConnection from CIM_EndpointOfNetworkPipe"));
}

TEST_F(iSCSIPipesEnumerationsTest, AConnectionBeyondTheLastEndpointIsOutOfBoundsAfterTheFirst) {
    resetEngine();
    associate(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT, {ENDPOINT1});
    connect(ENDPOINT1, {CONNECTION1, CONNECTION2});
    const Lines lines = {"enumerateAssociatedObjects(0x03000000, 14)",
                         "enumerateAssociatedObjects(0x03000000, 9)",
                         "enumerateAssociatedObjects(0x09000001, 16)",
                         "TCPProtocolEndpointPath(0x09000001)",
                         "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
                         "deliver " + pipeEnd(tcpEndpoint(ENDPOINT1), connection(CONNECTION1))};

    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { enumerateInstances(PIPE_END); }),
              "index out of bounds");
    EXPECT_EQ(log(), left(EI, lines));
    EXPECT_EQ(instances.delivered.size(), 1u);

    clearLog();
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { enumerateInstanceNames(PIPE_END); }),
              "index out of bounds");
    EXPECT_EQ(log(), left(EIN, lines));
    EXPECT_EQ(paths.delivered.size(), 1u);
}

// Links between sessions and connections.

TEST_F(iSCSIPipesEnumerationsTest, ACompositionPairsAConnectionWithTheSessionAtItsPosition) {
    connect(SESSION1, {CONNECTION1});
    connect(SESSION3, {CONNECTION2, CONNECTION3});
    const Lines engineCalls[] = {
        {"enumerateAssociatedObjects(0x03000000, 14)", "getObject(14, 0x0E000001)",
         "enumerateAssociatedObjects(0x0E000001, 17)",
         "enumerateAssociatedObjects(0x11000001, 16)"},
        {"getObject(14, 0x0E000002)", "enumerateAssociatedObjects(0x0E000002, 17)",
         "enumerateAssociatedObjects(0x11000002, 16)",
         "enumerateAssociatedObjects(0x11000003, 16)"},
        {"getObject(14, 0x0E000003)"}};
    const auto expected = [&](const std::string& builder, const std::string& flag) {
        const std::string call = builder + "(CIM_NetworkPipeComposition, " + flag;
        Lines lines = joined(engineCalls[0], {call + "0x11000001, 0x10000001)",
                                              "deliver " + composition(SESSION1, CONNECTION1)});
        lines = joined(
            joined(lines, engineCalls[1]),
            {call + "0x11000002, 0x10000002)", "deliver " + composition(SESSION2, CONNECTION2),
             call + "0x11000003, 0x10000003)", "deliver " + composition(SESSION3, CONNECTION3)});
        return joined(lines, engineCalls[2]);
    };

    enumerateInstances(COMPOSITION);
    EXPECT_EQ(log(), completed(EI, expected("NetworkPipeCompositionInstance", "true, ")));

    clearLog();
    enumerateInstanceNames(COMPOSITION);
    EXPECT_EQ(log(), completed(EIN, expected("NetworkPipeCompositionPath", "")));
}

TEST_F(iSCSIPipesEnumerationsTest,
       ASessionWithMoreConnectionsThanItsTargetHasSessionsIsOutOfBounds) {
    connect(SESSION2, {CONNECTION1});
    connect(SESSION3, {CONNECTION1, CONNECTION2, CONNECTION3});

    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { enumerateInstances(COMPOSITION); }),
              "index out of bounds");
    EXPECT_EQ(instances.delivered.size(), 3u);
    EXPECT_EQ(log().back(), "deliver " + composition(SESSION3, CONNECTION2));

    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { enumerateInstanceNames(COMPOSITION); }),
              "index out of bounds");
    EXPECT_EQ(paths.delivered.size(), 3u);
    EXPECT_EQ(log().back(), "deliver " + composition(SESSION3, CONNECTION2));
}

// Targets that cannot be listed.

TEST_F(iSCSIPipesEnumerationsTest, ATargetWithoutSessionPresenceContributesNothing) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {QUIET});
    connect(HIDDEN, {CONNECTION1});
    enumerateInstances(COMPOSITION);
    enumerateInstanceNames(COMPOSITION);

    const Lines lines = {"enumerateAssociatedObjects(0x03000000, 14)", "getObject(14, 0x0E000003)"};
    EXPECT_EQ(log(), joined(completed(EI, lines), completed(EIN, lines)));
}

TEST_F(iSCSIPipesEnumerationsTest, ATargetWithoutARecordIsSkipped) {
    addNullRecord(TARGET1);
    associate(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT, {});
    enumerateInstances(PIPE_END);

    EXPECT_EQ(instances.delivered.size(), 2u);
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(iSCSIPipesEnumerationsTest, TheEnginesFailureLeavesWhatWasDelivered) {
    failNext("getObject", 5, "the array is gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] { enumerateInstances(PIPE_END); }),
              "the array is gone");
    EXPECT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(log().back(), "getObject(14, 0x0E000002)");
}

} // namespace
