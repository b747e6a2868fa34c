#include "providers/identity/SharedSecretProvider.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

constexpr Uint32 HOST = 0x0D000001;
constexpr Uint32 TARGET = 0x0E000001;
constexpr Uint32 VOLUME = 0x17000001;

class SharedSecretProviderTest : public ProviderTest<SharedSecretProvider> {
protected:
    SharedSecretProviderTest() {
        DRAVInitiator initiator("iqn.host");
        initiator.secret = "hosts own secret";
        addRecord(HOST, initiator);
        DRAVTarget target("iqn.target");
        target.sessionPresence = 1;
        target.secret = "targets own secret";
        addRecord(TARGET, target);
    }

    static CIMObjectPath secretOf(Uint32 id) {
        return requestPath("CIM_SharedSecret", {{"RemoteID", keyText(id)}});
    }

    void getInstance(const CIMObjectPath& path) {
        provider.getInstance(context, path, false, false, CIMPropertyList(), instances);
    }

    void modifyInstance(const CIMObjectPath& path, const CIMValue& secret) {
        CIMInstance modified("CIM_SharedSecret");
        modified.addProperty(CIMProperty("Secret", secret));
        modifyInstance(path, modified);
    }

    void modifyInstance(const CIMObjectPath& path, const CIMInstance& modified) {
        provider.modifyInstance(context, path, modified, false, CIMPropertyList(), response);
    }

    InstanceHandler instances;
    PlainHandler response;
};

TEST_F(SharedSecretProviderTest, GetInstanceGivesAnInitiatorsSecret) {
    getInstance(secretOf(HOST));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "deliver " + objectText("CIM_SharedSecret", "RemoteID", HOST),
                                   "complete"));
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("Secret: string hosts own secret",
                            "RemoteID: string Ovrin:0D000001 [Key=TRUE]"));
}

TEST_F(SharedSecretProviderTest, GetInstanceGivesATargetsSecret) {
    getInstance(secretOf(TARGET));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(14, 0x0E000001)",
                                   "deliver " + objectText("CIM_SharedSecret", "RemoteID", TARGET),
                                   "complete"));
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("Secret: string targets own secret",
                            "RemoteID: string Ovrin:0E000001 [Key=TRUE]"));
}

TEST_F(SharedSecretProviderTest, GetInstanceOfAnotherObjectGivesAnEmptySecret) {
    getInstance(secretOf(VOLUME));

    EXPECT_THAT(log(), ElementsAre("processing",
                                   "deliver " + objectText("CIM_SharedSecret", "RemoteID", VOLUME),
                                   "complete"));
    EXPECT_THAT(properties(instances.delivered.at(0)),
                ElementsAre("Secret: string ", "RemoteID: string Ovrin:17000001 [Key=TRUE]"));
}

TEST_F(SharedSecretProviderTest, GetInstanceTakesTheFirstKeyOfAnyNameAndClass) {
    getInstance(requestPath("CIM_Anything", {{"Name", keyText(HOST)}}));

    EXPECT_THAT(calls(), ElementsAre("getObject(13, 0x0D000001)"));
    EXPECT_EQ(text(instances.delivered.at(0).getPath()),
              objectText("CIM_SharedSecret", "RemoteID", HOST));
}

TEST_F(SharedSecretProviderTest, GetInstanceWithoutKeysIsOutOfBoundsAndNotCompleted) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [this] { getInstance(requestPath("CIM_SharedSecret")); }),
              "index out of bounds");

    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(SharedSecretProviderTest, GetInstancePassesTheEnginesFailureOn) {
    failNext("getObject", 6, "no such initiator");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] { getInstance(secretOf(HOST)); }),
              "no such initiator");

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceStoresAnInitiatorsNewSecret) {
    modifyInstance(secretOf(HOST), String("a better secret"));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "modifyObject(13, DRAVInitiator{0x0D000001, name=\"iqn.host\", "
                                   "secret=\"a better secret\"})",
                                   "complete"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceStoresATargetsNewSecret) {
    modifyInstance(secretOf(TARGET), String("a better secret"));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(14, 0x0E000001)",
                                   "modifyObject(14, DRAVTarget{0x0E000001, name=\"iqn.target\", "
                                   "sessionPresence=1, secret=\"a better secret\"})",
                                   "complete"));
}

TEST_F(SharedSecretProviderTest, GetInstanceReturnsWhatModifyInstanceStored) {
    modifyInstance(secretOf(TARGET), String("a better secret"));
    getInstance(secretOf(TARGET));

    EXPECT_THAT(properties(instances.delivered.at(0)),
                testing::Contains("Secret: string a better secret"));
}

TEST_F(SharedSecretProviderTest, AnEmptySecretIsStored) {
    modifyInstance(secretOf(HOST), String());

    EXPECT_THAT(calls(), ElementsAre("getObject(13, 0x0D000001)",
                                     "modifyObject(13, DRAVInitiator{0x0D000001, "
                                     "name=\"iqn.host\", secret=\"\"})"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceOfAnotherClassCompletesWithoutAChange) {
    modifyInstance(requestPath("CIM_Secret", {{"RemoteID", keyText(HOST)}}), String("new"));

    EXPECT_THAT(log(), ElementsAre("processing", "complete"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceOfAnotherClassLooksAtNothingElse) {
    modifyInstance(requestPath("CIM_Secret"), CIMInstance("CIM_Secret"));

    EXPECT_THAT(log(), ElementsAre("processing", "complete"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceComparesTheClassWithoutRegardToCase) {
    modifyInstance(requestPath("cim_sharedsecret", {{"RemoteID", keyText(HOST)}}), String("new"));

    EXPECT_EQ(calls().size(), 2u);
}

TEST_F(SharedSecretProviderTest, ModifyInstanceOfAnotherObjectChangesNothing) {
    modifyInstance(secretOf(VOLUME), String("new"));

    EXPECT_THAT(log(), ElementsAre("processing", "complete"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceIgnoresThePropertyListAndOtherProperties) {
    CIMInstance modified("CIM_SharedSecret");
    modified.addProperty(CIMProperty("RemoteID", String(keyText(TARGET).c_str())));
    modified.addProperty(CIMProperty("Secret", String("new")));
    Array<CIMName> names;
    names.append(CIMName("RemoteID"));
    provider.modifyInstance(context, secretOf(HOST), modified, true, CIMPropertyList(names),
                            response);

    EXPECT_THAT(calls(),
                ElementsAre("getObject(13, 0x0D000001)",
                            "modifyObject(13, DRAVInitiator{0x0D000001, name=\"iqn.host\", "
                            "secret=\"new\"})"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceWithoutASecretIsOutOfBoundsAndChangesNothing) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [this] { modifyInstance(secretOf(HOST), CIMInstance("CIM_SharedSecret")); }),
              "index out of bounds");

    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceWithASecretOfAnotherTypeIsATypeMismatch) {
    EXPECT_EQ(thrownBy<TypeMismatchException>([this] {
                  modifyInstance(secretOf(HOST), Uint32(12345));
              }).find("type"),
              0u);

    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(SharedSecretProviderTest, ModifyInstanceLooksForTheSecretBeforeTheKey) {
    EXPECT_EQ(thrownBy<TypeMismatchException>([this] {
                  modifyInstance(requestPath("CIM_SharedSecret"), Uint32(12345));
              }).find("type"),
              0u);
}

TEST_F(SharedSecretProviderTest, ModifyInstanceWithoutKeysIsOutOfBoundsAndChangesNothing) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [this] { modifyInstance(requestPath("CIM_SharedSecret"), String("new")); }),
              "index out of bounds");

    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(SharedSecretProviderTest, ARefusedSecretLeavesTheOldOne) {
    failNext("modifyObject", 9, "secret is too long");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { modifyInstance(secretOf(HOST), String("new")); }),
              "secret is too long");
    EXPECT_THAT(log(), testing::Not(testing::Contains("complete")));

    getInstance(secretOf(HOST));
    EXPECT_THAT(properties(instances.delivered.at(0)),
                testing::Contains("Secret: string hosts own secret"));
}

TEST_F(SharedSecretProviderTest, NoEventIsPublished) {
    modifyInstance(secretOf(HOST), String("new"));

    EXPECT_THAT(events(), testing::IsEmpty());
}

} // namespace
