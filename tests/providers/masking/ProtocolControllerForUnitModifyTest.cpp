// CIM_ProtocolControllerForUnit: modifyInstance.

#include "tests/providers/masking/ProtocolControllerForUnitTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

std::string store(Uint32 unit, Uint32 target, Uint32 lun, Uint32 readOnly, Uint32 volume) {
    return "modifyObject(15, DRAVLogicalUnit{" + idText(unit) + ", targetID=" + idText(target) +
           ", lun=" + std::to_string(lun) + ", readOnly=" + std::to_string(readOnly) +
           ", volumeID=" + idText(volume) + ", volumeName=\"60A1\"})";
}

const std::string STORE_UNIT2 = store(UNIT2, TARGET1, 8, 1, VOLUME2);

class ProtocolControllerForUnitModifyTest : public ProtocolControllerForUnitTest {
protected:
    void modify(Uint32 target, Uint32 volume, const CIMInstance& instance) {
        provider.modifyInstance(context, unitPath(controllerPath(target), volumePath(volume)),
                                instance, true, all, handler);
    }

    static CIMInstance instanceWith(const char* property, const CIMValue& value) {
        CIMInstance instance(UNIT_CLASS);
        instance.addProperty(CIMProperty(CIMName(property), value));
        return instance;
    }

    static CIMInstance withAccess(Uint16 access) { return instanceWith("DeviceAccess", access); }

    PlainHandler handler;
};

TEST_F(ProtocolControllerForUnitModifyTest, ChangesTheUnitAndStoresEachUnitOfTheController) {
    modify(TARGET1, VOLUME1, withAccess(3));

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2, STORE_UNIT2, READ_UNIT1,
                                   store(UNIT1, TARGET1, 7, 1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitModifyTest, TheNextGetInstanceShowsTheChange) {
    modify(TARGET1, VOLUME1, withAccess(3));
    provider.getInstance(context, unitPath(controllerPath(TARGET1), volumePath(VOLUME1)), false,
                         false, all, instances);

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(properties(instances.delivered[0])[3], "DeviceAccess: uint16 3");
}

TEST_F(ProtocolControllerForUnitModifyTest, ReadWriteIsCode0) {
    modify(TARGET2, VOLUME1, withAccess(2));

    EXPECT_THAT(calls(),
                ElementsAre(LIST_UNITS2, READ_UNIT3, store(UNIT3, TARGET2, 9, 0, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, AnyOtherAccessIsIgnoredAndTheUnitsAreStoredUnchanged) {
    for (const int access : {0, 1, 4, 5, 65535}) {
        clearLog();
        modify(TARGET1, VOLUME1, withAccess(static_cast<Uint16>(access)));
        EXPECT_THAT(log(),
                    ElementsAre("processing", LIST_UNITS1, READ_UNIT2, STORE_UNIT2, READ_UNIT1,
                                store(UNIT1, TARGET1, 7, 0, VOLUME1), "complete"));
    }
}

TEST_F(ProtocolControllerForUnitModifyTest, WithoutDeviceAccessTheUnitsAreStoredUnchanged) {
    modify(TARGET1, VOLUME1, CIMInstance(UNIT_CLASS));

    EXPECT_THAT(calls(), ElementsAre(LIST_UNITS1, READ_UNIT2, STORE_UNIT2, READ_UNIT1,
                                     store(UNIT1, TARGET1, 7, 0, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, ANullDeviceAccessIsNoChange) {
    modify(TARGET1, VOLUME1, instanceWith("DeviceAccess", CIMValue(CIMTYPE_UINT16, false)));

    EXPECT_THAT(calls(), testing::Contains(store(UNIT1, TARGET1, 7, 0, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, ThePropertyIsFoundWithoutRegardToCase) {
    modify(TARGET1, VOLUME1, instanceWith("deviceaccess", Uint16(3)));

    EXPECT_THAT(calls(), testing::Contains(store(UNIT1, TARGET1, 7, 1, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, NoOtherPropertyChangesAnything) {
    modify(TARGET1, VOLUME1, instanceWith("DeviceNumber", Uint32(99)));

    EXPECT_THAT(calls(), testing::Contains(store(UNIT1, TARGET1, 7, 0, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, PropertyListAndQualifierFlagAreNotConsulted) {
    provider.modifyInstance(context, unitPath(controllerPath(TARGET1), volumePath(VOLUME1)),
                            withAccess(3), false, CIMPropertyList(Array<CIMName>()), handler);

    EXPECT_THAT(calls(), testing::Contains(store(UNIT1, TARGET1, 7, 1, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, TheControllersUnitsAreStoredEvenIfNoneIsOfTheVolume) {
    modify(TARGET2, VOLUME2, withAccess(3));

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS2, READ_UNIT3,
                                   store(UNIT3, TARGET2, 9, 3, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitModifyTest, AVolumeThatIsMappedTwiceIsChangedTwice) {
    addRecord(UNIT2, unit(TARGET1, 8, 0, VOLUME1));
    modify(TARGET1, VOLUME1, withAccess(3));

    EXPECT_THAT(calls(), ElementsAre(LIST_UNITS1, READ_UNIT2, store(UNIT2, TARGET1, 8, 1, VOLUME1),
                                     READ_UNIT1, store(UNIT1, TARGET1, 7, 1, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, AControllerWithoutUnitsIsNoError) {
    modify(0x0E000077, VOLUME1, withAccess(3));

    EXPECT_THAT(
        log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000077, 15)", "complete"));
}

TEST_F(ProtocolControllerForUnitModifyTest, NoEventIsPublished) {
    modify(TARGET1, VOLUME1, withAccess(3));

    EXPECT_TRUE(events().empty());
}

TEST_F(ProtocolControllerForUnitModifyTest,
       AnotherTypeFailsAtTheUnitOfTheVolumeAndEarlierOnesAreStored) {
    for (const CIMValue& value :
         {CIMValue(Uint32(3)), CIMValue(String("3")), CIMValue(Array<Uint16>())}) {
        clearLog();
        EXPECT_EQ(thrownBy<TypeMismatchException>([&] {
                      modify(TARGET1, VOLUME1, instanceWith("DeviceAccess", value));
                  }).find("type"),
                  0u);
        EXPECT_THAT(log(),
                    ElementsAre("processing", LIST_UNITS1, READ_UNIT2, STORE_UNIT2, READ_UNIT1));
    }
}

TEST_F(ProtocolControllerForUnitModifyTest, AnotherTypeIsNotReadWhereNoUnitIsOfTheVolume) {
    modify(TARGET2, VOLUME2, instanceWith("DeviceAccess", String("3")));

    EXPECT_THAT(calls(),
                ElementsAre(LIST_UNITS2, READ_UNIT3, store(UNIT3, TARGET2, 9, 3, VOLUME1)));
}

TEST_F(ProtocolControllerForUnitModifyTest, AUnitThatTheEngineRefusesEndsTheOperation) {
    failNext("modifyObject", 4, "refused");

    EXPECT_EQ(
        thrownBy<DRAVOperationFailedException>([this] { modify(TARGET1, VOLUME1, withAccess(3)); }),
        "refused");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2, STORE_UNIT2));
}

TEST_F(ProtocolControllerForUnitModifyTest, APathThatNamesNoUnitFailsBeforeTheEngineIsAsked) {
    const auto modifyAt = [this](const CIMObjectPath& path) {
        provider.modifyInstance(context, path, withAccess(3), true, all, handler);
    };

    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { modifyAt(requestPath(UNIT_CLASS)); }),
              "index out of bounds");
    EXPECT_EQ(
        thrownBy<IndexOutOfBoundsException>([&] {
            modifyAt(requestPath(UNIT_CLASS, {{"Antecedent", text(controllerPath(TARGET1))}}));
        }),
        "index out of bounds");
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] {
                  modifyAt(unitPath(controllerPath(TARGET1), requestPath("CIM_StorageVolume")));
              }),
              "index out of bounds");
    EXPECT_THAT(thrownBy<MalformedObjectNameException>([&] {
                    modifyAt(requestPath(UNIT_CLASS, {{"Antecedent", "x y"}, {"Dependent", "x"}}));
                }),
                testing::StartsWith("malformed object name"));

    EXPECT_THAT(log(), ElementsAre("processing", "processing", "processing", "processing"));
}

TEST_F(ProtocolControllerForUnitModifyTest, TheKeysAreThoseOfTheReferenceNotOfTheInstance) {
    CIMInstance instance = withAccess(3);
    instance.setPath(unitPath(controllerPath(TARGET2), volumePath(VOLUME1)));
    modify(TARGET1, VOLUME1, instance);

    EXPECT_THAT(calls(), testing::Contains(store(UNIT1, TARGET1, 7, 1, VOLUME1)));
    EXPECT_THAT(calls(), testing::Not(testing::Contains(LIST_UNITS2)));
}

} // namespace
