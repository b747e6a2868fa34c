// A host is registered, a volume exposed to it, seen, hidden again, and the host removed: what the
// system is for, by a client on the wire, with the array's own view beside it.
#include <csignal>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Masking.h"
#include "tests/wire/support/Names.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace wire {
namespace {

const std::string newHost = "iqn.2026-01.com.example:host9";

class TypicalRequest : public testing::Test {
protected:
    Array array;
    std::optional<Smisd> smisd{std::in_place, array.state()};
    const Exposure logs{{logsVolume}, {newHost}, {"7"}, {"3"}, {controller(2)}};

    Client client() const { return Client(*smisd); }
    std::string show() const { return array.arrayctl({"show"}); }

    // The controllers that the privilege of a host reaches.
    std::vector<Xml> controllersOf(const Xml& host) const {
        const Answer privilege =
            client().associatorNames(host, {"CIM_AuthorizedSubject", "CIM_AuthorizedPrivilege"});
        EXPECT_EQ(privilege.size(), 1U);
        return client()
            .associators(privilege.names().at(0),
                         {"CIM_AuthorizedTarget", "CIM_SCSIProtocolController"})
            .names();
    }

    // The steps, each with what is seen after it.
    Xml registerHost() const {
        const Answer created = client().invoke(identityService, "CreateStorageHardwareID",
                                               {{"ElementName", value("nine"), "string"},
                                                {"StorageID", value(newHost), "string"},
                                                {"IDType", value("5"), "uint16"}});
        EXPECT_EQ(created.error(), "");
        EXPECT_EQ(created.returnValue(), "sint32 0");
        const Xml host = created.outReference("HardwareID");
        EXPECT_THAT(client().get(host).properties(),
                    ElementsAre("StorageID: string " + newHost, "IDType: uint16 5",
                                "CurrentlyAuthenticated: boolean FALSE",
                                "InstanceID: string Ovrin:0D000004"));
        EXPECT_THAT(show(), HasSubstr(newHost + "  secret not set\n   └─ no targets\n"));
        return host;
    }
    void expose(const Xml& host) const {
        const Answer exposed = client().invoke(maskingService, "ExposePaths", logs.all());
        EXPECT_EQ(exposed.error(), "");
        EXPECT_EQ(exposed.returnValue(), "uint32 0");
        expectExposed(host);
    }
    void expectExposed(const Xml& host) const {
        EXPECT_THAT(client().enumerateNames("CIM_SCSIProtocolController").names(),
                    testing::IsSupersetOf(controllersOf(host)));
        EXPECT_THAT(controllersOf(host), testing::SizeIs(1));
        const Answer units = client().enumerate("CIM_ProtocolControllerForUnit");
        EXPECT_THAT(units.each("DeviceNumber"), ElementsAre("1", "7"));
        EXPECT_THAT(units.each("DeviceAccess"), ElementsAre("2", "3"));
        EXPECT_THAT(units.each("Antecedent").at(1), HasSubstr("DeviceID=\"Ovrin:0E000002\""));
        EXPECT_THAT(units.each("Dependent").at(1), HasSubstr("DeviceID=\"Ovrin:17000002\""));
        EXPECT_THAT(show(), HasSubstr(newHost +
                                      "  secret not set\n"
                                      "   └─ iqn.2026-01.com.example:t2  secret not set  not "
                                      "logged in\n"
                                      "      └─ LUN 7  ro  8 GiB  " +
                                      logsVolume + "  logs\n"));
    }
    void restart(int signal) {
        smisd->process().signal(signal);
        EXPECT_EQ(smisd->process().wait().status, signal == SIGKILL ? 128 + SIGKILL : 0);
        smisd.emplace(array.state());
    }
    void hide(const Xml& host) const {
        const Answer hidden = client().invoke(maskingService, "HidePaths", logs.hiding());
        EXPECT_EQ(hidden.error(), "");
        EXPECT_EQ(hidden.returnValue(), "uint32 0");
        EXPECT_THAT(client().enumerate("CIM_ProtocolControllerForUnit").each("DeviceNumber"),
                    ElementsAre("1"));
        EXPECT_THAT(controllersOf(host), IsEmpty());
        EXPECT_THAT(show(), AllOf(HasSubstr(newHost + "  secret not set\n   └─ no targets\n"),
                                  HasSubstr("Volumes under no target\n└─ 8 GiB  " + logsVolume)));
    }
    void removeHost(const Xml& host) const {
        const Answer deleted = client().invoke(identityService, "DeleteStorageHardwareID",
                                               {{"HardwareID", reference(host), "reference"}});
        EXPECT_EQ(deleted.error(), "");
        EXPECT_EQ(deleted.returnValue(), "sint32 0");
        EXPECT_EQ(client().get(host).error(),
                  "1 CIM_ERR_FAILED: Ovrin:0D000004 names no object of the class initiator.");
        EXPECT_THAT(show(), Not(HasSubstr(newHost)));
    }
};

TEST_F(TypicalRequest, FromTheHostsRegistrationToItsRemovalOverARestart) {
    const std::string before = show();
    const Xml host = registerHost();
    expose(host);
    restart(SIGTERM);
    expectExposed(host);
    hide(host);
    restart(SIGKILL);
    removeHost(host);
    EXPECT_EQ(show(), before);
    EXPECT_EQ(array.arrayctl({"check"}), "");
}

TEST_F(TypicalRequest, IsTracedOnStandardOutputAndKeptAsAnEvent) {
    const Exposure own{{logsVolume}, {host2}, {"7"}, {"2"}, {controller(2)}};
    client().invoke(maskingService, "ExposePaths", own.all());
    EXPECT_EQ(smisd->stop().out, "Starting up the ControllerConfigurationService provider\n"
                                 "ControllerConfigurationServiceProvider::invokeMethod\n"
                                 "ObjectIDByName is: 218103810\n"
                                 "ObjectID is: 385875970\n"
                                 " Adding a new LU \n"
                                 "Finished adding a new LU\n");
    EXPECT_THAT(
        array.arrayctl({"--json", "events"}),
        AllOf(HasSubstr("\"text\":\"ControllerConfigurationServiceProvider::invokeMethod()\""),
              HasSubstr("/root/snia:CIM_ControllerConfigurationService, "
                        "methodName=ExposePaths\""),
              HasSubstr("\"file\":\"ControllerConfigurationService.cpp\"")));
}

TEST_F(TypicalRequest, SeesWhatTheAdministratorChangesBesideTheServer) {
    EXPECT_EQ(client().enumerate(hostClass).size(), 3U);
    array.arrayctl({"initiator", "create", newHost});
    EXPECT_THAT(client().enumerate(hostClass).each("StorageID"), testing::Contains(newHost));
}

TEST_F(TypicalRequest, UntypedParametersAreTakenInTheirDeclaredTypes) {
    Parameters untyped = Exposure{{logsVolume}, {newHost}, {"7"}, {"4"}, {controller(2)}}.all();
    for (Parameter& parameter : untyped) {
        parameter.type.clear();
    }
    untyped.at(1).value = values({host2});
    const Answer exposed = client().invoke(maskingService, "ExposePaths", untyped);
    EXPECT_EQ(exposed.error() + exposed.returnValue(), "uint32 0");
    EXPECT_THAT(client().enumerate("CIM_ProtocolControllerForUnit").each("DeviceAccess"),
                ElementsAre("2", "4"));
}

} // namespace
} // namespace wire
