// Volumes are exposed, seen, changed and hidden, with a real array behind the providers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "array/model/ErrorCode.h"
#include "tests/providers/masking/array/MaskingClient.h"
#include "tests/support/Log.h"
#include "tests/support/Text.h"

using namespace Pegasus;
using namespace scripted;
using array::Change;
using array::ErrorCode;
using array::Id;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string HOST1 = "iqn.2026-01.com.example:host1";
const std::string HOST2 = "iqn.2026-01.com.example:host2";
const std::string MAIL = "60014051A2B3C4D5E6F7A8B9C0D1E2F3";
const std::string WEB = "60014051A2B3C4D5E6F7A8B9C0D1E2F4";

// An array with a target, two hosts and two volumes, of which nothing is exposed.
class MaskingTest : public testing::Test {
protected:
    MaskingTest() {
        client.array.change([this](Change& change) {
            target = change.create(array::Target{"iqn.2026-01.com.example:t1", ""});
            host1 = change.create(array::Initiator{HOST1, ""});
            host2 = change.create(array::Initiator{HOST2, ""});
            mail = change.create(array::Volume{MAIL, "mail", 1 << 30, 0});
            web = change.create(array::Volume{WEB, "web", 1 << 20, 0});
        });
        controller = client.controllers().at(0);
    }

    array::SnapshotPtr now() { return client.array.snapshot(); }

    // Of each unit "<volume>: <lun> <access>", as the array has it.
    std::vector<std::string> units() {
        std::vector<std::string> texts;
        const array::SnapshotPtr snapshot = now();
        for (const Id id : snapshot->associated(target, CLASSID_LOGICAL_UNIT)) {
            const array::LogicalUnit& unit = *snapshot->logicalUnit(id);
            texts.push_back(std::string(snapshot->volumeNameOf(id)) + ": " +
                            std::to_string(unit.lun) + " " + std::to_string(unit.access));
        }
        return texts;
    }

    Exposure mailToHost1() { return {{MAIL}, {HOST1}, {"5"}, {2}, controller}; }

    // Runs a method that the array refuses, and says why.
    ErrorCode refusal(Uint32 (MaskingClient::*method)(const Exposure&), const Exposure& exposure) {
        return scripted::refusal([&] { (client.*method)(exposure); });
    }

    MaskingClient client;
    Id target = 0;
    Id host1 = 0;
    Id host2 = 0;
    Id mail = 0;
    Id web = 0;
    CIMObjectPath controller;
};

std::string deviceAccess(const CIMInstance& unit) {
    return properties(unit).at(3);
}

TEST_F(MaskingTest, AnExposedVolumeIsSeenUnderItsTargetWithNumberAndAccess) {
    EXPECT_EQ(client.expose(mailToHost1()), 0u);

    EXPECT_TRUE(now()->granted(target, host1));
    EXPECT_FALSE(now()->granted(target, host2));
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 0"));

    const Instances seen = client.unitInstances();
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(properties(seen[0])[1],
              "Antecedent: reference " + text(controller) +
                  " of CIM_SCSIProtocolController from CIM_ProtocolControllerForUnit [Key=TRUE]");
    EXPECT_EQ(properties(seen[0])[2], "DeviceNumber: uint32 5");
    EXPECT_EQ(deviceAccess(seen[0]), "DeviceAccess: uint16 2");

    const Instances volumes = client.associators(controller, "CIM_StorageVolume");
    ASSERT_EQ(volumes.size(), 1u);
    EXPECT_THAT(properties(volumes[0]), testing::Contains("Name: string " + MAIL));
    EXPECT_THAT(properties(volumes[0]), testing::Contains("ElementName: string mail"));
}

TEST_F(MaskingTest, ChangedAccessIsSeenAndReachesTheArray) {
    client.expose(mailToHost1());
    const CIMObjectPath unit = client.units().at(0);

    client.setAccess(unit, 3);
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 1"));
    EXPECT_EQ(deviceAccess(client.unit(unit).at(0)), "DeviceAccess: uint16 3");

    client.setAccess(unit, 4);
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 1"));

    client.setAccess(unit, 2);
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 0"));
}

TEST_F(MaskingTest, AHiddenVolumeIsGoneAndTheHostsGrantToo) {
    client.expose({{MAIL, WEB}, {HOST1, HOST2}, {"1", "2"}, {2, 3}, controller});
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 1 0", WEB + ": 2 1"));

    EXPECT_EQ(client.hide(mailToHost1()), 0u);

    EXPECT_THAT(units(), ElementsAre(WEB + ": 2 1"));
    EXPECT_FALSE(now()->granted(target, host1));
    EXPECT_TRUE(now()->granted(target, host2));
    EXPECT_EQ(client.units().size(), 1u);
}

TEST_F(MaskingTest, ExposingTwiceIsNoSecondUnitAndChangesNothing) {
    client.expose(mailToHost1());
    EXPECT_EQ(client.expose({{MAIL}, {HOST1}, {"77"}, {3}, controller}), 0u);

    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 0"));
}

TEST_F(MaskingTest, HidingTwiceIsNoError) {
    client.expose(mailToHost1());
    EXPECT_EQ(client.hide(mailToHost1()), 0u);
    EXPECT_EQ(client.hide(mailToHost1()), 0u);

    EXPECT_THAT(units(), IsEmpty());
}

TEST_F(MaskingTest, ANumberThatIsTakenIsRefusedAndWhatWasDoneBeforeStays) {
    EXPECT_EQ(
        refusal(&MaskingClient::expose, {{MAIL, WEB}, {HOST1}, {"5", "5"}, {2, 2}, controller}),
        ErrorCode::LunTaken);

    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 0"));
    EXPECT_TRUE(now()->granted(target, host1));
    EXPECT_NE(log().back(), "complete");
}

TEST_F(MaskingTest, ANumberOutOfRangeIsRefused) {
    EXPECT_EQ(client.expose({{MAIL}, {}, {"16383"}, {4}, controller}), 0u);
    EXPECT_EQ(refusal(&MaskingClient::expose, {{WEB}, {}, {"16384"}, {2}, controller}),
              ErrorCode::BadLun);

    EXPECT_THAT(units(), ElementsAre(MAIL + ": 16383 3"));
}

TEST_F(MaskingTest, AnUnknownHostIsRefusedAndNothingIsExposed) {
    Exposure toStranger = mailToHost1();
    toStranger.initiators = {HOST1, "iqn.2026-01.com.example:stranger"};
    EXPECT_EQ(refusal(&MaskingClient::expose, toStranger), ErrorCode::NoSuchObject);

    EXPECT_TRUE(now()->granted(target, host1));
    EXPECT_THAT(units(), IsEmpty());
}

TEST_F(MaskingTest, HidingFromAnUnknownHostIsRefusedAndTheVolumesStay) {
    client.expose(mailToHost1());
    Exposure fromStranger = mailToHost1();
    fromStranger.initiators = {HOST1, "iqn.2026-01.com.example:stranger"};
    EXPECT_EQ(refusal(&MaskingClient::hide, fromStranger), ErrorCode::NoSuchObject);

    EXPECT_FALSE(now()->granted(target, host1));
    EXPECT_THAT(units(), ElementsAre(MAIL + ": 5 0"));
}

TEST_F(MaskingTest, HidingAVolumeThatIsListedTwiceFailsAtTheSecondRemovalOfItsUnit) {
    client.expose(mailToHost1());
    EXPECT_EQ(refusal(&MaskingClient::hide, {{MAIL, MAIL}, {}, {}, {}, controller}),
              ErrorCode::NoSuchObject);

    EXPECT_THAT(units(), IsEmpty());
}

TEST_F(MaskingTest, ATargetThatIsGoneIsRefused) {
    client.array.change([this](Change& change) { change.remove(target); });

    EXPECT_EQ(refusal(&MaskingClient::expose, mailToHost1()), ErrorCode::NoSuchObject);
}

TEST_F(MaskingTest, AUnitOutlivesItsVolumeAndIsStillServed) {
    client.expose({{MAIL, WEB}, {HOST1}, {"1", "2"}, {2, 3}, controller});
    client.array.change([this](Change& change) { change.remove(web); });
    clearLog();

    const Instances volumes = client.associators(controller, "CIM_StorageVolume");
    ASSERT_EQ(volumes.size(), 2u);
    EXPECT_THAT(properties(volumes[1]), testing::Contains("Name: string " + WEB));
    EXPECT_THAT(traces(), ElementsAre("PCFU: Zombie Volume Name ='" + WEB + "'"));

    const Paths names = client.associatorNames(controller, "CIM_StorageVolume");
    ASSERT_EQ(names.size(), 2u);
    EXPECT_TRUE(names[1].identical(volumes[1].getPath()));
    EXPECT_THAT(text(names[1]), testing::HasSubstr("DeviceID=\"" + keyText(0) + "\""));

    const Paths listed = client.units();
    ASSERT_EQ(listed.size(), 2u);
    const Instances unit = client.unit(listed[1]);
    ASSERT_EQ(unit.size(), 1u);
    EXPECT_EQ(properties(unit[0])[2], "DeviceNumber: uint32 2");
}

TEST_F(MaskingTest, TheAccessOfAUnitCanBeChangedBesideOneThatLostItsVolume) {
    client.expose({{MAIL, WEB}, {}, {"1", "2"}, {2, 2}, controller});
    client.array.change([this](Change& change) { change.remove(web); });

    for (const CIMObjectPath& unit : client.units()) {
        client.setAccess(unit, 3);
    }

    EXPECT_THAT(units(), ElementsAre(MAIL + ": 1 1", WEB + ": 2 1"));
}

TEST_F(MaskingTest, TheMapSurvivesARestart) {
    client.expose(mailToHost1());

    const auto again = array::Array::open(client.array.directory());
    const array::SnapshotPtr snapshot = again->snapshot();
    EXPECT_TRUE(snapshot->granted(target, host1));
    EXPECT_EQ(snapshot->unitByLun(target, 5), now()->unitByLun(target, 5));
    EXPECT_NE(snapshot->unitByLun(target, 5), 0u);
}

} // namespace
