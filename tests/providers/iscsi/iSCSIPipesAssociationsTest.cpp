// The five walks, each in all four operations.

#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

// From a target's iSCSI endpoint to its sessions.

class FromAnISCSIEndpointTest : public iSCSIPipesTest {
protected:
    // The lines that all four operations share.
    static Lines expected(const std::string& tag, const Lines& found) {
        Lines lines = {"trace " + tag + ":EONP:IPE Extracted Target Key: iqn.t2",
                       "getiSCSIObjectIDByName(14, \"iqn.t2\")",
                       "trace " + tag + ":EONP:IPE ObjectIDByName is: 234881026",
                       "getObject(14, 0x0E000002)", "enumerateAssociatedObjects(0x0E000002, 17)"};
        lines.insert(lines.end(), found.begin(), found.end());
        return lines;
    }

    const CIMObjectPath source = iscsiEndpointPath("iqn.t2,t,0x0001");
};

TEST_F(FromAnISCSIEndpointTest, AssociatorsAreTheTargetsSessions) {
    associators(source, PIPE_END, SESSION);

    EXPECT_EQ(log(),
              completed(ASSOCIATORS,
                        expected("A", {"iSCSISessionInstance(CIM_iSCSISession, true, [Name], "
                                       "0x11000002)",
                                       "deliver " + session(SESSION2),
                                       "iSCSISessionInstance(CIM_iSCSISession, true, [Name], "
                                       "0x11000003)",
                                       "deliver " + session(SESSION3)})));
}

TEST_F(FromAnISCSIEndpointTest, AssociatorNamesAreTheTargetsSessions) {
    associatorNames(source, PIPE_END, SESSION);

    EXPECT_EQ(log(), completed(ASSOCIATOR_NAMES,
                               expected("AN", {"iSCSISessionPath(CIM_iSCSISession, 0x11000002)",
                                               "deliver " + session(SESSION2),
                                               "iSCSISessionPath(CIM_iSCSISession, 0x11000003)",
                                               "deliver " + session(SESSION3)})));
}

TEST_F(FromAnISCSIEndpointTest, ReferencesAreTheTargetsPipes) {
    references(source, PIPE_END);

    EXPECT_EQ(
        log(),
        completed(
            REFERENCES,
            expected("REF", {"EndpointOfNetworkPipeInstance(true, \"iqn.t2\", "
                             "CIM_iSCSISession, 0x11000002)",
                             "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION2)),
                             "EndpointOfNetworkPipeInstance(true, \"iqn.t2\", "
                             "CIM_iSCSISession, 0x11000003)",
                             "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION3))})));
}

TEST_F(FromAnISCSIEndpointTest, ReferenceNamesAreTheTargetsPipes) {
    referenceNames(source, PIPE_END);

    EXPECT_EQ(
        log(),
        completed(
            REFERENCE_NAMES,
            expected("REFN", {"EndpointOfNetworkPipePath(\"iqn.t2\", CIM_iSCSISession, 0x11000002)",
                              "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION2)),
                              "EndpointOfNetworkPipePath(\"iqn.t2\", CIM_iSCSISession, 0x11000003)",
                              "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION3))})));
}

// From a TCP endpoint to its connections.

class FromATCPEndpointTest : public iSCSIPipesTest {
protected:
    const std::string listing = "enumerateAssociatedObjects(0x09000001, 16)";
    const std::string sourceText = "//client.example.com/root/snia:CIM_TCPProtocolEndpoint."
                                   "Name=\"Ovrin:09000001\"";
    const Lines links = {listing, "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
                         "deliver " + pipeEnd(sourceText, connection(CONNECTION1)),
                         "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000002)",
                         "deliver " + pipeEnd(sourceText, connection(CONNECTION2))};
    const CIMObjectPath source = tcpEndpointPath(ENDPOINT1);
};

TEST_F(FromATCPEndpointTest, AssociatorsAreItsConnections) {
    associators(source, PIPE_END, CONNECTION);

    EXPECT_EQ(log(),
              completed(ASSOCIATORS,
                        {listing,
                         "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000001)",
                         "deliver " + connection(CONNECTION1),
                         "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000002)",
                         "deliver " + connection(CONNECTION2)}));
}

TEST_F(FromATCPEndpointTest, AssociatorNamesAreItsConnections) {
    associatorNames(source, PIPE_END, CONNECTION);

    EXPECT_EQ(log(), completed(ASSOCIATOR_NAMES,
                               {listing, "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
                                "deliver " + connection(CONNECTION1),
                                "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000002)",
                                "deliver " + connection(CONNECTION2)}));
}

TEST_F(FromATCPEndpointTest, ReferencesAreBuiltWithTheGivenPathAsAntecedent) {
    references(source, PIPE_END);

    EXPECT_EQ(log(), completed(REFERENCES, links));
    EXPECT_EQ(text(objects.delivered.at(0).getClassName()), "CIM_EndpointOfNetworkPipe");
    EXPECT_THAT(properties(CIMInstance(objects.delivered.at(0))),
                testing::ElementsAre("Antecedent: reference " + sourceText +
                                         " of CIM_TCPProtocolEndpoint from "
                                         "CIM_EndpointOfNetworkPipe [Key=TRUE]",
                                     "Dependent: reference " + connection(CONNECTION1) +
                                         " of CIM_iSCSIConnection from CIM_EndpointOfNetworkPipe "
                                         "[Key=TRUE]"));
}

TEST_F(FromATCPEndpointTest, ReferencesHaveNoQualifiersUnlessAskedFor) {
    references(source, PIPE_END, false);

    EXPECT_THAT(properties(CIMInstance(objects.delivered.at(0))),
                testing::Each(testing::EndsWith("from CIM_EndpointOfNetworkPipe")));
}

TEST_F(FromATCPEndpointTest, ReferenceNamesAreThePathsOfTheSame) {
    referenceNames(source, PIPE_END);

    EXPECT_EQ(log(), completed(REFERENCE_NAMES, links));
}

// From a session to the iSCSI endpoint of its target. SESSION2 is listed first under TARGET2 and,
// as no array would have it, second under TARGET1.

class FromASessionTest : public iSCSIPipesTest {
protected:
    FromASessionTest() { associate(TARGET1, CLASSID_ISCSI_SESSION, {SESSION1, SESSION2}); }

    // The lines that all four operations share, and what they add for the two matches.
    static Lines expected(const Lines& ofTarget1, const Lines& ofTarget2) {
        Lines lines = {"enumerateAssociatedObjects(0x03000000, 14)", "getObject(14, 0x0E000001)",
                       "enumerateAssociatedObjects(0x0E000001, 17)"};
        lines.insert(lines.end(), ofTarget1.begin(), ofTarget1.end());
        lines.insert(lines.end(),
                     {"getObject(14, 0x0E000002)", "enumerateAssociatedObjects(0x0E000002, 17)"});
        lines.insert(lines.end(), ofTarget2.begin(), ofTarget2.end());
        lines.push_back("getObject(14, 0x0E000003)");
        return lines;
    }

    const CIMObjectPath source = sessionPath(SESSION2);
};

TEST_F(FromASessionTest, AssociatorsAreTheEndpointsOfTheTargetsAtTheSessionsPosition) {
    associators(source, PIPE_END, ISCSI_ENDPOINT);

    EXPECT_EQ(
        log(),
        completed(
            ASSOCIATORS,
            expected({"iSCSIProtocolEndpointInstance(true, [Name], 0x0E000002)",
                      "deliver " + objectText("CIM_iSCSIProtocolEndpoint", "Name", TARGET2)},
                     {"iSCSIProtocolEndpointInstance(true, [Name], 0x0E000001)",
                      "deliver " + objectText("CIM_iSCSIProtocolEndpoint", "Name", TARGET1)})));
}

TEST_F(FromASessionTest, AssociatorNamesAreTheEndpointsOfTheTargetsThatListTheSession) {
    associatorNames(source, PIPE_END, ISCSI_ENDPOINT);

    EXPECT_EQ(log(), completed(ASSOCIATOR_NAMES, expected({"iSCSIProtocolEndpointPath(\"iqn.t1\")",
                                                           "deliver " + iscsiEndpoint("iqn.t1")},
                                                          {"iSCSIProtocolEndpointPath(\"iqn.t2\")",
                                                           "deliver " + iscsiEndpoint("iqn.t2")})));
}

TEST_F(FromASessionTest, ReferencesAreThePipesOfTheTargetsThatListTheSession) {
    references(source, PIPE_END);

    EXPECT_EQ(
        log(),
        completed(REFERENCES,
                  expected({"EndpointOfNetworkPipeInstance(true, \"iqn.t1\", "
                            "CIM_iSCSISession, 0x11000002)",
                            "deliver " + pipeEnd(iscsiEndpoint("iqn.t1"), session(SESSION2))},
                           {"EndpointOfNetworkPipeInstance(true, \"iqn.t2\", "
                            "CIM_iSCSISession, 0x11000002)",
                            "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION2))})));
}

TEST_F(FromASessionTest, ReferenceNamesAreThePipesOfTheTargetsThatListTheSession) {
    referenceNames(source, PIPE_END);

    EXPECT_EQ(
        log(),
        completed(REFERENCE_NAMES,
                  expected({"EndpointOfNetworkPipePath(\"iqn.t1\", CIM_iSCSISession, 0x11000002)",
                            "deliver " + pipeEnd(iscsiEndpoint("iqn.t1"), session(SESSION2))},
                           {"EndpointOfNetworkPipePath(\"iqn.t2\", CIM_iSCSISession, 0x11000002)",
                            "deliver " + pipeEnd(iscsiEndpoint("iqn.t2"), session(SESSION2))})));
}

// From a connection to its TCP endpoint. CONNECTION1 is listed first through ENDPOINT1 and, as no
// array would have it, second through ENDPOINT2.

class FromAConnectionTest : public iSCSIPipesTest {
protected:
    FromAConnectionTest() {
        connect(ENDPOINT1, {CONNECTION1});
        connect(ENDPOINT2, {CONNECTION3, CONNECTION1});
    }

    static Lines expected(const Lines& ofEndpoint1, const Lines& ofEndpoint2) {
        Lines lines = {"enumerateAssociatedObjects(0x03000000, 9)",
                       "enumerateAssociatedObjects(0x09000001, 16)"};
        lines.insert(lines.end(), ofEndpoint1.begin(), ofEndpoint1.end());
        lines.push_back("enumerateAssociatedObjects(0x09000002, 16)");
        lines.insert(lines.end(), ofEndpoint2.begin(), ofEndpoint2.end());
        return lines;
    }

    const std::string sourceText = "//client.example.com/root/snia:CIM_iSCSIConnection."
                                   "InstanceID=\"Ovrin:10000001\"";
    const Lines links = expected({"TCPProtocolEndpointPath(0x09000001)",
                                  "deliver " + pipeEnd(tcpEndpoint(ENDPOINT1), sourceText)},
                                 {"TCPProtocolEndpointPath(0x09000002)",
                                  "deliver " + pipeEnd(tcpEndpoint(ENDPOINT2), sourceText)});
    const CIMObjectPath source = connectionPath(CONNECTION1);
};

TEST_F(FromAConnectionTest, AssociatorsAreTheEndpointsAtTheConnectionsPosition) {
    associators(source, PIPE_END, TCP_ENDPOINT);

    EXPECT_EQ(log(), completed(ASSOCIATORS,
                               expected({"TCPProtocolEndpointInstance(true, [Name], 0x09000001)",
                                         "deliver " + tcpEndpoint(ENDPOINT1)},
                                        {"TCPProtocolEndpointInstance(true, [Name], 0x09000002)",
                                         "deliver " + tcpEndpoint(ENDPOINT2)})));
}

TEST_F(FromAConnectionTest, AssociatorNamesAreTheEndpointsAtTheConnectionsPosition) {
    associatorNames(source, PIPE_END, TCP_ENDPOINT);

    EXPECT_EQ(log(), completed(ASSOCIATOR_NAMES, expected({"TCPProtocolEndpointPath(0x09000001)",
                                                           "deliver " + tcpEndpoint(ENDPOINT1)},
                                                          {"TCPProtocolEndpointPath(0x09000002)",
                                                           "deliver " + tcpEndpoint(ENDPOINT2)})));
}

TEST_F(FromAConnectionTest, ReferencesAreBuiltWithTheGivenPathAsDependent) {
    references(source, PIPE_END);

    EXPECT_EQ(log(), completed(REFERENCES, links));
    EXPECT_THAT(properties(CIMInstance(objects.delivered.at(1))),
                testing::ElementsAre("Antecedent: reference " + tcpEndpoint(ENDPOINT2) +
                                         " of CIM_TCPProtocolEndpoint from "
                                         "CIM_EndpointOfNetworkPipe [Key=TRUE]",
                                     "Dependent: reference " + sourceText +
                                         " of CIM_iSCSIConnection from CIM_EndpointOfNetworkPipe "
                                         "[Key=TRUE]"));
}

TEST_F(FromAConnectionTest, ReferenceNamesAreThePathsOfTheSame) {
    referenceNames(source, PIPE_END);

    EXPECT_EQ(log(), completed(REFERENCE_NAMES, links));
}

// From a session to its connections.

class FromASessionToItsConnectionsTest : public iSCSIPipesTest {
protected:
    FromASessionToItsConnectionsTest() { connect(SESSION1, {CONNECTION3, CONNECTION1}); }

    const std::string listing = "enumerateAssociatedObjects(0x11000001, 16)";
    const CIMObjectPath source = sessionPath(SESSION1);
};

TEST_F(FromASessionToItsConnectionsTest, AssociatorsAreTheConnections) {
    associators(source, COMPOSITION, CONNECTION);

    EXPECT_EQ(log(),
              completed(ASSOCIATORS,
                        {listing,
                         "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000003)",
                         "deliver " + connection(CONNECTION3),
                         "iSCSIConnectionInstance(CIM_iSCSIConnection, true, [Name], 0x10000001)",
                         "deliver " + connection(CONNECTION1)}));
}

TEST_F(FromASessionToItsConnectionsTest, AssociatorNamesAreTheConnections) {
    associatorNames(source, COMPOSITION, CONNECTION);

    EXPECT_EQ(log(), completed(ASSOCIATOR_NAMES,
                               {listing, "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000003)",
                                "deliver " + connection(CONNECTION3),
                                "iSCSIConnectionPath(CIM_iSCSIConnection, 0x10000001)",
                                "deliver " + connection(CONNECTION1)}));
}

TEST_F(FromASessionToItsConnectionsTest, ReferencesAreCompositions) {
    references(source, COMPOSITION);

    EXPECT_EQ(log(),
              completed(REFERENCES, {listing,
                                     "NetworkPipeCompositionInstance(CIM_NetworkPipeComposition, "
                                     "true, 0x11000001, 0x10000003)",
                                     "deliver " + composition(SESSION1, CONNECTION3),
                                     "NetworkPipeCompositionInstance(CIM_NetworkPipeComposition, "
                                     "true, 0x11000001, 0x10000001)",
                                     "deliver " + composition(SESSION1, CONNECTION1)}));
}

TEST_F(FromASessionToItsConnectionsTest, ReferenceNamesAreCompositions) {
    referenceNames(source, COMPOSITION);

    EXPECT_EQ(log(),
              completed(REFERENCE_NAMES, {listing,
                                          "NetworkPipeCompositionPath(CIM_NetworkPipeComposition, "
                                          "0x11000001, 0x10000003)",
                                          "deliver " + composition(SESSION1, CONNECTION3),
                                          "NetworkPipeCompositionPath(CIM_NetworkPipeComposition, "
                                          "0x11000001, 0x10000001)",
                                          "deliver " + composition(SESSION1, CONNECTION1)}));
}

} // namespace
