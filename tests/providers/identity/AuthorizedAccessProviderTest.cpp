#include "providers/identity/AuthorizedAccessProvider.h"

#include "tests/support/ProviderTest.h"
#include "tests/support/ScriptedCIMOM.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Uint32 HOST1 = 0x0D000001;
constexpr Uint32 HOST2 = 0x0D000002;
constexpr Uint32 TARGET1 = 0x0E000001;
constexpr Uint32 TARGET2 = 0x0E000002;

const CIMName SUBJECT("CIM_AuthorizedSubject");
const CIMName TARGET("CIM_AuthorizedTarget");
const CIMName PRIVILEGE("CIM_AuthorizedPrivilege");
const CIMName ANY_PRIVILEGE("CIM_Privilege");
const CIMName HARDWARE_ID("CIM_StorageHardwareID");
const CIMName CONTROLLER("CIM_SCSIProtocolController");

std::string privilege(Uint32 id) {
    return objectText("CIM_AuthorizedPrivilege", "InstanceID", id);
}

std::string hardwareID(Uint32 id) {
    return objectText("CIM_StorageHardwareID", "InstanceID", id);
}

std::string controller(Uint32 id) {
    return objectText("CIM_SCSIProtocolController", "DeviceID", id);
}

// The call back into the server, as the tests below ask for it.
std::string serverCall(const std::string& path) {
    return "CIMOMHandle::getInstance(root/snia, " + path +
           ", localOnly false, includeQualifiers true, includeClassOrigin false, [Name])";
}

class AuthorizedAccessProviderTest : public ProviderTest<AuthorizedAccessProvider> {
protected:
    AuthorizedAccessProviderTest() {
        addRecord(HOST1, DRAVInitiator("iqn.host1"));
        addRecord(HOST2, DRAVInitiator("iqn.host2"));
        associate(HOST1, CLASSID_TARGET, {TARGET2, TARGET1});
        associate(TARGET1, CLASSID_INITIATOR, {HOST2, HOST1});
        answerGetInstance({});
    }

    static CIMObjectPath source(const CIMName& className, Uint32 id) {
        return requestPath(className, {{"InstanceID", keyText(id)}});
    }

    void associators(const CIMObjectPath& objectName, const CIMName& associationClass,
                     const CIMName& resultClass) {
        Array<CIMName> names;
        names.append(CIMName("Name"));
        provider.associators(context, objectName, associationClass, resultClass, "role",
                             "resultRole", true, false, CIMPropertyList(names), objects);
    }

    void associatorNames(const CIMObjectPath& objectName, const CIMName& associationClass,
                         const CIMName& resultClass) {
        provider.associatorNames(context, objectName, associationClass, resultClass, "role",
                                 "resultRole", paths);
    }

    // Both operations refuse alike: after processing, before any delivery.
    void expectRefused(const CIMObjectPath& objectName, const CIMName& associationClass,
                       const CIMName& resultClass) {
        clearLog();
        EXPECT_EQ(thrownBy<CIMNotSupportedException>(
                      [&] { associators(objectName, associationClass, resultClass); }),
                  "AuthorizedAccess::associators");
        EXPECT_EQ(thrownBy<CIMNotSupportedException>(
                      [&] { associatorNames(objectName, associationClass, resultClass); }),
                  "AuthorizedAccess::associators");
        EXPECT_THAT(log(), ElementsAre("processing", "processing"));
    }

    ObjectHandler objects;
    ObjectPathHandler paths;
};

// Between a host and its privilege.

TEST_F(AuthorizedAccessProviderTest, FromAHardwareIDToItsPrivilege) {
    associators(source(HARDWARE_ID, HOST1), SUBJECT, PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "deliver " + privilege(HOST1), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, APrivilegeIsGrantedAndNamedLikeItsHardwareID) {
    associators(source(HARDWARE_ID, HOST1), SUBJECT, ANY_PRIVILEGE);

    ASSERT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(text(objects.delivered[0].getClassName()), "CIM_AuthorizedPrivilege");
    EXPECT_THAT(properties(CIMInstance(objects.delivered[0])),
                ElementsAre("PrivilegeGranted: boolean TRUE",
                            "InstanceID: string Ovrin:0D000001 [Key=TRUE]"));
}

TEST_F(AuthorizedAccessProviderTest, FromAHardwareIDToItsPrivilegesName) {
    associatorNames(source(HARDWARE_ID, HOST1), SUBJECT, PRIVILEGE);
    associatorNames(source(HARDWARE_ID, HOST1), SUBJECT, ANY_PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + privilege(HOST1), "complete",
                                   "processing", "deliver " + privilege(HOST1), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, FromAPrivilegeToItsHardwareIDThroughTheServer) {
    associators(source(PRIVILEGE, HOST1), SUBJECT, HARDWARE_ID);

    EXPECT_THAT(log(), ElementsAre("processing", serverCall(hardwareID(HOST1)),
                                   "deliver " + hardwareID(HOST1), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, TheServersAnswerIsDeliveredAsItIs) {
    answerGetInstance([](const CIMObjectPath& path) {
        CIMInstance instance(path.getClassName());
        instance.addProperty(CIMProperty("StorageID", String("iqn.host1")));
        return instance;
    });
    associators(source(ANY_PRIVILEGE, HOST1), SUBJECT, HARDWARE_ID);

    ASSERT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(text(objects.delivered[0].getPath()), "CIM_StorageHardwareID");
    EXPECT_THAT(properties(CIMInstance(objects.delivered[0])),
                ElementsAre("StorageID: string iqn.host1"));
}

TEST_F(AuthorizedAccessProviderTest, TheServerIsCalledWithTheRequestsContextAndFlags) {
    const CIMPropertyList all;
    provider.associators(context, source(PRIVILEGE, HOST1), SUBJECT, HARDWARE_ID, "", "", false,
                         true, all, objects);

    EXPECT_EQ(lastGetInstanceContext(), &context);
    EXPECT_THAT(calls(),
                ElementsAre("CIMOMHandle::getInstance(root/snia, " + hardwareID(HOST1) +
                            ", localOnly false, includeQualifiers false, includeClassOrigin true, "
                            "all)"));
}

TEST_F(AuthorizedAccessProviderTest, TheServerIsCalledInTheArraysNamespaceWhateverTheSources) {
    CIMObjectPath elsewhere = source(PRIVILEGE, HOST1);
    elsewhere.setNameSpace(CIMNamespaceName("root/other"));
    associators(elsewhere, SUBJECT, HARDWARE_ID);

    EXPECT_THAT(calls(), ElementsAre(serverCall(hardwareID(HOST1))));
}

TEST_F(AuthorizedAccessProviderTest, TheServerIsCalledThroughTheHandleGivenToInitialize) {
    CIMOMHandle handle;
    provider.initialize(handle);
    associators(source(PRIVILEGE, HOST1), SUBJECT, HARDWARE_ID);

    EXPECT_EQ(lastGetInstanceHandle(), &handle);
}

TEST_F(AuthorizedAccessProviderTest, FromAPrivilegeToItsHardwareIDsNameWithoutTheServer) {
    associatorNames(source(PRIVILEGE, HOST1), SUBJECT, HARDWARE_ID);
    associatorNames(source(ANY_PRIVILEGE, HOST2), SUBJECT, HARDWARE_ID);

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + hardwareID(HOST1), "complete",
                                   "processing", "deliver " + hardwareID(HOST2), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, OverTheSubjectTheFirstKeyCountsWhateverItsName) {
    associatorNames(requestPath(HARDWARE_ID, {{"Whatever", keyText(HOST2)}}), SUBJECT, PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + privilege(HOST2), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, OverTheSubjectTheKeyIsReadBeforeAnyClass) {
    const CIMObjectPath withoutKeys = requestPath("CIM_StorageVolume");

    EXPECT_EQ(
        thrownBy<IndexOutOfBoundsException>([&] { associators(withoutKeys, SUBJECT, PRIVILEGE); }),
        "index out of bounds");
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [&] { associatorNames(withoutKeys, SUBJECT, PRIVILEGE); }),
              "index out of bounds");
    EXPECT_THAT(log(), ElementsAre("processing", "processing"));
}

TEST_F(AuthorizedAccessProviderTest, AHostWithoutARecordStillHasItsPrivilege) {
    addNullRecord(HOST1);
    associators(source(HARDWARE_ID, HOST1), SUBJECT, PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "deliver " + privilege(HOST1), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, AHostThatTheEngineRefusesHasNone) {
    failNext("getObject", 6, "no such initiator");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { associators(source(HARDWARE_ID, HOST1), SUBJECT, PRIVILEGE); }),
              "no such initiator");
    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)"));
}

// Between a privilege and controllers.

TEST_F(AuthorizedAccessProviderTest, FromAPrivilegeToItsControllersThroughTheServer) {
    associators(source(PRIVILEGE, HOST1), TARGET, CONTROLLER);

    EXPECT_THAT(log(),
                ElementsAre("processing", "enumerateAssociatedObjects(0x0D000001, 14)",
                            serverCall(controller(TARGET2)), "deliver " + controller(TARGET2),
                            serverCall(controller(TARGET1)), "deliver " + controller(TARGET1),
                            "complete"));
}

TEST_F(AuthorizedAccessProviderTest, FromAPrivilegeToItsControllersNamesWithoutTheServer) {
    associatorNames(source(ANY_PRIVILEGE, HOST1), TARGET, CONTROLLER);

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0D000001, 14)",
                                   "deliver " + controller(TARGET2),
                                   "deliver " + controller(TARGET1), "complete"));
}

TEST_F(AuthorizedAccessProviderTest, OverTheTargetThePrivilegesFirstKeyCountsWhateverItsName) {
    associatorNames(requestPath(PRIVILEGE, {{"Any", keyText(HOST1)}, {"InstanceID", "no id"}}),
                    TARGET, CONTROLLER);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x0D000001, 14)"));
}

TEST_F(AuthorizedAccessProviderTest, AHostWithoutGrantsHasNoControllers) {
    associators(source(PRIVILEGE, HOST2), TARGET, CONTROLLER);
    associatorNames(source(PRIVILEGE, HOST2), TARGET, CONTROLLER);

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0D000002, 14)",
                                   "complete", "processing",
                                   "enumerateAssociatedObjects(0x0D000002, 14)", "complete"));
}

TEST_F(AuthorizedAccessProviderTest, AnErrorOfTheServerKeepsWhatWasDelivered) {
    answerGetInstance([](const CIMObjectPath& path) {
        if (text(path) == controller(TARGET1)) {
            throw CIMObjectNotFoundException("gone");
        }
        return CIMInstance(path.getClassName());
    });

    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>(
                  [this] { associators(source(PRIVILEGE, HOST1), TARGET, CONTROLLER); }),
              "gone");

    EXPECT_EQ(objects.delivered.size(), 1u);
    EXPECT_THAT(log(), testing::Not(testing::Contains("complete")));
}

TEST_F(AuthorizedAccessProviderTest, FromAControllerToThePrivilegesThatReachIt) {
    associators(requestPath(CONTROLLER, {{"DeviceID", keyText(TARGET1)}}), TARGET, PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000001, 13)",
                                   "getObject(13, 0x0D000002)", "deliver " + privilege(HOST2),
                                   "getObject(13, 0x0D000001)", "deliver " + privilege(HOST1),
                                   "complete"));
}

TEST_F(AuthorizedAccessProviderTest, FromAControllerToThePrivilegesNames) {
    associatorNames(requestPath(CONTROLLER, {{"DeviceID", keyText(TARGET1)}}), TARGET,
                    ANY_PRIVILEGE);

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000001, 13)",
                                   "deliver " + privilege(HOST2), "deliver " + privilege(HOST1),
                                   "complete"));
}

TEST_F(AuthorizedAccessProviderTest, AControllerThatNoHostMayReachHasNoPrivileges) {
    associators(requestPath(CONTROLLER, {{"DeviceID", keyText(TARGET2)}}), TARGET, PRIVILEGE);

    EXPECT_THAT(
        log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000002, 13)", "complete"));
}

TEST_F(AuthorizedAccessProviderTest, AControllerIsKnownByItsDeviceIDAmongItsKeys) {
    associatorNames(requestPath(CONTROLLER, {{"CreationClassName", "CIM_SCSIProtocolController"},
                                             {"deviceid", keyText(TARGET1)},
                                             {"SystemName", "array1"}}),
                    TARGET, PRIVILEGE);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x0E000001, 13)"));
}

TEST_F(AuthorizedAccessProviderTest, WithoutADeviceIDTheLastKeyCounts) {
    associatorNames(requestPath(CONTROLLER, {{"Alpha", "no id"}, {"Omega", keyText(TARGET1)}}),
                    TARGET, PRIVILEGE);

    EXPECT_THAT(calls(), ElementsAre("enumerateAssociatedObjects(0x0E000001, 13)"));
}

TEST_F(AuthorizedAccessProviderTest, AControllerWithoutKeysNamesNothing) {
    associators(requestPath(CONTROLLER), TARGET, PRIVILEGE);

    EXPECT_THAT(
        log(), ElementsAre("processing", "enumerateAssociatedObjects(0xFFFFFFFF, 13)", "complete"));
}

// As when an object that is named by other keys is asked for all that it is associated with.
TEST_F(AuthorizedAccessProviderTest, AKeyThatIsNoKeyTextLeavesTheRefusalOfOtherClasses) {
    EXPECT_EQ(thrownBy<CIMNotSupportedException>([this] {
                  associators(requestPath("CIM_StorageVolume",
                                          {{"CreationClassName", "CIM_StorageVolume"}}),
                              SUBJECT, CIMName());
              }),
              "AuthorizedAccess::associators");
}

TEST_F(AuthorizedAccessProviderTest, OverTheTargetAPrivilegeWithoutKeysIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [this] { associators(requestPath(PRIVILEGE), TARGET, CONTROLLER); }),
              "index out of bounds");
    EXPECT_THAT(log(), ElementsAre("processing"));
}

// Names of classes, and what is refused.

TEST_F(AuthorizedAccessProviderTest, ClassesAreComparedWithoutRegardToCase) {
    associatorNames(source("cim_storagehardwareid", HOST1), "CIM_AUTHORIZEDSUBJECT",
                    "cim_privilege");
    associatorNames(source("cim_authorizedprivilege", HOST1), "cim_authorizedtarget",
                    "cim_scsiprotocolcontroller");

    EXPECT_EQ(paths.delivered.size(), 3u);
}

TEST_F(AuthorizedAccessProviderTest, AnEmptyResultClassIsRefused) {
    expectRefused(source(HARDWARE_ID, HOST1), SUBJECT, CIMName());
    expectRefused(source(PRIVILEGE, HOST1), SUBJECT, CIMName());
    expectRefused(source(PRIVILEGE, HOST1), TARGET, CIMName());
    expectRefused(source(CONTROLLER, TARGET1), TARGET, CIMName());
}

TEST_F(AuthorizedAccessProviderTest, AnUnknownOrEmptyAssociationClassIsRefused) {
    expectRefused(source(HARDWARE_ID, HOST1), CIMName(), PRIVILEGE);
    expectRefused(source(HARDWARE_ID, HOST1), "CIM_ProtocolControllerForUnit", PRIVILEGE);
}

TEST_F(AuthorizedAccessProviderTest, OtherPairsOfClassesAreRefused) {
    expectRefused(source(HARDWARE_ID, HOST1), SUBJECT, CONTROLLER);
    expectRefused(source(HARDWARE_ID, HOST1), SUBJECT, HARDWARE_ID);
    expectRefused(source(PRIVILEGE, HOST1), SUBJECT, PRIVILEGE);
    expectRefused(source(PRIVILEGE, HOST1), SUBJECT, CONTROLLER);
    expectRefused(source(CONTROLLER, TARGET1), SUBJECT, PRIVILEGE);
    expectRefused(source(PRIVILEGE, HOST1), TARGET, HARDWARE_ID);
    expectRefused(source(HARDWARE_ID, HOST1), TARGET, PRIVILEGE);
    expectRefused(source(CONTROLLER, TARGET1), TARGET, CONTROLLER);
}

TEST_F(AuthorizedAccessProviderTest, OverTheTargetClassesAreJudgedBeforeTheKeys) {
    expectRefused(requestPath(PRIVILEGE), TARGET, HARDWARE_ID);
    expectRefused(requestPath(CONTROLLER), TARGET, CONTROLLER);
}

} // namespace
