// Hosts are registered, granted access, given secrets and removed, with a real array behind the
// providers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "array/model/ErrorCode.h"
#include "providers/frame/Requests.h"
#include "tests/providers/identity/array/IdentityClient.h"
#include "tests/support/Log.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using array::Change;
using array::ErrorCode;
using array::Id;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string HOST = "iqn.2026-01.com.example:host1";

// An array with a target and no hosts.
class HostsTest : public testing::Test {
protected:
    HostsTest() {
        client.array.change([this](Change& change) {
            target = change.create(array::Target{"iqn.2026-01.com.example:t1", "targets secret"});
        });
    }

    CIMObjectPath controller() const {
        return requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(target)}});
    }

    static CIMObjectPath secretOf(Id owner) {
        return requestPath("CIM_SharedSecret", {{"RemoteID", keyText(owner)}});
    }

    CIMObjectPath privilegeOf(const CIMObjectPath& host) {
        return client.associatorNames(host, "CIM_AuthorizedSubject", "CIM_AuthorizedPrivilege")
            .at(0);
    }

    // The keys of the controllers that a privilege reaches.
    std::vector<std::string> controllersOf(const CIMObjectPath& privilege) {
        std::vector<std::string> keys;
        for (const CIMInstance& instance :
             client.associators(privilege, "CIM_AuthorizedTarget", "CIM_SCSIProtocolController")) {
            keys.push_back(text(keyValue(instance.getPath(), "DeviceID")));
        }
        return keys;
    }

    IdentityClient client;
    Id target = 0;
};

TEST_F(HostsTest, ACreatedHostIsServedAtOnceUnderTheReferenceGiven) {
    const IdentityClient::Registered registered = client.create(HOST);

    EXPECT_EQ(registered.result, 0);
    const Paths hosts = client.hosts();
    ASSERT_EQ(hosts.size(), 1u);
    EXPECT_TRUE(hosts[0].identical(registered.host));
    EXPECT_THAT(properties(client.host(registered.host)),
                testing::Contains("StorageID: string " + HOST));
}

TEST_F(HostsTest, ADeletedHostIsGoneAtOnce) {
    const CIMObjectPath host = client.create(HOST).host;

    EXPECT_EQ(client.remove(host), 0);
    EXPECT_THAT(client.hosts(), IsEmpty());
    EXPECT_EQ(refusal([&] { client.host(host); }), ErrorCode::NoSuchObject);
    EXPECT_EQ(refusal([&] { client.remove(host); }), ErrorCode::NoSuchObject);
}

TEST_F(HostsTest, ANameThatTheArrayRefusesIsReturnValue4AndNoHost) {
    client.create(HOST);
    for (const char* name : {"", "host1", "iqn.2026-01.com.example:host1"}) {
        clearLog();
        const IdentityClient::Registered registered = client.create(name);
        EXPECT_EQ(registered.result, 4) << name;
        EXPECT_TRUE(registered.host.getClassName().isNull()) << name;
        EXPECT_THAT(traces(), testing::Contains(testing::StartsWith("DRAVException.code: ")));
    }
    EXPECT_EQ(client.hosts().size(), 1u);
}

TEST_F(HostsTest, ExposePathsGivesAHostsPrivilegeTheControllerAndHidePathsTakesIt) {
    const CIMObjectPath privilege = privilegeOf(client.create(HOST).host);
    EXPECT_THAT(controllersOf(privilege), IsEmpty());

    EXPECT_EQ(client.changeAccess("ExposePaths", HOST, controller()), 0u);
    EXPECT_THAT(controllersOf(privilege), ElementsAre(keyText(target)));

    EXPECT_EQ(client.changeAccess("HidePaths", HOST, controller()), 0u);
    EXPECT_THAT(controllersOf(privilege), IsEmpty());
}

TEST_F(HostsTest, ADeletedHostLosesItsGrants) {
    const CIMObjectPath host = client.create(HOST).host;
    client.changeAccess("ExposePaths", HOST, controller());
    EXPECT_EQ(client.associators(controller(), "CIM_AuthorizedTarget", "CIM_Privilege").size(), 1u);

    client.remove(host);
    EXPECT_THAT(client.associators(controller(), "CIM_AuthorizedTarget", "CIM_Privilege"),
                IsEmpty());
}

TEST_F(HostsTest, APrivilegeOfAHostThatIsGoneIsTheArraysError) {
    const CIMObjectPath host = client.create(HOST).host;
    client.remove(host);

    EXPECT_EQ(refusal([&] { client.associators(host, "CIM_AuthorizedSubject", "CIM_Privilege"); }),
              ErrorCode::NoSuchObject);
}

TEST_F(HostsTest, TheSecretsOfHostsAndTargetsAreReadAndChanged) {
    const Id host = idFromFirstKey(client.create(HOST).host);
    EXPECT_EQ(client.secret(secretOf(host)), "");
    EXPECT_EQ(client.secret(secretOf(target)), "targets secret");

    client.setSecret(secretOf(host), "a secret of the host");
    client.setSecret(secretOf(target), "");

    EXPECT_EQ(client.secret(secretOf(host)), "a secret of the host");
    EXPECT_EQ(client.secret(secretOf(target)), "");
    EXPECT_EQ(client.array.snapshot()->initiator(host)->secret, "a secret of the host");
}

TEST_F(HostsTest, ASecretThatTheArrayRefusesLeavesTheOldOneAndIsNotRepeated) {
    for (const std::string& secret : {std::string(256, 's'), std::string("plugh\txyzzy")}) {
        try {
            client.setSecret(secretOf(target), secret);
            ADD_FAILURE() << "not refused";
        } catch (const DRAVOperationFailedException& exception) {
            EXPECT_EQ(static_cast<ErrorCode>(exception.code), ErrorCode::BadSecret);
            EXPECT_THAT(text(exception.getMessage()),
                        testing::Not(testing::HasSubstr(secret.substr(0, 5))));
        }
        EXPECT_EQ(client.secret(secretOf(target)), "targets secret");
    }
}

TEST_F(HostsTest, NoOtherObjectHasASecret) {
    const Id settings = client.array.snapshot()->sessionSettingsOf(target);
    client.setSecret(secretOf(settings), "nobody's");

    EXPECT_EQ(client.secret(secretOf(settings)), "");
}

} // namespace
