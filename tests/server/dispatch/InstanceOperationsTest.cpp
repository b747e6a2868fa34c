#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace smisd {
namespace {

class InstanceOperationsTest : public DispatchTest {
protected:
    Lines get(const char* className, const char* id) {
        return run(GetInstance{.nameSpace = testNamespace, .instanceName = path(className, id)});
    }

    // What the provider was called with last, for the operations without a result.
    std::string lastCall() {
        const std::string line = get("Test_Everything", "last").at(0);
        return line.substr(line.find(" | ") + 3);
    }

    static CIMInstance instance(const char* className, const char* id) {
        CIMInstance result{CIMName(className)};
        result.addProperty(CIMProperty(CIMName("Id"), CIMValue(String(id))));
        result.addProperty(CIMProperty(CIMName("nowhere"), CIMValue(Uint8(5))));
        return result;
    }

    Lines create(const char* className, const char* id) {
        return run(CreateInstance{testNamespace, instance(className, id)});
    }

    Lines modify(const char* className, const char* id) {
        CIMInstance modified = instance(className, id);
        modified.setPath(path(className, id));
        return run(ModifyInstance{.nameSpace = testNamespace, .modifiedInstance = modified});
    }

    Lines remove(const char* className, const char* id) {
        return run(DeleteInstance{testNamespace, path(className, id)});
    }
};

TEST_F(InstanceOperationsTest, TheProviderReceivesHostNamespaceAndTheClientsSpelling) {
    EXPECT_THAT(get("test_EVERYTHING", "a"),
                ElementsAre("instance test_EVERYTHING.Id=\"a\" | "
                            "//test.host/root/test:test_EVERYTHING.Id=\"a\" "
                            "-qualifiers -origin list=null"));
}

TEST_F(InstanceOperationsTest, TheProviderReceivesFlagsAndPropertyList) {
    EXPECT_THAT(run(GetInstance{testNamespace, path("Test_Everything", "a"), false, true, true,
                                list({"text", "Id"})}),
                ElementsAre("instance Test_Everything.Id=\"a\" | "
                            "//test.host/root/test:Test_Everything.Id=\"a\" "
                            "+qualifiers +origin list=[text,Id]"));
}

TEST_F(InstanceOperationsTest, KeysAreNotCheckedAgainstTheClass) {
    EXPECT_THAT(
        run(GetInstance{.nameSpace = testNamespace, .instanceName = path("Test_Everything")}),
        ElementsAre("instance Test_Everything.Id=\"\" | "
                    "//test.host/root/test:Test_Everything -qualifiers -origin "
                    "list=null"));
}

TEST_F(InstanceOperationsTest, TheProviderSeesWhoAsks) {
    EXPECT_THAT(get("Test_Everything", "user"),
                ElementsAre("instance Test_Everything.Id=\"user\" | alice"));
}

TEST_F(InstanceOperationsTest, ErrorsOfTheProviderArriveWithCodeAndText) {
    EXPECT_THAT(get("Test_Everything", "cim:7:X::y"), ElementsAre("error 7 X::y"));
    EXPECT_THAT(get("Test_Everything", "cim:6:"), ElementsAre("error 6 "));
    EXPECT_THAT(get("Test_Everything", "exception:plain"), ElementsAre("error 1 plain"));
    EXPECT_THAT(get("Test_Everything", "std:standard"), ElementsAre("error 1 standard"));
    EXPECT_THAT(get("Test_Everything", "int"), ElementsAre("error 1 Unknown error."));
    EXPECT_THAT(get("Test_Everything", "late:after complete"),
                ElementsAre("error 1 after complete"));
}

TEST_F(InstanceOperationsTest, AnErrorWithCodeSuccessIsAnEmptyAnswer) {
    EXPECT_THAT(get("Test_Everything", "cim:0:X"), IsEmpty());
}

TEST_F(InstanceOperationsTest, GetInstanceNeedsExactlyOneInitializedInstance) {
    EXPECT_THAT(get("Test_Everything", "none"), ElementsAre("error 1 Too few objects delivered."));
    EXPECT_THAT(get("Test_Everything", "twice"),
                ElementsAre("error 1 Too many objects delivered."));
    EXPECT_THAT(get("Test_Everything", "uninitialized"),
                ElementsAre("error 1 The object is not initialized."));
}

TEST_F(InstanceOperationsTest, WhatIsNotCompletedIsLost) {
    EXPECT_THAT(get("Test_Everything", "forget"), IsEmpty());
}

TEST_F(InstanceOperationsTest, CreateInstanceGivesThePathThatTheProviderDelivers) {
    EXPECT_THAT(create("Test_Everything", "new"), ElementsAre("name Test_Everything.Id=\"new\""));
    EXPECT_EQ(lastCall(), "create //test.host/root/test:Test_Everything Test_Everything "
                          "Id:string=new nowhere:uint8=5");
}

TEST_F(InstanceOperationsTest, CreateInstanceNeedsAPath) {
    EXPECT_THAT(create("Test_Everything", "none"),
                ElementsAre("error 1 Too few objects delivered."));
}

TEST_F(InstanceOperationsTest, ModifyInstancePassesTheInstanceAsItWasSent) {
    EXPECT_THAT(modify("Test_Everything", "m"), IsEmpty());
    EXPECT_EQ(lastCall(), "modify //test.host/root/test:Test_Everything.Id=\"m\" +qualifiers "
                          "-origin list=null Test_Everything.Id=\"m\" Id:string=m nowhere:uint8=5");
}

TEST_F(InstanceOperationsTest, DeleteInstancePassesThePath) {
    EXPECT_THAT(remove("Test_Everything", "d"), IsEmpty());
    EXPECT_EQ(lastCall(), "delete //test.host/root/test:Test_Everything.Id=\"d\"");
}

TEST_F(InstanceOperationsTest, ErrorsOfChangesArrive) {
    EXPECT_THAT(create("Test_Everything", "cim:11:X"), ElementsAre("error 11 X"));
    EXPECT_THAT(modify("Test_Everything", "cim:6:X"), ElementsAre("error 6 X"));
    EXPECT_THAT(remove("Test_Everything", "cim:2:X"), ElementsAre("error 2 X"));
}

TEST_F(InstanceOperationsTest, AnUnknownNamespaceIsNamed) {
    const CIMObjectPath any = path("Test_Everything", "a");
    const auto expected = ElementsAre("error 3 root/unknown");
    EXPECT_THAT(run(GetInstance{.nameSpace = unknownNamespace, .instanceName = any}), expected);
    EXPECT_THAT(run(CreateInstance{unknownNamespace, instance("Test_Everything", "a")}), expected);
    EXPECT_THAT(run(ModifyInstance{.nameSpace = unknownNamespace,
                                   .modifiedInstance = instance("Test_Everything", "a")}),
                expected);
    EXPECT_THAT(run(DeleteInstance{unknownNamespace, any}), expected);
}

TEST_F(InstanceOperationsTest, AnUnknownClassIsNamedAlsoIfItIsRegistered) {
    for (const char* className : {"Test_Nowhere", "Test_Missing"}) {
        const auto expected = ElementsAre("error 5 " + std::string(className));
        EXPECT_THAT(get(className, "a"), expected);
        EXPECT_THAT(create(className, "a"), expected);
        EXPECT_THAT(modify(className, "a"), expected);
        EXPECT_THAT(remove(className, "a"), expected);
    }
}

TEST_F(InstanceOperationsTest, AClassWithoutProviderIsNotSupported) {
    const auto expected = ElementsAre("error 7 ");
    EXPECT_THAT(get("Test_Unserved", "a"), expected);
    EXPECT_THAT(create("Test_Unserved", "a"), expected);
    EXPECT_THAT(modify("Test_Unserved", "a"), expected);
    EXPECT_THAT(remove("Test_Unserved", "a"), expected);
}

TEST_F(InstanceOperationsTest, NoProviderServesAClassByItsSuperclass) {
    EXPECT_THAT(get("Test_Element", "a"), ElementsAre("error 7 "));
}

TEST_F(InstanceOperationsTest, AProviderThatTheModuleDoesNotKnowFails) {
    EXPECT_THAT(get("Test_Unknown", "a"),
                ElementsAre("error 1 ProviderLoadFailure (" SCRIPTED_MODULE
                            ":Unknown):provider is not a CIMProvider."));
}

} // namespace
} // namespace smisd
