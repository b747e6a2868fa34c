// A client walks from hosts over privileges and controllers to volumes, and back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace wire {
namespace {

const std::string place = "//array1.example.com/root/snia:";

const Walk toPrivilege = {subjectClass, privilegeClass};
const Walk toHost = {subjectClass, hostClass};
const Walk toGrantedControllers = {grantClass, controllerClass};
const Walk toGrantedPrivileges = {grantClass, "CIM_Privilege"};
const Walk toVolumes = {unitClass, volumeClass};
const Walk toControllers = {unitClass, controllerClass};
const Walk unitsOfController = {"", unitClass, "Antecedent"};
const Walk unitsOfVolume = {"", unitClass, "Dependent"};

// Of an object of the array, with the keys of logical devices.
std::string devicePath(const std::string& className, const std::string& key) {
    return place + className + ".CreationClassName=\"" + className + "\",DeviceID=\"" + key +
           "\",SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"array1\"";
}

std::string volumePath(const std::string& key) {
    return devicePath(volumeClass, key);
}

std::string controllerPath(const std::string& key) {
    return devicePath(controllerClass, key);
}

// The ids of the objects that paths name.
std::vector<std::string> idsIn(const std::vector<std::string>& paths) {
    std::vector<std::string> ids;
    for (const std::string& path : paths) {
        ids.push_back(path.substr(path.find("Ovrin:"), 14));
    }
    return ids;
}

// The first host may reach both targets; the mail volume is under both, the logs under the second.
class Map : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};

    Map() {
        array.arrayctl({"grant", "create", target2, host1});
        array.arrayctl({"grant", "create", target2, host2});
        array.arrayctl({"unit", "create", target2, "mail", "--lun", "3", "--access", "ro"});
        array.arrayctl({"unit", "create", target2, "logs", "--lun", "4"});
    }
    // What is reached by name from each of the sources; the instances must be the same objects.
    std::vector<Xml> reached(const std::vector<Xml>& sources, const Walk& walk) const {
        std::vector<Xml> names;
        for (const Xml& source : sources) {
            const Answer far = client.associatorNames(source, walk);
            EXPECT_EQ(far.error(), "");
            EXPECT_THAT(far.paths(), Each(StartsWith(place)));
            EXPECT_EQ(idsIn(client.associators(source, walk).paths()), idsIn(far.paths()));
            for (const Xml& name : far.names()) {
                names.push_back(name);
            }
        }
        return names;
    }
};

TEST_F(Map, FromAHostOverItsPrivilegeAndControllersToVolumesAndBack) {
    const Xml start = client.enumerateNames(hostClass).names().at(0);
    const auto privileges = reached({start}, toPrivilege);
    EXPECT_THAT(privileges, SizeIs(1));
    const auto controllers = reached(privileges, toGrantedControllers);
    EXPECT_THAT(controllers, SizeIs(2));
    const auto volumes = reached(controllers, toVolumes);
    EXPECT_THAT(volumes, SizeIs(3)); // one of them twice

    EXPECT_THAT(reached({volumes.at(0)}, toControllers), SizeIs(2));
    const auto back = reached({volumes.at(2)}, toControllers);
    EXPECT_THAT(back, SizeIs(1));
    const auto granted = reached(back, toGrantedPrivileges);
    EXPECT_THAT(granted, UnorderedElementsAre(privileges.at(0), Not(privileges.at(0))));
    EXPECT_THAT(reached({privileges.at(0)}, toHost), ElementsAre(start));
}

TEST_F(Map, ResultsHaveHostNamespaceAndEveryKey) {
    EXPECT_THAT(client.associators(host(1), toPrivilege).paths(),
                ElementsAre(place + "CIM_AuthorizedPrivilege.InstanceID=\"Ovrin:0D000001\""));
    EXPECT_THAT(client.associators(privilege(1), toHost).paths(),
                ElementsAre(place + "CIM_StorageHardwareID.InstanceID=\"Ovrin:0D000001\""));
    EXPECT_THAT(client.associators(privilege(1), toGrantedControllers).paths(),
                ElementsAre(controllerPath("Ovrin:0E000001"), controllerPath("Ovrin:0E000002")));
    EXPECT_THAT(client.associators(controller(2), toVolumes).paths(),
                ElementsAre(volumePath("Ovrin:17000001"), volumePath("Ovrin:17000002")));
    EXPECT_THAT(client.references(controller(1), unitsOfController).paths(),
                ElementsAre(place + unitClass + ".Antecedent=<" + controllerPath("Ovrin:0E000001") +
                            ">,Dependent=<" + volumePath("Ovrin:17000001") + ">"));
}

TEST_F(Map, UnitsAreTheReferencesOfBothSidesAndAreGotByTheirPaths) {
    const Xml mail = client.associatorNames(controller(1), toVolumes).names().at(0);
    for (const auto& [source, walk] :
         {std::pair(controller(2), unitsOfController), std::pair(mail, unitsOfVolume)}) {
        const Answer units = client.references(source, walk);
        EXPECT_THAT(units.names(), SizeIs(2));
        EXPECT_EQ(client.referenceNames(source, walk).paths(), units.paths());
        for (std::size_t i = 0; i < units.size(); ++i) {
            const Answer got = client.get(units.names().at(i));
            EXPECT_EQ(got.each("DeviceNumber").at(0), units.each("DeviceNumber").at(i));
            EXPECT_EQ(got.each("Antecedent").at(0), units.each("Antecedent").at(i));
            EXPECT_EQ(got.each("Dependent").at(0), units.each("Dependent").at(i));
        }
    }
    EXPECT_THAT(client.references(controller(2), unitsOfController).properties(1),
                ElementsAre("Dependent: reference " + volumePath("Ovrin:17000002"),
                            "Antecedent: reference " + controllerPath("Ovrin:0E000002"),
                            "DeviceNumber: uint32 4", "DeviceAccess: uint16 2"));
}

TEST_F(Map, AccessIsChangedAndReadAgain) {
    const Xml unit = client.referenceNames(controller(1), unitsOfController).names().at(0);
    const auto setAccess = [&](const std::string& text) {
        EXPECT_EQ(client.modify(unit, unitClass, property("DeviceAccess", "uint16", text)).error(),
                  "");
        return client.get(unit).each("DeviceAccess").at(0);
    };
    EXPECT_EQ(setAccess("3"), "3");
    EXPECT_THAT(array.arrayctl({"unit", "list"}), HasSubstr("example:t1  1    ro"));
    EXPECT_EQ(setAccess("4"), "3");
    EXPECT_EQ(setAccess("2"), "2");
    EXPECT_THAT(array.arrayctl({"unit", "list"}), HasSubstr("example:t1  1    rw"));
}

TEST_F(Map, AnErrorOfACallBackIsTheAnswer) {
    const Xml stranger = instanceName(privilegeClass, {{"InstanceID", "Ovrin:0D00FFFF"}});
    EXPECT_EQ(client.associators(stranger, toHost).error(),
              "1 CIM_ERR_FAILED: Ovrin:0D00FFFF names no object of the class initiator.");
    EXPECT_EQ(client.associatorNames(stranger, toHost).error(), "");
}

// Arguments

TEST_F(Map, WithoutAnAssociationClassEveryAssociationOfTheSourceIsAsked) {
    EXPECT_THAT(client.associators(controller(2), {"", volumeClass}).each("Name"),
                ElementsAre(mailVolume, logsVolume));
    EXPECT_EQ(client.associatorNames(controller(2), {"", privilegeClass}).paths(),
              client.associatorNames(controller(2), toGrantedPrivileges).paths());
    EXPECT_THAT(client.associatorNames(controller(2), {}).names(), IsEmpty());
    EXPECT_EQ(client.associators(host(1), {}).error(),
              "7 CIM_ERR_NOT_SUPPORTED: AuthorizedAccess::associators");
    EXPECT_THAT(client.references(controller(2), {"", "", "Antecedent"}).names(), SizeIs(2));
    EXPECT_THAT(client.referenceNames(controller(2), {"", "", "Antecedent"}).names(), SizeIs(2));
}

// The first key of such a path is no key text.
TEST_F(Map, WithoutAnAssociationClassTheWholePathOfASourceIsNoError) {
    const Xml whole = client.enumerateNames(controllerClass).names().at(1);
    const Xml mail = client.associatorNames(controller(2), toVolumes).names().at(0);
    EXPECT_EQ(client.associators(whole, {"", volumeClass}).each("Name"),
              client.associators(controller(2), {"", volumeClass}).each("Name"));
    for (const Xml& source : {whole, mail}) {
        EXPECT_EQ(client.associators(source, {}).error(), "");
        EXPECT_EQ(client.associatorNames(source, {}).error(), "");
    }
}

TEST_F(Map, AnAssociationClassStandsForItsSubclassesInAnyCase) {
    for (const char* association :
         {"CIM_Dependency", "CIM_ProtocolControllerForDevice", "cim_protocolcontrollerforunit"}) {
        EXPECT_THAT(client.associatorNames(controller(2), {association, volumeClass}).names(),
                    SizeIs(2))
            << association;
        EXPECT_THAT(client.referenceNames(controller(2), {"", association, "antecedent"}).names(),
                    SizeIs(2))
            << association;
    }
}

TEST_F(Map, TheSuperclassOfControllersIsASourceOfAllButReferenceNames) {
    const Xml source = instanceName("CIM_ProtocolController", {{"DeviceID", "Ovrin:0E000002"}});
    EXPECT_THAT(client.associators(source, toVolumes).names(), SizeIs(2));
    EXPECT_THAT(client.associatorNames(source, toVolumes).names(), SizeIs(2));
    EXPECT_THAT(client.references(source, unitsOfController).names(), SizeIs(2));
    EXPECT_THAT(client.referenceNames(source, unitsOfController).names(), IsEmpty());
}

TEST_F(Map, APropertyListLeavesTheOthersOut) {
    Walk walk = toVolumes;
    walk.properties = {{"ElementName", "Name"}};
    EXPECT_THAT(client.associators(controller(1), walk).properties(),
                ElementsAre("ElementName: string mail", "Name: string " + mailVolume));
    walk.properties = {std::vector<std::string>()};
    EXPECT_THAT(client.associators(controller(1), walk).properties(), IsEmpty());

    Walk units = unitsOfController;
    units.properties = {{"DeviceNumber", "Nosuch"}};
    EXPECT_THAT(client.references(controller(1), units).properties(),
                ElementsAre("DeviceNumber: uint32 1"));
}

TEST_F(Map, QualifiersComeWhenTheyAreAskedFor) {
    Walk units = unitsOfController;
    EXPECT_THAT(client.references(controller(1), units).properties(), Each(Not(HasSubstr("Key"))));
    units.qualifiers = true;
    EXPECT_THAT(client.references(controller(1), units).properties(),
                AllOf(Contains(StartsWith("Dependent [Key]: ")),
                      Contains(StartsWith("Antecedent [Key]: "))));
}

} // namespace
} // namespace wire
