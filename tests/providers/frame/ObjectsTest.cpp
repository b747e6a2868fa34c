#include "providers/frame/Objects.h"

#include "engine/CurrentName.h"
#include "engine/OperationScope.h"
#include "providers/frame/Services.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

// While it lives, the engine has other names.
class OtherNames {
public:
    OtherNames()
        : _host(std::exchange(DRAVEngine::_OvrinHostNamePtr, &_otherHost)),
          _system(std::exchange(DRAVEngine::_OvrinSystemNamePtr, &_otherSystem)) {}
    ~OtherNames() {
        DRAVEngine::_OvrinHostNamePtr = _host;
        DRAVEngine::_OvrinSystemNamePtr = _system;
    }
    OtherNames(const OtherNames&) = delete;
    OtherNames& operator=(const OtherNames&) = delete;

private:
    const String _otherHost = "array2.example.com";
    const String _otherSystem = "array2";
    const String* const _host;
    const String* const _system;
};

TEST(ObjectsTest, APathHasTheArraysHostTheNamespaceAndOneTextKey) {
    const CIMObjectPath path = modulePath("CIM_Some", "InstanceID", 0x0D00002A);

    EXPECT_EQ(text(path), "//array1.example.com/root/snia:CIM_Some.InstanceID=\"Ovrin:0D00002A\"");
    EXPECT_EQ(path.getKeyBindings()[0].getType(), CIMKeyBinding::STRING);
}

// The scripted engine doesn't, and all of its tests run without.
TEST(ObjectsTest, AnEngineNeedNotKnowOfOperations) {
    EXPECT_FALSE(DRAVBeginOperation);
    EXPECT_FALSE(DRAVEndOperation);
    EXPECT_FALSE(DRAVCurrentName);
}

TEST(ObjectsTest, TheEnginesNamesAreReadAtEachUse) {
    const CIMName service("CIM_Service");
    const std::string before = text(servicePath(service));
    {
        const OtherNames names;
        EXPECT_EQ(text(modulePath("CIM_Some", {})), "//array2.example.com/root/snia:CIM_Some");
        EXPECT_EQ(text(servicePath(service)),
                  "//array2.example.com/root/snia:CIM_Service.CreationClassName=\"CIM_Service\","
                  "Name=\"array2\",SystemCreationClassName=\"CIM_ComputerSystem\","
                  "SystemName=\"array2\"");
        EXPECT_THAT(properties(serviceInstance(service)),
                    testing::IsSupersetOf({"SystemName: string array2 [Key=TRUE]",
                                           "Name: string array2 [Key=TRUE]"}));
    }
    EXPECT_EQ(text(servicePath(service)), before);
}

TEST(ObjectsTest, TheKeyQualifierIsABooleanWithoutFlavorAndNotPropagated) {
    CIMProperty property = keyProperty("InstanceID", String("x"));
    ASSERT_EQ(property.getQualifierCount(), 1u);
    const CIMQualifier key = property.getQualifier(0);

    EXPECT_EQ(text(key.getName()), "Key");
    EXPECT_EQ(text(key.getValue()), "boolean TRUE");
    EXPECT_TRUE(key.getFlavor().equal(CIMFlavor::NONE));
    EXPECT_FALSE(key.getPropagated());
}

TEST(ObjectsTest, AKeyPropertyIsNotPropagatedAndHasNoClassOrigin) {
    CIMInstance instance("CIM_Some");
    instance.addProperty(keyProperty("InstanceID", String("x")));

    EXPECT_THAT(properties(instance), testing::ElementsAre("InstanceID: string x [Key=TRUE]"));
}

} // namespace
