#include "tests/providers/iscsi/iSCSIPipesTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class iSCSIPipesProviderTest : public iSCSIPipesTest {
protected:
    // The path of an association as a client sends it, its ends without a host.
    static CIMObjectPath link(const CIMName& className, const char* firstRole, const char* first,
                              const char* secondRole, const char* second) {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding(firstRole, String(first), CIMKeyBinding::REFERENCE));
        keys.append(CIMKeyBinding(secondRole, String(second), CIMKeyBinding::REFERENCE));
        return CIMObjectPath("client.example.com", CIMNamespaceName("root/snia"), className, keys);
    }

    static CIMObjectPath givenPipeEnd(const CIMName& className = PIPE_END) {
        return link(className, "Antecedent", "X_Endpoint.Name=\"no such\"", "Dependent",
                    "X_Pipe.InstanceID=\"no such\"");
    }

    static CIMObjectPath givenComposition() {
        return link(COMPOSITION, "GroupComponent", "X_Pipe.InstanceID=\"one\"", "PartComponent",
                    "Y_Pipe.InstanceID=\"two\"");
    }
};

const char GIVEN_PIPE_END[] = "//array1.example.com/root/snia:CIM_EndpointOfNetworkPipe."
                              "Antecedent=\"X_Endpoint.Name=\\\"no "
                              "such\\\"\",Dependent=\"X_Pipe.InstanceID=\\\"no such\\\"\"";

// A single instance.

TEST_F(iSCSIPipesProviderTest, GetInstanceGivesASession) {
    getInstance(sessionPath(SESSION1));

    EXPECT_THAT(log(),
                ElementsAre("processing",
                            "iSCSISessionInstance(CIM_iSCSISession, true, [Name], 0x11000001)",
                            "deliver " + session(SESSION1), "complete"));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceGivesAConnection) {
    getInstance(connectionPath(CONNECTION1), false);

    EXPECT_THAT(
        log(),
        ElementsAre("processing",
                    "iSCSIConnectionInstance(CIM_iSCSIConnection, false, [Name], 0x10000001)",
                    "deliver " + connection(CONNECTION1), "complete"));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceTakesTheFirstKeyWhateverItsName) {
    getInstance(requestPath(SESSION, {{"Zone", "no id"}, {"Anything", keyText(SESSION2)}}));

    EXPECT_THAT(calls(),
                ElementsAre("iSCSISessionInstance(CIM_iSCSISession, true, [Name], 0x11000002)"));
}

TEST_F(iSCSIPipesProviderTest, TheClientsSpellingOfTheClassGoesToTheBuilders) {
    getInstance(requestPath("cim_ISCSIsession", {{"InstanceID", keyText(SESSION1)}}));
    getInstance(requestPath("cim_ISCSIconnection", {{"InstanceID", keyText(CONNECTION1)}}));

    EXPECT_THAT(calls(),
                ElementsAre("iSCSISessionInstance(cim_ISCSIsession, true, [Name], 0x11000001)",
                            "iSCSIConnectionInstance(cim_ISCSIconnection, true, [Name], "
                            "0x10000001)"));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceEchoesAPipeEndWithoutAskingTheEngine) {
    getInstance(givenPipeEnd(), false);

    EXPECT_THAT(log(),
                ElementsAre("processing", std::string("deliver ") + GIVEN_PIPE_END, "complete"));
    EXPECT_EQ(text(instances.delivered.at(0).getClassName()), "CIM_EndpointOfNetworkPipe");
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("Antecedent: reference X_Endpoint.Name=\"no such\" of X_Endpoint from "
                            "CIM_EndpointOfNetworkPipe",
                            "Dependent: reference X_Pipe.InstanceID=\"no such\" of X_Pipe from "
                            "CIM_EndpointOfNetworkPipe"));
}

TEST_F(iSCSIPipesProviderTest, AnEchoedPipeEndCarriesKeyQualifiersIfAskedFor) {
    getInstance(givenPipeEnd());

    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("Antecedent: reference X_Endpoint.Name=\"no such\" of X_Endpoint from "
                            "CIM_EndpointOfNetworkPipe [Key=TRUE]",
                            "Dependent: reference X_Pipe.InstanceID=\"no such\" of X_Pipe from "
                            "CIM_EndpointOfNetworkPipe [Key=TRUE]"));
}

TEST_F(iSCSIPipesProviderTest, AnEchoedPipeEndHasTheKeysOfTheRequest) {
    getInstance(givenPipeEnd());

    const Array<CIMKeyBinding> requested = givenPipeEnd().getKeyBindings();
    const Array<CIMKeyBinding> echoed = instances.delivered.at(0).getPath().getKeyBindings();
    ASSERT_EQ(echoed.size(), 2u);
    EXPECT_TRUE(echoed[0] == requested[0]);
    EXPECT_TRUE(echoed[1] == requested[1]);
}

TEST_F(iSCSIPipesProviderTest, AnEchoHasTheSchemasSpellingOfItsClassAndRoles) {
    getInstance(link("cim_endpointofnetworkpipe", "ANTECEDENT", "X_Endpoint.Name=\"no such\"",
                     "DEPENDENT", "X_Pipe.InstanceID=\"no such\""));

    EXPECT_EQ(text(instances.delivered.at(0).getPath()), GIVEN_PIPE_END);
}

TEST_F(iSCSIPipesProviderTest, AnEchoFindsItsRolesByNameAndLeavesOtherKeysOut) {
    getInstance(requestPath(PIPE_END, {{"A", "a"},
                                       {"Antecedent", "X_Endpoint.Name=\"no such\""},
                                       {"B", "b"},
                                       {"Dependent", "X_Pipe.InstanceID=\"no such\""}}));

    EXPECT_EQ(text(instances.delivered.at(0).getPath()), GIVEN_PIPE_END);
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre(testing::StartsWith("Antecedent: reference X_Endpoint."),
                            testing::StartsWith("Dependent: reference X_Pipe.")));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceEchoesAComposition) {
    getInstance(givenComposition());

    EXPECT_THAT(log(),
                ElementsAre("processing",
                            "deliver //array1.example.com/root/snia:CIM_NetworkPipeComposition."
                            "GroupComponent=\"X_Pipe.InstanceID=\\\"one\\\"\","
                            "PartComponent=\"Y_Pipe.InstanceID=\\\"two\\\"\"",
                            "complete"));
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("GroupComponent: reference X_Pipe.InstanceID=\"one\" of X_Pipe from "
                            "CIM_NetworkPipeComposition [Key=TRUE]",
                            "PartComponent: reference Y_Pipe.InstanceID=\"two\" of Y_Pipe from "
                            "CIM_NetworkPipeComposition [Key=TRUE]"));
}

TEST_F(iSCSIPipesProviderTest, AMissingRoleIsOutOfBoundsAndNotCompleted) {
    for (const char* role : {"Antecedent", "Dependent"}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] {
                      getInstance(requestPath(PIPE_END, {{role, "X_Any.Name=\"a\""}}));
                  }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing"));
    }
    for (const char* role : {"GroupComponent", "PartComponent"}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] {
                      getInstance(requestPath(COMPOSITION, {{role, "X_Any.Name=\"a\""}}));
                  }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing"));
    }
}

TEST_F(iSCSIPipesProviderTest, ARoleThatIsNoPathIsMalformedBeforeTheNextIsLookedFor) {
    EXPECT_EQ(thrownBy<MalformedObjectNameException>([this] {
                  getInstance(requestPath(PIPE_END, {{"Antecedent", "not a path"}}));
              }).find("malformed object name: not a path"),
              0u);
    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceOfAnotherClassDeliversNothing) {
    getInstance(requestPath(ISCSI_ENDPOINT, {{"Name", "iqn.t1,t,0x0001"}}));
    getInstance(requestPath("CIM_iSCSISessionStatistics", {{"InstanceID", keyText(SESSION1)}}));

    EXPECT_THAT(log(), ElementsAre("processing", "complete", "processing", "complete"));
}

TEST_F(iSCSIPipesProviderTest, GetInstanceWithoutKeysIsOutOfBoundsWhateverTheClass) {
    for (const char* className :
         {"CIM_iSCSISession", "CIM_iSCSIConnection", "CIM_EndpointOfNetworkPipe",
          "CIM_NetworkPipeComposition", "CIM_Anything"}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { getInstance(requestPath(className)); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing"));
    }
}

TEST_F(iSCSIPipesProviderTest, AKeyThatIsNoKeyTextNamesNothing) {
    getInstance(requestPath(SESSION, {{"InstanceID", "session one"}}));

    EXPECT_THAT(calls(), ElementsAre("iSCSISessionInstance(CIM_iSCSISession, true, [Name], "
                                     "0xFFFFFFFF)"));
}

TEST_F(iSCSIPipesProviderTest, AnUnknownSessionIsTheBuildersAffair) {
    failNext("iSCSISessionInstance", 6, "no such session");

    EXPECT_EQ(
        thrownBy<DRAVOperationFailedException>([this] { getInstance(sessionPath(SESSION1)); }),
        "no such session");
    EXPECT_THAT(log(), testing::Not(testing::Contains("complete")));
}

TEST_F(iSCSIPipesProviderTest, TerminateReleasesNothing) {
    provider.terminate();
    EXPECT_THAT(log(), IsEmpty());

    associate(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION, {SESSION1});
    enumerateInstances(SESSION);
    EXPECT_EQ(instances.delivered.size(), 1u);
}

} // namespace
