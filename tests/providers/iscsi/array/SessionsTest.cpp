// Hosts log in and out, and a client walks between their sessions, connections and endpoints, with
// a real array behind the provider.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/builders/Builders.h"
#include "tests/providers/iscsi/array/ISCSIClient.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using array::Id;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const SESSION = "CIM_iSCSISession";
const char* const CONNECTION = "CIM_iSCSIConnection";
const char* const ISCSI_ENDPOINT = "CIM_iSCSIProtocolEndpoint";
const char* const TCP_ENDPOINT = "CIM_TCPProtocolEndpoint";
const char* const PIPE_END = "CIM_EndpointOfNetworkPipe";
const char* const COMPOSITION = "CIM_NetworkPipeComposition";

// A target and two endpoints, through which a host may log in.
class SessionsTest : public testing::Test {
protected:
    static CIMObjectPath sessionPath(Id id) { return iSCSISessionPath(SESSION, id); }
    static CIMObjectPath connectionPath(Id id) { return iSCSIConnectionPath(CONNECTION, id); }

    std::vector<Id> connectionsOf(Id session) {
        return client.array.snapshot()->associated(session, CLASSID_ISCSI_CONNECTION);
    }

    Id login(const std::vector<Id>& endpoints) {
        return client.array.login({target, host, "", endpoints});
    }

    ISCSIClient client;
    const Id target = client.addTarget("t1");
    const Id host = client.addHost("host1", {target});
    const Id endpoint1 = client.addEndpoint("192.0.2.10");
    const Id endpoint2 = client.addEndpoint("192.0.2.11");
    const CIMObjectPath targetEndpoint = iSCSIProtocolEndpointPath("iqn.2026-01.com.example:t1");
};

TEST_F(SessionsTest, WithoutLoginsThereIsNothing) {
    for (const char* className : {SESSION, CONNECTION, PIPE_END, COMPOSITION}) {
        EXPECT_THAT(client.instanceNames(className), IsEmpty());
        EXPECT_THAT(client.instances(className), IsEmpty());
    }
    EXPECT_THAT(client.associators(targetEndpoint, PIPE_END, SESSION), IsEmpty());
}

TEST_F(SessionsTest, ALoginIsASessionAndItsConnections) {
    const Id session = login({endpoint1, endpoint2});

    const Paths sessions = client.instanceNames(SESSION);
    EXPECT_THAT(texts(sessions), ElementsAre(text(sessionPath(session))));
    EXPECT_THAT(properties(client.instance(sessions.at(0))),
                testing::IsSupersetOf({"EndPointName: string iqn.2026-01.com.example:host1",
                                       "CurrentConnections: uint32 2"}));
    EXPECT_EQ(client.instances(CONNECTION).size(), 2u);
    EXPECT_EQ(texts(client.associators(sessions.at(0), COMPOSITION, CONNECTION)),
              texts(client.instanceNames(CONNECTION)));
}

TEST_F(SessionsTest, ALogoutEndsThemAtOnce) {
    const Id session = login({endpoint1});
    const CIMObjectPath path = sessionPath(session);
    client.array.logout(session);

    EXPECT_THAT(client.instanceNames(SESSION), IsEmpty());
    EXPECT_THAT(client.instanceNames(CONNECTION), IsEmpty());
    EXPECT_THAT(client.associators(targetEndpoint, PIPE_END, SESSION), IsEmpty());
    EXPECT_THAT(client.associators(path, COMPOSITION, CONNECTION), IsEmpty());
    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { client.instance(path); }),
              keyText(session));
}

TEST_F(SessionsTest, FromATargetsEndpointToItsSessionAndBack) {
    const Id session = login({endpoint1});

    EXPECT_THAT(texts(client.associators(targetEndpoint, PIPE_END, SESSION)),
                ElementsAre(text(sessionPath(session))));
    EXPECT_THAT(texts(client.associators(sessionPath(session), PIPE_END, ISCSI_ENDPOINT)),
                ElementsAre(text(targetEndpoint)));
    EXPECT_EQ(texts(client.references(targetEndpoint, PIPE_END)),
              texts(client.references(sessionPath(session), PIPE_END)));
}

TEST_F(SessionsTest, FromATCPEndpointToItsConnectionAndBack) {
    const Id connection = connectionsOf(login({endpoint1})).at(0);
    const CIMObjectPath portal = TCPProtocolEndpointPath(endpoint1);

    EXPECT_THAT(texts(client.associators(portal, PIPE_END, CONNECTION)),
                ElementsAre(text(connectionPath(connection))));
    EXPECT_THAT(texts(client.associators(connectionPath(connection), PIPE_END, TCP_ENDPOINT)),
                ElementsAre(text(portal)));
    EXPECT_EQ(texts(client.references(portal, PIPE_END)),
              texts(client.references(connectionPath(connection), PIPE_END)));
}

TEST_F(SessionsTest, EachLinkIsGotByItsPath) {
    login({endpoint1});

    for (const char* className : {PIPE_END, COMPOSITION}) {
        const Paths links = client.instanceNames(className);
        ASSERT_THAT(links, testing::Not(IsEmpty()));
        for (const CIMObjectPath& link : links) {
            EXPECT_TRUE(client.instance(link).getPath().identical(link)) << text(link);
        }
    }
}

TEST_F(SessionsTest, AnEndpointOfNoTargetHasNoSessions) {
    login({endpoint1});

    EXPECT_THAT(client.associators(iSCSIProtocolEndpointPath("iqn.2026-01.com.example:none"),
                                   PIPE_END, SESSION),
                IsEmpty());
    EXPECT_THAT(client.references(requestPath(ISCSI_ENDPOINT, {{"Name", "short"}}), PIPE_END),
                IsEmpty());
}

TEST_F(SessionsTest, ObjectsThatAreNotThereHaveNoPipes) {
    EXPECT_THAT(
        client.associators(pathOf(SESSION, "InstanceID", 0x1100FFFF), PIPE_END, ISCSI_ENDPOINT),
        IsEmpty());
    EXPECT_THAT(client.associators(pathOf(TCP_ENDPOINT, "Name", 0x0900FFFF), PIPE_END, CONNECTION),
                IsEmpty());
    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>(
                  [&] { client.instance(pathOf(CONNECTION, "InstanceID", 0x1000FFFF)); }),
              "Ovrin:1000FFFF");
}

} // namespace
