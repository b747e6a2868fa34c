// Which classes the walks lead between.

#include <algorithm>

#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

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
};

const CIMName ALL_CLASSES[] = {SESSION,      CONNECTION,  ISCSI_ENDPOINT,
                               TCP_ENDPOINT, COMPOSITION, CIMName("CIM_ManagedElement")};

TEST_F(iSCSIPipesGuardsTest, OnlyFourPairsOfClassesHavePipeEnds) {
    const std::pair<CIMName, CIMName> served[] = {{ISCSI_ENDPOINT, SESSION},
                                                  {TCP_ENDPOINT, CONNECTION},
                                                  {SESSION, ISCSI_ENDPOINT},
                                                  {CONNECTION, TCP_ENDPOINT}};
    for (const CIMName& source : ALL_CLASSES) {
        for (const CIMName& result : ALL_CLASSES) {
            if (std::find(std::begin(served), std::end(served), std::pair(source, result)) ==
                std::end(served)) {
                expectNoAssociators(requestPath(source), PIPE_END, result);
            }
        }
    }
}

TEST_F(iSCSIPipesGuardsTest, OnlyASessionAndItsConnectionsHaveACompositionsEnds) {
    for (const CIMName& source : ALL_CLASSES) {
        for (const CIMName& result : ALL_CLASSES) {
            if (source != SESSION || result != CONNECTION) {
                expectAssociatorsRefused(requestPath(source), COMPOSITION, result);
            }
        }
    }
}

TEST_F(iSCSIPipesGuardsTest, OtherSourcesHaveNoPipeEnds) {
    expectNoReferences(requestPath(COMPOSITION), PIPE_END);
    expectNoReferences(requestPath("CIM_ManagedElement"), PIPE_END);
}

TEST_F(iSCSIPipesGuardsTest, CompositionsOfOtherSourcesAreRefused) {
    for (const CIMName& source : ALL_CLASSES) {
        if (source != SESSION) {
            expectReferencesRefused(requestPath(source), COMPOSITION);
        }
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
                             "0x10000001)"}) {
        EXPECT_THAT(lines, testing::Contains(call));
    }
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
          "0x10000001)"}) {
        EXPECT_THAT(lines, testing::Contains(call));
    }
}

} // namespace
