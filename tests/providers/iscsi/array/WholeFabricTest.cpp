// What the walks give, in both directions, over logins made at random, is who logged in where.

#include <map>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/builders/Builders.h"
#include "tests/providers/iscsi/array/ISCSIClient.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using array::Id;
using testing::ElementsAre;

namespace {

const char* const SESSION = "CIM_iSCSISession";
const char* const CONNECTION = "CIM_iSCSIConnection";
const char* const PIPE_END = "CIM_EndpointOfNetworkPipe";

// Up to 4 targets, 5 endpoints, and 12 sessions of up to 4 connections each.
class WholeFabricTest : public testing::TestWithParam<unsigned> {
protected:
    WholeFabricTest() {
        std::mt19937 random(GetParam());
        for (auto i = random() % 4 + 1; i > 0; --i) {
            targets.push_back(client.addTarget("t" + std::to_string(i)));
        }
        for (auto i = random() % 5 + 1; i > 0; --i) {
            endpoints.push_back(client.addEndpoint("192.0.2." + std::to_string(i)));
        }
        const Id host = client.addHost("host", targets);
        for (auto i = random() % 13; i > 0; --i) {
            const Id target = targets[random() % targets.size()];
            std::vector<Id> through;
            for (auto connections = random() % 4 + 1; connections > 0; --connections) {
                through.push_back(endpoints[random() % endpoints.size()]);
            }
            sessionsOf[target].push_back(client.array.login({target, host, "", through}));
        }
    }

    std::vector<Id> connectionsOf(Id sessionOrEndpoint) const {
        return client.array.snapshot()->associated(sessionOrEndpoint, CLASSID_ISCSI_CONNECTION);
    }

    CIMObjectPath endpointOf(Id target) const {
        const std::string name = client.array.snapshot()->target(target)->name;
        return iSCSIProtocolEndpointPath(String(name.c_str()));
    }

    static std::vector<std::string> sessionTexts(const std::vector<Id>& ids) {
        std::vector<std::string> paths;
        for (const Id id : ids) {
            paths.push_back(text(iSCSISessionPath(SESSION, id)));
        }
        return paths;
    }

    static std::vector<std::string> connectionTexts(const std::vector<Id>& ids) {
        std::vector<std::string> paths;
        for (const Id id : ids) {
            paths.push_back(text(iSCSIConnectionPath(CONNECTION, id)));
        }
        return paths;
    }

    ISCSIClient client;
    std::vector<Id> targets;
    std::vector<Id> endpoints;
    std::map<Id, std::vector<Id>> sessionsOf;
};

INSTANTIATE_TEST_SUITE_P(Seeds, WholeFabricTest, testing::Range(1u, 21u));

TEST_P(WholeFabricTest, FromEachTargetItsSessionsAreReachedAndBack) {
    for (const Id target : targets) {
        const CIMObjectPath endpoint = endpointOf(target);
        EXPECT_EQ(texts(client.associators(endpoint, PIPE_END, SESSION)),
                  sessionTexts(sessionsOf[target]));

        Paths back;
        for (const Id session : sessionsOf[target]) {
            const Paths links = client.references(iSCSISessionPath(SESSION, session), PIPE_END);
            ASSERT_EQ(links.size(), 1u);
            back.push_back(links[0]);
        }
        EXPECT_EQ(texts(client.references(endpoint, PIPE_END)), texts(back));
    }
}

TEST_P(WholeFabricTest, FromEachSessionAndEachEndpointTheirConnectionsAreReached) {
    for (const auto& [target, sessions] : sessionsOf) {
        for (const Id session : sessions) {
            EXPECT_EQ(texts(client.associators(iSCSISessionPath(SESSION, session),
                                               "CIM_NetworkPipeComposition", CONNECTION)),
                      connectionTexts(connectionsOf(session)));
        }
    }
    for (const Id endpoint : endpoints) {
        EXPECT_EQ(
            texts(client.associators(TCPProtocolEndpointPath(endpoint), PIPE_END, CONNECTION)),
            connectionTexts(connectionsOf(endpoint)));
    }
}

TEST_P(WholeFabricTest, FromEachConnectionTheEndpointAtItsPositionIsReached) {
    for (const Id endpoint : endpoints) {
        const std::vector<Id> connections = connectionsOf(endpoint);
        for (std::size_t j = 0; j < connections.size(); ++j) {
            const iSCSIConnectionPath source(CONNECTION, connections[j]);
            const auto walk = [&] {
                return client.associators(source, PIPE_END, "CIM_TCPProtocolEndpoint");
            };
            if (j < endpoints.size()) {
                EXPECT_THAT(texts(walk()),
                            ElementsAre(text(TCPProtocolEndpointPath(endpoints[j]))));
            } else {
                EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(walk), "index out of bounds");
            }
        }
    }
}

} // namespace
