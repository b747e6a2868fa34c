// What walks and mappings make of paths and arguments that are wrong: nothing changes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::IsEmpty;
using testing::StartsWith;

namespace wire {
namespace {

const std::string noObject = "1 CIM_ERR_FAILED: Ovrin:0D00FFFF names no object of the class ";

class MapInput : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};
    const std::string before = array.arrayctl({"export", "--with-secrets"});

    ~MapInput() override {
        EXPECT_EQ(client.enumerateNames(unitClass).size(), 1U);
        EXPECT_EQ(array.arrayctl({"export", "--with-secrets"}), before);
        EXPECT_EQ(array.arrayctl({"check"}), "");
    }
    // What both kinds of each walk answer, which must be the same.
    std::string associatorsOf(const Xml& source, const Walk& walk) const {
        const std::string error = client.associators(source, walk).error();
        EXPECT_EQ(client.associatorNames(source, walk).error(), error);
        return error;
    }
    std::string referencesOf(const Xml& source, const Walk& walk) const {
        const std::string error = client.references(source, walk).error();
        EXPECT_EQ(client.referenceNames(source, walk).error(), error);
        return error;
    }
    // GetInstance and ModifyInstance of a unit by its two keys.
    std::string unitBy(const Xml& keys) const {
        const Xml name =
            "<INSTANCENAME CLASSNAME=\"" + unitClass + "\">" + keys + "</INSTANCENAME>";
        const std::string error = client.get(name).error();
        EXPECT_EQ(client.modify(name, unitClass, property("DeviceAccess", "uint16", "3")).error(),
                  error);
        return error;
    }
    static Xml textKey(const std::string& name, const std::string& text) {
        return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE VALUETYPE=\"string\">" + escaped(text) +
               "</KEYVALUE></KEYBINDING>";
    }
    static Xml pathKey(const std::string& name, const Xml& path) {
        return "<KEYBINDING NAME=\"" + name + "\">" + reference(path) + "</KEYBINDING>";
    }
};

TEST_F(MapInput, SourcesWithoutTheKeyThatIsLookedUp) {
    for (const std::string& source : {controllerClass, volumeClass}) {
        const std::string far = source == volumeClass ? controllerClass : volumeClass;
        const std::string role = source == volumeClass ? "Dependent" : "Antecedent";
        for (const Xml& path : {instanceName(source, {}), instanceName(source, {{"Name", "x"}})}) {
            EXPECT_EQ(associatorsOf(path, {unitClass, far}), outOfBounds);
            EXPECT_EQ(referencesOf(path, {"", unitClass, role}), outOfBounds);
        }
    }
    for (const std::string& source : {hostClass, privilegeClass}) {
        EXPECT_EQ(associatorsOf(instanceName(source, {}), {subjectClass, privilegeClass}),
                  outOfBounds);
    }
    EXPECT_EQ(associatorsOf(instanceName(privilegeClass, {}), {grantClass, controllerClass}),
              outOfBounds);
    EXPECT_EQ(associatorsOf(instanceName(controllerClass, {}), {grantClass, privilegeClass}), "");
}

TEST_F(MapInput, KeysThatNameNothing) {
    EXPECT_EQ(associatorsOf(instanceName(controllerClass, {{"DeviceID", "t1"}}),
                            {unitClass, volumeClass}),
              "");
    EXPECT_EQ(referencesOf(volume("mail"), {"", unitClass, "Dependent"}), "");
    EXPECT_EQ(client
                  .associators(instanceName(hostClass, {{"InstanceID", "host1"}}),
                               {subjectClass, privilegeClass})
                  .error(),
              "1 CIM_ERR_FAILED: A key that is not \"Ovrin:\" and eight upper-case hexadecimal "
              "digits names no object of the class initiator.");
    for (const std::string& far : {unitClass, std::string(grantClass)}) {
        const Walk walk = {far, far == unitClass ? volumeClass : privilegeClass};
        EXPECT_THAT(client.associators(controller(9), walk).names(), IsEmpty());
        EXPECT_EQ(associatorsOf(controller(9), walk), "");
    }
    EXPECT_EQ(client.get(controller(9)).error(), "6 CIM_ERR_NOT_FOUND: Ovrin:0E000009");
}

TEST_F(MapInput, AnErrorOfACallBackIsTheAnswer) {
    const Xml stranger = instanceName(privilegeClass, {{"InstanceID", "Ovrin:0D00FFFF"}});
    EXPECT_EQ(client.associators(stranger, {subjectClass, hostClass}).error(),
              noObject + "initiator.");
    EXPECT_EQ(client.associatorNames(stranger, {subjectClass, hostClass}).error(), "");
    const Xml target = instanceName(privilegeClass, {{"InstanceID", "Ovrin:0E000001"}});
    EXPECT_EQ(client.associators(target, {subjectClass, hostClass}).error(),
              "1 CIM_ERR_FAILED: Ovrin:0E000001 is of the class target, and the class initiator "
              "was asked for.");
}

TEST_F(MapInput, MappingsByKeysThatAreNoPaths) {
    EXPECT_EQ(unitBy(""), outOfBounds);
    EXPECT_EQ(unitBy(pathKey("Antecedent", controller(1))), outOfBounds);
    EXPECT_EQ(unitBy(pathKey("Dependent", volume("Ovrin:17000001"))), outOfBounds);
    EXPECT_THAT(
        unitBy(textKey("Antecedent", "no path") + pathKey("Dependent", volume("Ovrin:17000001"))),
        StartsWith("1 CIM_ERR_FAILED: "));
    EXPECT_EQ(unitBy(pathKey("Antecedent", instanceName(controllerClass, {})) +
                     pathKey("Dependent", volume("Ovrin:17000001"))),
              outOfBounds);
}

TEST_F(MapInput, AMappingThatIsNotThereIsNeitherGotNorChanged) {
    for (const char* key : {"Ovrin:17000001", "mail"}) {
        const Xml keys = pathKey("Antecedent", controller(2)) + pathKey("Dependent", volume(key));
        const Xml name =
            "<INSTANCENAME CLASSNAME=\"" + unitClass + "\">" + keys + "</INSTANCENAME>";
        EXPECT_EQ(client.get(name).error(), "1 CIM_ERR_FAILED: Too few objects delivered.");
        EXPECT_EQ(client.modify(name, unitClass, property("DeviceAccess", "uint16", "3")).error(),
                  "");
    }
}

TEST_F(MapInput, AnAccessOfAnotherTypeStoresNothing) {
    const Xml unit = client.enumerateNames(unitClass).names().at(0);
    for (const char* type : {"string", "uint32", "sint16"}) {
        EXPECT_EQ(client.modify(unit, unitClass, property("DeviceAccess", type, "3")).error(),
                  "1 CIM_ERR_FAILED: type mismatch");
    }
    EXPECT_EQ(client.get(unit).each("DeviceAccess").at(0), "2");
}

TEST_F(MapInput, ClassesAndRolesThatAreUnknown) {
    EXPECT_EQ(associatorsOf(instanceName("CIM_Nosuch", {{"DeviceID", "x"}}), {}),
              "4 CIM_ERR_INVALID_PARAMETER: CIM_Nosuch");
    EXPECT_EQ(associatorsOf(controller(1), {"CIM_Nosuch", volumeClass}),
              "4 CIM_ERR_INVALID_PARAMETER: CIM_Nosuch");
    EXPECT_EQ(referencesOf(controller(1), {"", "CIM_Nosuch", "Antecedent"}),
              "4 CIM_ERR_INVALID_PARAMETER: CIM_Nosuch");
    EXPECT_EQ(associatorsOf(controller(1), {unitClass, volumeClass, "no role"}),
              "4 CIM_ERR_INVALID_PARAMETER: role no role");
    EXPECT_EQ(associatorsOf(controller(1), {unitClass, volumeClass, "", "no role"}),
              "4 CIM_ERR_INVALID_PARAMETER: resultrole no role");
    EXPECT_EQ(referencesOf(controller(1), {"", unitClass, "no role"}),
              "4 CIM_ERR_INVALID_PARAMETER: role no role");
}

} // namespace
} // namespace wire
