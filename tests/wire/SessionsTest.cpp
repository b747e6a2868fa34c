// A client walks from targets over live sessions and connections to portals, and back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace wire {
namespace {

// Two portals. The first host has a session of two connections, one through each, with the first
// target.
class Sessions : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};

    Sessions() {
        array.arrayctl({"endpoint", "create", "192.0.2.11:3260"});
        EXPECT_EQ(client
                      .modify(sessionSettings1, sessionSettings,
                              property("MaxConnectionsPerSession", "uint32", "4"))
                      .error(),
                  "");
        array.arrayctl({"session", "login", host1, target1, "--endpoint", portal1, "--endpoint",
                        "192.0.2.11:3260"});
    }
    // What is reached by name, which must be the instances that are reached, complete.
    std::vector<Xml> reached(const Xml& source, const Walk& walk) const {
        const Answer names = client.associatorNames(source, walk);
        EXPECT_EQ(names.error(), "");
        EXPECT_THAT(names.paths(), Each(StartsWith("//array1.example.com/root/snia:CIM_")));
        EXPECT_EQ(client.associators(source, walk).paths(), names.paths());
        return names.names();
    }
    // The associations of a source by name, which must be the instances of it.
    std::vector<std::string> linksOf(const Xml& source, const std::string& association) const {
        const Answer names = client.referenceNames(source, {"", association});
        EXPECT_EQ(names.error(), "");
        EXPECT_EQ(client.references(source, {"", association}).paths(), names.paths());
        return names.paths();
    }
};

TEST_F(Sessions, FromATargetToItsSessionAndConnectionsAndPortalsAndBack) {
    const Xml target = targetEndpoint(target1 + ",t,0x0001");
    const auto sessions = reached(target, {pipeEndClass, sessionClass});
    EXPECT_THAT(sessions, ElementsAre(session("Ovrin:11000001")));

    const auto connections = reached(sessions.at(0), {compositionClass, connectionClass});
    EXPECT_THAT(connections,
                ElementsAre(connection("Ovrin:10000001"), connection("Ovrin:10000002")));

    const Walk toConnections = {pipeEndClass, connectionClass};
    EXPECT_THAT(reached(tcpEndpoint("Ovrin:09000001"), toConnections),
                ElementsAre(connections.at(0)));
    EXPECT_THAT(reached(tcpEndpoint("Ovrin:09000002"), toConnections),
                ElementsAre(connections.at(1)));
    // Each connection is the first of its portal, and leads to the first portal.
    const Walk toPortal = {pipeEndClass, tcpEndpointClass};
    for (const Xml& each : connections) {
        EXPECT_THAT(reached(each, toPortal), ElementsAre(HasSubstr("Ovrin:09000001")));
    }

    EXPECT_THAT(reached(sessions.at(0), {pipeEndClass, targetEndpointClass}), SizeIs(1));
    EXPECT_THAT(
        client.associators(sessions.at(0), {pipeEndClass, targetEndpointClass}).each("Name"),
        ElementsAre(target1 + ",t,0x0001"));
}

TEST_F(Sessions, AreListedWithTheirConnectionsAndLinks) {
    const Answer sessions = client.enumerate(sessionClass);
    EXPECT_EQ(sessions.names(), client.enumerateNames(sessionClass).names());
    EXPECT_THAT(sessions.each("EndPointName"), ElementsAre(host1));
    EXPECT_THAT(sessions.each("CurrentConnections"), ElementsAre("2"));
    EXPECT_THAT(client.enumerate(connectionClass).each("InstanceID"),
                ElementsAre("Ovrin:10000001", "Ovrin:10000002"));
    EXPECT_THAT(client.enumerate("CIM_NetworkPipe").names(), SizeIs(3));
    for (const std::string& link : {pipeEndClass, compositionClass}) {
        for (const Xml& name : client.enumerateNames(link).names()) {
            EXPECT_EQ(client.get(name).error(), "");
        }
        EXPECT_EQ(client.enumerate(link).names(), client.enumerateNames(link).names());
    }
}

TEST_F(Sessions, AreGotByTheirNames) {
    for (const std::string& className : {sessionClass, connectionClass}) {
        const Answer listed = client.enumerate(className);
        for (std::size_t i = 0; i < listed.size(); ++i) {
            EXPECT_EQ(client.get(listed.names().at(i)).properties(), listed.properties(i));
        }
    }
}

TEST_F(Sessions, AreLinkedAtBothEnds) {
    const Xml target = targetEndpoint(target1 + ",t,0x0001");
    EXPECT_THAT(linksOf(target, pipeEndClass), SizeIs(1));
    EXPECT_EQ(linksOf(session("Ovrin:11000001"), pipeEndClass), linksOf(target, pipeEndClass));
    EXPECT_THAT(linksOf(session("Ovrin:11000001"), compositionClass),
                ElementsAre(HasSubstr("Ovrin:10000001"), HasSubstr("Ovrin:10000002")));
    EXPECT_THAT(linksOf(tcpEndpoint("Ovrin:09000002"), pipeEndClass),
                ElementsAre(HasSubstr("Ovrin:10000002")));
    EXPECT_THAT(linksOf(connection("Ovrin:10000001"), pipeEndClass),
                ElementsAre(AllOf(HasSubstr("Ovrin:10000001"), HasSubstr("Ovrin:09000001"))));
    EXPECT_THAT(
        client.references(session("Ovrin:11000001"), {"", compositionClass}).each("GroupComponent"),
        Each(HasSubstr("Ovrin:11000001")));
}

TEST_F(Sessions, EndAtALogoutAndWhenAHostIsHiddenFromItsTarget) {
    array.arrayctl({"session", "logout", host1, target1});
    EXPECT_THAT(client.enumerate(sessionClass).names(), IsEmpty());
    array.arrayctl({"session", "login", host1, target1});
    EXPECT_THAT(client.enumerate(sessionClass).names(), ElementsAre(session("Ovrin:11000002")));
    array.arrayctl({"grant", "delete", target1, host1});
    EXPECT_THAT(client.enumerate(connectionClass).names(), IsEmpty());
}

TEST_F(Sessions, OfALaterTargetHaveTheEndpointInstanceAtTheirPosition) {
    array.arrayctl({"grant", "create", target2, host1});
    array.arrayctl({"session", "login", host1, target2});
    const Xml second = session("Ovrin:11000002");
    const Walk walk = {pipeEndClass, targetEndpointClass};
    EXPECT_THAT(client.associatorNames(second, walk).paths(), ElementsAre(HasSubstr(target2)));
    EXPECT_THAT(client.associators(second, walk).paths(), ElementsAre(HasSubstr(target1)));
    EXPECT_THAT(linksOf(second, pipeEndClass), ElementsAre(HasSubstr(target2)));
}

TEST_F(Sessions, WithoutAnAssociationClassBothAreAsked) {
    EXPECT_THAT(client.associatorNames(session("Ovrin:11000001"), {"", connectionClass}).names(),
                SizeIs(2));
    EXPECT_THAT(client.referenceNames(session("Ovrin:11000001"), {}).names(), SizeIs(3));
    EXPECT_THAT(client.references(session("Ovrin:11000001"), {"", "CIM_Component"}).names(),
                SizeIs(2));
}

} // namespace
} // namespace wire
