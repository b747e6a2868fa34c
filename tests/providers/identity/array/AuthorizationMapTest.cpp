// What the walks between hosts, privileges and controllers give, in both directions, over grants
// made at random, is what was granted.

#include <random>
#include <set>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "providers/frame/Requests.h"
#include "tests/providers/identity/array/IdentityClient.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using array::Change;
using array::Id;

namespace {

const char* const SUBJECT = "CIM_AuthorizedSubject";
const char* const TARGET = "CIM_AuthorizedTarget";

// The values of a key of each path.
std::vector<std::string> keysOf(const Paths& paths, const char* name) {
    std::vector<std::string> values;
    for (const CIMObjectPath& path : paths) {
        values.push_back(text(keyValue(path, name)));
    }
    return values;
}

// Up to 7 hosts and 5 targets, each pair granted with the chance of a coin.
class AuthorizationMapTest : public testing::TestWithParam<unsigned> {
protected:
    AuthorizationMapTest() {
        std::mt19937 random(GetParam());
        client.array.change([&](Change& change) {
            for (auto i = random() % 8; i > 0; --i) {
                hosts.push_back(change.create(
                    array::Initiator{"iqn.2026-01.com.example:h" + std::to_string(i), ""}));
            }
            for (auto i = random() % 6; i > 0; --i) {
                targets.push_back(change.create(
                    array::Target{"iqn.2026-01.com.example:t" + std::to_string(i), ""}));
            }
            for (const Id target : targets) {
                for (const Id host : hosts) {
                    if (random() % 2 == 0) {
                        continue;
                    }
                    change.grant(target, host);
                    granted.emplace(host, target);
                }
            }
        });
    }

    // The keys, as texts, of the targets that a host may reach; of the hosts that reach a target.
    std::vector<std::string> controllersOf(Id host) const {
        std::vector<std::string> texts;
        for (const Id target : targets) {
            if (granted.contains({host, target})) {
                texts.push_back(keyText(target));
            }
        }
        return texts;
    }

    std::vector<std::string> privilegesFor(Id target) const {
        std::vector<std::string> texts;
        for (const Id host : hosts) {
            if (granted.contains({host, target})) {
                texts.push_back(keyText(host));
            }
        }
        return texts;
    }

    // What associatorNames gives; associators must give the same objects.
    Paths walk(const CIMObjectPath& source, const char* associationClass, const char* resultClass,
               const char* key) {
        const Paths names = client.associatorNames(source, associationClass, resultClass);
        Paths paths;
        for (const CIMInstance& each : client.associators(source, associationClass, resultClass)) {
            paths.push_back(each.getPath());
        }
        EXPECT_EQ(keysOf(paths, key), keysOf(names, key));
        return names;
    }

    Paths privileges(const CIMObjectPath& source, const char* associationClass) {
        return walk(source, associationClass, "CIM_AuthorizedPrivilege", "InstanceID");
    }

    Paths hardwareIDs(const CIMObjectPath& privilege) {
        return walk(privilege, SUBJECT, "CIM_StorageHardwareID", "InstanceID");
    }

    Paths controllers(const CIMObjectPath& privilege) {
        return walk(privilege, TARGET, "CIM_SCSIProtocolController", "DeviceID");
    }

    IdentityClient client;
    std::vector<Id> hosts;
    std::vector<Id> targets;
    std::set<std::pair<Id, Id>> granted;
};

INSTANTIATE_TEST_SUITE_P(Seeds, AuthorizationMapTest, testing::Range(1u, 21u));

TEST_P(AuthorizationMapTest, EachHostHasOnePrivilegeAndEachPrivilegeItsHost) {
    const Paths served = client.hosts();
    ASSERT_EQ(served.size(), hosts.size());
    for (const CIMObjectPath& host : served) {
        const Paths found = privileges(host, SUBJECT);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(keysOf(found, "InstanceID"), keysOf({host}, "InstanceID"));

        const Paths back = hardwareIDs(found[0]);
        ASSERT_EQ(back.size(), 1u);
        EXPECT_TRUE(back[0].identical(host));
    }
}

TEST_P(AuthorizationMapTest, FromEachHostTheControllersOfItsGrantsAreReachedAndBack) {
    const Paths served = client.hosts();
    for (size_t i = 0; i < served.size(); ++i) {
        const CIMObjectPath privilege = privileges(served[i], SUBJECT).at(0);
        const Paths reached = controllers(privilege);
        EXPECT_EQ(keysOf(reached, "DeviceID"), controllersOf(hosts[i]));
        for (const CIMObjectPath& controller : reached) {
            EXPECT_THAT(keysOf(privileges(controller, TARGET), "InstanceID"),
                        testing::Contains(keyText(hosts[i])));
        }
    }
}

TEST_P(AuthorizationMapTest, FromEachControllerThePrivilegesOfItsGrantsAreReached) {
    for (const Id target : targets) {
        const CIMObjectPath controller =
            requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(target)}});
        EXPECT_EQ(keysOf(privileges(controller, TARGET), "InstanceID"), privilegesFor(target));
    }
}

} // namespace
